#include "formats/GpxReader.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <optional>
#include <pugixml.hpp>
#include <span>
#include <utility>
#include <vector>

#include "formats/GpxColumns.h"
#include "formats/GpxTexts.h"
#include "formats/Messages.h"
#include "formats/RecordIntake.h"
#include "formats/XmlSyntax.h"
#include "records/Symbols.h"
#include "text/Numbers.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

using namespace format_messages;

/// Whose an element is.
enum class Owner { Gpx, Garmin, Walrim, Other };

struct ElementName {
  Owner owner;
  std::string_view local;
};

/// An element whose text is one of a record's.
struct TextElement {
  std::string_view name;
  std::string GpxTexts::*text;
};
constexpr std::array GpxElements{TextElement{"ele", &GpxTexts::ele},      TextElement{"time", &GpxTexts::time},
                                 TextElement{"name", &GpxTexts::name},    TextElement{"cmt", &GpxTexts::cmt},
                                 TextElement{"desc", &GpxTexts::desc},    TextElement{"sym", &GpxTexts::sym},
                                 TextElement{"number", &GpxTexts::number}};
constexpr std::array GarminElements{TextElement{"Proximity", &GpxTexts::proximity},
                                    TextElement{"Depth", &GpxTexts::depth},
                                    TextElement{"DisplayMode", &GpxTexts::display_mode},
                                    TextElement{"StreetAddress", &GpxTexts::street},
                                    TextElement{"City", &GpxTexts::city},
                                    TextElement{"State", &GpxTexts::state},
                                    TextElement{"Country", &GpxTexts::country},
                                    TextElement{"Subclass", &GpxTexts::subclass},
                                    TextElement{"DisplayColor", &GpxTexts::color}};
constexpr std::array<std::string_view, 5> GarminContainers{"WaypointExtension", "RoutePointExtension", "TrackExtension",
                                                           "TrackPointExtension", "Address"};

/// Names, each once, as far as a message shows them.
class NameList {
 public:
  void Add(std::string_view name) {
    constexpr std::size_t MostNames = 20;
    if (names_.size() > MostNames || std::find(names_.begin(), names_.end(), name) != names_.end()) return;
    names_.emplace_back(name);
    const std::string shown = WithoutControlCharacters(name);
    joined_.append(joined_.empty() ? "" : "，").append(names_.size() > MostNames ? "…" : shown);
  }
  /// Empty without any.
  [[nodiscard]] const std::string& Joined() const { return joined_; }

 private:
  std::vector<std::string> names_;
  std::string joined_;
};

/// Where a part of a text begins.
std::size_t OffsetIn(std::string_view text, std::string_view part) {
  return static_cast<std::size_t>(part.data() - text.data());
}

/// The tag of an element as an element without contents.
std::string EmptyElement(std::string_view tag) {
  return std::string(tag.substr(0, tag.size() - (tag.ends_with("/>") ? 2 : 1))) + "/>";
}

/// The line of an offset in a text, from 1.
int LineAt(std::string_view text, std::size_t offset) {
  return static_cast<int>(std::ranges::count(text.substr(0, offset), '\n')) + 1;
}

/// Line and character of the line that stand at an offset, from 1.
std::string PlaceText(const XmlProblem& problem, std::string_view text) {
  const std::string_view before = text.substr(0, problem.offset);
  const std::string_view line = before.substr(before.rfind('\n') + 1);
  const auto is_character = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
  return AtPlace(problem.why, LineAt(text, problem.offset),
                 static_cast<int>(std::ranges::count_if(line, is_character)) + 1);
}

ImportResult Refused(std::string why) {
  ImportResult result;
  result.refusal = std::move(why);
  return result;
}

