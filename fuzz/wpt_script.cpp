// Any text as the WPT+ text of a script. Once positions are rounded and texts written as a script can hold them, what a
// script of ours gives back makes a script that gives the same. Only quotes bring a comma into a text, which then cuts
// its line. The first script has a start, a goal and numbers.
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
const MpsOptions WithNames{9, "START", "GOAL", 1, 3};

/// A WPT+ text by way of a script.
std::string ThereAndBack(std::string_view wpt, const MpsOptions& options = {}) {
  const Conversion to_script = ConvertWptToScript(wpt, options, Now);
  if (to_script.text.find("nan") != std::string::npos && wpt.find("nan") == std::string::npos) std::abort();
  const Conversion back = ConvertScriptToWpt(to_script.text);
  if (back.skipped > 1) std::abort();
  return back.text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text = DecodeText(std::string_view(reinterpret_cast<const char*>(bytes), size));
  if (text.find('"') != std::string::npos) {
    (void)ThereAndBack(text, WithNames);
    return 0;
  }
  const std::string settled = ThereAndBack(ThereAndBack(text, WithNames));
  if (ThereAndBack(settled) != settled) std::abort();
  return 0;
}
