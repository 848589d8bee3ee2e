// The trace of the line, in a file.
#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "device/FrameTrace.h"
#include "device/PositionHiding.h"

namespace walrim {

/// Every line is flushed as it goes, so that the trace is complete whatever happens next.
class TraceFile : public FrameTrace {
 public:
  /// Begins a new file. False when it cannot be written; Problem then says why. A file that holds anything but a trace
  /// is replaced only where that is wanted.
  [[nodiscard]] bool Open(const std::string& path, bool replace = false);
  /// Open refused to replace a file.
  [[nodiscard]] bool Refused() const { return refused_; }
  /// The system's words for the first thing that went wrong; empty when nothing did.
  [[nodiscard]] const std::string& Problem() const { return problem_; }

  /// From here on no frame tells where anything lies.
  void HidePositions() { hiding_.emplace(); }

  void Frame(const TracedFrame& frame) override;
  void Note(std::chrono::nanoseconds time, std::string_view text) override { WriteLine(TraceNoteLine(time, text)); }

 private:
  void WriteLine(const std::string& line);

  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  void NoteProblem();
  [[nodiscard]] bool Begin(const std::string& path, bool replace);
  std::unique_ptr<std::FILE, Closer> file_;
  std::string problem_;
  bool refused_ = false;
  std::optional<PositionHiding> hiding_;
};

}  // namespace walrim
