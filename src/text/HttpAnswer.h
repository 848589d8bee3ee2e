// An HTTP/1.1 answer, read as its bytes come.
//
//   answer  = *interim "HTTP/1." digit blank status [blank reason] line-end *(name ":" value line-end) line-end body
//   interim = an answer with a status below 200, without body
//   body    = by Transfer-Encoding "chunked", by Content-Length, or up to the end of the connection
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace walrim {

class HttpAnswer {
 public:
  /// All lines of an answer together may have this many bytes.
  static constexpr std::size_t MostLineBytes = 64U * 1024U;

  enum class State {
    Header,    ///< the header has not come whole
    Body,      ///< the header has, the body has not
    Complete,  ///< the body has come whole; what follows it is not read
    CutShort,  ///< the connection ended before
    TooLarge,  ///< the body is larger than it may be
    Broken,    ///< this is no such answer
  };

  explicit HttpAnswer(std::size_t most_body_bytes) : most_body_bytes_(most_body_bytes) {}

  /// Takes the next bytes. Those that follow the end of the answer or an error are dropped.
  State Take(std::string_view bytes);
  /// The connection has ended.
  State End();

  [[nodiscard]] State Now() const { return state_; }
  /// These hold once the header has come.
  [[nodiscard]] int Status() const { return status_; }
  [[nodiscard]] const std::string& Reason() const { return reason_; }
  /// A header's value by its name in lower case; empty where there is none.
  [[nodiscard]] std::string_view Header(std::string_view name) const;

  std::string body;

 private:
  enum class Expect { StatusLine, HeaderLine, ChunkSize, ChunkEnd, Trailer, Counted, Chunk, Uncounted };

  [[nodiscard]] bool Reading() const { return state_ == State::Header || state_ == State::Body; }
  [[nodiscard]] bool ExpectsLine() const { return expect_ <= Expect::Trailer; }
  void TakeLine(std::string_view& bytes);
  void TakeData(std::string_view& bytes);
  void ReadLine(std::string_view line);
  void ReadStatusLine(std::string_view line);
  void ReadHeaderLine(std::string_view line);
  void ReadChunkSize(std::string_view line);
  void EndHeader();
  void BeginCountedBody(std::string_view length);
  void Expecting(Expect expect, std::size_t bytes = 0);

  std::size_t most_body_bytes_;
  State state_ = State::Header;
  Expect expect_ = Expect::StatusLine;
  std::string line_;            ///< the beginning of a line whose end has not come
  std::size_t line_bytes_ = 0;  ///< of all lines
  std::size_t data_bytes_ = 0;  ///< that are still to come of a counted body or a chunk
  int status_ = 0;
  std::string reason_;
  std::map<std::string, std::string, std::less<>> headers_;
};

}  // namespace walrim
