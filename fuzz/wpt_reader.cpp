// A WPT+ text is read and written; what was written loses no line, and from then on reading and writing change nothing.
// Only quotes bring a comma into a text, which then cuts its line when it is written.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "data/InternalData.h"
#include "formats/MpsWpt.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

constexpr int UtcOffsetHours = 9;

std::string Write(InternalData& data, const TextSettings& settings) {
  return BuildWptText(data, {true, true, true}, {"WPT+", settings, {}});
}

void Read(InternalData& data, std::string_view text, bool written) {
  for (const DataKind kind : AllDataKinds)
    data.Clear(kind);
  WptReader reader(data, UtcOffsetHours);
  reader.ReadText(text);
  if (reader.Messages().kept.size() > MessageList::MostKept) std::abort();
  if (written && (reader.Summary().skipped != 0 || reader.Messages().count != 0)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const auto data = std::make_unique<InternalData>();
  const std::string text = DecodeText(std::string_view(reinterpret_cast<const char*>(bytes), size));
  Read(*data, text, false);
  (void)Write(*data, {"DMS", "Tokyo", UtcOffsetHours});
  if (text.find('"') != std::string::npos) return 0;
  // The first writing rounds positions to 15 digits.
  Read(*data, Write(*data, {}), true);
  const std::string settled = Write(*data, {});
  Read(*data, settled, true);
  if (Write(*data, {}) != settled) std::abort();
  return 0;
}
