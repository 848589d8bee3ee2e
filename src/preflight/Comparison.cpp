#include "preflight/Comparison.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "device/types/Wire.h"
#include "preflight/Proposals.h"
#include "preflight/Sending.h"
#include "records/Symbols.h"
#include "text/Cp932.h"
#include "text/Phrase.h"
#include "text/Scan.h"

namespace walrim {

namespace {

/// A text as it would be if nothing were lost: characters of the same look are one in code page 932.
std::string Sendable(std::string_view text) {
  const auto bytes = EncodeCp932(text);
  return Bare(bytes ? DecodeCp932(*bytes) : std::string(text));
}

/// No receiver has room for fewer letters of a name.
constexpr std::size_t ShortestRoom = 6;

/// Whether a name may have become from another one that lost its end, and what is neither letter nor digit.
bool MadeOf(std::string_view name, std::string_view other, std::size_t room) {
  if (name.empty()) return other.empty();
  std::size_t used = 0;
  for (; used < other.size() && !name.empty(); ++used) {
    if (UpperCase(other[used]) == UpperCase(name.front())) {
      name.remove_prefix(1);
    } else if (IsLetter(other[used]) || IsDigit(other[used])) {
      return false;
    }
  }
  if (!name.empty()) return false;
  while (used < other.size() && !IsLetter(other[used]) && !IsDigit(other[used]))
    ++used;
  return used == other.size() || Cp932Width(other.substr(0, used)) >= room;
}

bool IsDefaultColour(const Waypoint& waypoint) {
  return waypoint.color == (waypoint.type == WaypointType::D107 ? 0 : DefaultLargeColour);
}

bool HasColour(WaypointType type) {
  switch (type) {
    case WaypointType::D103:
    case WaypointType::D104:
      return false;
    case WaypointType::D107:
    case WaypointType::D108:
      return true;
  }
  return false;
}

float ProximityOf(const Waypoint& waypoint) {
  const float distance = waypoint.type == WaypointType::D108 ? waypoint.dist_m : waypoint.dst_m.value_or(0);
  return distance > 0 && distance < UnknownMetres ? distance : 0;
}

bool SameDetails(const WaypointDetails& a, const WaypointDetails& b) {
  return std::ranges::all_of(std::array{&WaypointDetails::state, &WaypointDetails::country, &WaypointDetails::facility,
                                        &WaypointDetails::city, &WaypointDetails::addr, &WaypointDetails::cross_road},
                             [&](std::string WaypointDetails::*text) { return Sendable(a.*text) == Bare(b.*text); });
}

bool Lost(const std::optional<float>& was, const std::optional<float>& is) {
  return was && (!is || *was != *is);
}

/// "旗（flag symbol）", or the number of a symbol without a name.
std::string SymbolText(const Waypoint& waypoint, WaypointType type) {
  const int code = waypoint.smbl.value_or(0);
  const std::string_view name = NameOf(SymbolNames(type), code);
  if (name.empty()) return std::to_string(code);
  const std::string shown = Phrase(JapaneseSymbolName(type, code));
  return shown == name ? shown : Phrase("%1（%2）", shown, name);
}

/// A type that has the symbol of a record among its own.
WaypointType TypeOfSymbol(const Waypoint& waypoint) {
  return HasSmallSymbol(waypoint) ? WaypointType::D103 : WaypointType::D108;
}

/// The points of all logs in their order, or in the opposite one, found by their place.
class HeldPoints {
 public:
  HeldPoints(const DataSet& held, bool backwards) {
    for (const TrackLog& log : held.Logs()) {
      for (const TrackPoint& point : log.points)
        points_.push_back({&point, &log});
    }
    if (backwards) std::ranges::reverse(points_);
    for (std::size_t i = 0; i < points_.size(); ++i)
      indices_[KeyOf(*points_[i].point)].push_back(i);
  }

  struct Found {
    const TrackPoint* point = nullptr;
    const TrackLog* log = nullptr;
  };
  /// The next point of the same place behind the one found last; nothing where there is none.
  [[nodiscard]] Found Next(const TrackPoint& point) {
    const auto of_place = indices_.find(KeyOf(point));
    if (of_place == indices_.end()) return {};
    const auto next = std::ranges::lower_bound(of_place->second, next_);
    if (next == of_place->second.end()) return {};
    next_ = *next + 1;
    return points_[*next];
  }

