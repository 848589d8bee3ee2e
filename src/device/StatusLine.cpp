#include "device/StatusLine.h"

#include "text/Utf8.h"

namespace walrim {

void StatusLine::SetStatus(std::string_view text) {
  const std::string command = UpperCase(text);
  if (command == "PUSH") {
    saved_ = desktop_.StatusCaption();
  } else if (command == "POP") {
    desktop_.SetStatusCaption(saved_);
  } else {
    std::string shown = saved_;
    shown += ' ';
    shown += text;
    desktop_.SetStatusCaption(shown);
  }
}

}  // namespace walrim
