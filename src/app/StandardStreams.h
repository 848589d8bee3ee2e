// The first three descriptors.
#pragma once

namespace walrim {

/// Opens those of the descriptors 0 to 2 that are closed, so that no file or line that is opened later takes the place
/// of a standard stream and gets what is meant for it. Reading and writing them fails as before. To be called first.
void OpenClosedStandardStreams();

}  // namespace walrim
