#include "app/PlaceCommands.h"

#include <string>

#include "app/Messages.h"

namespace walrim {

Outcome OpenOnMap(Desktop& desktop, const MapPage& page, const MapPlace& place) {
  const std::string address = page.write(place);
  if (desktop.OpenLink(address)) return Outcome::Done;
  desktop.ShowMessage(messages::LinkNotOpened(address));
  return Outcome::Refused;
}

Outcome CopyGeoLink(Desktop& desktop, const MapPlace& place) {
  desktop.SetClipboardText(GeoLink(place));
  return Outcome::Done;
}

}  // namespace walrim
