// The pictures of symbols, drawn by the program itself.
#pragma once

#include <QIcon>
#include <QPalette>
#include <QPixmap>

#include "records/Symbols.h"

namespace walrim {

/// A picture as wide and high as size, in device-independent pixels, for a screen with ratio pixels to each. Its lines
/// have the palette's colour of text.
[[nodiscard]] QPixmap DrawSymbol(const SymbolPicture& picture, int size, qreal ratio, const QPalette& palette);

/// The picture of a type's symbol in the program's palette; kept.
[[nodiscard]] QIcon SymbolIcon(WaypointType type, int code);

}  // namespace walrim
