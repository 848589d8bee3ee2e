// The records that a user has checked: what is saved, copied, sent and deleted. All are at first.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "records/DataSet.h"

namespace walrim {

/// Records of a kind with a headless log, which DataSet::Count leaves out, and the checked ones among them.
[[nodiscard]] std::size_t RecordCount(const DataSet& data, DataKind kind);
[[nodiscard]] std::size_t ChosenCount(const DataSet& data, DataKind kind);
[[nodiscard]] bool AllChosen(const DataSet& data, DataKind kind);
/// Whether there are records of a kind and not one of them is checked.
[[nodiscard]] bool NoneChosen(const DataSet& data, DataKind kind);

void SetAllChosen(DataSet& data, DataKind kind, bool chosen);

/// The indices of the checked records of a kind, in rising order.
[[nodiscard]] std::vector<std::size_t> ChosenIndices(const DataSet& data, DataKind kind);

/// Takes the checked records of a kind away. Points that come next have no header then.
void RemoveChosen(DataSet& data, DataKind kind);

/// A data set without the records that are not checked.
class ChosenData {
 public:
  /// data must outlive this object. It is copied only where something in it is not checked.
  explicit ChosenData(const DataSet& data);

  [[nodiscard]] const DataSet& operator*() const { return part_ ? *part_ : all_; }

 private:
  const DataSet& all_;
  std::optional<DataSet> part_;
};

}  // namespace walrim
