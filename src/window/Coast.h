// The land of the world as the program carries it: what a map shows of it without asking anybody.
#pragma once

#include <QByteArrayView>
#include <vector>

#include "window/MapLine.h"

namespace walrim {

/// Closed lines, each ending at its first point; land and water alternate where they lie inside each other. Nothing of
/// data that are not as share/coast/make-coast writes them.
[[nodiscard]] std::vector<MapLine> ReadCoast(QByteArrayView data);
/// Those of the program's own resource.
[[nodiscard]] std::vector<MapLine> LoadCoast();

}  // namespace walrim
