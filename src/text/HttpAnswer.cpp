#include "text/HttpAnswer.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "text/Scan.h"

namespace walrim {

namespace {

std::string_view Trim(std::string_view text) {
  return TrimAny(text, " \t");
}

/// A text that is digits and nothing else; nothing too where the number does not fit.
std::optional<std::size_t> WholeNumber(std::string_view digits, int base = 10) {
  std::size_t value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [at, problem] = std::from_chars(digits.data(), end, value, base);
  if (digits.empty() || problem != std::errc() || at != end) return std::nullopt;
  return value;
}

}  // namespace

HttpAnswer::State HttpAnswer::Take(std::string_view bytes) {
  while (Reading() && !bytes.empty()) {
    if (ExpectsLine()) {
      TakeLine(bytes);
    } else {
      TakeData(bytes);
    }
  }
  return state_;
}

HttpAnswer::State HttpAnswer::End() {
  if (Reading()) state_ = expect_ == Expect::Uncounted ? State::Complete : State::CutShort;
  return state_;
}

std::string_view HttpAnswer::Header(std::string_view name) const {
  const auto found = headers_.find(name);
  return found == headers_.end() ? std::string_view() : found->second;
}

void HttpAnswer::TakeLine(std::string_view& bytes) {
  const std::size_t end = bytes.find('\n');
  const std::size_t taken = std::min(end == std::string_view::npos ? end : end + 1, bytes.size());
  line_bytes_ += taken;
  // Chunks may be any number, and each has its two lines.
  const bool counts = expect_ != Expect::ChunkSize && expect_ != Expect::ChunkEnd;
  if ((counts ? line_bytes_ : line_.size() + taken) > MostLineBytes) {
    state_ = State::Broken;
    return;
  }
  if (!counts) line_bytes_ -= taken;
  line_.append(bytes.substr(0, taken));
  bytes.remove_prefix(taken);
  if (line_.back() != '\n') return;
  line_.pop_back();
  if (!line_.empty() && line_.back() == '\r') line_.pop_back();
  const std::string line = std::exchange(line_, {});
  ReadLine(line);
}

void HttpAnswer::TakeData(std::string_view& bytes) {
  const bool uncounted = expect_ == Expect::Uncounted;
  const std::size_t taken = uncounted ? bytes.size() : std::min(bytes.size(), data_bytes_);
  if (taken > most_body_bytes_ - body.size()) {
    state_ = State::TooLarge;
    return;
  }
  body.append(bytes.substr(0, taken));
  bytes.remove_prefix(taken);
  if (uncounted) return;
  data_bytes_ -= taken;
  if (data_bytes_ > 0) return;
  if (expect_ == Expect::Chunk) return Expecting(Expect::ChunkEnd);
  state_ = State::Complete;
}

void HttpAnswer::Expecting(Expect expect, std::size_t bytes) {
  expect_ = expect;
  data_bytes_ = bytes;
}

void HttpAnswer::ReadLine(std::string_view line) {
  switch (expect_) {
    case Expect::StatusLine:
      return ReadStatusLine(line);
    case Expect::HeaderLine:
      return ReadHeaderLine(line);
    case Expect::ChunkSize:
      return ReadChunkSize(line);
    case Expect::ChunkEnd:
      if (!line.empty()) state_ = State::Broken;
      return Expecting(Expect::ChunkSize);
    case Expect::Trailer:
      if (line.empty()) state_ = State::Complete;
      return;
    case Expect::Counted:
    case Expect::Chunk:
    case Expect::Uncounted:
      return;  // these are no lines
  }
}

void HttpAnswer::ReadStatusLine(std::string_view line) {
  constexpr std::string_view Version = "HTTP/1.";
  constexpr std::size_t StatusAt = Version.size() + 2;
  const bool long_enough = line.size() >= StatusAt + 3;
  const auto status = WholeNumber(long_enough ? line.substr(StatusAt, 3) : std::string_view());
  if (!status || *status < 100 || line.substr(0, Version.size()) != Version || line[StatusAt - 1] != ' ') {
    state_ = State::Broken;
    return;
  }
  status_ = static_cast<int>(*status);
  reason_ = Trim(line.substr(StatusAt + 3));
  headers_.clear();
  Expecting(Expect::HeaderLine);
}

void HttpAnswer::ReadHeaderLine(std::string_view line) {
  if (line.empty()) return EndHeader();
  const std::size_t colon = line.find(':');
  if (colon == 0 || colon == std::string_view::npos || line.find_first_of(" \t") < colon) {
    state_ = State::Broken;
    return;
  }
  const std::string_view value = Trim(line.substr(colon + 1));
  const auto [at, is_new] = headers_.try_emplace(LowerCase(line.substr(0, colon)), value);
  if (!is_new && at->second != value) at->second.append(", ").append(value);
}

void HttpAnswer::EndHeader() {
  if (status_ < 200 && status_ != 101) return Expecting(Expect::StatusLine);
  state_ = State::Body;
  const std::string coding = LowerCase(Header("transfer-encoding"));
  const std::string_view length = Header("content-length");
  if (status_ < 200 || status_ == 204 || status_ == 304) {
    state_ = State::Complete;
  } else if (coding == "chunked") {
    Expecting(Expect::ChunkSize);
  } else if (!coding.empty()) {
    state_ = State::Broken;
  } else if (headers_.contains("content-length")) {
    BeginCountedBody(length);
  } else {
    Expecting(Expect::Uncounted);
  }
}

void HttpAnswer::BeginCountedBody(std::string_view length) {
  if (!AllDigits(length)) {
    state_ = State::Broken;
    return;
  }
  const auto bytes = WholeNumber(length);
  if (!bytes || *bytes > most_body_bytes_) {
    state_ = State::TooLarge;
    return;
  }
  Expecting(Expect::Counted, *bytes);
  if (*bytes == 0) state_ = State::Complete;
}

void HttpAnswer::ReadChunkSize(std::string_view line) {
  const std::string_view digits = Trim(line.substr(0, line.find(';')));
  if (digits.empty() || !std::ranges::all_of(digits, IsHexDigit)) {
    state_ = State::Broken;
    return;
  }
  const auto bytes = WholeNumber(digits, 16);
  if (!bytes || *bytes > most_body_bytes_ - body.size()) {
    state_ = State::TooLarge;
    return;
  }
  Expecting(*bytes == 0 ? Expect::Trailer : Expect::Chunk, *bytes);
}

}  // namespace walrim
