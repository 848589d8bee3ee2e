// Positions as lines give them: a notation, a datum, a latitude and a longitude, each a text that anybody may have
// written.
#pragma once

#include <string>
#include <string_view>

#include "geo/AngleNotation.h"
#include "geo/Datum.h"

namespace walrim {

/// Reads an angle; a text that begins with a number is that. Why the text is none; empty where it is one, with degrees
/// set.
[[nodiscard]] std::string_view ReadAngleText(std::string_view text, AngleNotation notation, double& degrees);

struct PositionTexts {
  std::string_view notation;
  std::string_view datum;  ///< empty: WGS84
  std::string_view lat;
  std::string_view lon;
};

class PositionReader {
 public:
  /// Why the texts are no position; empty where they are one, with point set to it on WGS84.
  [[nodiscard]] std::string_view Read(const PositionTexts& texts, GeoPoint& point);

 private:
  /// A text and what it means; most lines repeat the texts of the line before.
  template <typename Meaning>
  struct Remembered {
    std::string text;
    Meaning meaning;
  };

  [[nodiscard]] std::string_view ReadForm(const PositionTexts& texts);

  bool form_known_ = false;
  Remembered<AngleNotation> notation_{{}, AngleNotation::D};
  Remembered<Datum> datum_{{}, Datum::Wgs84};
  std::string scratch_;
};

}  // namespace walrim
