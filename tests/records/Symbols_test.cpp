#include "records/Symbols.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "text/Scan.h"

namespace walrim {
namespace {

/// As people read them: "code name; code name; ...".
std::string WrittenOut(std::span<const NamedCode> names) {
  std::string text;
  for (const NamedCode& row : names)
    text.append(std::to_string(row.code)).append(" ").append(row.name).append("; ");
  return text;
}

constexpr std::string_view SmallSymbols =
    "0 dot symbol; 1 house symbol; 2 gas symbol; 3 car symbol; 4 fish symbol; 5 boat symbol; "
    "6 anchor symbol; 7 wreck symbol; 8 exit symbol; 9 skull symbol; 10 flag symbol; 11 camp symbol; "
    "12 circle with x symbol; 13 deer symbol; 14 first aid symbol; 15 back track symbol; ";

constexpr std::string_view LargeSymbols =
    "0 white anchor symbol; 1 white bell symbol; 2 green diamond symbol; 3 red diamond symbol; "
    "4 diver down flag 1; 5 diver down flag 2; 6 white dollar symbol; 7 white fish symbol; "
    "8 white fuel symbol; 9 white horn symbol; 10 white house symbol; 11 white knife & fork symbol; "
    "12 white light symbol; 13 white mug symbol; 14 white skull and crossbones symbol*/; "
    "15 green square symbol; 16 red square symbol; 17 white buoy waypoint symbol; 18 waypoint dot; "
    "19 white wreck symbol; 20 null symbol (transparent); 21 man overboard symbol; "
    "22 amber map buoy symbol; 23 black map buoy symbol; 24 blue map buoy symbol; "
    "25 green map buoy symbol; 26 green/red map buoy symbol; 27 green/white map buoy symbol; "
    "28 orange map buoy symbol; 29 red map buoy symbol; 30 red/green map buoy symbol; "
    "31 red/white map buoy symbol; 32 violet map buoy symbol; 33 white map buoy symbol; "
    "34 white/green map buoy symbol; 35 white/red map buoy symbol; 36 white dot symbol; "
    "37 radio beacon symbol; 150 boat ramp symbol; 151 campground symbol; 152 restrooms symbol; "
    "153 shower symbol; 154 drinking water symbol; 155 telephone symbol; 156 first aid symbol; "
    "157 information symbol; 158 parking symbol; 159 park symbol; 160 picnic symbol; "
    "161 scenic area symbol; 162 skiing symbol; 163 swimming symbol; 164 dam symbol; "
    "165 controlled area symbol; 166 danger symbol; 167 restricted area symbol; 168 null symbol; "
    "169 ball symbol; 170 car symbol; 171 deer symbol; 172 shopping cart symbol; 173 lodging symbol; "
    "174 mine symbol; 175 trail head symbol; 176 truck stop symbol; 177 user exit symbol; 178 flag symbol; "
    "179 circle with x in the center; 8192 interstate hwy symbol; 8193 us hwy symbol; "
    "8194 state hwy symbol; 8195 mile marker symbol; 8196 TracBack (feet) symbol; 8197 golf symbol; "
    "8198 small city symbol; 8199 medium city symbol; 8200 large city symbol; "
    "8201 intl freeway hwy symbol; 8202 intl national hwy symbol; 8203 capitol city symbol (star); "
    "8204 amusement park symbol; 8205 bowling symbol; 8206 car rental symbol; 8207 car repair symbol; "
    "8208 fast food symbol; 8209 fitness symbol; 8210 movie symbol; 8211 museum symbol; "
    "8212 pharmacy symbol; 8213 pizza symbol; 8214 post office symbol; 8215 RV park symbol; "
    "8216 school symbol; 8217 stadium symbol; 8218 dept. store symbol; 8219 zoo symbol; "
    "8220 convenience store symbol; 8221 live theater symbol; 8222 ramp intersection symbol; "
    "8223 street intersection symbol; 8226 inspection/weigh station symbol; 8227 toll booth symbol; "
    "8228 elevation point symbol; 8229 exit without services symbol; 8230 Geographic place name, man-made; "
    "8231 Geographic place name, water; 8232 Geographic place name, land; 8233 bridge symbol; "
    "8234 building symbol; 8235 cemetery symbol; 8236 church symbol; 8237 civil location symbol; "
    "8238 crossing symbol; 8239 historical town symbol; 8240 levee symbol; 8241 military location symbol; "
    "8242 oil field symbol; 8243 tunnel symbol; 8244 beach symbol; 8245 forest symbol; 8246 summit symbol; "
    "8247 large ramp intersection symbol; 8248 large exit without services smbl; "
    "8249 police/official badge symbol; 8250 gambling/casino symbol; 8251 snow skiing symbol; "
    "8252 ice skating symbol; 8253 tow truck (wrecker) symbol; 8254 border crossing (port of entry); "
    "16389 private field symbol; 16390 soft field symbol; 16391 tall tower symbol; 16393 glider symbol; "
    "16394 ultralight symbol; 16395 parachute symbol; 16397 VOR-DME symbol; 16398 first approach fix; "
    "16399 localizer outer marker; 16400 missed approach point; 16401 TACAN symbol; 16402 Seaplane Base; ";

TEST(AllNames, SymbolsOfD103AndD107) {
  EXPECT_EQ(WrittenOut(SymbolNames(WaypointType::D103)), SmallSymbols);
  EXPECT_EQ(WrittenOut(SymbolNames(WaypointType::D107)), SmallSymbols);
}

TEST(AllNames, SymbolsOfD104AndD108) {
  EXPECT_EQ(WrittenOut(SymbolNames(WaypointType::D104)), LargeSymbols);
  EXPECT_EQ(WrittenOut(SymbolNames(WaypointType::D108)), LargeSymbols);
}

TEST(AllNames, DisplayModes) {
  constexpr std::string_view Three =
      "0 Display symbol with waypoint name; 1 Display symbol by itself; 2 Display symbol with comment; ";
  EXPECT_EQ(WrittenOut(DisplayNames(WaypointType::D103)), Three);
  EXPECT_EQ(WrittenOut(DisplayNames(WaypointType::D107)), Three);
  EXPECT_EQ(WrittenOut(DisplayNames(WaypointType::D108)), Three);
  EXPECT_EQ(WrittenOut(DisplayNames(WaypointType::D104)),
            "0 Display symbol non; 1 Display symbol by itself; 3 Display symbol with waypoint name; "
            "5 Display symbol with comment; ");
}

TEST(NameOf, FindsARowByItsCode) {
  EXPECT_EQ(NameOf(SymbolNames(WaypointType::D108), 8196), "TracBack (feet) symbol");
  EXPECT_EQ(NameOf(SymbolNames(WaypointType::D103), 15), "back track symbol");
  EXPECT_EQ(NameOf(DisplayNames(WaypointType::D104), 5), "Display symbol with comment");
}

TEST(NameOf, ACodeWithoutARowHasNoName) {
  EXPECT_EQ(NameOf(SymbolNames(WaypointType::D103), 16), "");
  EXPECT_EQ(NameOf(SymbolNames(WaypointType::D104), 8224), "");
  EXPECT_EQ(NameOf(SymbolNames(WaypointType::D104), 65535), "");
  EXPECT_EQ(NameOf(DisplayNames(WaypointType::D104), 2), "");
}

TEST(SmallSymbolFor, IsTheSamePictureTheNearestOrTheDot) {
  const auto small = [](int code) { return std::pair{int{SmallSymbolFor(code).code}, SmallSymbolFor(code).exact}; };
  EXPECT_EQ(small(18), std::pair(0, true));
  EXPECT_EQ(small(178), std::pair(10, true));
  EXPECT_EQ(small(8246), std::pair(10, false));
  EXPECT_EQ(small(8286), std::pair(10, false));
  EXPECT_EQ(small(8200), std::pair(0, false));
}

TEST(LargeSymbolFor, IsTheSamePictureElseTheDot) {
  std::string numbers;
  for (const int code : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 255})
    numbers += std::to_string(LargeSymbolFor(code)) + " ";
  EXPECT_EQ(numbers, "18 10 8 170 7 150 0 19 177 14 178 151 179 171 156 8196 18 18 ");
}

TEST(GpxSymbolName, OfTheFirstAndLastOfEachRange) {
  EXPECT_EQ(GpxSymbolName(0), "Anchor");
  EXPECT_EQ(GpxSymbolName(16402), "Seaplane Base");
  EXPECT_EQ(GpxSymbolName(20), "Waypoint");
  EXPECT_EQ(GpxSymbolName(8230), "Geographic place name, Man-made");
  EXPECT_EQ(GpxSymbolName(180), "Open 24 Hours");
  EXPECT_EQ(GpxSymbolName(16396), "VOR/TACAN");
  EXPECT_EQ(GpxSymbolName(7679), "");
  EXPECT_EQ(GpxSymbolName(7680), "Custom 0");
  EXPECT_EQ(GpxSymbolName(8191), "Custom 511");
  EXPECT_EQ(GpxSymbolName(65535), "");
}

TEST(SymbolOfGpxName, EveryNameOfTheListGivesItsNumber) {
  for (const NamedCode& symbol : SymbolNames(WaypointType::D108)) {
    const auto found = SymbolOfGpxName(UpperCase(GpxSymbolName(symbol.code)));
    ASSERT_TRUE(found) << symbol.name;
    EXPECT_TRUE(found->exact);
    // Two pictures that nobody sees are called as the dot is.
    EXPECT_EQ(found->code, symbol.code == 20 || symbol.code == 8192 ? 18 : symbol.code) << symbol.name;
  }
}

TEST(SymbolOfGpxName, OtherNamesGiveTheNearest) {
  const auto of = [](std::string_view name) {
    const auto symbol = SymbolOfGpxName(name);
    return symbol ? std::pair{int{symbol->code}, symbol->exact} : std::pair{-1, false};
  };
  EXPECT_EQ(of("house"), std::pair(10, true));
  EXPECT_EQ(of("Open 24 Hours"), std::pair(8220, false));
  EXPECT_EQ(of("Small Game"), std::pair(171, false));
  EXPECT_EQ(of("U Marina"), std::pair(150, false));
  EXPECT_EQ(of("custom 511"), std::pair(18, false));
  EXPECT_EQ(of("Custom 512"), std::pair(-1, false));
  EXPECT_EQ(of("Custom "), std::pair(-1, false));
  EXPECT_EQ(of("Custom 1x"), std::pair(-1, false));
  EXPECT_EQ(of("Trailhead"), std::pair(-1, false));
  EXPECT_EQ(of(""), std::pair(-1, false));
}

TEST(JapaneseSymbolName, EverySymbolHasOneOfItsOwn) {
  for (const WaypointType type : {WaypointType::D103, WaypointType::D104, WaypointType::D107, WaypointType::D108}) {
    std::set<std::string_view> names;
    for (const NamedCode& symbol : SymbolNames(type)) {
      const std::string_view name = JapaneseSymbolName(type, symbol.code);
      EXPECT_FALSE(name.empty()) << symbol.name;
      EXPECT_TRUE(names.insert(name).second) << name;
    }
  }
}

TEST(JapaneseSymbolName, TheSixteenAreNamedAsTheSamePicture) {
  EXPECT_EQ(JapaneseSymbolName(WaypointType::D103, 0), "点");
  EXPECT_EQ(JapaneseSymbolName(WaypointType::D108, 0), "錨");
  EXPECT_EQ(JapaneseSymbolName(WaypointType::D107, 11), "キャンプ場");
  EXPECT_EQ(JapaneseSymbolName(WaypointType::D104, 8246), "山頂");
  EXPECT_EQ(JapaneseSymbolName(WaypointType::D103, 16), "");
  EXPECT_EQ(JapaneseSymbolName(WaypointType::D103, -1), "");
  EXPECT_EQ(JapaneseSymbolName(WaypointType::D108, 8224), "");
}

TEST(SymbolPictureOf, ShapesAreSharedWhereColoursTellThemApart) {
  std::set<SymbolShape> shapes;
  std::set<std::tuple<SymbolShape, SymbolColour, int>> pictures;
  for (const NamedCode& symbol : SymbolNames(WaypointType::D108)) {
    const SymbolPicture picture = SymbolPictureOf(WaypointType::D108, symbol.code);
    shapes.insert(picture.shape);
    pictures.emplace(picture.shape, picture.colour, picture.second ? static_cast<int>(*picture.second) : -1);
  }
  EXPECT_GE(shapes.size(), 25U);
  // The two that show nothing are one picture, and so are the two white buoys.
  EXPECT_EQ(pictures.size(), SymbolNames(WaypointType::D108).size() - 2);
  EXPECT_EQ(SymbolPictureOf(WaypointType::D103, 10).shape, SymbolShape::Flag);
  EXPECT_EQ(SymbolPictureOf(WaypointType::D108, 65535).shape, SymbolShape::Dot);
}

}  // namespace
}  // namespace walrim
