// The link of the transfers behind an identification, as the user wants it.
#pragma once

#include <cstdint>

namespace walrim {

enum class LinkChoice : std::uint8_t {
  Automatic,  ///< the checked one where the answer to the identification keeps to the published framing
  Checked,
  Plain
};

}  // namespace walrim
