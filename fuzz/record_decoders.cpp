// Any data can be taken for a record of any type. What was decoded can be sent, and comes back as the same entry, but
// for a symbol or a colour that receivers of the type cannot show.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>
#include <variant>

#include "data/InternalData.h"
#include "device/Codecs.h"
#include "device/Layout.h"
#include "device/SmallSymbols.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

// The entry that takes what came, and the one that takes it back.
constexpr int First = 1;
constexpr int Second = 2;

bool Sound(const std::string& text) {
  return IsValidUtf8(text);
}
template <std::size_t Width>
bool Sound(const FixedText<Width>& text) {
  return IsValidUtf8(text.Bare()) && Cp932Width(text.Padded()) == Width;
}
template <typename T>
bool Sound(const T&) {
  return true;
}

// What of an entry is sent: pictures that receivers of its type can show.

void FitSymbol(std::uint8_t& symbol) {
  if (symbol > LargestSmallSymbol) symbol = SmallSymbolFor(symbol).code;
}
D103Entry Sendable(D103Entry entry) {
  FitSymbol(entry.smbl);
  return entry;
}
D107Entry Sendable(D107Entry entry) {
  FitSymbol(entry.smbl);
  if (entry.color > LargestSmallColour) entry.color = 0;
  return entry;
}
template <typename Entry>
const Entry& Sendable(const Entry& entry) {
  return entry;
}

template <typename Entry>
void CheckSame(const Entry& one, const Entry& other, Layout<Entry> layout) {
  for (const Field<Entry>& field : layout) {
    std::visit(
        [&](auto member) {
          if (!Sound(one.*member) || !(one.*member == other.*member)) std::abort();
        },
        field.member);
  }
}

Frame FrameOf(std::span<const std::uint8_t> data) {
  Frame frame;
  frame.bytes[2] = static_cast<std::uint8_t>(data.size());
  std::copy(data.begin(), data.end(), frame.bytes.begin() + 3);
  frame.Size = static_cast<std::int16_t>(data.size() + 6);
  return frame;
}

/// decode(frame, index) fills the table; encode(index, notes) makes packet data of it.
template <typename Table, typename Entry, typename Decode, typename Encode>
void CheckType(const Frame& frame, const Table& table, Layout<Entry> layout, Decode decode, Encode encode) {
  decode(frame, First);
  EncodeNotes notes;
  const ByteBuffer sent = encode(First, &notes);
  if (static_cast<std::size_t>(sent.Size) > LongestSentData || notes.lacking) std::abort();
  decode(FrameOf(sent.View()), Second);
  if (!notes.cut) {
    CheckSame<Entry>(Sendable(table.at(First)), table.at(Second), layout);
    return;
  }
  // What was cut to fit is not cut again.
  EncodeNotes again;
  const ByteBuffer settled = encode(Second, &again);
  if (again.cut || settled.bytes != sent.bytes || settled.Size != sent.Size) std::abort();
}

template <typename Table, typename Entry>
void CheckWaypoints(InternalData& data, const Frame& frame, const Table& table, Layout<Entry> layout,
                    WaypointType type) {
  const std::string_view type_name = WaypointTypeName(type);
  CheckType(
      frame, table, layout,
      [&](const Frame& from, int index) {
        DecodeWaypoint(data, from, index, type_name);
        data.SpreadWaypoint(index, type);
      },
      [&](int index, EncodeNotes* notes) { return EncodeWaypoint(data, index, type_name, notes); });
}

template <typename Table, typename Entry>
void CheckRouteHeaders(InternalData& data, const Frame& frame, const Table& table, Layout<Entry> layout,
                       std::string_view type_name) {
  CheckType(
      frame, table, layout, [&](const Frame& from, int index) { DecodeRouteHeader(data, from, index, type_name); },
      [&](int index, EncodeNotes* notes) { return EncodeRouteHeader(data, index, type_name, notes); });
}

void CheckRouteLinks(InternalData& data, const Frame& frame) {
  DecodeRouteLink(data, frame, First, First, "D210");
  EncodeNotes notes;
  const ByteBuffer sent = EncodeRouteLink(data, First, First, "D210", &notes);
  if (static_cast<std::size_t>(sent.Size) > LongestSentData || notes.lacking) std::abort();
  DecodeRouteLink(data, FrameOf(sent.View()), First, Second, "D210");
  if (!notes.cut) CheckSame(data.d210.at(LinkSlot(First, First)), data.d210.at(LinkSlot(First, Second)), D210Layout);
}

void CheckTrackPoints(InternalData& data, const Frame& frame, Layout<TrackPointEntry> layout,
                      std::string_view type_name) {
  CheckType(
      frame, data.track_points, layout,
      [&](const Frame& from, int index) {
        if (DecodeTrackPoint(data, from, index, type_name) !=
            data.track_points.at(static_cast<std::size_t>(index)).new_trk) {
          std::abort();
        }
      },
      [&](int index, EncodeNotes*) { return EncodeTrackPoint(data, index, type_name); });
}

void CheckTrackHeaders(InternalData& data, const Frame& frame) {
  CheckType(
      frame, data.d310, D310Layout, [&](const Frame& from, int index) { DecodeTrackHeader(data, from, index, "D310"); },
      [&](int index, EncodeNotes* notes) { return EncodeTrackHeader(data, index, "D310", notes); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const auto data = std::make_unique<InternalData>();
  const Frame frame = FrameOf(std::span(bytes, std::min<std::size_t>(size, 255)));
  CheckWaypoints(*data, frame, data->d103, D103Layout, WaypointType::D103);
  CheckWaypoints(*data, frame, data->d104, D104Layout, WaypointType::D104);
  CheckWaypoints(*data, frame, data->d107, D107Layout, WaypointType::D107);
  CheckWaypoints(*data, frame, data->d108, D108Layout, WaypointType::D108);
  CheckRouteHeaders(*data, frame, data->d201, D201Layout, "D201");
  CheckRouteHeaders(*data, frame, data->d202, D202Layout, "D202");
  CheckRouteLinks(*data, frame);
  CheckTrackPoints(*data, frame, D300Layout, "D300");
  CheckTrackPoints(*data, frame, D301Layout, "D301");
  CheckTrackHeaders(*data, frame);
  return 0;
}
