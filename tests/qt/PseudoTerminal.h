// The other end of a serial line, for the tests: the master of a pseudo-terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace walrim {

class PseudoTerminal {
 public:
  PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;
  ~PseudoTerminal();

  /// What a port opens.
  [[nodiscard]] const std::string& Device() const { return device_; }
  [[nodiscard]] int Handle() const { return handle_; }

  void Send(std::string_view bytes) const;
  /// Sends as much as the line takes at once; the number of bytes.
  [[nodiscard]] std::size_t SendWhatFits(std::string_view bytes) const;
  /// Collects bytes until there are count of them, or none came for some seconds.
  [[nodiscard]] std::string Receive(std::size_t count) const;

  /// Takes the line away, as a pulled cable does.
  void Hangup();

 private:
  int handle_ = -1;
  std::string device_;
};

}  // namespace walrim