 private:
  static std::uint64_t KeyOf(const TrackPoint& point) {
    const auto semicircles = [](double degrees) {
      return static_cast<std::uint64_t>(std::llround(degrees * 2147483648.0 / 180.0)) & 0xFFFFFFFFU;
    };
    return semicircles(point.lat_deg) << 32U | semicircles(point.lon_deg);
  }

  std::vector<Found> points_;
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> indices_;
  std::size_t next_ = 0;
};

/// Where a difference is told.
struct Where {
  DataKind kind;
  std::size_t record;
  std::optional<std::size_t> point;
};

class Comparer {
 public:
  Comparer(const DataSet& sent, const DataSet& held, const DataSet& before, const Recipient& to)
      : sent_(sent), held_(held), before_(before), to_(to) {}

  [[nodiscard]] std::vector<Difference> Of(DataKind kind) {
    once_.clear();
    switch (kind) {
      case DataKind::Waypoint:
        CompareWaypoints();
        break;
      case DataKind::Route:
        CompareRoutes();
        break;
      case DataKind::TrackLog:
        CompareLogs();
        break;
    }
    for (const auto& [loss, difference] : once_)
      differences_.push_back(difference);
    return std::move(differences_);
  }

 private:
  using Differences = std::vector<Difference>;

  void TellOnce(Where where, Loss loss) {
    const auto [told, first] = once_.try_emplace(loss, Difference{where.kind, loss, where.record, {}, 0, {}, {}});
    ++told->second.count;
  }

  void CompareText(Where where, Loss loss, std::string_view was, std::string_view is, Differences& found) const {
    const std::string sent = Sendable(was);
    const std::string held = Bare(is);
    if (!SameWord(sent, held)) found.push_back({where.kind, loss, where.record, where.point, 1, sent, held});
  }

  /// What a record lost by itself. as_sent is what the type makes of it.
  [[nodiscard]] Differences OfRecord(Where where, const Waypoint& was, const Waypoint& is) const {
    Differences found;
    CompareText(where, Loss::Name, was.ident, is.ident, found);
    CompareText(where, Loss::Comment, was.cmnt, is.cmnt, found);
    Waypoint plain = was;
    plain.color = DefaultLargeColour;
    const Sent<Waypoint> as_sent = Send(plain, to_);
    if (as_sent.replaced || as_sent.record.smbl != is.smbl) {
      found.push_back({where.kind, Loss::Picture, where.record, where.point, 1, SymbolText(was, TypeOfSymbol(was)),
                       SymbolText(is, to_.types.waypoint)});
    }
    return found;
  }

  void TellWhatGoesWithTheType(Where where, const Waypoint& was, const Waypoint& is) {
    const auto capitals = [](std::string_view text, std::string_view other) {
      const std::string sent = Sendable(text);
      const std::string held = Bare(other);
      return sent != held && SameWord(sent, held);
    };
    if (capitals(was.ident, is.ident) || capitals(was.cmnt, is.cmnt)) TellOnce(where, Loss::Capitals);
    const bool has_colour = HasColour(to_.types.waypoint);
    if (!IsDefaultColour(was) && (!has_colour || was.color != is.color)) TellOnce(where, Loss::Colour);
    if (Lost(was.alt_m, is.alt_m)) TellOnce(where, Loss::Height);
    if (Lost(was.dpth_m, is.dpth_m)) TellOnce(where, Loss::Depth);
    if (ProximityOf(was) != 0 && ProximityOf(was) != ProximityOf(is)) TellOnce(where, Loss::Distance);
    if (!SameDetails(*was.details, *is.details)) TellOnce(where, Loss::Details);
  }

  void Take(Differences found) {
    differences_.insert(differences_.end(), std::make_move_iterator(found.begin()),
                        std::make_move_iterator(found.end()));
  }

  [[nodiscard]] bool MayBe(const Sent<Waypoint>& sent, const Waypoint& was, const Waypoint& held) const {
    return sent.sending != Sending::Unsendable && SamePlace(sent.record, held) &&
           MadeOf(Bare(held.ident), Sendable(was.ident), to_.limits ? to_.limits->name : ShortestRoom);
  }