/// A tree of one element of a text. Each of the root's elements has one of its own, which stays small.
class XmlTree {
 public:
  /// The problem, at an offset in the element, where it is not well-formed.
  [[nodiscard]] std::optional<XmlProblem> Build(std::string_view element) {
    constexpr unsigned Options = pugi::parse_default | pugi::parse_embed_pcdata;
    const auto parsed = document_.load_buffer(element.data(), element.size(), Options, pugi::encoding_utf8);
    if (parsed) return std::nullopt;
    // It stops somewhere in the tag that it cannot use.
    return XmlProblem{NotWellFormed, element.rfind('<', static_cast<std::size_t>(parsed.offset))};
  }
  [[nodiscard]] pugi::xml_node Root() const { return document_.document_element(); }

 private:
  pugi::xml_document document_;
};

class GpxReader {
 public:
  /// root is the text's, without its elements.
  GpxReader(std::string_view text, const XmlFindings& findings, const pugi::xml_node& root, DataSet& data)
      : text_(text),
        findings_(findings),
        root_(root),
        namespace_(DeclaredAt(root, PrefixOf(root.name())).value_or(PrefixOf(root.name()))),
        data_(data),
        intake_(data) {}

  /// The lines of the account are offsets in the text. One that is refused has brought something all the same.
  ImportResult Run() {
    for (const std::string_view element : findings_.elements) {
      element_offset_ = OffsetIn(text_, element);
      XmlTree tree;
      if (const auto problem = tree.Build(element)) {
        return Refused(PlaceText({problem->why, element_offset_ + problem->offset}, text_));
      }
      const ElementName name = NameOf(tree.Root());
      if (name.owner != Owner::Gpx) continue;
      if (name.local == "wpt") ReadWaypoint(tree.Root());
      if (name.local == "rte") ReadRoute(tree.Root());
      if (name.local == "trk") ReadLog(tree.Root());
    }
    return Told();
  }

 private:
  // ---- Names

