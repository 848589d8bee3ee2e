// What a command has done for the user, for a line that stays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/Duplicates.h"
#include "records/DataKind.h"

namespace walrim {

struct Deed {
  enum class Kind : std::uint8_t { Imported, Saved, Copied, Sent };
  Kind kind = Kind::Imported;
  std::size_t records = 0;       ///< waypoints, routes and logs
  std::string path{};            ///< of the file that was written
  DataKinds kinds{};             ///< that came in
  RecordIndices already_held{};  ///< those that came in and were there before
  RecordCounts held_before{};    ///< those that came in stand behind these
};

/// Those of one command, in their order. Imports one behind the other are one.
class Deeds {
 public:
  void Add(Deed deed);
  void Clear() { deeds_.clear(); }
  [[nodiscard]] const std::vector<Deed>& All() const { return deeds_; }

 private:
  std::vector<Deed> deeds_;
};

}  // namespace walrim
