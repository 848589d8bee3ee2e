#include "preflight/Proposals.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "preflight/Sending.h"
#include "text/Cp932.h"
#include "text/Utf8.h"
#include "walks/Simplify.h"

namespace walrim {

namespace {

constexpr std::size_t ShortRouteName = 20;

/// A text without what code page 932 lacks, within so many of its bytes.
std::string Cleaned(std::string_view text, std::size_t width) {
  if (EncodeCp932(text)) return std::string(CutToCp932Width(text, width));
  std::string cleaned;
  while (!text.empty()) {
    const std::string_view before = text;
    static_cast<void>(TakeCharacter(text));
    const std::string longer = cleaned + std::string(before.substr(0, before.size() - text.size()));
    if (EncodeCp932(longer)) cleaned = longer;
  }
  return std::string(CutToCp932Width(cleaned, width));
}

void Clean(Waypoint& waypoint) {
  waypoint.ident = Cleaned(waypoint.ident, LongText);
  waypoint.cmnt = Cleaned(waypoint.cmnt, LongText);
  WaypointDetails details = *waypoint.details;
  details.facility = Cleaned(details.facility, FacilityText);
  details.city = Cleaned(details.city, CityText);
  details.addr = Cleaned(details.addr, LongText);
  details.cross_road = Cleaned(details.cross_road, LongText);
  details.state = Cleaned(details.state, 2);
  details.country = Cleaned(details.country, 2);
  waypoint.details = details;
}

void Clean(Route& route) {
  route.cmnt = Cleaned(route.cmnt, RouteNameWidth(route.type));
  for (RoutePoint& point : route.points) {
    RouteLink link = *point.link;
    link.ident = Cleaned(link.ident, LongText);
    point.link = link;
  }
}

/// The records of a data set, while they are changed.
class Changed {
 public:
  explicit Changed(const DataSet& data) : waypoints_(data.Waypoints()), routes_(data.Routes()), logs_(data.Logs()) {}

  void Take(const Proposal& proposal) {
    switch (proposal.change) {
      case Change::Rename:
        PointOf(proposal).ident = proposal.text;
        break;
      case Change::NameRoute:
        routes_[proposal.record].cmnt = proposal.text;
        break;
      case Change::Number:
        routes_[proposal.record].nmbr = static_cast<std::uint8_t>(proposal.number);
        break;
      case Change::Split:
        parts_[proposal.record] = proposal.number;
        break;
      case Change::Shorten:
        logs_[proposal.record].points = Simplified(logs_[proposal.record].points, proposal.number);
        break;
      case Change::Clean:
        CleanRecord(proposal);
        break;
    }
  }

  [[nodiscard]] DataSet Built(const Recipient& to) {
    DataSet data;
    for (Waypoint& waypoint : waypoints_)
      static_cast<void>(data.Add(std::move(waypoint)));
    AddRoutes(data, to);
    for (TrackLog& log : logs_) {
      const std::vector<TrackPoint> points = std::exchange(log.points, {});
      static_cast<void>(data.Begin(std::move(log)));
      for (const TrackPoint& point : points)
        static_cast<void>(data.Add(point));
    }
    return data;
  }

 private:
  [[nodiscard]] Waypoint& PointOf(const Proposal& proposal) {
    return proposal.point ? routes_[proposal.record].points[*proposal.point].waypoint : waypoints_[proposal.record];
  }

  void CleanRecord(const Proposal& proposal) {
    if (proposal.kind == DataKind::TrackLog) {
      std::string& name = logs_[proposal.record].trk_ident;
      name = Cleaned(name, LongText);
    } else if (proposal.kind == DataKind::Route && !proposal.point) {
      Clean(routes_[proposal.record]);
    } else {
      Clean(PointOf(proposal));
    }
  }

  void AddRoutes(DataSet& data, const Recipient& to) {
    DataSet whole;
    for (const Route& route : routes_)
      static_cast<void>(whole.Begin(route));
    FreeNumbers numbers(whole);
    for (std::size_t r = 0; r < routes_.size(); ++r) {
      const auto parts = parts_.find(r);
      if (parts == parts_.end()) {
        static_cast<void>(data.Begin(std::move(routes_[r])));
      } else {
        AddParts(routes_[r], parts->second, data, numbers, to);
      }
    }
  }

  static void AddParts(const Route& route, std::size_t most, DataSet& data, FreeNumbers& numbers, const Recipient& to) {
    const std::size_t step = std::max<std::size_t>(most, 2) - 1;
    std::size_t number = 1;
    for (std::size_t begin = 0; begin == 0 || begin + 1 < route.points.size(); begin += step, ++number) {
      const std::size_t end = std::min(begin + step + 1, route.points.size());
      Route part = route;
      part.points.assign(route.points.begin() + static_cast<std::ptrdiff_t>(begin),
                         route.points.begin() + static_cast<std::ptrdiff_t>(end));
      if (number > 1) part.nmbr = numbers.Take();
      part.cmnt = NumberedName(Bare(route.cmnt), number, RouteNameWidth(to.types.route_header));
      static_cast<void>(data.Begin(std::move(part)));
    }
  }

  std::vector<Waypoint> waypoints_;
  std::vector<Route> routes_;
  std::vector<TrackLog> logs_;
  std::map<std::size_t, std::size_t> parts_;  ///< the points that the parts of a route have at most
};

}  // namespace

DataSet WithProposals(const DataSet& data, const std::vector<Proposal>& proposals, const Recipient& to) {
  Changed changed(data);
  for (const Proposal& proposal : proposals)
    changed.Take(proposal);
  return changed.Built(to);
}

FreeNumbers::FreeNumbers(const DataSet& data) {
  for (const Route& route : data.Routes())
    Keep(route.nmbr);
}

std::uint8_t FreeNumbers::Take() {
  for (std::size_t number = 1; number < taken_.size(); ++number) {
    if (taken_[number]) continue;
    taken_[number] = true;
    return static_cast<std::uint8_t>(number);
  }
  return 0;
}

std::string NumberedName(const std::string& name, std::size_t number, std::size_t width) {
  const std::string behind = (name.empty() ? "ROUTE " : " ") + std::to_string(number);
  return std::string(CutToCp932Width(name, width - behind.size())) + behind;
}

std::size_t RouteNameWidth(RouteHeaderType type) {
  switch (type) {
    case RouteHeaderType::D201:
      return ShortRouteName;
    case RouteHeaderType::D202:
      return LongText;
  }
  return ShortRouteName;
}

}  // namespace walrim
