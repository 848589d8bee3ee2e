// Points as people type them, and as the addresses of maps hold them. The bytes choose a position to the tenth of a
// second and how it is written; what is recognised is that position.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

#include "dialogs/MapPoint.h"

using namespace walrim;

namespace {

constexpr int TenthsPerDegree = 36000;

/// An angle of whole tenths of a second without its sign.
struct Angle {
  int tenths = 0;
  bool reversed = false;

  [[nodiscard]] double Degrees() const {
    return (reversed ? -1.0 : 1.0) * static_cast<double>(tenths) / TenthsPerDegree;
  }
};

/// Takes numbers off the front of the input; 0 at its end.
class Choices {
 public:
  explicit Choices(std::span<const std::uint8_t> input) : input_(input) {}
  int Below(int limit) {
    unsigned number = 0;
    for (int i = 0; i < 3 && !input_.empty(); ++i) {
      number = number * 256 + input_[0];
      input_ = input_.subspan(1);
    }
    return static_cast<int>(number % static_cast<unsigned>(limit));
  }

 private:
  std::span<const std::uint8_t> input_;
};

std::string Padded(int number, std::size_t digits) {
  std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

struct Marks {
  std::string_view degrees;
  std::string_view minutes;
  std::string_view seconds;
};
constexpr std::array AllMarks{Marks{"°", "'", "\""},   Marks{"°", "′", "″"}, Marks{"° ", "’ ", "”"},
                              Marks{"度", "分", "秒"}, Marks{".", ".", ""},  Marks{"º", "'", "''"}};
constexpr int DecimalForm = static_cast<int>(AllMarks.size());

std::string Magnitude(const Angle& angle, int form) {
  const int degrees = angle.tenths / TenthsPerDegree;
  const int rest = angle.tenths % TenthsPerDegree;
  if (form == DecimalForm) {
    // 36000 parts to the last digit that a double holds.
    const long long fraction = std::llround(static_cast<double>(rest) * 1e12 / TenthsPerDegree);
    std::string digits = std::to_string(fraction);
    return std::to_string(degrees) + "." + std::string(12 - digits.size(), '0') + digits;
  }
  const Marks& marks = AllMarks[static_cast<std::size_t>(form)];
  std::string text = std::to_string(degrees);
  text.append(marks.degrees).append(Padded(rest / 600, 2)).append(marks.minutes);
  text.append(Padded(rest % 600 / 10, 2)).append(".").append(std::to_string(rest % 10)).append(marks.seconds);
  return text;
}

enum class Sign { Minus, LetterBehind, LetterInFront, Word };
struct Names {
  std::string_view letter;
  std::string_view reversed_letter;
  std::string_view word;
  std::string_view reversed_word;
};
constexpr Names Latitude{"N", "s", "北緯", "南緯"};
constexpr Names Longitude{"e", "W", "東経", "西経"};

std::string Written(const Angle& angle, int form, Sign sign, const Names& names) {
  const std::string number = Magnitude(angle, form);
  const std::string letter(angle.reversed ? names.reversed_letter : names.letter);
  switch (sign) {
    case Sign::Minus:
      return (angle.reversed ? "-" : "") + number;
    case Sign::LetterBehind:
      return number + " " + letter;
    case Sign::LetterInFront:
      return letter + number;
    case Sign::Word:
      return std::string(angle.reversed ? names.reversed_word : names.word) + number;
  }
  return number;
}

bool Same(double one, double other) {
  return std::abs(one - other) < 1e-9;
}

void CheckPair(const Angle& lat, const Angle& lon, Choices& choices) {
  int form = choices.Below(DecimalForm + 1);
  const auto sign = static_cast<Sign>(choices.Below(4));
  // Three numbers with two points are a position only with its letters.
  if (AllMarks[static_cast<std::size_t>(form) % AllMarks.size()].degrees == "." && sign == Sign::Minus) form = 0;
  const std::string north = Written(lat, form, sign, Latitude);
  const std::string east = Written(lon, form, sign, Longitude);
  constexpr std::array<std::string_view, 4> between{", ", " ", "、", "\r\n"};
  const std::string gap(between[static_cast<std::size_t>(choices.Below(4))]);
  const bool east_first = sign != Sign::Minus && choices.Below(2) == 1;
  std::string text = east_first ? east + gap + north : north + gap + east;
  const bool tokyo = choices.Below(2) == 1;
  if (tokyo) text += " (日本測地系)";
  const auto point = RecognizeMapPoint(text);
  if (!point || !Same(point->lat_deg, lat.Degrees()) || !Same(point->lon_deg, lon.Degrees())) std::abort();
  if (point->datum != (tokyo ? Datum::Tokyo : Datum::Wgs84)) std::abort();
}

/// What stands in front of a latitude, between it and a longitude, and behind that. There, anything may follow.
struct Address {
  std::string_view front;
  std::string_view between;
  std::array<std::string_view, 3> behind;
};
constexpr std::array Addresses{
    Address{"maps.gsi.go.jp/#15/", "/", {"", "/", "/&base=std"}},
    Address{"maps.gsi.go.jp/?hc=hic#5.5/", "/", {"", "/", "&x"}},
    Address{"www.google.com/maps/search/?api=1&query=", ",", {"", "&hl=ja", "#x"}},
    Address{"maps.google.co.jp/maps?z=4&q=", "%2C", {"", "&hl=ja", "#x"}},
    Address{"www.google.com/maps/@", ",", {"", ",15z", ",3a,75y/data=x"}},
    Address{"www.google.com/maps/place/A/@1,2,3z/data=!8m2!3d", "!4d", {"", "!5", "?entry=x"}},
    Address{"map.yahoo.co.jp/place?lat=", "&lon=", {"", "&zoom=16", "#x"}},
    Address{"www.openstreetmap.org/?mlat=", "&mlon=", {"", "&x=1", "#map=15/1/2"}},
    Address{"www.openstreetmap.org/#map=15/", "/", {"", "&layers=N", "/"}},
};
constexpr std::array<std::string_view, 3> Schemes{"https://", "http://", ""};
constexpr std::array<std::string_view, 3> BehindGeo{"", ",599.5", ",-4;u=5;x=y"};

std::string AddressText(const std::string& north, const std::string& east, Choices& choices) {
  const auto at = static_cast<std::size_t>(choices.Below(static_cast<int>(Addresses.size()) + 1));
  const auto behind = static_cast<std::size_t>(choices.Below(3));
  if (at == Addresses.size()) return "geo:" + north + "," + east + std::string(BehindGeo[behind]);
  const Address& address = Addresses[at];
  std::string text(Schemes[static_cast<std::size_t>(choices.Below(3))]);
  text.append(address.front).append(north).append(address.between).append(east).append(address.behind[behind]);
  return text;
}

void CheckAddress(Angle lat, const Angle& lon, Choices& choices) {
  const bool off_globe = choices.Below(4) == 3;
  if (off_globe) lat.tenths += 90 * TenthsPerDegree + 1;
  const std::string text = AddressText(Written(lat, DecimalForm, Sign::Minus, Latitude),
                                       Written(lon, DecimalForm, Sign::Minus, Longitude), choices);
  const auto point = RecognizeMapPoint(text);
  if (LeadsOffGlobe(text) != off_globe || point.has_value() == off_globe) std::abort();
  if (off_globe) return;
  if (!Same(point->lat_deg, lat.Degrees()) || !Same(point->lon_deg, lon.Degrees())) std::abort();
  if (point->datum != Datum::Wgs84) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Choices choices(std::span(bytes, size));
  Angle lat{choices.Below(90 * TenthsPerDegree + 1), choices.Below(2) == 1};
  Angle lon{choices.Below(180 * TenthsPerDegree + 1), choices.Below(2) == 1};
  CheckPair(lat, lon, choices);
  CheckAddress(lat, lon, choices);
  return 0;
}
