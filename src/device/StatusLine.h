// The status line as the transfers use it: progress is shown behind the text that stood there before.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Desktop.h"

namespace walrim {

/// One level of saved text; a second push overwrites the first.
class StatusLine {
 public:
  explicit StatusLine(Desktop& desktop) : desktop_(desktop) {}

  /// "PUSH" (any case) saves the present text, "POP" puts the saved text back; any other text is shown behind the
  /// saved text and a blank.
  void SetStatus(std::string_view text);
  /// Shows a text alone; the saved text stays.
  void SetCaption(std::string_view text) { desktop_.SetStatusCaption(text); }
  /// Shows how far an operation has come; a total of 0 ends that.
  void SetProgress(std::int64_t done, std::int64_t total) { desktop_.SetProgress(done, total); }

 private:
  Desktop& desktop_;
  std::string saved_;
};

}  // namespace walrim
