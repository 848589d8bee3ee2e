#include "formats/PositionReader.h"

#include <optional>
#include <stdexcept>

#include "formats/FieldValues.h"
#include "formats/Messages.h"
#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

using namespace format_messages;

/// Whether a text begins with a number, which is value, that fits one.
bool BeginsWithNumber(std::string_view text, double value) {
  text = TrimBlanks(text);
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t digits = text.starts_with('.') ? 1 : 0;
  if (digits >= text.size() || !IsDigit(text[digits])) return false;
  // What is read as 0 although other digits stand before its exponent fitted no number.
  return value != 0 || text.find_first_of("123456789") >= text.find_first_of("eE/");
}

}  // namespace

std::string_view ReadAngleText(std::string_view text, AngleNotation notation, double& degrees) {
  std::string scratch;
  const std::string_view value = PlainText(text, scratch);
  if (TrimBlanks(value).empty()) return NoPosition;
  if (value.find(',') != std::string_view::npos) return BadAngle;
  try {
    degrees = DegreesOfAngle(value, notation);
  } catch (const std::out_of_range&) {
    return BadAngle;
  }
  const double leading = notation == AngleNotation::D ? degrees : LeadingNumber(value);
  return BeginsWithNumber(value, leading) ? std::string_view() : BadAngle;
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
