#include "device/types/Wire.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>

#include "device/Frame.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr double TwoTo31 = 2147483648.0;
/// From here on a time says that none is known.
constexpr GarminSeconds FirstUnknownTime = 4294967290;

std::string_view TextView(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// A character that the code page lacks becomes "?".
std::string EncodedCharacters(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    const std::string_view before = text;
    static_cast<void>(TakeCharacter(text));
    bytes += EncodeCp932(before.substr(0, before.size() - text.size())).value_or("?");
  }
  return bytes;
}

}  // namespace

std::uint32_t PacketReader::Unsigned(std::size_t width) {
  const std::size_t there = std::min(width, data_.size());
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < there; ++i)
    value |= static_cast<std::uint32_t>(data_[i]) << (8 * i);
  data_ = data_.subspan(there);
  return value;
}

float PacketReader::Single() {
  const auto single = std::bit_cast<float>(Unsigned(4));
  return std::isfinite(single) ? single : UnknownMetres;
}

void PacketReader::Time(std::optional<GarminSeconds>& time) {
  const GarminSeconds seconds = Unsigned(4);
  time = seconds == 0 || seconds >= FirstUnknownTime ? std::nullopt : std::optional(seconds);
}

void PacketReader::Angle(double& degrees) {
  degrees = static_cast<std::int32_t>(Unsigned(4)) * 180.0 / TwoTo31;
}

void PacketReader::Height(std::optional<float>& metres) {
  const float single = Single();
  metres = single == UnknownMetres ? std::nullopt : std::optional(single);
}

void PacketReader::Distance(float& metres) {
  metres = Single();
}

void PacketReader::Distance(std::optional<float>& metres) {
  metres = Single();
}

void PacketReader::Bytes(Subclass& bytes) {
  for (std::uint8_t& byte : bytes)
    Byte(byte);
}

void PacketReader::Text(std::string& text, std::size_t width) {
  std::string bytes(TextView(data_.first(std::min(width, data_.size()))));
  data_ = data_.subspan(bytes.size());
  bytes.resize(width, '\0');
  text = DecodeCp932(bytes);
}

void PacketReader::BareText(std::string& text, std::size_t width) {
  Text(text, width);
  while (!text.empty() && text.back() == ' ')
    text.pop_back();
}

void PacketReader::ZeroText(std::string& text) {
  const auto end = std::find(data_.begin(), data_.end(), 0);
  const auto size = static_cast<std::size_t>(end - data_.begin());
  text = DecodeCp932(data_.first(size));
  data_ = data_.subspan(std::min(size + 1, data_.size()));
}

void PacketWriter::Append(std::uint32_t value, std::size_t width) {
  for (std::size_t i = 0; i < width; ++i)
    data_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

void PacketWriter::Angle(double degrees) {
  // nearbyint rounds ties to even, as the program never leaves the default rounding mode.
  const double semicircles = std::nearbyint(TwoTo31 * degrees / 180.0);
  if (!(semicircles >= -TwoTo31 && semicircles < TwoTo31)) throw std::overflow_error("an angle off the globe");
  Append(static_cast<std::uint32_t>(static_cast<std::int32_t>(semicircles)), 4);
}

void PacketWriter::Distance(float metres) {
  Append(std::bit_cast<std::uint32_t>(metres), 4);
}

void PacketWriter::AppendText(std::string_view text) {
  UnencodableCharacter lacking;
  const auto bytes = EncodeCp932(text, &lacking);
  if (!bytes && !notes_.lacking) notes_.lacking = lacking;
  const std::string sent = bytes ? *bytes : EncodedCharacters(text);
  data_.insert(data_.end(), sent.begin(), sent.end());
}

void PacketWriter::Text(std::string_view text, std::size_t width) {
  const std::size_t end = data_.size() + width;
  AppendText(CutToCp932Width(text, width));
  data_.resize(end, ' ');
}

void PacketWriter::CutZeroTexts() {
  std::size_t size = data_.size();
  for (const std::string_view text : zero_texts_)
    size += Cp932Width(text) + 1;
  for (std::size_t i = zero_texts_.size(); i-- > 0 && size > LongestSentData;) {
    std::string_view& text = zero_texts_[i];
    const std::size_t width = Cp932Width(text);
    const std::size_t excess = size - LongestSentData;
    text = CutToCp932Width(text, width > excess ? width - excess : 0);
    size -= width - Cp932Width(text);
    notes_.cut = true;
  }
}

std::vector<std::uint8_t> PacketWriter::Finish() {
  CutZeroTexts();
  for (const std::string_view text : zero_texts_) {
    AppendText(text);
    data_.push_back(0);
  }
  return std::move(data_);
}

std::string Blanked(std::string_view text) {
  std::string blanked(text);
  std::replace(blanked.begin(), blanked.end(), '\0', ' ');
  return blanked;
}

void NoteCutText(std::string_view text, std::size_t width, EncodeNotes& notes) {
  if (text.size() > width && Cp932Width(TrimBlanks(Blanked(text))) > width) ++notes.cut_texts;
}

}  // namespace walrim
