#include "preflight/Findings.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "preflight/Arrival.h"
#include "preflight/Sending.h"
#include "text/Scan.h"

namespace walrim {

namespace {

using Index = std::optional<std::size_t>;

/// What becomes of a route's header and of its points, one by one.
struct SentRoute {
  Sent<Route> header;
  std::vector<Sent<Waypoint>> points;
  Sending worst = Sending::Taken;
};

class Finder {
 public:
  Finder(const DataSet& data, const DataKinds& kinds, const DataSet& before, const Recipient& to,
         const NameLookup& lookup)
      : data_(data),
        kinds_(kinds),
        before_(before),
        to_(to),
        names_(ChooseShortNames(data, before, to, lookup)),
        numbers_(data) {
    for (const Route& held : before.Routes())
      numbers_.Keep(held.nmbr);
    SendAll();
  }

  [[nodiscard]] std::vector<UploadFinding> Find() {
    const DataSet after = HeldAfterUpload(data_, kinds_, before_, to_);
    for (const Difference& difference : Compare(data_, kinds_, after, before_, to_))
      findings_.push_back(Explained(difference));
    std::ranges::stable_sort(findings_, {}, [](const UploadFinding& finding) { return finding.difference.kind; });
    return std::move(findings_);
  }

 private:
  void SendAll() {
    for (const Waypoint& waypoint : data_.Waypoints())
      waypoints_.push_back(Send(waypoint, to_));
    for (const Route& route : data_.Routes()) {
      SentRoute sent{SendHeader(route, to_, 0), {}, Sending::Taken};
      sent.worst = sent.header.sending;
      for (const RoutePoint& point : route.points) {
        sent.points.push_back(Send(point.waypoint, to_));
        sent.worst = std::max({sent.worst, sent.points.back().sending, Send(*point.link, to_).sending});
      }
      routes_.push_back(std::move(sent));
    }
    for (const TrackLog& log : data_.Logs()) {
      Sending worst = SendHeader(log, to_).sending;
      for (const TrackPoint& point : log.points)
        worst = std::max(worst, Send(point, to_).sending);
      logs_.push_back(worst);
    }
  }

  [[nodiscard]] Sending SendingOf(DataKind kind, std::size_t record) const {
    switch (kind) {
      case DataKind::Waypoint:
        return waypoints_[record].sending;
      case DataKind::Route:
        return routes_[record].worst;
      case DataKind::TrackLog:
        break;
    }
    return logs_[record];
  }
  [[nodiscard]] std::size_t CountOf(DataKind kind) const {
    switch (kind) {
      case DataKind::Waypoint:
        return waypoints_.size();
      case DataKind::Route:
        return routes_.size();
      case DataKind::TrackLog:
        break;
    }
    return logs_.size();
  }
  /// The first record of a kind with a fate.
  [[nodiscard]] Index First(DataKind kind, Sending sending) const {
    for (std::size_t i = 0; i < CountOf(kind); ++i) {
      if (SendingOf(kind, i) == sending) return i;
    }
    return std::nullopt;
  }

  // ---- Causes

  /// The record by which one is not stored that is sent itself, where there is one: cause and index.
  [[nodiscard]] std::optional<std::pair<Cause, Index>> Hindered(DataKind kind, std::size_t record) const {
    const Sending own = SendingOf(kind, record);
    if (own == Sending::Refused) return std::pair(Cause::TooLong, Index());
    if (own == Sending::Unsendable) return std::pair(Cause::NotSendable, Index());
    if (const Index other = First(kind, Sending::Unsendable)) return std::pair(Cause::NotSendable, other);
    if (!to_.checked_link) return std::nullopt;
    if (const Index other = First(kind, Sending::Refused)) return std::pair(Cause::TooLong, other);
    for (const DataKind earlier : AllDataKinds) {
      if (earlier == kind) break;
      if (kinds_[IndexOf(earlier)] && First(earlier, Sending::Refused)) return std::pair(Cause::TooLong, Index());
    }
    return std::nullopt;
  }