  /// Who became each of the held records.
  using Users = std::vector<std::optional<std::size_t>>;

  /// The held record that a waypoint became, under its own name or under another one: one that no later waypoint
  /// became, or one that it differs from in nothing. Of several the one that differs least.
  [[nodiscard]] std::optional<std::size_t> FindWaypoint(std::size_t record, const Users& users, bool own_name) const {
    const Waypoint& was = sent_.Waypoints()[record];
    const Sent<Waypoint> sent = Send(was, to_);
    std::optional<std::size_t> found;
    std::size_t least = 0;
    for (std::size_t i = 0; i < held_.Waypoints().size(); ++i) {
      const Waypoint& held = held_.Waypoints()[i];
      if (!MayBe(sent, was, held) || SameWord(Bare(held.ident), Sendable(was.ident)) != own_name) continue;
      const std::size_t differs = OfRecord({}, was, held).size();
      if (users[i] && !(sent_.Waypoints()[*users[i]] == was) && differs > 0) continue;
      if (found && differs >= least) continue;
      found = i;
      least = differs;
    }
    return found;
  }

  void CompareWaypoints() {
    const std::size_t count = sent_.Waypoints().size();
    Users users(held_.Waypoints().size());
    std::vector<std::optional<std::size_t>> became(count);
    // What comes last is what stays.
    for (const bool own_name : {true, false}) {
      for (std::size_t i = count; i-- > 0;) {
        if (became[i]) continue;
        became[i] = FindWaypoint(i, users, own_name);
        if (became[i]) users[*became[i]] = i;
      }
    }
    for (std::size_t i = 0; i < count; ++i) {
      const Waypoint& was = sent_.Waypoints()[i];
      const Where where{DataKind::Waypoint, i, {}};
      if (!became[i]) {
        differences_.push_back({where.kind, Loss::Missing, i, {}, 1, Sendable(was.ident), {}});
        continue;
      }
      const Waypoint& is = held_.Waypoints()[*became[i]];
      Take(OfRecord(where, was, is));
      TellWhatGoesWithTheType(where, was, is);
    }
    TellOverwrittenWaypoints();
  }

  /// A name that the receiver held at one place, and that is at another one now.
  void TellOverwrittenWaypoints() {
    std::map<std::string, const Waypoint*> now;
    for (const Waypoint& held : held_.Waypoints())
      now.try_emplace(HeldName(held.ident), &held);
    std::map<std::string, std::size_t> last_of_name;
    for (std::size_t i = 0; i < sent_.Waypoints().size(); ++i)
      last_of_name[KeptName(Send(sent_.Waypoints()[i], to_).record.ident, to_)] = i;
    for (const Waypoint& before : before_.Waypoints()) {
      const std::string name = HeldName(before.ident);
      const auto is = now.find(name);
      const auto by = last_of_name.find(name);
      if (is == now.end() || by == last_of_name.end() || SamePlace(*is->second, before)) continue;
      differences_.push_back(
          {DataKind::Waypoint, Loss::Overwrites, by->second, {}, 1, Bare(sent_.Waypoints()[by->second].ident), name});
    }
  }

  [[nodiscard]] std::vector<Sent<Waypoint>> SentPoints(const Route& route) const {
    std::vector<Sent<Waypoint>> sent;
    for (const RoutePoint& point : route.points)
      sent.push_back(Send(point.waypoint, to_));
    return sent;
  }

  /// The held points that a route's points became, in their order; nothing where one is not there.
  [[nodiscard]] std::vector<const Waypoint*> PointsOf(const Route& was, const std::vector<Sent<Waypoint>>& sent,
                                                      const Route& is) const {
    std::vector<const Waypoint*> became;
    std::size_t next = 0;
    for (std::size_t p = 0; p < sent.size(); ++p) {
      std::size_t i = next;
      while (i < is.points.size() && !MayBe(sent[p], was.points[p].waypoint, is.points[i].waypoint))
        ++i;
      const bool found = i < is.points.size();
      became.push_back(found ? &is.points[i].waypoint : nullptr);
      if (found) next = i + 1;
    }
    return became;
  }

