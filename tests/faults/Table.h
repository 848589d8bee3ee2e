// The fault matrix as a document for people.
#pragma once

#include <string>

namespace walrim {

/// docs/reliability.md, whole.
[[nodiscard]] std::string ReliabilityDocument();

}  // namespace walrim
