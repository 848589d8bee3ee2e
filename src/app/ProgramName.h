// What the program is called.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

inline constexpr std::string_view ProgramName = "Walrim";
/// The version of this build, numbers joined by ".".
[[nodiscard]] std::string_view ProgramVersion();
/// Program name, version and what it is.
[[nodiscard]] std::string WindowTitle();

}  // namespace walrim
