// Any text as a script. A script of ours made of what it gives is read back with no more than one line left out.
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
  if (ConvertScriptToWpt(ConvertWptToScript(from_script.text, {}, Now).text).skipped > 1) std::abort();
  return 0;
}
