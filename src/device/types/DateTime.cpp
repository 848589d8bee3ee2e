#include "device/types/DateTime.h"

#include "device/types/Wire.h"

namespace walrim {

namespace {

/// The fields as they stand on the wire.
struct D600 {
  std::uint8_t month = 0;
  std::uint8_t day = 0;
  std::uint16_t year = 0;
  std::uint16_t hour = 0;
  std::uint8_t minute = 0;
  std::uint8_t second = 0;
};
constexpr std::size_t SizeOfD600 = 8;

template <typename Wire, typename Record>
void WalkD600(Wire& wire, Record& time) {
  wire.Byte(time.month);
  wire.Byte(time.day);
  wire.Word(time.year);
  wire.Word(time.hour);
  wire.Byte(time.minute);
  wire.Byte(time.second);
}

}  // namespace

std::optional<CivilTime> DecodeDateTime(std::span<const std::uint8_t> data) {
  if (data.size() < SizeOfD600) return std::nullopt;
  D600 record;
  PacketReader reader(data);
  WalkD600(reader, record);
  const CivilTime time{record.year, record.month, record.day, record.hour, record.minute, record.second};
  // A date that there is comes back from its seconds as it was.
  if (CivilFromGarminSeconds(SecondsSinceGarminEpoch(time)) != time) return std::nullopt;
  return time;
}

std::vector<std::uint8_t> EncodeDateTime(const CivilTime& utc) {
  const D600 record{static_cast<std::uint8_t>(utc.month),  static_cast<std::uint8_t>(utc.day),
                    static_cast<std::uint16_t>(utc.year),  static_cast<std::uint16_t>(utc.hour),
                    static_cast<std::uint8_t>(utc.minute), static_cast<std::uint8_t>(utc.second)};
  EncodeNotes notes;
  PacketWriter writer(notes);
  WalkD600(writer, record);
  return writer.Finish();
}

}  // namespace walrim
