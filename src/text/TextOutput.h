// A text that is written line by line and leaves in pieces.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace walrim {

/// Collects UTF-8 lines and hands them on before they become many, so that a file of any length takes little memory.
class TextOutput {
 public:
  /// Takes whole lines away. May throw where it cannot; the writing ends then.
  using Spill = std::function<void(const std::string& lines)>;

  explicit TextOutput(Spill spill) : spill_(std::move(spill)) {}

  /// The beginning of the present line, to append to; earlier lines may stand in front of it.
  [[nodiscard]] std::string& Line() { return text_; }
  /// Ends the present line.
  void EndLine(std::string_view line_end = "\r\n") {
    text_ += line_end;
    if (text_.size() >= PieceSize) Flush();
  }
  /// Hands on what is left. To be called once, at the end.
  void Flush() {
    empty_ = empty_ && text_.empty();
    if (!text_.empty()) spill_(text_);
    text_.clear();
  }
  /// Whether nothing has been written so far.
  [[nodiscard]] bool Empty() const { return empty_ && text_.empty(); }

 private:
  static constexpr std::size_t PieceSize = 16384;

  Spill spill_;
  std::string text_;
  bool empty_ = true;
};

}  // namespace walrim
