// Bytes of a web server. However they are cut into pieces, they come to the same, within the limit; and an answer that
// is made of them brings them back.
//
// The first byte is the size of the pieces, and tells how the answer that is made is sent: its lowest two bits how its
// end is told, the next one whether an interim answer comes before it, the rest the status. The bytes behind it are
// what the server sends, and the body of the answer that is made.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "text/HttpAnswer.h"

using namespace walrim;

namespace {

constexpr std::size_t Limit = 200;
constexpr std::string_view Behind = "HTTP/1.1 500 NOT READ";

enum class BodyEnd { Counted, Chunked, Connection };

void TakeInPieces(HttpAnswer& answer, std::string_view bytes, std::size_t piece) {
  while (!bytes.empty()) {
    answer.Take(bytes.substr(0, piece));
    bytes.remove_prefix(std::min(piece, bytes.size()));
  }
}

void CheckAnyBytes(std::string_view bytes, std::size_t piece) {
  HttpAnswer whole(Limit);
  HttpAnswer pieces(Limit);
  whole.Take(bytes);
  TakeInPieces(pieces, bytes, piece);
  if (whole.Now() != pieces.Now() || whole.End() != pieces.End()) std::abort();
  if (whole.body.size() > Limit || pieces.body.size() > Limit) std::abort();
  if (whole.Now() == HttpAnswer::State::Complete && whole.body != pieces.body) std::abort();
  if (whole.Now() == HttpAnswer::State::Header || whole.Now() == HttpAnswer::State::Body) std::abort();
}

std::string Chunks(std::string_view body, std::size_t size) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (; !body.empty(); body.remove_prefix(std::min(size, body.size()))) {
    const std::string_view chunk = body.substr(0, size);
    text.append(1, digits[chunk.size() / 16]).append(1, digits[chunk.size() % 16]);
    text.append(";name=value\r\n").append(chunk).append("\r\n");
  }
  return text + "0\r\nTrailer: any\r\n\r\n";
}

std::string AnswerOf(std::string_view body, BodyEnd end, int status, std::size_t piece) {
  std::string text = "HTTP/1.1 " + std::to_string(status) + " As it is\r\nX-Told:  twice \r\n";
  switch (end) {
    case BodyEnd::Counted:
      return text.append("CONTENT-LENGTH:").append(std::to_string(body.size())).append("\r\n\r\n").append(body);
    case BodyEnd::Chunked:
      return text.append("Transfer-Encoding: Chunked\r\n\r\n").append(Chunks(body, piece));
    case BodyEnd::Connection:
      return text.append("\r\n").append(body);
  }
  return text;
}

void CheckMadeAnswer(std::string_view body, std::uint8_t choice) {
  const std::size_t piece = std::max<std::size_t>(choice, 1);
  const BodyEnd end = choice % 4U == 0 ? BodyEnd::Counted : choice % 4U == 1 ? BodyEnd::Chunked : BodyEnd::Connection;
  const int status = 205 + choice / 8;
  std::string sent = choice / 4U % 2U == 0 ? "" : "HTTP/1.1 103 Early\r\nContent-Length: 7\r\n\r\n";
  sent += AnswerOf(body, end, status, piece);
  const bool told = end != BodyEnd::Connection;
  HttpAnswer answer(Limit);
  TakeInPieces(answer, told ? sent + std::string(Behind) : sent, piece);
  if (answer.Now() != (told ? HttpAnswer::State::Complete : HttpAnswer::State::Body)) std::abort();
  if (answer.End() != HttpAnswer::State::Complete || answer.body != body) std::abort();
  if (answer.Status() != status || answer.Reason() != "As it is" || answer.Header("x-told") != "twice") std::abort();
  // Without its last byte it is not whole.
  if (!told) return;
  HttpAnswer cut(Limit);
  TakeInPieces(cut, std::string_view(sent).substr(0, sent.size() - 1), piece);
  if (cut.End() != HttpAnswer::State::CutShort) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view rest(reinterpret_cast<const char*>(bytes) + 1, size - 1);
  CheckAnyBytes(rest, std::max<std::size_t>(bytes[0], 1));
  CheckMadeAnswer(rest.substr(0, Limit), bytes[0]);
  return 0;
}
