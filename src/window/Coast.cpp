#include "window/Coast.h"

#include <QFile>
#include <QtEndian>
#include <cstdint>
#include <optional>
#include <utility>

namespace walrim {
namespace {

constexpr QByteArrayView Magic("WCO1");
constexpr double Unit_deg = 0.0005;
constexpr int MostBits = 28;

/// The numbers of the data, one behind the other.
class Numbers {
 public:
  explicit Numbers(QByteArrayView data) : data_(data) {}

  [[nodiscard]] bool AtEnd() const { return data_.isEmpty(); }
  /// Nothing behind the end, and of a number that is too large.
  [[nodiscard]] std::optional<std::int32_t> Next() {
    std::uint32_t number = 0;
    for (int shift = 0; shift < MostBits && !data_.isEmpty(); shift += 7) {
      const auto byte = static_cast<std::uint8_t>(data_.front());
      data_ = data_.sliced(1);
      number |= (byte & 127U) << shift;
      if (byte < 128) return static_cast<std::int32_t>(number >> 1) ^ -static_cast<std::int32_t>(number & 1);
    }
    return std::nullopt;
  }

 private:
  QByteArrayView data_;
};

struct Units {
  std::int64_t lon = 0;
  std::int64_t lat = 0;
};

/// The points of a ring from a first one on; empty where the data are none.
std::vector<MercatorPoint> NextRing(Numbers& numbers, Units& first) {
  const auto count = numbers.Next();
  std::vector<MercatorPoint> ring;
  Units at = first;
  for (std::int32_t i = 0; count && i < *count; ++i) {
    const auto lon = numbers.Next();
    const auto lat = numbers.Next();
    if (!lon || !lat) return {};
    at = {at.lon + *lon, at.lat + *lat};
    if (i == 0) first = at;
    ring.push_back(MercatorOf(static_cast<double>(at.lat) * Unit_deg, static_cast<double>(at.lon) * Unit_deg));
  }
  if (!ring.empty()) ring.push_back(ring.front());
  return ring;
}

}  // namespace

std::vector<MapLine> ReadCoast(QByteArrayView data) {
  constexpr qsizetype HeadBytes = 8;
  if (data.size() < HeadBytes || !data.startsWith(Magic)) return {};
  const auto count = qFromLittleEndian<std::uint32_t>(data.data() + Magic.size());
  Numbers numbers(data.sliced(HeadBytes));
  std::vector<MapLine> rings;
  Units first;
  for (std::uint32_t i = 0; i < count; ++i) {
    std::vector<MercatorPoint> ring = NextRing(numbers, first);
    if (ring.empty()) return {};
    rings.emplace_back(std::move(ring));
  }
  if (!numbers.AtEnd()) rings.clear();
  return rings;
}

std::vector<MapLine> LoadCoast() {
  QFile file(QStringLiteral(":/coast.bin"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return ReadCoast(file.readAll());
}

}  // namespace walrim
