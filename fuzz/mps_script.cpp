// Any text as a script and as the WPT+ text of one that has a start, a goal and numbers. A script of ours is read back
// with no more than one line left out.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "formats/ProAtlas.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

constexpr CivilTime Now{2002, 11, 15, 14, 5, 12};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text = DecodeText(std::string_view(reinterpret_cast<const char*>(bytes), size));
  const Conversion from_script = ConvertScriptToWpt(text);
  (void)ConvertScriptToWpt(ConvertWptToScript(from_script.text, {}, Now).text);
  const Conversion to_script = ConvertWptToScript(text, {9, "START", "GOAL", 1, 3}, Now);
  if (to_script.text.find("nan") != std::string::npos && text.find("nan") == std::string::npos) std::abort();
  if (ConvertScriptToWpt(to_script.text).skipped > 1) std::abort();
  return 0;
}
