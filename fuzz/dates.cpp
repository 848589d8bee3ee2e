// Date texts: what is read is a date that is written and read back as itself.
#include "text/Dates.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace walrim;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  double fraction = 0;
  if (const auto time = ParseDateTime(text, &fraction)) {
    if (fraction < 0 || fraction > 1) std::abort();
    if (ParseDateTime(DateTimeText(*time)) != time) std::abort();
    if (CivilFromGarminSeconds(SecondsSinceGarminEpoch(*time)) != *time) std::abort();
  }
  for (const int offset : {-32768, -12, 0, 9, 32767}) {
    const auto seconds = GarminTimeOfText(text, offset);
    if (seconds && KnownGarminTime(*seconds) != seconds) std::abort();
    (void)DateTimeText(LocalTimeOfGarminTime(seconds, offset));
  }
  return 0;
}
