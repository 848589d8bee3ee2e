#include "text/TextEncoding.h"

#include <cstring>
#include <utility>

#include "text/Cp932.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr std::size_t LongestCharacter = 4;
/// Bytes of a held text that are looked at together.
constexpr std::size_t PieceSize = 16384;

std::uint8_t Byte(std::string_view text, std::size_t at) {
  return static_cast<std::uint8_t>(text[at]);
}

/// Bytes that the character at the front has by its first byte.
std::size_t AnnouncedLength(std::string_view text) {
  const std::uint8_t lead = Byte(text, 0);
  return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : LongestCharacter;
}

/// Whether the two bytes of a UTF-8 character are two half-width katakana in Shift-JIS.
bool IsKatakanaPair(std::string_view character) {
  return character.size() == 2 && Byte(character, 1) >= 0xA1;
}

std::size_t FindOrEnd(std::string_view text, char c) {
  const void* const found = text.empty() ? nullptr : std::memchr(text.data(), c, text.size());
  return found == nullptr ? text.size() : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

}  // namespace

void EncodingDetector::Add(std::string_view bytes) {
  if (first_.size() < Utf8Mark.size()) first_.append(bytes.substr(0, Utf8Mark.size() - first_.size()));
  // The characters that pieces cut are put together; there is never more of them than one.
  while (!begun_.empty() && !bytes.empty() && valid_) {
    begun_ += bytes.front();
    bytes.remove_prefix(1);
    if (begun_.size() == AnnouncedLength(begun_)) Check(std::exchange(begun_, {}));
  }
  if (valid_) Check(bytes);
}

void EncodingDetector::Check(std::string_view bytes) {
  while (valid_) {
    bytes.remove_prefix(AsciiPrefix(bytes));
    if (bytes.empty()) return;
    const std::size_t length = AnnouncedLength(bytes);
    if (bytes.size() < length) {
      begun_ = bytes;
      return;
    }
    const std::string_view character = TakeBytes(bytes, length);
    valid_ = IsValidUtf8(character);
    (IsKatakanaPair(character) ? pairs_ : others_) = true;
  }
}

TextEncoding EncodingDetector::Encoding() const {
  if (first_ == Utf8Mark) return TextEncoding::Utf8;
  const bool utf8 = valid_ && begun_.empty() && (others_ || !pairs_);
  return utf8 ? TextEncoding::Utf8 : TextEncoding::ShiftJis;
}

TextEncoding EncodingOf(std::string_view bytes) {
  EncodingDetector detector;
  detector.Add(bytes);
  return detector.Encoding();
}

LineSource::LineSource(std::string_view bytes, TextEncoding encoding)
    : LineSource([bytes]() mutable { return TakeBytes(bytes, PieceSize); }, encoding) {}

LineSource::LineSource(Fetch fetch, TextEncoding encoding) : fetch_(std::move(fetch)), encoding_(encoding) {}

bool LineSource::FetchPiece() {
  do {
    piece_ = fetch_();
    if (piece_.empty()) return false;
    // A mark that comes in pieces of fewer bytes than it has is none.
    if (std::exchange(at_start_, false)) marked_ = Take(piece_, Utf8Mark);
    if (std::exchange(behind_return_, false)) Take(piece_, '\n');
  } while (piece_.empty());
  line_feed_ = FindOrEnd(piece_, '\n');
  return true;
}

bool LineSource::NextBytes(std::string_view& line) {
  begun_.clear();
  while (!piece_.empty() || FetchPiece()) {
    const std::size_t end = FindOrEnd(piece_.substr(0, line_feed_), '\r');
    if (end == piece_.size()) {
      begun_.append(std::exchange(piece_, {}));
      continue;
    }
    line = TakeBytes(piece_, end);
    const bool is_return = piece_.front() == '\r';
    piece_.remove_prefix(1);
    behind_return_ = is_return && piece_.empty();
    // Only the part before the next line feed is searched for a CR, so that no byte is looked at twice.
    const bool at_line_feed = end == line_feed_ || (is_return && Take(piece_, '\n'));
    line_feed_ = at_line_feed ? FindOrEnd(piece_, '\n') : line_feed_ - end - 1;
    if (!begun_.empty()) line = begun_.append(line);
    return true;
  }
  line = begun_;
  return !begun_.empty();
}

std::string_view LineSource::Decoded(std::string_view bytes) {
  if (AsciiPrefix(bytes) == bytes.size()) return bytes;
  if (encoding_ == TextEncoding::ShiftJis) return decoded_ = DecodeCp932(bytes);
  // Only a text that says what it is may be ill-formed.
  if (marked_ && !IsValidUtf8(bytes)) return decoded_ = WellFormed(bytes);
  return bytes;
}

bool LineSource::Next(std::string_view& line) {
  if (!NextBytes(line)) return false;
  ++line_number_;
  line = Decoded(line);
  return true;
}

std::string LineSource::RestBytes(std::size_t most) {
  std::string bytes;
  while (bytes.size() <= most && (!piece_.empty() || FetchPiece()))
    bytes.append(std::exchange(piece_, {}));
  return bytes;
}

}  // namespace walrim
