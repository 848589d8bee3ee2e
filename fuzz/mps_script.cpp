// Any text as a script and as the WPT+ text of one. Once positions are rounded and texts written as a script can hold
// them, what a script of ours gives back makes a script that gives the same. Only quotes bring a comma into a text,
// which then cuts its line.
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

/// A WPT+ text by way of a script.
std::string ThereAndBack(std::string_view wpt) {
  return ConvertScriptToWpt(ConvertWptToScript(wpt, {}, Now).text).text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text = DecodeText(std::string_view(reinterpret_cast<const char*>(bytes), size));
  const Conversion from_script = ConvertScriptToWpt(text);
  const Conversion to_script = ConvertWptToScript(text, {9, "START", "GOAL", 1, 3}, Now);
  if (to_script.text.find("nan") != std::string::npos && text.find("nan") == std::string::npos) std::abort();
  const Conversion back = ConvertScriptToWpt(to_script.text);
  if (back.skipped > 1) std::abort();
  (void)ThereAndBack(from_script.text);
  if (text.find('"') != std::string::npos) return 0;
  const std::string settled = ThereAndBack(ThereAndBack(text));
  if (ThereAndBack(settled) != settled) std::abort();
  return 0;
}
