// The messages by which another program calls the commands of a running window.
//
//   message = size body                 size: bytes of body, 4 bytes, at most MostCommandBytes
//   call    = %x01 text text text       the command word and its two arguments; one left out is empty
//   reply   = %x02 result               the command was run; result: 4 bytes, signed
//           | %x03                      the window is busy; nothing was done
//   text    = size *byte                size: 4 bytes; UTF-8 without zero bytes
//
// Numbers are little-endian. A connection carries one call and its reply.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace walrim {

/// Bytes of a message's body.
inline constexpr std::size_t MostCommandBytes = 64U * 1024U;

struct CommandCall {
  std::string word;
  std::string arg1;
  std::string arg2;

  friend bool operator==(const CommandCall&, const CommandCall&) = default;
};

/// The result of a command; nothing where the window was busy.
struct CommandReply {
  std::optional<std::int32_t> result;

  friend bool operator==(const CommandReply&, const CommandReply&) = default;
};

/// The message of a call; nothing where it would be too large or a text is no UTF-8 or holds a zero byte.
[[nodiscard]] std::optional<std::string> EncodeCall(const CommandCall& call);
[[nodiscard]] std::string EncodeReply(const CommandReply& reply);

/// Whether bytes hold one whole message. Broken bytes do not become one, whatever follows them.
enum class MessageState { Incomplete, Complete, Broken };

/// Reads a message that has come so far; what it says is set only when it is complete.
[[nodiscard]] MessageState DecodeCall(std::string_view bytes, CommandCall& call);
[[nodiscard]] MessageState DecodeReply(std::string_view bytes, CommandReply& reply);

}  // namespace walrim
