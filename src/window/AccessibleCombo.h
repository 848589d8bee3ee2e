// What screen readers are told of lists to choose from.
#pragma once

namespace walrim {

/// From now on a list is told by its accessible name or its caption, as all other controls are, and its choice is its
/// value. Qt tells the choice as the name.
void NameCombosByCaption();

}  // namespace walrim