  [[nodiscard]] bool SameHeader(const Route& was, const Route& is) const {
    const std::string sent = Sendable(was.cmnt);
    const std::string held = Bare(is.cmnt);
    const std::string_view cut = CutToCp932Width(sent, RouteNameWidth(to_.types.route_header));
    if (SameWord(held, TrimBlanks(cut))) return to_.types.route_header == RouteHeaderType::D202 || was.nmbr == is.nmbr;
    // Some receivers lose the name and keep the number.
    return to_.types.route_header == RouteHeaderType::D201 && held.empty() && was.nmbr == is.nmbr;
  }

  [[nodiscard]] std::optional<std::size_t> FindRoute(const Route& was, const std::vector<bool>& used) const {
    const std::vector<Sent<Waypoint>> sent = SentPoints(was);
    std::optional<std::size_t> found;
    std::size_t best = 0;
    for (std::size_t i = 0; i < held_.Routes().size(); ++i) {
      const Route& held = held_.Routes()[i];
      const std::vector<const Waypoint*> points = PointsOf(was, sent, held);
      const auto there = points.size() - static_cast<std::size_t>(std::ranges::count(points, nullptr));
      const bool same_header = SameHeader(was, held);
      const bool whole = there == points.size() && there > 0 && held.points.size() == there &&
                         !Bare(held.cmnt).empty() && SameWord(Bare(held.cmnt), Sendable(was.cmnt));
      const bool eligible = whole || (same_header && (points.empty() || there > 0));
      const std::size_t score = 2 * there + (same_header ? 1 : 0);
      if (!eligible || score <= best || (used[i] && !(same_header && there == points.size()))) continue;
      best = score;
      found = i;
    }
    return found;
  }

  void CompareRoutes() {
    const std::size_t count = sent_.Routes().size();
    std::vector<bool> used(held_.Routes().size());
    std::vector<std::optional<std::size_t>> became(count);
    for (std::size_t i = count; i-- > 0;) {
      became[i] = FindRoute(sent_.Routes()[i], used);
      if (became[i]) used[*became[i]] = true;
    }
    for (std::size_t i = 0; i < count; ++i) {
      if (became[i]) {
        CompareRoute(i, held_.Routes()[*became[i]]);
      } else {
        differences_.push_back({DataKind::Route, Loss::Missing, i, {}, 1, Sendable(sent_.Routes()[i].cmnt), {}});
      }
    }
    TellOverwrittenRoutes();
    TellDoubtfulNames(became);
  }

  [[nodiscard]] bool IsD201() const { return to_.types.route_header == RouteHeaderType::D201; }

  /// Of two routes that a receiver holds, or would.
  [[nodiscard]] bool SameRoute(const Route& a, const Route& b) const {
    return IsD201() ? a.nmbr == b.nmbr : a.cmnt == b.cmnt;
  }

  [[nodiscard]] static bool SamePoints(const Route& a, const Route& b) {
    return std::ranges::equal(a.points, b.points, [](const RoutePoint& point, const RoutePoint& other) {
      return SamePlace(point.waypoint, other.waypoint);
    });
  }

  /// A number or a name under which the receiver held another way.
  void TellOverwrittenRoutes() {
    for (const Route& before : before_.Routes()) {
      const auto is = std::ranges::find_if(held_.Routes(), [&](const Route& held) { return SameRoute(held, before); });
      if (is == held_.Routes().end() || SamePoints(*is, before)) continue;
      for (std::size_t r = sent_.Routes().size(); r-- > 0;) {
        if (!SameRoute(SendHeader(sent_.Routes()[r], to_, 0).record, before)) continue;
        differences_.push_back({DataKind::Route,
                                Loss::Overwrites,
                                r,
                                {},
                                1,
                                Bare(sent_.Routes()[r].cmnt),
                                IsD201() ? std::to_string(before.nmbr) : Bare(before.cmnt)});
        break;
      }
    }
  }

