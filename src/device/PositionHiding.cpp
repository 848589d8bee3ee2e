#include "device/PositionHiding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>
#include <stdexcept>

#include "device/CheckedFrameReader.h"
#include "device/Frame.h"
#include "device/Identification.h"
#include "device/PacketIds.h"
#include "device/types/TrackTypes.h"
#include "device/types/WaypointTypes.h"

namespace walrim {

namespace {

static_assert(std::endian::native == std::endian::little, "positions are taken as they lie on the wire");

constexpr std::int32_t Pole = 1 << 30;
/// What receivers send for want of a position.
constexpr std::int32_t Nowhere = std::numeric_limits<std::int32_t>::max();
constexpr double SemicirclesPerRadian = 2147483648.0 / std::numbers::pi;
/// In the fix (D800): behind four singles, a word and a double.
constexpr std::size_t PvtPosition = 4 * 4 + 2 + 8;

/// The frame that bytes are, whole and without anything around it.
std::optional<Frame> WholeFrame(std::span<const std::uint8_t> wire) {
  if (wire.size() >= CheckedFrameReader::MostPending) return std::nullopt;
  CheckedFrameReader reader;
  auto found = CheckedFrameReader::Found::Nothing;
  for (const std::uint8_t byte : wire)
    found = reader.Take(byte);
  if (found != CheckedFrameReader::Found::WholeFrame) return std::nullopt;
  const Frame frame = reader.Last();
  const bool alone = std::ranges::equal(FrameOnWire(frame.Id(), PacketData(frame)), wire);
  return alone ? std::optional(frame) : std::nullopt;
}

/// Everything but the framing, which is every DLE, an ETX behind one, and id and size of a frame.
std::vector<std::uint8_t> Filled(std::span<const std::uint8_t> wire, std::uint8_t filler) {
  std::vector<std::uint8_t> bytes(wire.begin(), wire.end());
  const std::size_t framing = !wire.empty() && wire[0] == DLE ? 3 : 0;
  for (std::size_t i = framing; i < bytes.size(); ++i) {
    const bool end = wire[i] == ETX && i > 0 && wire[i - 1] == DLE;
    if (wire[i] != DLE && !end) bytes[i] = filler;
  }
  return bytes;
}

/// Whether whoever looks for frames in bytes finds a whole one.
bool HoldsWholeFrame(std::span<const std::uint8_t> bytes) {
  CheckedFrameReader reader;
  return bytes.size() < CheckedFrameReader::MostPending && std::ranges::any_of(bytes, [&](std::uint8_t byte) {
           return reader.Take(byte) == CheckedFrameReader::Found::WholeFrame;
         });
}

/// Zeros sum up to a right checksum now and then; then it is another value.
std::vector<std::uint8_t> BlankedDamage(std::span<const std::uint8_t> wire) {
  std::vector<std::uint8_t> bytes;
  for (unsigned filler = 0; filler < DLE; ++filler) {
    bytes = Filled(wire, static_cast<std::uint8_t>(filler));
    if (!HoldsWholeFrame(bytes)) return bytes;
  }
  bytes.pop_back();  // 256 bytes of any value sum up to the same
  return bytes;
}

/// Two values, latitude and longitude, at an offset; nothing where the data are too short.
template <typename Value>
std::optional<std::array<Value, 2>> ValuesAt(std::span<const std::uint8_t> data, std::size_t offset) {
  std::array<Value, 2> values{};
  if (data.size() < offset + sizeof values) return std::nullopt;
  std::memcpy(values.data(), data.data() + offset, sizeof values);
  return values;
}

template <typename Value>
void PutAt(std::span<std::uint8_t> data, std::size_t offset, const std::array<Value, 2>& values) {
  std::memcpy(data.data() + offset, values.data(), sizeof values);
}

}  // namespace

std::vector<std::uint8_t> PositionHiding::Hide(std::span<const std::uint8_t> wire) {
  const std::optional<Frame> frame = WholeFrame(wire);
  if (!frame) return BlankedDamage(wire);
  const std::span<const std::uint8_t> came = PacketData(*frame);
  std::vector<std::uint8_t> data(came.begin(), came.end());
  if (!HideIn(frame->Id(), data)) std::ranges::fill(data, std::uint8_t{0});
  return FrameOnWire(frame->Id(), data);
}

/// False where a position may be left, as nobody knows what the data are.
bool PositionHiding::HideIn(int packet_id, std::span<std::uint8_t> data) {
  switch (packet_id) {
    case PacketId::ProductData:
      TakeProduct(data);
      return true;
    case PacketId::WptData:
    case PacketId::RteWptData:
      return protocols_ && MoveSemicircles(data, PositionOffset(protocols_->waypoint));
    case PacketId::TrkData:
      return protocols_ && MoveSemicircles(data, TrackPointPosition);
    case PacketId::PositionData:
      return MoveRadians(data, 0);
    case PacketId::PvtData:
      return MoveRadians(data, PvtPosition);
    default:
      break;
  }
  constexpr std::array without_position{
      PacketId::Ack,    PacketId::CommandData, PacketId::XferCmplt,      PacketId::DateTimeData,
      PacketId::Nak,    PacketId::Records,     PacketId::RteHdr,         PacketId::RteLinkData,
      PacketId::TrkHdr, PacketId::ProductRqst, PacketId::ExtProductData, PacketId::ProtocolArray};
  return std::ranges::find(without_position, packet_id) != without_position.end();
}

void PositionHiding::TakeProduct(std::span<const std::uint8_t> data) {
  protocols_.reset();
  try {
    protocols_ = KnownProtocolsOf(ReadProduct(data).description);
  } catch (const std::out_of_range&) {
    // Texts without an end name no model.
  }
}

bool PositionHiding::MoveSemicircles(std::span<std::uint8_t> data, std::size_t offset) {
  const auto values = ValuesAt<std::int32_t>(data, offset);
  if (!values) return false;
  const Position moved = Moved({(*values)[0], (*values)[1]});
  PutAt<std::int32_t>(data, offset, {moved.lat_semicircles, moved.lon_semicircles});
  return true;
}

bool PositionHiding::MoveRadians(std::span<std::uint8_t> data, std::size_t offset) {
  const auto values = ValuesAt<double>(data, offset);
  if (!values) return false;
  const double lat = std::nearbyint((*values)[0] * SemicirclesPerRadian);
  const double lon = std::nearbyint((*values)[1] * SemicirclesPerRadian);
  constexpr double half_turn = 2147483648.0;
  if (!(std::abs(lat) <= Pole && std::abs(lon) <= half_turn)) return false;
  const auto turned = static_cast<std::uint32_t>(static_cast<std::int64_t>(lon));
  const Position moved = Moved({static_cast<std::int32_t>(lat), static_cast<std::int32_t>(turned)});
  PutAt<double>(data, offset,
                {moved.lat_semicircles / SemicirclesPerRadian, moved.lon_semicircles / SemicirclesPerRadian});
  return true;
}

/// What is no position stays none: moved, it would tell by how much the others were.
auto PositionHiding::Moved(Position position) -> Position {
  const std::int64_t lat = position.lat_semicircles;
  if (lat < -Pole || lat > Pole) return {Nowhere, Nowhere};
  if (lat == 0 && position.lon_semicircles == 0) return position;
  if (!origin_) origin_ = position;
  const std::int64_t moved = std::clamp<std::int64_t>(lat - origin_->lat_semicircles, -Pole, Pole);
  // Longitude goes round.
  const auto lon =
      static_cast<std::uint32_t>(position.lon_semicircles) - static_cast<std::uint32_t>(origin_->lon_semicircles);
  return {static_cast<std::int32_t>(moved), static_cast<std::int32_t>(lon)};
}

}  // namespace walrim
