#include "app/PlaceCommands.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/Messages.h"
#include "support/Fakes.h"

namespace walrim {
namespace {

const MapPlace Takao{35.6252, 139.2437, 599.0};

TEST(PlaceCommands, APlaceIsOpenedOnTheMapThatWasChosenAndOnNoOther) {
  RecordingDesktop desktop;
  for (const MapPage& page : MapPages()) {
    if (page.write == nullptr) continue;
    EXPECT_EQ(OpenOnMap(desktop, page, Takao), Outcome::Done);
  }
  EXPECT_EQ(desktop.links, (std::vector<std::string>{
                               "https://maps.gsi.go.jp/#15/35.6252/139.2437/",
                               "https://www.openstreetmap.org/?mlat=35.6252&mlon=139.2437#map=15/35.6252/139.2437",
                               "https://www.google.com/maps/search/?api=1&query=35.6252,139.2437"}));
  EXPECT_EQ(desktop.messages, std::vector<std::string>{});
}

TEST(PlaceCommands, AMapThatCannotBeOpenedIsToldWithItsAddress) {
  RecordingDesktop desktop;
  desktop.opens_links = false;
  EXPECT_EQ(OpenOnMap(desktop, MapPages().front(), Takao), Outcome::Refused);
  EXPECT_EQ(desktop.messages,
            std::vector<std::string>{messages::LinkNotOpened("https://maps.gsi.go.jp/#15/35.6252/139.2437/")});
}

TEST(PlaceCommands, TheGeoLinkIsCopiedAndNothingOpened) {
  RecordingDesktop desktop;
  EXPECT_EQ(CopyGeoLink(desktop, Takao), Outcome::Done);
  EXPECT_EQ(desktop.clipboard, "geo:35.6252,139.2437,599");
  EXPECT_EQ(desktop.links, std::vector<std::string>{});
}

}  // namespace
}  // namespace walrim
