// How many of the records are checked, as it is shown.
#pragma once

#include <QString>

#include "records/Chosen.h"

namespace walrim {

/// "12 / 19" of the records of a kind; all where all are checked.
[[nodiscard]] inline QString ChosenCountText(const DataSet& data, DataKind kind, const QString& all) {
  if (AllChosen(data, kind)) return all;
  return QStringLiteral("%1 / %2").arg(ChosenCount(data, kind)).arg(RecordCount(data, kind));
}

}  // namespace walrim
