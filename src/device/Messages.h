// What the device module shows a user.
#pragma once

#include <string>
#include <string_view>

#include "platform/SerialPort.h"

namespace walrim::device_messages {

/// Stands in place of a silent receiver's description.
inline constexpr std::string_view SilentReceiver = "電源が入っていないか，接続されていません．";
inline constexpr std::string_view DataLoss =
    "GPS内のデータ不具合もしくは通信エラーのためデータの取りこぼしが発生した可能性があります．";

/// Why a port cannot be opened, and what the user can do about it; then what is said of every such port.
[[nodiscard]] std::string PortNotOpened(std::string_view port_name, const PortResult& result);

// Why a record cannot be sent. Its name is as "Waypoint 2".

[[nodiscard]] std::string ValueOutOfRange(std::string_view record);
[[nodiscard]] std::string CharacterNotSendable(std::string_view record, std::string_view character);

}  // namespace walrim::device_messages
