#include "device/Codecs.h"

#include <cstddef>

#include "device/SmallSymbols.h"

namespace walrim {

namespace {

std::size_t At(int index) {
  return static_cast<std::size_t>(index);
}  // a negative one lies beyond every table

/// Calls use(table, layout) with the waypoint table of a type name; nothing for any other name.
template <typename Data, typename Use>
void WithWaypointTable(Data& data, std::string_view type_name, Use use) {
  const auto type = WaypointTypeOfName(type_name);
  if (!type) return;
  switch (*type) {
    case WaypointType::D103:
      return use(data.d103, D103Layout);
    case WaypointType::D104:
      return use(data.d104, D104Layout);
    case WaypointType::D107:
      return use(data.d107, D107Layout);
    case WaypointType::D108:
      return use(data.d108, D108Layout);
  }
}

// What a receiver cannot show is not sent to it. wanted is the waypoint with symbols and colours of any number.

template <typename Entry>
void FitSymbol(Entry& entry, const D108Entry& wanted, EncodeNotes* notes) {
  const int code = wanted.smbl > LargestSmallSymbol ? wanted.smbl : entry.smbl;
  if (code <= LargestSmallSymbol) return;
  const SmallSymbol small = SmallSymbolFor(code);
  entry.smbl = small.code;
  if (notes != nullptr && !small.exact) notes->replaced = true;
}

void FitPictures(D103Entry& entry, const D108Entry& wanted, EncodeNotes* notes) {
  FitSymbol(entry, wanted, notes);
}
void FitPictures(D107Entry& entry, const D108Entry& wanted, EncodeNotes* notes) {
  FitSymbol(entry, wanted, notes);
  if (entry.color <= LargestSmallColour) return;
  if (notes != nullptr && entry.color != DefaultLargeColour) notes->replaced = true;
  entry.color = 0;
}
void FitPictures(D104Entry&, const D108Entry&, EncodeNotes*) {}
void FitPictures(D108Entry&, const D108Entry&, EncodeNotes*) {}

}  // namespace

void DecodeWaypoint(InternalData& data, const Frame& frame, int index, std::string_view type_name) {
  WithWaypointTable(data, type_name,
                    [&](auto& table, auto layout) { DecodeFields(PacketData(frame), layout, table.at(At(index))); });
}

ByteBuffer EncodeWaypoint(const InternalData& data, int index, std::string_view type_name, EncodeNotes* notes) {
  ByteBuffer packet;
  WithWaypointTable(data, type_name, [&](const auto& table, auto layout) {
    auto entry = table.at(At(index));
    FitPictures(entry, data.d108.at(At(index)), notes);
    packet = EncodeFields(entry, layout, notes);
  });
  return packet;
}

void DecodeRouteHeader(InternalData& data, const Frame& frame, int route, std::string_view type_name) {
  if (type_name == "D201") DecodeFields(PacketData(frame), D201Layout, data.d201.at(At(route)));
  if (type_name == "D202") DecodeFields(PacketData(frame), D202Layout, data.d202.at(At(route)));
}

ByteBuffer EncodeRouteHeader(const InternalData& data, int route, std::string_view type_name, EncodeNotes* notes) {
  if (type_name == "D201") return EncodeFields(data.d201.at(At(route)), D201Layout, notes);
  if (type_name == "D202") return EncodeFields(data.d202.at(At(route)), D202Layout, notes);
  return {};
}

void DecodeRoutePoint(InternalData& data, const Frame& frame, int route, int point, std::string_view type_name) {
  DecodeWaypoint(data, frame, RoutePointSlot(route, point), type_name);
}

ByteBuffer EncodeRoutePoint(const InternalData& data, int route, int point, std::string_view type_name,
                            EncodeNotes* notes) {
  return EncodeWaypoint(data, RoutePointSlot(route, point), type_name, notes);
}

void DecodeRouteLink(InternalData& data, const Frame& frame, int route, int point, std::string_view type_name) {
  if (type_name == "D210") DecodeFields(PacketData(frame), D210Layout, data.d210.at(LinkSlot(route, point)));
}

ByteBuffer EncodeRouteLink(const InternalData& data, int route, int point, std::string_view type_name,
                           EncodeNotes* notes) {
  if (type_name == "D210") return EncodeFields(data.d210.at(LinkSlot(route, point)), D210Layout, notes);
  return {};
}

bool DecodeTrackPoint(InternalData& data, const Frame& frame, int slot, std::string_view type_name) {
  const bool with_height = type_name == "D301";
  if (!with_height && type_name != "D300") return false;
  TrackPointEntry& point = data.track_points.at(At(slot));
  point = TrackPointEntry{};
  DecodeFields(PacketData(frame), with_height ? D301Layout : D300Layout, point);
  return point.new_trk;
}

ByteBuffer EncodeTrackPoint(const InternalData& data, int slot, std::string_view type_name) {
  if (type_name == "D300") return EncodeFields(data.track_points.at(At(slot)), D300Layout);
  if (type_name == "D301") return EncodeFields(data.track_points.at(At(slot)), D301Layout);
  return {};
}

void DecodeTrackHeader(InternalData& data, const Frame& frame, int log, std::string_view type_name) {
  if (type_name == "D310") DecodeFields(PacketData(frame), D310Layout, data.d310.at(At(log)));
}

ByteBuffer EncodeTrackHeader(const InternalData& data, int log, std::string_view type_name, EncodeNotes* notes) {
  if (type_name == "D310") return EncodeFields(data.d310.at(At(log)), D310Layout, notes);
  return {};
}

}  // namespace walrim
