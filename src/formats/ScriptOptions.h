// The settings that shape a map-server script.
#pragma once

#include <cstdint>
#include <string>

namespace walrim {

struct ScriptOptions {
  std::int16_t utc_offset_hours = 0;  ///< added to the times of the records
  std::string origin_name;            ///< label of a route's first point in place of its ident; empty: the ident
  std::string destination_name;       ///< the same for the last point
  bool numbering_down = false;        ///< the points of a route are numbered from the last down to 1
  std::int16_t track_log_step = 1;    ///< every how manieth point of a log is drawn as a point; below 1 counts as 1

  friend bool operator==(const ScriptOptions&, const ScriptOptions&) = default;
};

}  // namespace walrim
