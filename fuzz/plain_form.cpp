// What is read from a plain form is written so that it reads back the same.
#include <cstdint>
#include <cstdlib>

#include "records/PlainForm.h"

using namespace walrim;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view lines(reinterpret_cast<const char*>(bytes), size);
  static_cast<void>(ReadPlainForm(lines));
  const auto data = ReadPlainForm(SealedPlainForm(lines));
  if (!data) return 0;
  const std::string text = PlainFormOf(*data);
  const auto back = ReadPlainForm(text);
  if (!back || PlainFormOf(*back) != text) std::abort();
  return 0;
}
