#include "formats/PositionReader.h"

#include <optional>

#include "formats/FieldValues.h"
#include "formats/Messages.h"
#include "text/Scan.h"

namespace walrim {

using namespace format_messages;

std::string_view ReadAngleText(std::string_view text, AngleNotation notation, double& degrees) {
  std::string scratch;
  const std::string_view value = PlainText(text, scratch);
  if (TrimBlanks(value).empty()) return NoPosition;
  if (value.find(',') != std::string_view::npos) return BadAngle;
  const auto read = ReadAngle(value, notation);
  if (!read) return BadAngle;
  degrees = *read;
  return {};
}

std::string_view PositionReader::Read(const PositionTexts& texts, GeoPoint& point) {
  if (const std::string_view why = ReadForm(texts); !why.empty()) return why;
  GeoPoint read;
  if (const std::string_view why = ReadAngleText(texts.lat, notation_.meaning, read.latitude_deg); !why.empty())
    return why;
  if (const std::string_view why = ReadAngleText(texts.lon, notation_.meaning, read.longitude_deg); !why.empty())
    return why;
  if (!OnGlobe(read)) return PositionOutOfRange;
  point = ConvertDatum(read, datum_.meaning, Datum::Wgs84);
  return OnGlobe(point) ? std::string_view() : PositionOutOfRange;
}

std::string_view PositionReader::ReadForm(const PositionTexts& texts) {
  if (form_known_ && texts.notation == notation_.text && texts.datum == datum_.text) return {};
  form_known_ = false;
  const auto notation = AngleNotationOfName(PlainText(texts.notation, scratch_));
  if (!notation) return UnknownNotation;
  const std::string_view datum_name = TrimBlanks(PlainText(texts.datum, scratch_));
  const auto datum = datum_name.empty() ? Datum::Wgs84 : DatumOfName(datum_name);
  if (!datum) return UnknownDatum;
  notation_ = {std::string(texts.notation), *notation};
  datum_ = {std::string(texts.datum), *datum};
  form_known_ = true;
  return {};
}

}  // namespace walrim
