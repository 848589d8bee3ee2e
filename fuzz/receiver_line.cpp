// What a host of any kind sends to the receiver made of software. The first byte chooses the model and its temper, the
// second a fault; the rest is on the line. Whatever comes back must be made of whole frames, and the memory must stay
// sendable.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "receiver/DemoContents.h"
#include "receiver/SoftReceiver.h"

using namespace walrim;

namespace {

ReceiverFaults ChosenFault(std::uint8_t choice) {
  const std::vector<std::string> forms = FaultForms();
  ReceiverFaults faults;
  if (choice >= forms.size()) return faults;
  const std::string& form = forms[choice];
  const std::string kind = form.substr(0, form.find_first_of("[="));
  if (!AddFault(faults, form == kind ? kind : kind + "=2").empty()) std::abort();
  return faults;
}

bool MayBeDamaged(const ReceivedFrame& frame, const ReceiverFaults& faults) {
  constexpr std::uint8_t ack = 6;
  return faults.overlong || faults.bad_checksum || (faults.bad_ack && frame.packet.id == ack);
}

/// It sends on its own account, and never falls silent.
bool NeverSilent(const ReceiverFaults& faults, ReceiverTemper temper) {
  return faults.pvt || faults.repeat || temper == ReceiverTemper::Strict;
}

void CheckSendable(const std::vector<LinePacket>& records) {
  for (const LinePacket& record : records) {
    if (record.data.size() > MaxLinePacketData) std::abort();
  }
}

/// A few of the demonstration data's records, made once: what a host says matters here, not how much comes back.
ReceiverMemory FewRecords(const ReceiverModel& model) {
  constexpr std::size_t few = 6;
  ReceiverMemory memory = EncodeMemory(DemoContents(model), model);
  for (std::vector<LinePacket>* records : {&memory.waypoints, &memory.routes, &memory.tracks})
    records->resize(std::min(records->size(), few));
  return memory;
}

const std::vector<ReceiverMemory>& Memories() {
  static const std::vector<ReceiverMemory> memories = [] {
    std::vector<ReceiverMemory> all;
    for (const ReceiverModel& model : ReceiverModels())
      all.push_back(FewRecords(model));
    return all;
  }();
  return memories;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> input(data, size);
  if (input.size() < 2) return 0;
  const std::size_t models = ReceiverModels().size();
  const ReceiverModel& model = ReceiverModels()[input[0] % models];
  const ReceiverTemper temper = input[0] / models % 2 == 0 ? ReceiverTemper::Lenient : ReceiverTemper::Strict;
  const ReceiverFaults faults = ChosenFault(input[1]);
  SoftReceiver receiver(model, Memories()[input[0] % models], 9600, faults, temper);
  LineFrameReader reader;
  std::chrono::nanoseconds now{0};
  receiver.Receive(input.subspan(2), now);
  bool last_ended = true;
  const auto end = receiver.InputFreeAt() + std::chrono::seconds(2);
  while (const auto due = receiver.NextDue()) {
    if (*due < now) std::abort();
    if (*due > end && NeverSilent(faults, temper)) return 0;
    now = *due;
    for (const std::uint8_t byte : receiver.Send(now)) {
      const auto frame = reader.Take(byte);
      last_ended = frame.has_value();
      if (frame && !frame->intact && !MayBeDamaged(*frame, faults)) std::abort();
    }
  }
  if (!last_ended) std::abort();
  CheckSendable(receiver.Memory().waypoints);
  CheckSendable(receiver.Memory().routes);
  CheckSendable(receiver.Memory().tracks);
  return 0;
}
