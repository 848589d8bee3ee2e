// Values of records as texts in XML.
#pragma once

#include <string>
#include <string_view>

#include "records/TrackLog.h"

namespace walrim {

/// Of a number with its sign and point: those of a decimal that every program takes.
inline constexpr std::size_t MostXmlDigits = 24;

/// Plain digits without an exponent, the fewest that read back as the same value; nothing where they would be more than
/// MostXmlDigits.
void AppendXmlMetres(std::string& out, float metres);
/// The same of a latitude or longitude in degrees. Longitude 180, which GPX has not, is -180, and one with more digits
/// (it is less than a millimetre from 0) is rounded.
void AppendXmlAngle(std::string& out, double deg);
[[nodiscard]] std::string XmlAngle(double deg);
/// "2002-11-12T00:05:12Z"
void AppendXmlTime(std::string& out, GarminSeconds time);
/// A record's text as an element can hold it, without the blanks around it.
[[nodiscard]] std::string XmlText(std::string_view text);

}  // namespace walrim