  /// Names that arrived as they were, and that not every receiver copes with.
  void TellDoubtfulNames(const std::vector<std::optional<std::size_t>>& became) {
    std::map<std::string, const Waypoint*> places;
    for (const Waypoint& held : held_.Waypoints())
      places.try_emplace(HeldName(held.ident), &held);
    std::map<std::string, std::size_t> names;
    for (std::size_t r = 0; r < became.size(); ++r) {
      if (!became[r]) continue;
      if (IsD201()) TellDoubtfulRouteName(r, *became[r], names);
      TellNamesOfOtherPlaces(r, held_.Routes()[*became[r]], places);
    }
  }

  void TellDoubtfulRouteName(std::size_t r, std::size_t held, std::map<std::string, std::size_t>& names) {
    const std::string name = Bare(held_.Routes()[held].cmnt);
    const auto tell = [&](Loss loss) { differences_.push_back({DataKind::Route, loss, r, {}, 1, name, {}}); };
    if (name.empty() && Bare(sent_.Routes()[r].cmnt).empty()) tell(Loss::NoRouteName);
    if (!name.empty() && names.try_emplace(name, held).first->second != held) tell(Loss::SharedRouteName);
  }

  void TellNamesOfOtherPlaces(std::size_t r, const Route& is, std::map<std::string, const Waypoint*>& places) {
    const Route& was = sent_.Routes()[r];
    const std::vector<const Waypoint*> points = PointsOf(was, SentPoints(was), is);
    for (std::size_t p = 0; p < points.size(); ++p) {
      if (points[p] == nullptr) continue;
      const std::string name = HeldName(points[p]->ident);
      const bool elsewhere = !SamePlace(*places.try_emplace(name, points[p]).first->second, *points[p]);
      if (!elsewhere || !SameWord(name, Sendable(was.points[p].waypoint.ident))) continue;
      differences_.push_back({DataKind::Route, Loss::SharedName, r, p, 1, name, {}});
    }
  }

  void CompareRoute(std::size_t record, const Route& is) {
    const Route& was = sent_.Routes()[record];
    const Where where{DataKind::Route, record, {}};
    CompareText(where, Loss::Comment, was.cmnt, is.cmnt, differences_);
    if (Sendable(was.cmnt) != Bare(is.cmnt) && SameWord(Sendable(was.cmnt), Bare(is.cmnt))) {
      TellOnce(where, Loss::Capitals);
    }
    if (to_.types.route_header == RouteHeaderType::D201 && was.nmbr != is.nmbr) {
      differences_.push_back(
          {where.kind, Loss::Number, record, {}, 1, std::to_string(was.nmbr), std::to_string(is.nmbr)});
    }
    const std::vector<const Waypoint*> points = PointsOf(was, SentPoints(was), is);
    const auto gone = static_cast<std::size_t>(std::ranges::count(points, nullptr));
    if (gone > 0) {
      differences_.push_back({where.kind,
                              Loss::Points,
                              record,
                              {},
                              1,
                              std::to_string(points.size()),
                              std::to_string(points.size() - gone)});
    }
    for (std::size_t p = 0; p < points.size(); ++p) {
      if (points[p] == nullptr) continue;
      const Where point{DataKind::Route, record, p};
      Take(OfRecord(point, was.points[p].waypoint, *points[p]));
      TellWhatGoesWithTheType(point, was.points[p].waypoint, *points[p]);
    }
  }

  /// A log that is sent again stands behind the one that was there: what is found from the end on is taken where it is
  /// no less.
  void CompareLogs() {
    const LogsFound forwards = FindLogs(false);
    const LogsFound backwards = FindLogs(true);
    const LogsFound& best = forwards.BetterThan(backwards) ? forwards : backwards;
    for (std::size_t i = 0; i < best.logs.size(); ++i)
      CompareLog(i, best.logs[i]);
  }

  /// The held point that each point of a log became; none where it is not there.
  using LogFound = std::vector<HeldPoints::Found>;
  struct LogsFound {
    std::vector<LogFound> logs;
    std::size_t there = 0;
    std::size_t changed = 0;  ///< of those

    [[nodiscard]] bool BetterThan(const LogsFound& other) const {
      return there != other.there ? there > other.there : changed < other.changed;
    }
  };

