#include "records/PlainForm.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "text/PercentEscapes.h"
#include "text/Scan.h"

namespace walrim {

namespace {

constexpr std::string_view FirstLine = "Walrim records 1\n";
constexpr std::string_view EndTag = "E\t";
constexpr std::string_view HexDigits = "0123456789ABCDEF";
constexpr int Hexadecimal = 16;
/// More than the longest number.
constexpr std::size_t NumberSize = 32;

/// FNV-1a of 64 bits.
std::uint64_t ChecksumOf(std::string_view text) {
  std::uint64_t sum = 0xCBF29CE484222325U;
  for (const char c : text) {
    sum ^= static_cast<unsigned char>(c);
    sum *= 0x100000001B3U;
  }
  return sum;
}

void AppendHex(std::string& out, std::uint8_t byte) {
  out += HexDigits[byte >> 4U];
  out += HexDigits[byte & 15U];
}

// ---- Fields. A visitor writes them or reads them, in one order for both.

template <typename T>
constexpr bool IsNumber = std::is_arithmetic_v<T> && !std::is_same_v<T, bool>;

class FieldWriter {
 public:
  explicit FieldWriter(std::string& out) : out_(out) {}

  void operator()(bool value) { Put(value ? "1" : "0"); }
  void operator()(const std::string& text) {
    out_ += '\t';
    for (const char c : text) {
      const bool is_plain = static_cast<unsigned char>(c) >= ' ' && c != '\x7F' && c != '%';
      if (is_plain) {
        out_ += c;
      } else {
        out_ += '%';
        AppendHex(out_, static_cast<std::uint8_t>(c));
      }
    }
  }
  void operator()(const Subclass& subclass) {
    out_ += '\t';
    for (const std::uint8_t byte : subclass)
      AppendHex(out_, byte);
  }
  template <typename T>
  void operator()(const std::optional<T>& value) {
    value ? (*this)(*value) : Put("");
  }
  template <typename T>
  requires IsNumber<T>
  void operator()(T value) {
    std::array<char, NumberSize> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), value);
    Put({digits.data(), static_cast<std::size_t>(end.ptr - digits.data())});
  }
  template <typename E>
  void Enum(E value, E /*last*/) {
    (*this)(static_cast<int>(value));
  }

 private:
  void Put(std::string_view text) { (out_ += '\t') += text; }

  std::string& out_;
};

class FieldReader {
 public:
  /// A line behind its tag.
  explicit FieldReader(std::string_view line) : line_(line) {}

  /// Whether all fields were there and none is left.
  [[nodiscard]] bool Good() const { return good_ && line_.empty(); }

  void operator()(bool& value) {
    const std::string_view field = Next();
    value = field == "1";
    good_ = good_ && (value || field == "0");
  }
  void operator()(std::string& text) { text = DecodePercentEscapes(Next()); }
  void operator()(Subclass& subclass) {
    std::string_view field = Next();
    good_ = good_ && field.size() == 2 * subclass.size();
    for (std::uint8_t& byte : subclass)
      good_ = Parse(TakeBytes(field, 2), byte, Hexadecimal) && good_;
  }
  template <typename T>
  void operator()(std::optional<T>& value) {
    const std::string_view field = Next();
    value.reset();
    if (!field.empty()) good_ = Parse(field, value.emplace()) && good_;
  }
  template <typename T>
  requires IsNumber<T>
  void operator()(T& value) { good_ = Parse(Next(), value) && good_; }
  template <typename E>
  void Enum(E& value, E last) {
    int number = 0;
    (*this)(number);
    good_ = good_ && number >= 0 && number <= static_cast<int>(last);
    if (good_) value = static_cast<E>(number);
  }

 private:
  std::string_view Next() {
    good_ = Take(line_, '\t') && good_;
    return TakeUntilAny(line_, "\t");
  }
  template <typename T, typename... Base>
  [[nodiscard]] static bool Parse(std::string_view field, T& value, Base... base) {
    const auto end = std::from_chars(field.begin(), field.end(), value, base...);
    return end.ec == std::errc{} && end.ptr == field.end();
  }

  std::string_view line_;
  bool good_ = true;
};

template <typename Fields, typename D>
void VisitDetails(Fields& fields, D& details) {
  fields(details.wpt_class);
  fields(details.attr);
  fields(details.subclass);
  for (auto* text :
       {&details.state, &details.country, &details.facility, &details.city, &details.addr, &details.cross_road})
    fields(*text);
}

template <typename Fields, typename W>
void VisitWaypoint(Fields& fields, W& waypoint) {
  fields.Enum(waypoint.type, WaypointType::D108);
  fields(waypoint.missing);
  fields(waypoint.damaged);
  fields(waypoint.chosen);
  fields(waypoint.dspl);
  fields(waypoint.color);
  fields(waypoint.smbl);
  fields.Enum(waypoint.symbol_set, SymbolSet::Large);
  fields(waypoint.unused);
  fields(waypoint.dist_m);
  fields(waypoint.dst_m);
  fields(waypoint.alt_m);
  fields(waypoint.dpth_m);
  fields(waypoint.lat_deg);
  fields(waypoint.lon_deg);
  fields(waypoint.ident);
  fields(waypoint.cmnt);
  if constexpr (std::is_const_v<W>) {
    VisitDetails(fields, *waypoint.details);
  } else {
    WaypointDetails details;
    VisitDetails(fields, details);
    waypoint.details = details;
  }
}

