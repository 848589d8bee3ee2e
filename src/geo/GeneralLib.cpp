#include "geo/GeneralLib.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <stdexcept>

#include "geo/Decimal.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace walrim {
namespace {

enum class Notation { Unknown, D, DM, DMS, MPS, PAO };

Notation NotationOf(std::string_view name) {
  if (name == "D") return Notation::D;
  if (name == "DM") return Notation::DM;
  if (name == "DMS") return Notation::DMS;
  if (name == "MPS") return Notation::MPS;
  if (name == "PAO") return Notation::PAO;
  return Notation::Unknown;
}

struct Angle {
  Decimal degrees;
  Decimal minutes;
  Decimal seconds;
};

Decimal FromUnits(UInt128 units) {
  const UInt128 whole = units / FractionUnit;
  return {false, static_cast<double>(whole), units % FractionUnit};
}

/// Reads one number whose fraction holds the minutes in parts of minute_base and behind them the seconds in parts of
/// second_base.
Angle ReadPacked(std::string_view value, unsigned minute_base, unsigned second_base) {
  const Decimal number = ParseDecimal(value);
  Angle angle;
  angle.degrees.negative = number.negative;
  angle.degrees.whole = number.whole;
  UInt128 fraction = number.fraction;
  if (number.negative && fraction != 0) {
    angle.degrees.whole += 1;
    fraction = FractionUnit - fraction;
  }
  const UInt128 minutes = fraction * minute_base;
  const UInt128 whole_minutes = minutes / FractionUnit;
  angle.minutes.whole = static_cast<double>(whole_minutes);
  angle.seconds = FromUnits(minutes % FractionUnit * second_base);
  return angle;
}

Angle ReadParts(std::string_view value, int second_shift) {
  std::array<std::string_view, 3> parts;
  std::size_t part = 0;
  while (true) {
    const std::size_t slash = value.find('/');
    parts.at(part) = value.substr(0, slash);
    if (slash == std::string_view::npos) break;
    value.remove_prefix(slash + 1);
    ++part;
  }
  return {ParseDecimal(parts[0]), ParseDecimal(parts[1]), ParseDecimal(parts[2], second_shift)};
}

Angle ReadAngle(std::string_view value, Notation notation) {
  switch (notation) {
    case Notation::D:
      return ReadPacked(value, 60, 60);
    case Notation::DM:
      return ReadPacked(value, 100, 60);
    case Notation::DMS:
      return ReadPacked(value, 100, 100);
    case Notation::MPS:
      return ReadParts(value, 0);
    case Notation::PAO:
      return ReadParts(value, -3);
    case Notation::Unknown:
      break;
  }
  return {};
}

/// number * factor in units of 1 / FractionUnit; nothing where the sum of three of them might not fit.
std::optional<Int128> Units(const Decimal& number, unsigned factor) {
  constexpr double MostSeconds = 4.0e7;
  if (number.whole * factor > MostSeconds) return std::nullopt;
  const UInt128 units = (static_cast<UInt128>(number.whole) * FractionUnit + number.fraction) * factor;
  return number.negative ? -static_cast<Int128>(units) : static_cast<Int128>(units);
}

double DegreesOf(const Angle& angle) {
  const std::optional<Int128> degrees = Units(angle.degrees, 3600);
  const std::optional<Int128> minutes = Units(angle.minutes, 60);
  const std::optional<Int128> seconds = Units(angle.seconds, 1);
  if (degrees && minutes && seconds) return NearestQuotient(*degrees + *minutes + *seconds, 3600);
  const double sum =
      NearestDouble(angle.degrees) + NearestDouble(angle.minutes) / 60 + NearestDouble(angle.seconds) / 3600;
  return std::isfinite(sum) ? sum : 0;
}

double ReadDegrees(std::string_view value, Notation notation) {
  return notation == Notation::D ? LeadingNumber(value) : DegreesOf(ReadAngle(value, notation));
}

/// Bit i is set where byte i of 16 is a TAB or a comma.
unsigned SeparatorsOf16(const char* at) {
#if defined(__SSE2__)
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  const __m128i found =
      _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8(',')));
  return static_cast<unsigned>(_mm_movemask_epi8(found));
#else
  unsigned mask = 0;
  for (unsigned i = 0; i < 16; ++i)
    mask |= (at[i] == '\t' || at[i] == ',' ? 1U : 0U) << i;
  return mask;
#endif
}

