// The program walrim from its start to its end.
#pragma once

#include <functional>

namespace walrim {

/// What is called, where given, on the way to a window that can be used.
struct StartHooks {
  std::function<void()> first_frame;  ///< the window has been painted for the first time, still without contents
  std::function<void()> complete;     ///< it has been painted with all its contents
};

/// Runs the window until it is closed; returns the exit status.
[[nodiscard]] int RunProgram(int argc, char** argv, const StartHooks& hooks = {});

}  // namespace walrim