template <typename Fields, typename L>
void VisitLink(Fields& fields, L& link) {
  fields(link.link_class);
  fields(link.subclass);
  fields(link.ident);
}

template <typename Fields, typename P>
void VisitRoutePoint(Fields& fields, P& point) {
  VisitWaypoint(fields, point.waypoint);
  if constexpr (std::is_const_v<P>) {
    VisitLink(fields, *point.link);
  } else {
    RouteLink link;
    VisitLink(fields, link);
    point.link = link;
  }
}

template <typename Fields, typename R>
void VisitRoute(Fields& fields, R& route) {
  fields.Enum(route.type, RouteHeaderType::D202);
  fields(route.nmbr);
  fields(route.cmnt);
  fields(route.chosen);
  fields(route.damaged);
}

template <typename Fields, typename L>
void VisitLog(Fields& fields, L& log) {
  fields(log.headless);
  fields(log.dspl);
  fields(log.color);
  fields(log.trk_ident);
  fields(log.chosen);
  fields(log.damaged);
}

template <typename Fields, typename P>
void VisitTrackPoint(Fields& fields, P& point) {
  fields(point.lat_deg);
  fields(point.lon_deg);
  fields(point.time);
  fields(point.alt_m);
  fields(point.dpth_m);
  fields(point.new_trk);
  fields(point.damaged);
}

template <typename Fields, typename R>
void VisitFields(Fields& fields, R& record) {
  using Record = std::remove_const_t<R>;
  if constexpr (std::is_same_v<Record, Waypoint>) VisitWaypoint(fields, record);
  if constexpr (std::is_same_v<Record, Route>) VisitRoute(fields, record);
  if constexpr (std::is_same_v<Record, RoutePoint>) VisitRoutePoint(fields, record);
  if constexpr (std::is_same_v<Record, TrackLog>) VisitLog(fields, record);
  if constexpr (std::is_same_v<Record, TrackPoint>) VisitTrackPoint(fields, record);
}

// ---- Lines

template <typename Record>
void AppendLine(std::string& out, char tag, const Record& record) {
  out += tag;
  FieldWriter fields(out);
  VisitFields(fields, record);
  out += '\n';
}

/// Reads a record behind its tag and hands it to the data set; false where it is none, or one too many.
template <typename Record>
bool ReadLine(std::string_view line, DataSet& data) {
  Record record;
  FieldReader fields(line.substr(1));
  VisitFields(fields, record);
  if (!fields.Good()) return false;
  if constexpr (std::is_same_v<Record, Route> || std::is_same_v<Record, TrackLog>) {
    return data.Begin(std::move(record)) == AddResult::Stored;
  } else {
    return data.Add(std::move(record)) == AddResult::Stored;
  }
}

bool TakeLine(std::string_view line, DataSet& data) {
  switch (line.empty() ? '\0' : line.front()) {
    case 'W':
      return ReadLine<Waypoint>(line, data);
    case 'R':
      return ReadLine<Route>(line, data);
    case 'P':
      return ReadLine<RoutePoint>(line, data);
    case 'L':
      return ReadLine<TrackLog>(line, data);
    case 'T':
      return ReadLine<TrackPoint>(line, data);
    default:
      return false;
  }
}

/// The lines between the first and the last one; nothing where the last one does not fit them.
std::optional<std::string_view> LinesOf(std::string_view text) {
  std::string_view lines = text;
  const std::size_t last = text.substr(0, text.empty() ? 0 : text.size() - 1).rfind('\n');
  if (last == std::string_view::npos || !Take(lines, FirstLine)) return std::nullopt;
  lines = text.substr(FirstLine.size(), last + 1 - FirstLine.size());
  if (SealedPlainForm(lines) != text) return std::nullopt;
  return lines;
}

}  // namespace

std::string SealedPlainForm(std::string_view lines) {
  std::string text(FirstLine);
  text += lines;
  const std::uint64_t sum = ChecksumOf(text);
  text += EndTag;
  for (int shift = 56; shift >= 0; shift -= 8)
    AppendHex(text, static_cast<std::uint8_t>(sum >> static_cast<unsigned>(shift)));
  return text += '\n';
}

std::string PlainFormOf(const DataSet& data) {
  std::string lines;
  for (const Waypoint& waypoint : data.Waypoints())
    AppendLine(lines, 'W', waypoint);
  for (const Route& route : data.Routes()) {
    AppendLine(lines, 'R', route);
    for (const RoutePoint& point : route.points)
      AppendLine(lines, 'P', point);
  }
  for (const TrackLog& log : data.Logs()) {
    AppendLine(lines, 'L', log);
    for (const TrackPoint& point : log.points)
      AppendLine(lines, 'T', point);
  }
  return SealedPlainForm(lines);
}

std::optional<DataSet> ReadPlainForm(std::string_view text) {
  const std::optional<std::string_view> whole = LinesOf(text);
  if (!whole) return std::nullopt;
  DataSet data;
  std::string_view lines = *whole;
  while (!lines.empty()) {
    if (!TakeLine(TakeUpTo(lines, '\n'), data)) return std::nullopt;
  }
  return data;
}

}  // namespace walrim