  [[nodiscard]] LogsFound FindLogs(bool backwards) const {
    HeldPoints held(held_, backwards);
    LogsFound found;
    for (const TrackLog& log : sent_.Logs())
      found.logs.emplace_back(log.points.size());
    for (std::size_t l = 0; l < found.logs.size(); ++l)
      FindLog(backwards ? found.logs.size() - 1 - l : l, backwards, held, found);
    return found;
  }

  void FindLog(std::size_t log, bool backwards, HeldPoints& held, LogsFound& found) const {
    const std::vector<TrackPoint>& points = sent_.Logs()[log].points;
    for (std::size_t p = 0; p < points.size(); ++p) {
      const std::size_t at = backwards ? points.size() - 1 - p : p;
      const Sent<TrackPoint> sent = Send(points[at], to_);
      if (sent.sending == Sending::Unsendable) continue;
      const HeldPoints::Found became = held.Next(sent.record);
      found.logs[log][at] = became;
      if (became.point == nullptr) continue;
      ++found.there;
      if (became.point->time != points[at].time || became.point->alt_m != points[at].alt_m) ++found.changed;
    }
  }

  void CompareLog(std::size_t record, const LogFound& became) {
    const TrackLog& was = sent_.Logs()[record];
    const Where where{DataKind::TrackLog, record, {}};
    const TrackLog* is = nullptr;
    std::size_t there = 0;
    for (std::size_t p = 0; p < became.size(); ++p) {
      if (became[p].point == nullptr) continue;
      ++there;
      if (is == nullptr) is = became[p].log;
      ComparePoint(where, was.points[p], *became[p].point);
    }
    const std::size_t count = was.points.size();
    if (there < count) {
      differences_.push_back({where.kind,
                              there == 0 ? Loss::Missing : Loss::Points,
                              record,
                              {},
                              1,
                              std::to_string(count),
                              std::to_string(there)});
    }
    const bool name_lost = is == nullptr ? count == 0 : is->trk_ident != was.trk_ident;
    if (name_lost && !was.trk_ident.empty()) TellOnce(where, Loss::LogName);
  }

  void ComparePoint(Where where, const TrackPoint& was, const TrackPoint& is) {
    if (Lost(was.alt_m, is.alt_m)) TellOnce(where, Loss::Height);
    if (Lost(was.dpth_m, is.dpth_m)) TellOnce(where, Loss::Depth);
    if (was.time && was.time != is.time) TellOnce(where, Loss::Time);
  }

  const DataSet& sent_;
  const DataSet& held_;
  const DataSet& before_;
  const Recipient& to_;
  std::vector<Difference> differences_;
  std::map<Loss, Difference> once_;
};

}  // namespace

bool ToldOnce(Loss loss) {
  switch (loss) {
    case Loss::Missing:
    case Loss::Points:
    case Loss::Name:
    case Loss::Comment:
    case Loss::Picture:
    case Loss::Number:
    case Loss::Overwrites:
    case Loss::SharedName:
    case Loss::SharedRouteName:
    case Loss::NoRouteName:
      return false;
    case Loss::Capitals:
    case Loss::Colour:
    case Loss::Height:
    case Loss::Depth:
    case Loss::Distance:
    case Loss::Details:
    case Loss::LogName:
    case Loss::Time:
      return true;
  }
  return false;
}

bool SamePlace(double lat_deg, double lon_deg, double other_lat_deg, double other_lon_deg) {
  constexpr double Tolerance_deg = 2e-7;  // two semicircles
  const double gap_deg = std::abs(lon_deg - other_lon_deg);
  return std::abs(lat_deg - other_lat_deg) <= Tolerance_deg &&
         (gap_deg <= Tolerance_deg || std::abs(gap_deg - 360) <= Tolerance_deg);
}

std::vector<Difference> Compare(const DataSet& sent, const DataKinds& kinds, const DataSet& held, const DataSet& before,
                                const Recipient& to) {
  std::vector<Difference> differences;
  for (const DataKind kind : AllDataKinds) {
    if (!kinds[IndexOf(kind)]) continue;
    for (Difference& difference : Comparer(sent, held, before, to).Of(kind))
      differences.push_back(std::move(difference));
  }
  return differences;
}

}  // namespace walrim
