// A pseudo-terminal that stands for a serial line: a program opens its path as it would a serial port.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/Descriptor.h"

namespace walrim {

/// Clients may come and go: the line stays in raw mode, and what a client leaves behind when it goes, or is killed
/// (unread bytes, its exclusive use of the port), is cleared away.
class PseudoTerminal {
 public:
  /// Makes the pseudo-terminal. Gives what went wrong, or an empty text.
  [[nodiscard]] std::string Open();

  /// What a client opens.
  [[nodiscard]] const std::string& Path() const { return path_; }
  /// Readable when a client has sent something.
  [[nodiscard]] int LineDescriptor() const { return master_.Get(); }
  /// Readable when clients have come or gone; then TakeClientEvents is due, before anything is read or written.
  [[nodiscard]] int ClientDescriptor() const { return watch_.Get(); }
  void TakeClientEvents();

  /// What clients have sent; empty when nothing waits.
  [[nodiscard]] std::vector<std::uint8_t> Read();
  /// Sends to the clients. Without one, or with one that does not read, bytes are lost as on a real line.
  void Write(std::span<const std::uint8_t> bytes);
  /// Gives the clients this long to read what was written. What is unread when the line is closed is lost.
  void WaitUntilRead(std::chrono::milliseconds at_most);

 private:
  void ClearLine();

  Descriptor master_;
  Descriptor slave_;  // held open, because once a client has excluded others the line cannot be opened any more
  Descriptor watch_;
  std::string path_;
  int clients_ = 0;
};

/// A symbolic link to a pseudo-terminal, which goes away with its owner.
class PathLink {
 public:
  PathLink() = default;
  PathLink(const PathLink&) = delete;
  PathLink& operator=(const PathLink&) = delete;
  ~PathLink() { Remove(); }

  /// Makes link point to target. A link to a pseudo-terminal, be it one that is gone, is replaced; anything else there
  /// is left alone and refused. Gives what went wrong, or an empty text.
  [[nodiscard]] std::string Make(const std::string& link, const std::string& target);
  /// Removes the link, unless it has been made to point elsewhere since.
  void Remove();

 private:
  std::string link_;
  std::string target_;
};

}  // namespace walrim
