// Dates that are 1024 weeks behind, old beside new, for agreeing.
#pragma once

#include <QDialog>
#include <vector>

#include "records/DataSet.h"
#include "walks/RollOver.h"

class QTableWidget;

namespace walrim {

/// Accepted when the dates are to be repaired.
class DateRepairsDialog : public QDialog {
 public:
  /// The repairs are of logs of the data set. Times are shown in local time.
  DateRepairsDialog(const DataSet& data_set, const std::vector<DateRepair>& repairs, int utc_offset_hours,
                    QWidget* parent);

 private:
  [[nodiscard]] QTableWidget* MakeTable(const DataSet& data_set, const std::vector<DateRepair>& repairs,
                                        int utc_offset_hours);
};

}  // namespace walrim
