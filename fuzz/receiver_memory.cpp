// A memory file of any content: every record of what is read from it fits a packet of every model.
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "receiver/MemoryFile.h"
#include "receiver/ReceiverMemory.h"

using namespace walrim;

namespace {

void Check(const std::vector<LinePacket>& records) {
  if (records.size() > 65535) std::abort();
  for (const LinePacket& record : records) {
    if (record.data.empty() || record.data.size() > MaxLinePacketData) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const MemoryFileResult result = ParseMemoryFile({reinterpret_cast<const char*>(data), size}, 9);
  if (result.contents.has_value() == !result.problem.empty()) std::abort();
  if (!result.contents) return 0;
  for (const ReceiverModel& model : ReceiverModels()) {
    const ReceiverMemory memory = EncodeMemory(*result.contents, model);
    Check(memory.waypoints);
    Check(memory.routes);
    Check(memory.tracks);
  }
  return 0;
}