  [[nodiscard]] UploadFinding Explained(const Difference& difference) {
    UploadFinding finding{difference, Cause::Type, {}, {}};
    if (ToldOnce(difference.loss)) return finding;
    const bool gone = difference.loss == Loss::Missing || difference.loss == Loss::Points;
    const auto hindered = gone ? Hindered(difference.kind, difference.record) : std::nullopt;
    if (hindered) {
      finding.cause = hindered->first;
      finding.other = hindered->second;
      ProposeCleaning(finding, finding.other.value_or(difference.record));
    } else if (gone) {
      ExplainGone(finding);
    }
    ProposeForNames(finding);
    return finding;
  }

  void ProposeForNames(UploadFinding& finding) {
    const Difference& difference = finding.difference;
    const bool of_waypoint = difference.kind == DataKind::Waypoint;
    switch (difference.loss) {
      case Loss::Name:
      case Loss::SharedName:
        return ProposeName(finding, difference.record, difference.point);
      case Loss::Overwrites:
        if (of_waypoint) return ProposeName(finding, difference.record, {});
        return ProposeOtherRoute(finding, difference.record);
      case Loss::SharedRouteName:
      case Loss::NoRouteName:
        return ProposeRouteName(finding, difference.record);
      case Loss::Missing:
      case Loss::Points:
      case Loss::Comment:
      case Loss::Picture:
      case Loss::Number:
      case Loss::Capitals:
      case Loss::Colour:
      case Loss::Height:
      case Loss::Depth:
      case Loss::Distance:
      case Loss::Details:
      case Loss::LogName:
      case Loss::Time:
        return;
    }
  }

  void ExplainGone(UploadFinding& finding) {
    finding.cause = Cause::NoRoom;
    switch (finding.difference.kind) {
      case DataKind::Waypoint:
        ExplainWaypoint(finding);
        break;
      case DataKind::Route:
        ExplainRoute(finding);
        break;
      case DataKind::TrackLog:
        ProposeShorterLogs(finding);
        break;
    }
  }

  void ExplainWaypoint(UploadFinding& finding) {
    const std::size_t record = finding.difference.record;
    const std::string name = KeptName(waypoints_[record].record.ident, to_);
    ProposeName(finding, record, {});
    if (to_.limits && name.empty()) {
      finding.cause = Cause::Letters;
      return;
    }
    for (std::size_t other = record + 1; other < waypoints_.size(); ++other) {
      if (KeptName(waypoints_[other].record.ident, to_) != name) continue;
      if (data_.Waypoints()[other] == data_.Waypoints()[record]) continue;
      finding.cause = Cause::Overwritten;
      finding.other = other;
      ProposeName(finding, other, {});
      return;
    }
  }

  [[nodiscard]] bool SameRoute(const Route& a, const Route& b) const {
    return to_.types.route_header == RouteHeaderType::D201 ? a.nmbr == b.nmbr : a.cmnt == b.cmnt;
  }

  void ExplainRoute(UploadFinding& finding) {
    const std::size_t record = finding.difference.record;
    for (std::size_t p = 0; p < routes_[record].points.size(); ++p) {
      if (!to_.limits || !KeptName(routes_[record].points[p].record.ident, to_).empty()) continue;
      finding.cause = Cause::Letters;
      ProposeName(finding, record, p);
    }
    if (to_.limits && routes_[record].points.size() > to_.limits->route_points) {
      finding.proposals.push_back({Change::Split, DataKind::Route, record, {}, {}, to_.limits->route_points});
    }
    for (std::size_t other = record + 1; other < routes_.size(); ++other) {
      if (!SameRoute(routes_[record].header.record, routes_[other].header.record)) continue;
      if (finding.difference.loss == Loss::Missing) {
        finding.cause = Cause::Overwritten;
        finding.other = other;
      }
      ProposeOtherRoute(finding, other);
      return;
    }
  }

  // ---- Proposals

  void ProposeName(UploadFinding& finding, std::size_t record, Index point) const {
    const bool of_route = point || finding.difference.kind == DataKind::Route;
    const std::string& name = of_route ? names_.route_points[record][*point] : names_.waypoints[record];
    const Waypoint& waypoint = of_route ? data_.Routes()[record].points[*point].waypoint : data_.Waypoints()[record];
    if (SameWord(name, Bare(waypoint.ident))) return;
    const DataKind kind = of_route ? DataKind::Route : DataKind::Waypoint;
    finding.proposals.push_back({Change::Rename, kind, record, point, name, 0});
  }

