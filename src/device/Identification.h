// Who is at the other end of the line.
#pragma once

#include <string_view>

#include "device/DeviceSession.h"
#include "device/TransferReport.h"

namespace walrim {

/// Requests the product data, once more where nothing or nonsense answers, and chooses the link. The report tells of a
/// receiver that refuses and of Cancel.
[[nodiscard]] ProductInfo RequestProduct(DeviceSession& session, std::string_view port_name);

}  // namespace walrim
