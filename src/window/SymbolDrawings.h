// How the shapes of symbols are drawn, as texts.
#pragma once

#include <string_view>

#include "records/Symbols.h"

namespace walrim {

/// On a field of 16 by 16 with the origin at the top left, parts one behind the other:
///   P x y x y ...   a polygon, filled and outlined        Q: filled with the second colour
///   O x y r         a circle, filled and outlined         U: filled with the second colour
///   L x y x y ...   a line
///   F x y x y ...   a polygon in the colour of lines      D x y r: a circle likewise
[[nodiscard]] std::string_view DrawingOf(SymbolShape shape);

}  // namespace walrim
