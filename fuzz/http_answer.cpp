// Bytes of a web server. However they are cut into pieces, they come to the same, within the limit. The first byte is
// the size of the pieces.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "text/HttpAnswer.h"

using namespace walrim;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  constexpr std::size_t Limit = 200;
  if (size == 0) return 0;
  const std::size_t piece = std::max<std::size_t>(bytes[0], 1);
  std::string_view rest(reinterpret_cast<const char*>(bytes) + 1, size - 1);
  HttpAnswer whole(Limit);
  HttpAnswer pieces(Limit);
  whole.Take(rest);
  while (!rest.empty()) {
    pieces.Take(rest.substr(0, piece));
    rest.remove_prefix(std::min(piece, rest.size()));
  }
  if (whole.Now() != pieces.Now() || whole.End() != pieces.End()) std::abort();
  if (whole.body.size() > Limit || pieces.body.size() > Limit) std::abort();
  if (whole.Now() == HttpAnswer::State::Complete && whole.body != pieces.body) std::abort();
  if (whole.Now() == HttpAnswer::State::Header || whole.Now() == HttpAnswer::State::Body) std::abort();
  return 0;
}
