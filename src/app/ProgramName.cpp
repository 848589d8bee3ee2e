#include "app/ProgramName.h"

namespace walrim {

std::string_view ProgramVersion() {
  return WALRIM_VERSION;
}

std::string WindowTitle() {
  return std::string(ProgramName) + "(Ver " + std::string(ProgramVersion()) +
         ")－ハンディGPS(GARMIN社)用データローダー";
}

}  // namespace walrim
