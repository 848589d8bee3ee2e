// What walrim-cli prints of an examined line.
#pragma once

#include <string>
#include <vector>

#include "doctor/LineReport.h"

namespace walrim {

/// The finding and what to do next, a line each.
[[nodiscard]] std::string DoctorText(const LineReport& report);
/// An object with finding, healthy, port, device, baud, description, headline, advice, command, steps, holders,
/// figures, sentences and adapter; what is not known is left out. Times are in milliseconds, angles in degrees (WGS84).
[[nodiscard]] std::string DoctorJson(const LineReport& report, const std::vector<std::string>& steps);

}  // namespace walrim