  /// A number, or where routes have none a name, that no other route has.
  void ProposeOtherRoute(UploadFinding& finding, std::size_t record) {
    if (to_.types.route_header == RouteHeaderType::D201) {
      auto [number, is_new] = new_numbers_.try_emplace(record, std::uint8_t{0});
      if (is_new) number->second = numbers_.Take();
      finding.proposals.push_back({Change::Number, DataKind::Route, record, {}, {}, number->second});
    } else {
      ProposeRouteName(finding, record);
    }
  }

  void ProposeRouteName(UploadFinding& finding, std::size_t record) const {
    const std::string name =
        NumberedName(Bare(data_.Routes()[record].cmnt), record + 1, RouteNameWidth(to_.types.route_header));
    finding.proposals.push_back({Change::NameRoute, DataKind::Route, record, {}, name, 0});
  }

  /// Of the record that stops this one, or this one itself.
  void ProposeCleaning(UploadFinding& finding, std::size_t record) const {
    const DataKind kind = finding.difference.kind;
    const auto clean = [&](Index point) { finding.proposals.push_back({Change::Clean, kind, record, point, {}, 0}); };
    if (SendingOf(kind, record) == Sending::Taken) return;
    clean({});
    if (kind == DataKind::Waypoint) ProposeName(finding, record, {});
    if (kind != DataKind::Route) return;
    const std::vector<Sent<Waypoint>>& points = routes_[record].points;
    for (std::size_t p = 0; p < points.size(); ++p) {
      if (points[p].sending == Sending::Taken) continue;
      clean(p);
      ProposeName(finding, record, p);
    }
  }

  /// The logs share the room by their points; once for all of them.
  void ProposeShorterLogs(UploadFinding& finding) {
    if (!to_.limits || std::exchange(logs_shortened_, true)) return;
    std::size_t there = 0;
    const bool named = to_.types.track_header == TrackHeaderType::D310;
    for (std::size_t i = 0; i < before_.Logs().size() && (i == 0 || !named); ++i)
      there += before_.Logs()[i].points.size();
    const std::size_t room = to_.limits->active_log - std::min(there, to_.limits->active_log);
    const std::size_t total = data_.TrackPointCount();
    if (room == 0 || total <= room) return;
    for (std::size_t i = 0; i < data_.Logs().size(); ++i) {
      const std::size_t points = data_.Logs()[i].points.size();
      finding.proposals.push_back({Change::Shorten, DataKind::TrackLog, i, {}, {}, points * room / total});
    }
  }

  const DataSet& data_;
  DataKinds kinds_;
  const DataSet& before_;
  const Recipient& to_;
  ShortNames names_;
  FreeNumbers numbers_;
  std::map<std::size_t, std::uint8_t> new_numbers_;
  std::vector<Sent<Waypoint>> waypoints_;
  std::vector<SentRoute> routes_;
  std::vector<Sending> logs_;
  bool logs_shortened_ = false;
  std::vector<UploadFinding> findings_;
};

}  // namespace

std::vector<UploadFinding> FindingsOf(const DataSet& data, const DataKinds& kinds, const DataSet& before,
                                      const Recipient& to, const NameLookup& lookup) {
  return Finder(data, kinds, before, to, lookup).Find();
}

std::vector<Proposal> ProposalsOf(const std::vector<UploadFinding>& findings) {
  std::vector<Proposal> proposals;
  for (const UploadFinding& finding : findings)
    proposals.insert(proposals.end(), finding.proposals.begin(), finding.proposals.end());
  return proposals;
}

DataSet Fitted(const DataSet& data, const DataKinds& kinds, const DataSet& before, const Recipient& to,
               const NameLookup& lookup) {
  // A record that stops the others hides what becomes of them, and a longer list of routes may be too long.
  constexpr int Rounds = 8;
  DataSet fitted = data;
  for (int round = 0; round < Rounds; ++round) {
    const std::vector<Proposal> proposals = ProposalsOf(FindingsOf(fitted, kinds, before, to, lookup));
    if (proposals.empty()) break;
    fitted = WithProposals(fitted, proposals, to);
  }
  return fitted;
}

}  // namespace walrim
