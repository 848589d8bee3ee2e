// What a user does with the place of a record: open it on a map, take its link along.
#pragma once

#include "app/Outcome.h"
#include "dialogs/MapPages.h"
#include "platform/Desktop.h"

namespace walrim {

/// Opens a page that is written for places. This is all that tells anybody outside where a record lies.
Outcome OpenOnMap(Desktop& desktop, const MapPage& page, const MapPlace& place);
/// Puts the place's geo link on the clipboard.
Outcome CopyGeoLink(Desktop& desktop, const MapPlace& place);

}  // namespace walrim
