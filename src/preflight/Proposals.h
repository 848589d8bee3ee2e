// What can be done to records so that less of them is lost.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "preflight/Recipient.h"
#include "records/DataSet.h"

namespace walrim {

enum class Change : std::uint8_t {
  Rename,     ///< a waypoint or a point of a route gets text as its name
  NameRoute,  ///< a route gets text as its name or comment
  Number,     ///< a route gets another number
  Split,    ///< a route becomes parts of at most so many points, each beginning with the point that the last ends with
  Shorten,  ///< a log keeps at most so many points
  Clean     ///< the texts of a record lose what cannot be sent, and what their fields have no room for
};

struct Proposal {
  Change change = Change::Rename;
  DataKind kind = DataKind::Waypoint;
  std::size_t record = 0;            ///< index in the data set
  std::optional<std::size_t> point;  ///< of a route, an index
  std::string text;
  std::size_t number = 0;  ///< a route's new number, or points

  friend bool operator==(const Proposal&, const Proposal&) = default;
};

/// A copy of a data set with proposals taken, the later of two for the same.
[[nodiscard]] DataSet WithProposals(const DataSet& data, const std::vector<Proposal>& proposals, const Recipient& to);

/// Numbers that no route has, from 1 on.
class FreeNumbers {
 public:
  explicit FreeNumbers(const DataSet& data);
  /// 0 where all are taken.
  [[nodiscard]] std::uint8_t Take();
  void Keep(std::uint8_t number) { taken_[number] = true; }

 private:
  std::vector<bool> taken_ = std::vector<bool>(256);
};

/// A route's name with a number behind it, within so many bytes of code page 932.
[[nodiscard]] std::string NumberedName(const std::string& name, std::size_t number, std::size_t width);
/// The bytes that a route's name has at most.
[[nodiscard]] std::size_t RouteNameWidth(RouteHeaderType type);

}  // namespace walrim
