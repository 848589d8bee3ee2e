// The files that are part of the program.
#pragma once

namespace walrim {

/// To be called before one of them is read: those of a static library are not there by themselves.
void CallInResources();

}  // namespace walrim