  static std::string_view PrefixOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
  }

  /// Whether an attribute says what a prefix stands for.
  static bool Declares(std::string_view attribute, std::string_view prefix) {
    if (!Take(attribute, "xmlns")) return false;
    return prefix.empty() ? attribute.empty() : Take(attribute, ':') && attribute == prefix;
  }

  /// What an element says that a prefix stands for.
  static std::optional<std::string_view> DeclaredAt(const pugi::xml_node& node, std::string_view prefix) {
    for (const pugi::xml_attribute& attribute : node.attributes()) {
      if (Declares(attribute.name(), prefix)) return attribute.value();
    }
    return std::nullopt;
  }

  /// What a prefix stands for, by the innermost element that says it; one that none says stands for itself.
  [[nodiscard]] std::string_view NamespaceOf(pugi::xml_node node, std::string_view prefix) const {
    for (; node; node = node.parent()) {
      if (const auto declared = DeclaredAt(node, prefix)) return *declared;
    }
    return DeclaredAt(root_, prefix).value_or(prefix);
  }

  [[nodiscard]] Owner OwnerOf(std::string_view name_space) const {
    if (name_space == namespace_) return Owner::Gpx;
    if (name_space.starts_with(GpxxNamespace)) return Owner::Garmin;
    return name_space == WalrimNamespace ? Owner::Walrim : Owner::Other;
  }

  /// Whose a prefix is at an element. Where the root alone says it, it is looked for once.
  Owner OwnerAt(const pugi::xml_node& node, std::string_view prefix) {
    if (findings_.inner_namespaces) return OwnerOf(NamespaceOf(node, prefix));
    for (const auto& [known, owner] : prefixes_) {
      if (known == prefix) return owner;
    }
    return prefixes_.emplace_back(prefix, OwnerOf(NamespaceOf(root_, prefix))).second;
  }

  /// What is no element has no name.
  ElementName NameOf(const pugi::xml_node& node) {
    std::string_view name = node.name();
    if (name.empty()) return {Owner::Other, {}};
    const std::string_view prefix = PrefixOf(name);
    name.remove_prefix(prefix.empty() ? 0 : prefix.size() + 1);
    return {OwnerAt(node, prefix), name};
  }

  // ---- Texts

  /// The tree holds the first text of an element as its value.
  static void SetText(std::string& text, const pugi::xml_node& node) {
    text = node.value();
    for (pugi::xml_node part = node.first_child(); part; part = part.next_sibling()) {
      if (part.type() == pugi::node_pcdata || part.type() == pugi::node_cdata) text.append(part.value());
    }
  }

  template <std::size_t Count>
  void TakeText(const std::array<TextElement, Count>& elements, std::string_view name, const pugi::xml_node& node) {
    const auto element = std::ranges::find(elements, name, &TextElement::name);
    if (element == elements.end()) return;
    std::string& text = texts_.*element->text;
    // The first of several counts.
    if (text.empty()) SetText(text, node);
  }

  void Clear(std::span<const TextElement> elements) {
    for (const TextElement& element : elements)
      (texts_.*element.text).clear();
  }

  /// What a record's element holds, until the next one's is asked for; the program's own element, where there is one,
  /// goes to own.
  const GpxTexts& Collected(const pugi::xml_node& record, pugi::xml_node& own) {
    Clear(GpxElements);
    Clear(GarminElements);
    Collect(record, own);
    return texts_;
  }

  void Collect(const pugi::xml_node& element, pugi::xml_node& own) {
    for (pugi::xml_node node = element.first_child(); node; node = node.next_sibling()) {
      const ElementName name = NameOf(node);
      switch (name.owner) {
        case Owner::Gpx:
          if (name.local == "extensions") Collect(node, own);
          TakeText(GpxElements, name.local, node);
          break;
        case Owner::Garmin:
          if (std::ranges::find(GarminContainers, name.local) != GarminContainers.end()) Collect(node, own);
          TakeText(GarminElements, name.local, node);
          break;
        case Owner::Walrim:
          own = node;
          break;
        case Owner::Other:
          break;
      }
    }
  }

  template <typename Record>
  static void ReadOwn(const pugi::xml_node& own, Record& record) {
    if (!own) return;
    for (const pugi::xml_attribute& attribute : own.attributes())
      ReadColumnAttribute(record, attribute.name(), attribute.value());
  }

  // ---- Points

  /// What comes next is an element's.
  void At(const pugi::xml_node& node) {
    intake_.SetLine(static_cast<int>(element_offset_) + static_cast<int>(node.offset_debug()));
  }

  bool ReadPosition(const pugi::xml_node& node, GeoPoint& position) {
    const std::string_view lat = node.attribute("lat").value();
    const std::string_view lon = node.attribute("lon").value();
    const auto lat_deg = GpxNumber(lat);
    const auto lon_deg = GpxNumber(lon);
    position = {lat_deg.value_or(0), lon_deg.value_or(0), 0};
    if (lat_deg && lon_deg && OnGlobe(position)) return true;
    const bool there = !TrimSpace(lat).empty() && !TrimSpace(lon).empty();
    intake_.Skip(!there ? NoPosition : lat_deg && lon_deg ? PositionOutOfRange : BadAngle);
    return false;
  }

  template <typename Record>
  static void Place(Record& record, const GeoPoint& position) {
    record.lat_deg = position.latitude_deg;
    record.lon_deg = position.longitude_deg;
  }

  /// Keeps the name of a symbol that is not there as it is meant; the program's own element may have the number.
  void NoteSymbol(std::string_view name, const Waypoint& waypoint, const pugi::xml_node& own) {
    name = TrimSpace(name);
    if (name.empty() || name == GpxSymbolName(waypoint.smbl.value_or(0)) || own.attribute("smbl")) return;
    const auto symbol = SymbolOfGpxName(name);
    if (!symbol) unknown_symbols_.Add(name);
    if (symbol && !symbol->exact) nearest_symbols_.Add(name);
  }

  void ReadWaypoint(const pugi::xml_node& node) {
    At(node);
    ++point_number_;
    GeoPoint position;
    if (!ReadPosition(node, position)) return;
    pugi::xml_node own;
    const GpxTexts& texts = Collected(node, own);
    Waypoint waypoint = WaypointOf(texts, point_number_);
    Place(waypoint, position);
    NoteSymbol(texts.sym, waypoint, own);
    ReadOwn(own, waypoint);
    intake_.Store(std::move(waypoint));
  }

  // ---- Routes

  void NoteNumber(const pugi::xml_node& route) {
    for (pugi::xml_node child = route.first_child(); child; child = child.next_sibling()) {
      if (const ElementName name = NameOf(child); name.owner != Owner::Gpx || name.local != "number") continue;
      std::string text;
      SetText(text, child);
      if (const auto number = GpxRouteNumber(text)) used_numbers_.set(static_cast<std::size_t>(*number));
    }
  }

  /// The numbers that routes have, so that none without one gets the number of a later one. Few files need to know.
  void NoteRouteNumbers() {
    for (const Route& route : data_.Routes())
      used_numbers_.set(route.nmbr);
    for (const std::string_view element : findings_.elements) {
      XmlTree tree;
      if (tree.Build(element)) return;
      if (const ElementName name = NameOf(tree.Root()); name.owner == Owner::Gpx && name.local == "rte") {
        NoteNumber(tree.Root());
      }
    }
  }

  /// The next number that no route has, from 1; 0 where all are taken.
  std::uint8_t FreeNumber() {
    if (!std::exchange(numbers_noted_, true)) NoteRouteNumbers();
    std::size_t number = 1;
    while (number < used_numbers_.size() && used_numbers_.test(number))
      ++number;
    if (number == used_numbers_.size()) return 0;
    used_numbers_.set(number);
    return static_cast<std::uint8_t>(number);
  }

  void ReadRoute(const pugi::xml_node& node) {
    At(node);
    pugi::xml_node own;
    const GpxTexts& texts = Collected(node, own);
    Route route = RouteOf(texts);
    if (!GpxRouteNumber(texts.number)) route.nmbr = FreeNumber();
    ReadOwn(own, route);
    const auto count = LeadingInteger(own.attribute(RoutePointCountAttribute.data()).value(), 0, MaxRoutePoints);
    const auto most = std::max(static_cast<std::size_t>(count), MaxReceivedRoutePoints);
    intake_.Begin(route);
    ReadRoutePoints(node, route, most);
  }

  /// header is the route's, for what goes on in another one.
  void ReadRoutePoints(const pugi::xml_node& node, const Route& header, std::size_t most) {
    bool split = false;
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
      if (const ElementName name = NameOf(child); name.owner != Owner::Gpx || name.local != "rtept") continue;
      At(child);
      ++point_number_;
      if (!intake_.TakesRoutePoint()) continue;
      RoutePoint point;
      if (!ReadRoutePoint(child, point)) continue;
      if (data_.Routes().back().points.size() >= most) {
        split = true;
        if (!GoOnInAnotherRoute(header)) continue;
      }
      intake_.Store(std::move(point));
    }
    if (split) ++split_routes_;
  }

  /// Begins a route with the last point of the one before; false where there is no room for it.
  bool GoOnInAnotherRoute(Route header) {
    const RoutePoint last = data_.Routes().back().points.back();
    header.nmbr = FreeNumber();
    intake_.Begin(std::move(header));
    if (data_.NextRoutePoint() != AddResult::Stored) return false;
    intake_.Store(last);
    return true;
  }

  bool ReadRoutePoint(const pugi::xml_node& node, RoutePoint& point) {
    GeoPoint position;
    if (!ReadPosition(node, position)) return false;
    pugi::xml_node own;
    const GpxTexts& texts = Collected(node, own);
    point = {WaypointOf(texts, point_number_), LinkOf(texts)};
    Place(point.waypoint, position);
    NoteSymbol(texts.sym, point.waypoint, own);
    ReadOwn(own, point);
    return true;
  }

  // ---- Logs

  void ReadLog(const pugi::xml_node& node) {
    At(node);
    pugi::xml_node own;
    const GpxTexts& texts = Collected(node, own);
    TrackLog log = TrackLogOf(texts);
    ReadOwn(own, log);
    // A log without points begins only where the file says that it has none.
    bool begun = false;
    if (own.attribute(TrackPointCountAttribute.data())) {
      intake_.Begin(log);
      begun = true;
    }
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
      if (const ElementName name = NameOf(child); name.owner == Owner::Gpx && name.local == "trkseg") {
        ReadSegment(child, log, begun);
      }
    }
  }

  void ReadSegment(const pugi::xml_node& node, const TrackLog& log, bool& begun) {
    bool first = true;
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
      if (const ElementName name = NameOf(child); name.owner != Owner::Gpx || name.local != "trkpt") continue;
      At(child);
      TrackPoint point;
      if (!ReadTrackPoint(child, first, point)) continue;
      first = false;
      if (!std::exchange(begun, true)) intake_.Begin(log);
      if (intake_.TakesTrackPoint()) intake_.Store(point);
    }
  }

  bool ReadTrackPoint(const pugi::xml_node& node, bool first, TrackPoint& point) {
    GeoPoint position;
    if (!ReadPosition(node, position)) return false;
    pugi::xml_node own;
    const GpxTexts& texts = Collected(node, own);
    point = TrackPointOf(texts);
    Place(point, position);
    point.new_trk = first;
    ReadOwn(own, point);
    if (!point.time && !TrimSpace(texts.time).empty() && !IsGpxTime(texts.time)) {
      intake_.Account().unread_time.Add(intake_.Line());
    }
    return true;
  }

  ImportResult Told() {
    ImportResult& account = intake_.Account();
    if (!unknown_symbols_.Joined().empty()) account.messages.Add(UnknownSymbols(unknown_symbols_.Joined()));
    if (!nearest_symbols_.Joined().empty()) account.messages.Add(NearestSymbols(nearest_symbols_.Joined()));
    if (split_routes_ > 0) account.messages.Add(SplitRoutes(split_routes_));
    return account;
  }

  std::string_view text_;
  const XmlFindings& findings_;
  pugi::xml_node root_;
  std::string_view namespace_;                           ///< that of GPX in this file
  std::vector<std::pair<std::string, Owner>> prefixes_;  ///< the root's, as they are met
  std::size_t element_offset_ = 0;                       ///< of the present one of the root's
  DataSet& data_;
  RecordIntake intake_;
  GpxTexts texts_;        ///< of the present record
  int point_number_ = 0;  ///< of the last waypoint or route point in the file, from 1
  int split_routes_ = 0;
  std::bitset<256> used_numbers_;
  bool numbers_noted_ = false;
  NameList unknown_symbols_;
  NameList nearest_symbols_;
};

}  // namespace

