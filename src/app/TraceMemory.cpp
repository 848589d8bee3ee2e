#include "app/TraceMemory.h"

#include <utility>

#include "device/PositionHiding.h"

namespace walrim {

std::size_t TraceMemory::SizeOf(const Event& event) {
  return sizeof event + event.bytes.size() + event.text.size();
}

void TraceMemory::Frame(const TracedFrame& frame) {
  Keep({false, frame.direction, frame.time, {frame.bytes.begin(), frame.bytes.end()}, std::string(frame.mark)});
}

void TraceMemory::Note(std::chrono::nanoseconds time, std::string_view text) {
  Keep({true, {}, time, {}, std::string(text)});
}

void TraceMemory::Keep(Event event) {
  kept_bytes_ += SizeOf(event);
  events_.push_back(std::move(event));
  for (; kept_bytes_ > MostBytes; events_.pop_front())
    kept_bytes_ -= SizeOf(events_.front());
}

std::string TraceMemory::Text(bool hide_positions) const {
  PositionHiding hiding;
  std::string text = std::string(TraceHeading) + "\n";
  for (const Event& event : events_) {
    const auto bytes = hide_positions ? hiding.Hide(event.bytes) : event.bytes;
    text += event.note ? TraceNoteLine(event.time, event.text)
                       : TraceLine({event.direction, event.time, bytes, event.text});
    text += '\n';
  }
  return text;
}

}  // namespace walrim
