// Bytes of code page 932 come back as they were, but for the code page's characters of two codes.
#include "text/Cp932.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "text/TextEncoding.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

void CheckCuts(std::string_view text) {
  for (std::size_t width = 0; width < 12; ++width) {
    const std::string_view cut = CutToCp932Width(text, width);
    if (Cp932Width(cut) > width || !text.starts_with(cut)) std::abort();
    std::string_view rest = text.substr(cut.size());
    if (rest.empty()) continue;
    const std::size_t before = rest.size();
    (void)TakeCharacter(rest);
    if (Cp932Width(text.substr(0, cut.size() + before - rest.size())) <= width) std::abort();
  }
}

/// A row of the code page with characters that are in another one too.
bool HasDuplicates(std::uint8_t lead) {
  return lead == 0x81 || lead == 0x87 || lead >= 0xED;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string text = DecodeCp932(bytes);
  if (!IsValidUtf8(text) || Cp932Width(text) != size) std::abort();
  CheckCuts(text);
  const auto encoded = EncodeCp932(text);
  if (!encoded || encoded->size() != size || DecodeCp932(*encoded) != text) std::abort();
  for (std::size_t i = 0; i < size; ++i) {
    if ((*encoded)[i] == bytes[i]) continue;
    const bool lead = HasDuplicates(static_cast<std::uint8_t>(bytes[i]));
    const bool trail = i > 0 && HasDuplicates(static_cast<std::uint8_t>(bytes[i - 1]));
    if (!lead && !trail) std::abort();
  }
  // The same bytes taken as UTF-8, well-formed or not.
  CheckCuts(bytes);
  UnencodableCharacter lacking;
  if (const auto direct = EncodeCp932(bytes, &lacking)) {
    if (direct->size() != Cp932Width(bytes)) std::abort();
    if (EncodeCp932(DecodeCp932(*direct)) != direct) std::abort();
  } else if (lacking.utf8.empty()) {
    std::abort();
  }
  if (!IsValidUtf8(DecodeCp932(bytes))) std::abort();
  return 0;
}
