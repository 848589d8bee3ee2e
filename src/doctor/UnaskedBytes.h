// What the bytes tell that come over a line unasked.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace walrim {

/// What unasked bytes are, as far as their values tell.
enum class UnaskedKind : std::uint8_t {
  None,        ///< too few to tell
  Text,        ///< printable characters and line ends: the speed is right
  SlowerLine,  ///< what a slower line's text becomes when it is read too fast
  Rtcm,        ///< six bits a byte, as corrections for a receiver come
  Other
};

/// So few bytes may be anything.
inline constexpr std::size_t FewestUnasked = 8;

[[nodiscard]] UnaskedKind KindOfUnasked(std::span<const std::uint8_t> bytes);

/// The speeds, in bits a second, at which bytes that came at 9600 are worth another look, the likeliest first. Not
/// 9600 itself.
[[nodiscard]] std::vector<int> SpeedsToTry(std::span<const std::uint8_t> bytes);

}  // namespace walrim
