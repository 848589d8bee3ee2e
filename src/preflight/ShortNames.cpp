#include "preflight/ShortNames.h"

#include <map>
#include <optional>
#include <utility>

#include "preflight/Comparison.h"
#include "preflight/Sending.h"
#include "text/Romaji.h"
#include "text/Scan.h"

namespace walrim {

namespace {

/// What stands for a name without any letter that can be read.
constexpr std::string_view NoName = "WPT";
/// Letters of a name on a model that is not known.
constexpr std::size_t SafeLength = 6;

std::size_t LongestName(const Recipient& to) {
  return to.limits ? to.limits->name : SafeLength;
}

struct Place {
  double lat_deg = 0;
  double lon_deg = 0;
};

/// Gives names out, each for one place.
class NameChooser {
 public:
  NameChooser(const Recipient& to, const NameLookup& lookup) : to_(to), lookup_(lookup) {}

  /// A name that the receiver has given already. Its place keeps it: what is sent there again overwrites it.
  void Hold(const std::string& name, const Waypoint& waypoint) { Put(held_, name, waypoint); }
  void Keep(const std::string& name, const Waypoint& waypoint) { Put(taken_, name, waypoint); }
  [[nodiscard]] bool Free(const std::string& name, const Waypoint& waypoint) const {
    return !OfAnotherPlace(held_, name, waypoint) && !OfAnotherPlace(taken_, name, waypoint);
  }
  /// A name that no other record has.
  [[nodiscard]] std::string Choose(const Waypoint& waypoint) {
    const std::string long_name = Bare(waypoint.ident);
    std::string base = lookup_ ? ProposedName(lookup_(long_name), to_) : std::string();
    if (base.empty()) base = ProposedName(long_name, to_);
    if (base.empty()) base = NoName;
    std::string name = base;
    for (int number = 2; taken_.contains(name) || OfAnotherPlace(held_, name, waypoint); ++number) {
      const std::string digits = std::to_string(number);
      name = base.substr(0, LongestName(to_) - digits.size());
      name.resize(name.find_last_not_of(" -") + 1);
      name += digits;
    }
    Keep(name, waypoint);
    return name;
  }

 private:
  using Places = std::map<std::string, Place>;

  static void Put(Places& places, const std::string& name, const Waypoint& waypoint) {
    places.try_emplace(name, Place{waypoint.lat_deg, waypoint.lon_deg});
  }
  [[nodiscard]] static bool OfAnotherPlace(const Places& places, const std::string& name, const Waypoint& waypoint) {
    const auto holder = places.find(name);
    return holder != places.end() && !SamePlace(holder->second, waypoint);
  }

  const Recipient& to_;
  const NameLookup& lookup_;
  Places held_;
  Places taken_;
};

/// The name that a receiver keeps without loss but for capitals; nothing for another.
std::optional<std::string> FittingName(const Waypoint& waypoint, const Recipient& to) {
  const Sent<Waypoint> sent = Send(waypoint, to);
  if (sent.sending == Sending::Unsendable) return std::nullopt;
  std::string name = KeptName(sent.record.ident, to);
  if ((to.limits && name.empty()) || !SameWord(name, Bare(waypoint.ident))) return std::nullopt;
  return name;
}

/// Chooses for waypoint after waypoint, then for the points of the routes.
class Choice {
 public:
  Choice(const DataSet& data, const DataSet& before, const Recipient& to, const NameLookup& lookup)
      : data_(data), to_(to), chooser_(to, lookup) {
    for (const Waypoint& held : before.Waypoints())
      chooser_.Hold(HeldName(held.ident), held);
    KeepFitting();
  }

  [[nodiscard]] ShortNames Names() {
    for (std::size_t i = 0; i < names_.waypoints.size(); ++i) {
      const Waypoint& waypoint = data_.Waypoints()[i];
      std::string& name = names_.waypoints[i];
      if (name.empty()) name = NameFor(waypoint, [&](const Waypoint& other) { return other == waypoint; });
    }
    for (std::size_t r = 0; r < names_.route_points.size(); ++r) {
      for (std::size_t p = 0; p < names_.route_points[r].size(); ++p) {
        const Waypoint& point = data_.Routes()[r].points[p].waypoint;
        std::string& name = names_.route_points[r][p];
        if (name.empty()) name = NameFor(point, [&](const Waypoint& other) { return SamePlace(other, point); });
      }
    }
    return std::move(names_);
  }

 private:
  /// Names that fit stay, the first of each and those of the same place.
  void KeepFitting() {
    std::map<std::string, const Waypoint*> of_waypoints;
    for (const Waypoint& waypoint : data_.Waypoints()) {
      std::string& kept = names_.waypoints.emplace_back();
      const auto fitting = FittingName(waypoint, to_);
      if (!fitting || !chooser_.Free(*fitting, waypoint)) continue;
      const auto [first, is_first] = of_waypoints.try_emplace(*fitting, &waypoint);
      if (!is_first && !(*first->second == waypoint)) continue;
      chooser_.Keep(*fitting, waypoint);
      kept = *fitting;
    }
    for (const Route& route : data_.Routes())
      KeepFitting(route, names_.route_points.emplace_back());
  }

  void KeepFitting(const Route& route, std::vector<std::string>& kept) {
    for (const RoutePoint& point : route.points) {
      const auto fitting = FittingName(point.waypoint, to_);
      const bool stays = fitting && chooser_.Free(*fitting, point.waypoint);
      kept.push_back(stays ? *fitting : std::string());
      if (stays) chooser_.Keep(*fitting, point.waypoint);
    }
  }

  /// That of another record of the same long name that is to have the same, or a new one.
  [[nodiscard]] std::string NameFor(const Waypoint& waypoint, auto is_same) {
    std::vector<std::pair<const Waypoint*, std::string>>& of_name = chosen_[Bare(waypoint.ident)];
    for (const auto& [other, name] : of_name) {
      if (is_same(*other)) return name;
    }
    return of_name.emplace_back(&waypoint, chooser_.Choose(waypoint)).second;
  }

  const DataSet& data_;
  const Recipient& to_;
  NameChooser chooser_;
  ShortNames names_;
  std::map<std::string, std::vector<std::pair<const Waypoint*, std::string>>> chosen_;
};

}  // namespace

ShortNames ChooseShortNames(const DataSet& data, const DataSet& before, const Recipient& to, const NameLookup& lookup) {
  return Choice(data, before, to, lookup).Names();
}

std::string ProposedName(std::string_view name, const Recipient& to) {
  std::string proposed;
  for (const char c : RomanName(name)) {
    if (proposed.size() < LongestName(to) && (IsLetter(c) || IsDigit(c))) proposed.push_back(UpperCase(c));
  }
  return proposed;
}

}  // namespace walrim
