// Texts of the formats, read and written in a line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "formats/Format.h"
#include "text/Cp932.h"

namespace walrim {

inline constexpr int UtcOffsetHours = 9;

inline std::string DecodedInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  return EncodingOf(text) == TextEncoding::Utf8 ? std::string(text) : DecodeCp932(text);
}

inline ImportResult ReadText(FormatId format, std::string_view text, DataSet& data) {
  LineSource lines(text, TextEncoding::Utf8);
  return FormatOf(format).read(lines, data, {UtcOffsetHours});
}

inline std::string WriteText(FormatId format, const DataSet& data, const WriteSettings& settings = {}) {
  std::string text;
  TextOutput out([&text](const std::string& lines) { text += lines; });
  (void)FormatOf(format).write(out, data, settings);
  out.Flush();
  return text;
}

inline WriteSettings InForm(AngleNotation notation, Datum datum, int utc_offset_hours = UtcOffsetHours) {
  WriteSettings settings;
  settings.notation = notation;
  settings.datum = datum;
  settings.utc_offset_hours = utc_offset_hours;
  return settings;
}

}  // namespace walrim
