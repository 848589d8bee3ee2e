// Who is at the other end of the line.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "device/DeviceSession.h"
#include "device/TransferReport.h"

namespace walrim {

/// Requests the product data, once more where nothing or nonsense answers, and chooses the link. The report tells of a
/// receiver that refuses and of Cancel.
[[nodiscard]] ProductInfo RequestProduct(DeviceSession& session, std::string_view port_name);

/// The product data of their packet's data; what is missing of them reads as zero bytes. Throws std::out_of_range where
/// a text has no end.
[[nodiscard]] ProductInfo ReadProduct(std::span<const std::uint8_t> received);

}  // namespace walrim
