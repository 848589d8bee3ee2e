// Bytes of another program. What reads as a message is written the same again, and no beginning of it is broken.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "text/CommandMessage.h"

using namespace walrim;

namespace {

void CheckCall(std::string_view bytes) {
  CommandCall call;
  if (DecodeCall(bytes, call) != MessageState::Complete) return;
  if (EncodeCall(call) != bytes) std::abort();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    if (DecodeCall(bytes.substr(0, size), call) != MessageState::Incomplete) std::abort();
  }
}

void CheckReply(std::string_view bytes) {
  CommandReply reply;
  if (DecodeReply(bytes, reply) == MessageState::Complete && EncodeReply(reply) != bytes) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view message(reinterpret_cast<const char*>(bytes), size);
  CheckCall(message);
  CheckReply(message);
  return 0;
}
