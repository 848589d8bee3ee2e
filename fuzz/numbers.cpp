// Numbers of any text: always finite, and written so that they read back.
#include "text/Numbers.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace walrim;

namespace {

std::string GeneralNumber(double value) {
  std::string text;
  AppendGeneralNumber(text, value);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  const double value = LeadingNumber(text);
  if (!std::isfinite(value)) std::abort();
  if (LeadingNumber(ShortestNumber(value)) != value) std::abort();
  const std::string general = GeneralNumber(value);
  if (GeneralNumber(LeadingNumber(general)) != general) std::abort();
  const long long whole = LeadingInteger(text, -1000, 70000);
  if (whole < -1000 || whole > 70000) std::abort();
  if (std::abs(value) < 3e38) {
    const auto single = static_cast<float>(value);
    if (static_cast<float>(LeadingNumber(ShortestNumber(single))) != single) std::abort();
  }
  if (LeadingInteger(PadNumber(whole, 7), -1000, 70000) != whole) std::abort();
  return 0;
}
