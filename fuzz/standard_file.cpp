// A standard file is read and written; from then on reading and writing change nothing.
#include <cstdlib>

#include "format_texts.h"

using namespace walrim;

namespace {

std::string Write(const DataSet& data, AngleNotation notation, Datum datum, int utc_offset_hours) {
  WriteSettings settings = InForm(notation, datum, utc_offset_hours);
  settings.with_header = true;
  return WriteText(FormatId::Standard, data, settings);
}

std::string Write(const DataSet& data) {
  return Write(data, AngleNotation::D, Datum::Wgs84, UtcOffsetHours);
}

/// Reads a written text, which must not lose a line.
DataSet Reread(std::string_view text) {
  DataSet data;
  if (ReadText(FormatId::Standard, text, data).skipped.count != 0) std::abort();
  return data;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  DataSet data;
  (void)ReadText(FormatId::Standard, DecodedInput(bytes, size), data);
  (void)Write(data, AngleNotation::DMS, Datum::Tokyo, UtcOffsetHours);
  (void)Write(data, AngleNotation::MPS, Datum::Wgs84, -12);
  // The first writing rounds positions to 15 digits; legs are measured on what is held, so the second settles them.
  const std::string settled = Write(Reread(Write(data)));
  if (Write(Reread(settled)) != settled) std::abort();
  return 0;
}
