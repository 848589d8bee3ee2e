#include "receiver/StrictRules.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "text/Scan.h"

namespace walrim {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t CommandData = 10;
constexpr std::uint8_t TransferComplete = 12;
constexpr std::uint8_t Records = 27;

constexpr std::size_t ShortName = 6;
constexpr std::size_t NameOffset108 = 48;
constexpr std::size_t LinkTextOffset = 20;
constexpr std::size_t TrackTextOffset = 2;
constexpr std::size_t NewTrackOffset301 = 20;
constexpr std::size_t LongText = 51;  // with its zero byte

/// What a model has room for. Names have capitals and digits, on some models blanks and hyphens as well.
struct Limits {
  std::string_view model;
  std::size_t waypoints;
  std::size_t name;
  bool blanks;
  std::size_t route_points;
  std::size_t active_log;
};
constexpr std::size_t RouteRoom = 20;
constexpr Limits LimitRows[] = {
    {"GPS 12", 500, ShortName, false, 30, 1024},    {"GPS 12XL", 500, ShortName, false, 30, 1024},
    {"GPS 12CX", 1000, ShortName, false, 30, 2000}, {"GPS 48", 500, ShortName, false, 30, 1024},
    {"GPS II+", 500, ShortName, false, 30, 1024},   {"GPS III", 500, ShortName, false, 30, 1900},
    {"GPS III+", 500, ShortName, false, 30, 1900},  {"eMap", 500, 10, true, 50, 2048},
    {"eTrex", 500, ShortName, true, 50, 1535},
};

const Limits& LimitsOf(const ReceiverModel& model) {
  const auto* row = std::find_if(std::begin(LimitRows), std::end(LimitRows),
                                 [&model](const Limits& limits) { return limits.model == model.name; });
  return row == std::end(LimitRows) ? LimitRows[0] : *row;
}

// Whether the bytes are these texts and nothing else, each with its zero byte no longer than told.
bool AreEndedTexts(std::span<const std::uint8_t> bytes, std::initializer_list<std::size_t> most) {
  for (const std::size_t room : most) {
    const auto end = std::find(bytes.begin(), bytes.end(), 0);
    const auto length = static_cast<std::size_t>(end - bytes.begin()) + 1;
    if (end == bytes.end() || length > room) return false;
    bytes = bytes.subspan(length);
  }
  return bytes.empty();
}

bool IsTextBehind(const Bytes& data, std::size_t offset) {
  return data.size() > offset && AreEndedTexts(std::span(data).subspan(offset), {LongText});
}

bool IsWaypoint(const Bytes& data, WaypointLayout layout) {
  switch (layout) {
    case WaypointLayout::D103:
      return data.size() == 60;
    case WaypointLayout::D104:
    case WaypointLayout::D107:
      return data.size() == 65;
    case WaypointLayout::D108:
      break;
  }
  return data.size() > NameOffset108 &&
         AreEndedTexts(std::span(data).subspan(NameOffset108), {LongText, LongText, 31, 25, LongText, LongText});
}

bool Fits(char c, const Limits& limits) {
  return IsLetter(c) || IsDigit(c) || (limits.blanks && (c == ' ' || c == '-'));
}

bool BeginsPair(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

// A double-byte character is none of the receiver's letters, nor is its second byte.
std::string FittingName(std::string_view name, const Limits& limits) {
  std::string fitting;
  for (std::size_t i = 0; i < name.size() && fitting.size() < limits.name; ++i) {
    if (Fits(name[i], limits)) fitting.push_back(UpperCase(name[i]));
    if (BeginsPair(static_cast<unsigned char>(name[i]))) ++i;
  }
  fitting.resize(fitting.find_last_not_of(' ') + 1);
  return fitting;
}

// The name's bytes without the blanks or the zero byte behind it.
std::string_view NameOf(const Bytes& data, WaypointLayout layout) {
  const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
  if (layout == WaypointLayout::D108) {
    const std::string_view texts = bytes.substr(std::min(NameOffset108, bytes.size()));
    return texts.substr(0, texts.find('\0'));
  }
  const std::string_view name = bytes.substr(0, ShortName);
  return name.substr(0, name.find_last_not_of(' ') + 1);
}

Bytes WithName(const Bytes& data, std::string name, WaypointLayout layout) {
  const std::size_t offset = layout == WaypointLayout::D108 ? std::min(NameOffset108, data.size()) : 0;
  std::size_t old_size = NameOf(data, layout).size();
  if (layout != WaypointLayout::D108) {
    old_size = std::min(ShortName, data.size());
    name.resize(old_size, ' ');
  }
  Bytes renamed(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(offset));
  renamed.insert(renamed.end(), name.begin(), name.end());
  renamed.insert(renamed.end(), data.begin() + static_cast<std::ptrdiff_t>(offset + old_size), data.end());
  return renamed;
}

/// Puts the records of one upload into a memory.
class UploadStore {
 public:
  UploadStore(ReceiverMemory& memory, const ReceiverModel& model)
      : memory_(memory), model_(model), limits_(LimitsOf(model)) {}

  void Take(const LinePacket& record) {
    switch (record.id) {
      case record_id::Waypoint:
        TakeWaypoint(record);
        break;
      case record_id::RouteHeader:
        routes_.push_back({record});
        points_ = 0;
        point_kept_ = false;
        break;
      case record_id::RouteWaypoint:
        TakeRoutePoint(record);
        break;
      case record_id::RouteLink:
        if (point_kept_) routes_.back().push_back(record);
        break;
      case record_id::TrackHeader:
        segment_begins_ = true;
        break;
      case record_id::TrackPoint:
        TakeTrackPoint(record);
        break;
      default:
        break;
    }
  }

  void Finish() {
    for (const std::vector<LinePacket>& route : routes_)
      StoreRoute(route);
    if (!track_points_.empty()) StoreTrackPoints();
  }

 private:
  // Nothing where no letter is left.
  [[nodiscard]] std::string Name(const LinePacket& record) const {
    return FittingName(NameOf(record.data, model_.waypoint_layout), limits_);
  }

  void TakeWaypoint(const LinePacket& record) {
    const std::string name = Name(record);
    if (name.empty()) return;
    const LinePacket named{record.id, WithName(record.data, name, model_.waypoint_layout)};
    std::vector<LinePacket>& held = memory_.waypoints;
    const auto same = std::find_if(held.begin(), held.end(), [&](const LinePacket& packet) {
      return NameOf(packet.data, model_.waypoint_layout) == name;
    });
    if (same != held.end()) {
      *same = named;
    } else if (held.size() < limits_.waypoints) {
      held.push_back(named);
    }
  }

  void TakeRoutePoint(const LinePacket& record) {
    const std::string name = Name(record);
    point_kept_ = !routes_.empty() && !name.empty() && points_ < limits_.route_points;
    if (!point_kept_) return;
    ++points_;
    routes_.back().push_back({record.id, WithName(record.data, name, model_.waypoint_layout)});
  }

  void TakeTrackPoint(LinePacket record) {
    if (segment_begins_ && record.data.size() > NewTrackOffset301) record.data[NewTrackOffset301] = 255;
    segment_begins_ = false;
    track_points_.push_back(std::move(record));
  }

  [[nodiscard]] bool SameRoute(const LinePacket& header, const LinePacket& other) const {
    if (model_.has_links_and_track_headers || header.data.empty() || other.data.empty()) {
      return header.data == other.data;
    }
    return header.data[0] == other.data[0];
  }

  void StoreRoute(const std::vector<LinePacket>& route) {
    std::vector<LinePacket>& held = memory_.routes;
    const auto is_header = [](const LinePacket& packet) { return packet.id == record_id::RouteHeader; };
    auto place = std::find_if(held.begin(), held.end(), [&](const LinePacket& packet) {
      return is_header(packet) && SameRoute(packet, route.front());
    });
    if (place != held.end()) {
      place = held.erase(place, std::find_if(place + 1, held.end(), is_header));
    } else if (static_cast<std::size_t>(std::count_if(held.begin(), held.end(), is_header)) >= RouteRoom) {
      return;
    }
    held.insert(place, route.begin(), route.end());
  }

  void StoreTrackPoints() {
    std::vector<LinePacket>& held = memory_.tracks;
    const auto is_header = [](const LinePacket& packet) { return packet.id == record_id::TrackHeader; };
    if (model_.has_links_and_track_headers && (held.empty() || !is_header(held.front()))) {
      held.insert(held.begin(), {record_id::TrackHeader, ActiveLogHeader});
    }
    const std::ptrdiff_t first = model_.has_links_and_track_headers ? 1 : 0;
    const auto end = std::find_if(held.begin() + first, held.end(), is_header);
    const auto there = static_cast<std::size_t>(end - held.begin() - first);
    const std::size_t room = limits_.active_log - std::min(limits_.active_log, there);
    const auto count = static_cast<std::ptrdiff_t>(std::min(room, track_points_.size()));
    held.insert(end, track_points_.begin(), track_points_.begin() + count);
  }

  // Shown, in the default colour, "ACTIVE LOG".
  inline static const Bytes ActiveLogHeader{255, 255, 'A', 'C', 'T', 'I', 'V', 'E', ' ', 'L', 'O', 'G', 0};

  ReceiverMemory& memory_;
  const ReceiverModel& model_;
  const Limits& limits_;
  std::vector<std::vector<LinePacket>> routes_;
  std::size_t points_ = 0;
  bool point_kept_ = false;
  std::vector<LinePacket> track_points_;
  bool segment_begins_ = false;
};

}  // namespace

bool WellFormed(const LinePacket& packet, const ReceiverModel& model) {
  const Bytes& data = packet.data;
  const bool headers = model.has_links_and_track_headers;
  switch (packet.id) {
    case CommandData:
    case TransferComplete:
    case Records:
      return data.size() == 2;
    case record_id::Waypoint:
    case record_id::RouteWaypoint:
      return IsWaypoint(data, model.waypoint_layout);
    case record_id::RouteHeader:
      return headers ? IsTextBehind(data, 0) : data.size() == 21;
    case record_id::RouteLink:
      return headers && IsTextBehind(data, LinkTextOffset);
    case record_id::TrackHeader:
      return headers && IsTextBehind(data, TrackTextOffset);
    case record_id::TrackPoint:
      return data.size() == (headers ? 21U : 13U);
    default:
      return true;
  }
}

void StoreUpload(ReceiverMemory& memory, const std::vector<LinePacket>& records, const ReceiverModel& model) {
  UploadStore store(memory, model);
  for (const LinePacket& record : records)
    store.Take(record);
  store.Finish();
}

}  // namespace walrim
