// A trace that is kept.
#pragma once

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "device/FrameTrace.h"

namespace walrim {

class RecordingTrace : public FrameTrace {
 public:
  void Frame(const TracedFrame& frame) override { lines.push_back(TraceLine(frame)); }
  void Note(std::chrono::nanoseconds time, std::string_view text) override {
    lines.push_back(TraceNoteLine(time, text));
    notes.emplace_back(text);
  }
  [[nodiscard]] bool Noted(std::string_view text) const {
    return std::find(notes.begin(), notes.end(), text) != notes.end();
  }

  std::vector<std::string> lines;
  std::vector<std::string> notes;
};

}  // namespace walrim
