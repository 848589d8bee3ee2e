// A standard file is read and written; from then on reading and writing change nothing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

constexpr int UtcOffsetHours = 9;

std::string Write(InternalData& data, const TextSettings& settings) {
  static const NameTablesByType names;
  StandardWriter writer(data, names, settings);
  std::string text;
  for (const DataKind kind : AllDataKinds)
    writer.AppendKind(text, kind, true);
  return text;
}

/// Reads a text into data, which is emptied first; written texts must not lose a line.
void Read(InternalData& data, std::string_view text, bool written) {
  for (const DataKind kind : AllDataKinds)
    data.Clear(kind);
  StandardReader reader(data, UtcOffsetHours);
  reader.ReadText(text);
  if (written && reader.Summary().skipped != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const auto data = std::make_unique<InternalData>();
  const std::string text = DecodeText(std::string_view(reinterpret_cast<const char*>(bytes), size));
  Read(*data, text, false);
  for (const TextSettings& settings : {TextSettings{"DMS", "Tokyo", UtcOffsetHours}, {"MPS", "WGS84", -12}}) {
    (void)Write(*data, settings);
  }
  // The first writing rounds positions to 15 digits; legs are measured on what is held, so the second settles them.
  Read(*data, Write(*data, {}), true);
  const std::string settled = Write(*data, {});
  Read(*data, settled, true);
  if (Write(*data, {}) != settled) std::abort();
  return 0;
}