/// Fills columns one after the other.
class ColumnSink {
 public:
  explicit ColumnSink(std::array<std::string_view, MaxColumns>& columns)
      : next_(columns.data()), end_(next_ + MaxColumns) {}

  void Add(const char* begin, const char* end) {
    if (next_ == end_) throw std::out_of_range("a line has more columns than it may");
    std::string_view column(begin, static_cast<std::size_t>(end - begin));
    if (begin != end && (*begin == ' ' || end[-1] == ' ')) column = TrimBlanks(column);
    *next_++ = column;
  }
  [[nodiscard]] const std::string_view* Next() const { return next_; }

 private:
  std::string_view* next_;
  std::string_view* end_;
};

}  // namespace

std::string ConvertAngle(std::string_view value, std::string_view from, std::string_view to) {
  if (to == "D") return GeneralNumber(ReadDegrees(value, NotationOf(from)));
  const Angle angle = ReadAngle(value, NotationOf(from));
  const std::string degrees = GeneralNumber(NearestDouble(angle.degrees));
  // Seconds that round up to 60 stay 60: nothing is carried.
  switch (NotationOf(to)) {
    case Notation::DMS:
      return degrees + "." + FixedDigits(angle.minutes, 0, 2, 0) + FixedDigits(angle.seconds, 2, 4, 0);
    case Notation::MPS:
      return degrees + "/" + FixedDigits(angle.minutes, 0, 2, 0) + "/" + FixedDigits(angle.seconds, 0, 2, 1);
    case Notation::PAO:
      return degrees + "/" + FixedDigits(angle.minutes, 0, 2, 0) + "/" + FixedDigits(angle.seconds, 3, 5, 0);
    default:
      return {};
  }
}

double DegreesOfAngle(std::string_view value, std::string_view notation) {
  return ReadDegrees(value, NotationOf(notation));
}

bool IsAngleNotation(std::string_view name) {
  return NotationOf(name) != Notation::Unknown;
}

std::size_t SplitColumns(std::string_view line, std::array<std::string_view, MaxColumns>& columns) {
  ColumnSink sink(columns);
  const char* column = line.data();
  const char* at = line.data();
  const char* const end = at + line.size();
  for (; end - at >= 16; at += 16) {
    for (unsigned mask = SeparatorsOf16(at); mask != 0; mask &= mask - 1) {
      const char* const separator = at + __builtin_ctz(mask);
      sink.Add(column, separator);
      column = separator + 1;
    }
  }
  for (; at != end; ++at) {
    if (*at != '\t' && *at != ',') continue;
    sink.Add(column, at);
    column = at + 1;
  }
  sink.Add(column, end);
  return static_cast<std::size_t>(sink.Next() - columns.data());
}

void SplitColumns(std::string_view line, std::vector<std::string_view>& columns) {
  std::array<std::string_view, MaxColumns> split;
  const std::size_t count = SplitColumns(line, split);
  columns.assign(split.begin(), split.begin() + static_cast<std::ptrdiff_t>(count));
}

std::vector<std::string_view> SplitColumns(std::string_view line) {
  std::vector<std::string_view> columns;
  SplitColumns(line, columns);
  return columns;
}

void GetListPair(std::string_view list, std::size_t k, ListPair& pair) {
  constexpr std::size_t MostItems = 5120;
  if (list.empty()) {
    pair.count = 0;
    return;
  }
  std::optional<std::string> key;
  std::optional<std::string> value;
  std::size_t items = 0;
  for (bool more = true; more;) {
    const std::size_t comma = list.find(',');
    if (++items > MostItems) throw std::out_of_range("a list has more items than it may");
    // A huge k names no item, and twice it might be a small number again.
    if (k <= MostItems && (items + 1 == 2 * k || items == 2 * k)) {
      std::string item;
      for (const char c : list.substr(0, comma)) {
        if (c != '\n' && c != '&') item += c;
      }
      std::size_t marks = 0;
      for (const char c : list.substr(0, comma))
        marks += c == '&' ? 1U : 0U;
      item.insert(0, marks, '&');
      (items == 2 * k ? value : key) = std::move(item);
    }
    more = comma != std::string_view::npos;
    if (more) list.remove_prefix(comma + 1);
  }
  if (key) pair.key = *std::move(key);
  if (value) pair.value = *std::move(value);
  pair.count = static_cast<double>(items) / 2;
}

}  // namespace walrim