bool IsGpx(std::string_view beginning) {
  return RootElement(beginning) == "gpx";
}

ImportResult ReadGpx(LineSource& lines, DataSet& data, const ReadSettings& /*settings*/) {
  std::string bytes = lines.RestBytes(MostGpxBytes);
  if (bytes.size() > MostGpxBytes) return Refused(std::string(TooLarge));
  const auto text = DecodeXml(std::move(bytes), lines.Encoding() == TextEncoding::Utf8);
  if (!text) return Refused(std::string(UnreadEncoding));
  const XmlFindings findings = CheckXml(*text);
  if (findings.problem) return Refused(PlaceText(*findings.problem, *text));
  XmlTree root;
  if (const auto problem = root.Build(EmptyElement(findings.root_tag))) {
    return Refused(PlaceText({problem->why, OffsetIn(*text, findings.root_tag)}, *text));
  }
  if (!IsGpx("<" + std::string(root.Root().name()))) return Refused(std::string(NoGpx));
  DataSet filled = data;
  ImportResult result = GpxReader(*text, findings, root.Root(), filled).Run();
  if (!result.refusal.empty()) return result;
  data = std::move(filled);
  for (LineCount* const lines_of : {&result.skipped, &result.unread_time}) {
    if (lines_of->count > 0) lines_of->first_line = LineAt(*text, static_cast<std::size_t>(lines_of->first_line));
  }
  return result;
}

}  // namespace walrim
