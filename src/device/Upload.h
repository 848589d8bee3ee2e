// One upload.
#pragma once

#include <cstdint>
#include <string_view>

#include "device/DeviceSession.h"
#include "records/DataSet.h"

namespace walrim {

/// See Garmin::Upload.
[[nodiscard]] std::int32_t UploadRecords(DeviceSession& session, const DataSet& data, DataKind kind,
                                         std::string_view port_name);

}  // namespace walrim
