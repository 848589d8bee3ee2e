#include "records/Symbols.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {

namespace {

/// A symbol of the D103 and D107 receivers, and the same picture's number on D104 and D108.
struct SmallRow {
  NamedCode symbol;
  std::uint16_t large;
};

constexpr std::array SmallRows{
    SmallRow{{0, "dot symbol"}, 18},
    SmallRow{{1, "house symbol"}, 10},
    SmallRow{{2, "gas symbol"}, 8},
    SmallRow{{3, "car symbol"}, 170},
    SmallRow{{4, "fish symbol"}, 7},
    SmallRow{{5, "boat symbol"}, 150},
    SmallRow{{6, "anchor symbol"}, 0},
    SmallRow{{7, "wreck symbol"}, 19},
    SmallRow{{8, "exit symbol"}, 177},
    SmallRow{{9, "skull symbol"}, 14},
    SmallRow{{10, "flag symbol"}, 178},
    SmallRow{{11, "camp symbol"}, 151},
    SmallRow{{12, "circle with x symbol"}, 179},
    SmallRow{{13, "deer symbol"}, 171},
    SmallRow{{14, "first aid symbol"}, 156},
    SmallRow{{15, "back track symbol"}, 8196},
};

using Shape = SymbolShape;
using Colour = SymbolColour;

/// A symbol of the D104 and D108 receivers, its name in GPX, which of the 16 is the nearest, and how it is shown.
struct LargeRow {
  NamedCode symbol;
  std::string_view gpx;
  std::uint8_t small;
  std::string_view japanese;
  SymbolPicture picture;
};

// Sorted by code. The "*/" at the end of code 14 belongs to the name.
constexpr std::array LargeRows{
    LargeRow{{0, "white anchor symbol"}, "Anchor", 6, "錨", {Shape::Anchor, Colour::Blue}},
    LargeRow{{1, "white bell symbol"}, "Bell", 0, "ベル", {Shape::Bell, Colour::Amber}},
    LargeRow{{2, "green diamond symbol"}, "Diamond, Green", 0, "ひし形（緑）", {Shape::Diamond, Colour::Green}},
    LargeRow{{3, "red diamond symbol"}, "Diamond, Red", 0, "ひし形（赤）", {Shape::Diamond, Colour::Red}},
    LargeRow{{4, "diver down flag 1"}, "Diver Down Flag 1", 0, "潜水旗1", {Shape::DiverFlag, Colour::Red}},
    LargeRow{{5, "diver down flag 2"}, "Diver Down Flag 2", 0, "潜水旗2", {Shape::DiverFlag, Colour::Blue}},
    LargeRow{{6, "white dollar symbol"}, "Bank", 0, "銀行", {Shape::Money, Colour::Green}},
    LargeRow{{7, "white fish symbol"}, "Fishing Area", 4, "釣り場", {Shape::Fish, Colour::Blue}},
    LargeRow{{8, "white fuel symbol"}, "Gas Station", 2, "ガソリンスタンド", {Shape::Pump, Colour::Red}},
    LargeRow{{9, "white horn symbol"}, "Horn", 0, "ホーン", {Shape::Horn, Colour::Amber}},
    LargeRow{{10, "white house symbol"}, "Residence", 1, "家", {Shape::House, Colour::Orange}},
    LargeRow{{11, "white knife & fork symbol"}, "Restaurant", 0, "レストラン", {Shape::Fork, Colour::Black}},
    LargeRow{{12, "white light symbol"}, "Light", 0, "灯火", {Shape::Lamp, Colour::Amber}},
    LargeRow{{13, "white mug symbol"}, "Bar", 0, "酒場", {Shape::Mug, Colour::Amber}},
    LargeRow{{14, "white skull and crossbones symbol*/"},
             "Skull and Crossbones",
             9,
             "どくろ",
             {Shape::Skull, Colour::White}},
    LargeRow{{15, "green square symbol"}, "Square, Green", 0, "四角（緑）", {Shape::Square, Colour::Green}},
    LargeRow{{16, "red square symbol"}, "Square, Red", 0, "四角（赤）", {Shape::Square, Colour::Red}},
    LargeRow{{17, "white buoy waypoint symbol"}, "Buoy, White", 0, "浮標（白）", {Shape::Buoy, Colour::White}},
    LargeRow{{18, "waypoint dot"}, "Waypoint", 0, "点", {Shape::Dot, Colour::Black}},
    LargeRow{{19, "white wreck symbol"}, "Shipwreck", 7, "難破船", {Shape::Wreck, Colour::Brown}},
    LargeRow{{20, "null symbol (transparent)"}, "Waypoint", 0, "なし（透明）", {Shape::Nothing, Colour::White}},
    LargeRow{{21, "man overboard symbol"}, "Man Overboard", 9, "落水者", {Shape::Lifebuoy, Colour::Red}},
    LargeRow{{22, "amber map buoy symbol"}, "Navaid, Amber", 0, "航路標識（琥珀色）", {Shape::Buoy, Colour::Amber}},
    LargeRow{{23, "black map buoy symbol"}, "Navaid, Black", 0, "航路標識（黒）", {Shape::Buoy, Colour::Black}},
    LargeRow{{24, "blue map buoy symbol"}, "Navaid, Blue", 0, "航路標識（青）", {Shape::Buoy, Colour::Blue}},
    LargeRow{{25, "green map buoy symbol"}, "Navaid, Green", 0, "航路標識（緑）", {Shape::Buoy, Colour::Green}},
    LargeRow{{26, "green/red map buoy symbol"},
             "Navaid, Green/Red",
             0,
             "航路標識（緑・赤）",
             {Shape::Buoy, Colour::Green, Colour::Red}},
    LargeRow{{27, "green/white map buoy symbol"},
             "Navaid, Green/White",
             0,
             "航路標識（緑・白）",
             {Shape::Buoy, Colour::Green, Colour::White}},
    LargeRow{{28, "orange map buoy symbol"}, "Navaid, Orange", 0, "航路標識（橙）", {Shape::Buoy, Colour::Orange}},
    LargeRow{{29, "red map buoy symbol"}, "Navaid, Red", 0, "航路標識（赤）", {Shape::Buoy, Colour::Red}},
    LargeRow{{30, "red/green map buoy symbol"},
             "Navaid, Red/Green",
             0,
             "航路標識（赤・緑）",
             {Shape::Buoy, Colour::Red, Colour::Green}},
    LargeRow{{31, "red/white map buoy symbol"},
             "Navaid, Red/White",
             0,
             "航路標識（赤・白）",
             {Shape::Buoy, Colour::Red, Colour::White}},
    LargeRow{{32, "violet map buoy symbol"}, "Navaid, Violet", 0, "航路標識（紫）", {Shape::Buoy, Colour::Violet}},
    LargeRow{{33, "white map buoy symbol"}, "Navaid, White", 0, "航路標識（白）", {Shape::Buoy, Colour::White}},
    LargeRow{{34, "white/green map buoy symbol"},
             "Navaid, White/Green",
             0,
             "航路標識（白・緑）",
             {Shape::Buoy, Colour::White, Colour::Green}},
    LargeRow{{35, "white/red map buoy symbol"},
             "Navaid, White/Red",
             0,
             "航路標識（白・赤）",
             {Shape::Buoy, Colour::White, Colour::Red}},
    LargeRow{{36, "white dot symbol"}, "Dot, White", 0, "点（白）", {Shape::Dot, Colour::White}},
    LargeRow{{37, "radio beacon symbol"}, "Radio Beacon", 0, "無線標識", {Shape::Beacon, Colour::Violet}},
    LargeRow{{150, "boat ramp symbol"}, "Boat Ramp", 5, "ボート乗り場", {Shape::Boat, Colour::Blue}},
    LargeRow{{151, "campground symbol"}, "Campground", 11, "キャンプ場", {Shape::Tent, Colour::Green}},
    LargeRow{{152, "restrooms symbol"}, "Restroom", 0, "トイレ", {Shape::Restroom, Colour::Blue}},
    LargeRow{{153, "shower symbol"}, "Shower", 0, "シャワー", {Shape::Shower, Colour::Blue}},
    LargeRow{{154, "drinking water symbol"}, "Drinking Water", 0, "飲み水", {Shape::Drop, Colour::Blue}},
    LargeRow{{155, "telephone symbol"}, "Telephone", 0, "電話", {Shape::Telephone, Colour::Green}},
    LargeRow{{156, "first aid symbol"}, "Medical Facility", 14, "救急・病院", {Shape::Cross, Colour::Red}},
    LargeRow{{157, "information symbol"}, "Information", 0, "案内所", {Shape::InformationSign, Colour::Blue}},
    LargeRow{{158, "parking symbol"}, "Parking Area", 3, "駐車場", {Shape::ParkingSign, Colour::Blue}},
    LargeRow{{159, "park symbol"}, "Park", 0, "公園", {Shape::Tree, Colour::Green}},
    LargeRow{{160, "picnic symbol"}, "Picnic Area", 11, "ピクニック場", {Shape::Table, Colour::Brown}},
    LargeRow{{161, "scenic area symbol"}, "Scenic Area", 0, "景勝地", {Shape::Camera, Colour::Violet}},
    LargeRow{{162, "skiing symbol"}, "Skiing Area", 0, "スキー", {Shape::Ski, Colour::Blue}},
    LargeRow{{163, "swimming symbol"}, "Swimming Area", 0, "水泳場", {Shape::Waves, Colour::Blue}},
    LargeRow{{164, "dam symbol"}, "Dam", 0, "ダム", {Shape::Dam, Colour::Blue}},
    LargeRow{{165, "controlled area symbol"}, "Controlled Area", 0, "管制区域", {Shape::Warning, Colour::Blue}},
    LargeRow{{166, "danger symbol"}, "Danger Area", 9, "危険区域", {Shape::Warning, Colour::Amber}},
    LargeRow{{167, "restricted area symbol"}, "Restricted Area", 9, "立入制限区域", {Shape::NoEntry, Colour::Red}},
    LargeRow{{168, "null symbol"}, "Null", 0, "なし", {Shape::Nothing, Colour::White}},
    LargeRow{{169, "ball symbol"}, "Ball Park", 0, "球技場", {Shape::Ball, Colour::White}},
    LargeRow{{170, "car symbol"}, "Car", 3, "車", {Shape::Car, Colour::Red}},
    LargeRow{{171, "deer symbol"}, "Hunting Area", 13, "鹿（狩猟区）", {Shape::Deer, Colour::Brown}},
    LargeRow{{172, "shopping cart symbol"}, "Shopping Center", 0, "ショッピングセンター", {Shape::Cart, Colour::Blue}},
    LargeRow{{173, "lodging symbol"}, "Lodging", 1, "宿泊施設", {Shape::Bed, Colour::Blue}},
    LargeRow{{174, "mine symbol"}, "Mine", 9, "鉱山", {Shape::Pick, Colour::Black}},
    LargeRow{{175, "trail head symbol"}, "Trail Head", 10, "登山口", {Shape::Signpost, Colour::Brown}},
    LargeRow{{176, "truck stop symbol"}, "Truck Stop", 3, "トラックストップ", {Shape::Truck, Colour::Orange}},
    LargeRow{{177, "user exit symbol"}, "Exit", 8, "出口", {Shape::Exit, Colour::Green}},
    LargeRow{{178, "flag symbol"}, "Flag", 10, "旗", {Shape::Flag, Colour::Red}},
    LargeRow{{179, "circle with x in the center"}, "Circle with X", 12, "丸にバツ", {Shape::CircleX, Colour::Red}},
    LargeRow{{8192, "interstate hwy symbol"}, "Waypoint", 0, "州間高速道路", {Shape::Shield, Colour::Blue}},
    LargeRow{{8193, "us hwy symbol"}, "US hwy", 0, "国道（米国）", {Shape::Shield, Colour::White}},
    LargeRow{{8194, "state hwy symbol"}, "State Hwy", 0, "州道", {Shape::Shield, Colour::Green}},
    LargeRow{{8195, "mile marker symbol"}, "Mile Marker", 0, "距離標", {Shape::Signpost, Colour::Green}},
    LargeRow{{8196, "TracBack (feet) symbol"},
             "TracBack Point",
             15,
             "足あと（トラックバック）",
             {Shape::Feet, Colour::Brown}},
    LargeRow{{8197, "golf symbol"}, "Golf Course", 0, "ゴルフ場", {Shape::Golf, Colour::Green}},
    LargeRow{{8198, "small city symbol"}, "City (Small)", 0, "町（小）", {Shape::City, Colour::Amber}},
    LargeRow{{8199, "medium city symbol"}, "City (Medium)", 0, "町（中）", {Shape::City, Colour::Orange}},
    LargeRow{{8200, "large city symbol"}, "City (Large)", 0, "町（大）", {Shape::City, Colour::Red}},
    LargeRow{{8201, "intl freeway hwy symbol"}, "Intl freeway hwy", 0, "高速道路", {Shape::Road, Colour::Green}},
    LargeRow{{8202, "intl national hwy symbol"}, "Intl national hwy", 0, "国道", {Shape::Road, Colour::Blue}},
    LargeRow{{8203, "capitol city symbol (star)"}, "City (Capitol)", 0, "首都", {Shape::Star, Colour::Amber}},
    LargeRow{{8204, "amusement park symbol"}, "Amusement Park", 0, "遊園地", {Shape::Wheel, Colour::Violet}},
    LargeRow{{8205, "bowling symbol"}, "Bowling", 0, "ボウリング場", {Shape::Ball, Colour::Black}},
    LargeRow{{8206, "car rental symbol"}, "Car Rental", 3, "レンタカー", {Shape::Car, Colour::Blue}},
    LargeRow{{8207, "car repair symbol"}, "Car Repair", 3, "自動車修理", {Shape::Car, Colour::Orange}},
    LargeRow{{8208, "fast food symbol"}, "Fast Food", 0, "ファーストフード", {Shape::Mug, Colour::Red}},
    LargeRow{{8209, "fitness symbol"}, "Fitness Center", 0, "スポーツジム", {Shape::Dumbbell, Colour::Black}},
    LargeRow{{8210, "movie symbol"}, "Movie Theater", 0, "映画館", {Shape::Film, Colour::Black}},
    LargeRow{{8211, "museum symbol"}, "Museum", 0, "博物館", {Shape::Temple, Colour::Amber}},
    LargeRow{{8212, "pharmacy symbol"}, "Pharmacy", 14, "薬局", {Shape::Cross, Colour::Green}},
    LargeRow{{8213, "pizza symbol"}, "Pizza", 0, "ピザ店", {Shape::Pizza, Colour::Orange}},
    LargeRow{{8214, "post office symbol"}, "Post Office", 0, "郵便局", {Shape::Envelope, Colour::White}},
    LargeRow{{8215, "RV park symbol"}, "RV Park", 11, "オートキャンプ場", {Shape::Truck, Colour::Green}},
    LargeRow{{8216, "school symbol"}, "School", 0, "学校", {Shape::School, Colour::Orange}},
    LargeRow{{8217, "stadium symbol"}, "Stadium", 0, "競技場", {Shape::Stadium, Colour::Green}},
    LargeRow{{8218, "dept. store symbol"}, "Department Store", 0, "デパート", {Shape::Building, Colour::Violet}},
    LargeRow{{8219, "zoo symbol"}, "Zoo", 0, "動物園", {Shape::Paw, Colour::Brown}},
    LargeRow{{8220, "convenience store symbol"},
             "Convenience Store",
             0,
             "コンビニエンスストア",
             {Shape::Store, Colour::Blue}},
    LargeRow{{8221, "live theater symbol"}, "Live Theater", 0, "劇場", {Shape::Mask, Colour::Violet}},
    LargeRow{
        {8222, "ramp intersection symbol"}, "Ramp intersection", 8, "ランプの合流点", {Shape::Crossing, Colour::Green}},
    LargeRow{
        {8223, "street intersection symbol"}, "Street Intersection", 0, "交差点", {Shape::Crossing, Colour::Black}},
    LargeRow{
        {8226, "inspection/weigh station symbol"}, "Scales", 0, "検査所・車両計量所", {Shape::Scales, Colour::Black}},
    LargeRow{{8227, "toll booth symbol"}, "Toll Booth", 0, "料金所", {Shape::Gate, Colour::Amber}},
    LargeRow{{8228, "elevation point symbol"}, "Elevation point", 0, "標高点", {Shape::Peak, Colour::White}},
    LargeRow{{8229, "exit without services symbol"},
             "Exit without services",
             8,
             "出口（サービスなし）",
             {Shape::Exit, Colour::Black}},
    LargeRow{{8230, "Geographic place name, man-made"},
             "Geographic place name, Man-made",
             0,
             "地名（人工物）",
             {Shape::Label, Colour::Amber}},
    LargeRow{{8231, "Geographic place name, water"},
             "Geographic place name, water",
             0,
             "地名（水域）",
             {Shape::Label, Colour::Blue}},
    LargeRow{{8232, "Geographic place name, land"},
             "Geographic place name, land",
             0,
             "地名（陸地）",
             {Shape::Label, Colour::Green}},
    LargeRow{{8233, "bridge symbol"}, "Bridge", 0, "橋", {Shape::Bridge, Colour::Black}},
    LargeRow{{8234, "building symbol"}, "Building", 1, "建物", {Shape::Building, Colour::Orange}},
    LargeRow{{8235, "cemetery symbol"}, "Cemetery", 0, "墓地", {Shape::Grave, Colour::White}},
    LargeRow{{8236, "church symbol"}, "Church", 0, "教会", {Shape::Church, Colour::White}},
    LargeRow{{8237, "civil location symbol"}, "Civil", 0, "公共施設", {Shape::Temple, Colour::White}},
    LargeRow{{8238, "crossing symbol"}, "Crossing", 0, "踏切・渡し", {Shape::Crossing, Colour::Amber}},
    LargeRow{{8239, "historical town symbol"}, "Ghost Town", 0, "廃村・史跡の町", {Shape::House, Colour::White}},
    LargeRow{{8240, "levee symbol"}, "Levee", 0, "堤防", {Shape::Dam, Colour::Brown}},
    LargeRow{{8241, "military location symbol"}, "Military", 0, "軍事施設", {Shape::Star, Colour::Green}},
    LargeRow{{8242, "oil field symbol"}, "Oil Field", 0, "油田", {Shape::Drop, Colour::Black}},
    LargeRow{{8243, "tunnel symbol"}, "Tunnel", 0, "トンネル", {Shape::Tunnel, Colour::Black}},
    LargeRow{{8244, "beach symbol"}, "Beach", 0, "浜辺", {Shape::Parasol, Colour::Orange}},
    LargeRow{{8245, "forest symbol"}, "Forest", 0, "森林", {Shape::Fir, Colour::Green}},
    LargeRow{{8246, "summit symbol"}, "Summit", 10, "山頂", {Shape::Peak, Colour::Green}},
    LargeRow{{8247, "large ramp intersection symbol"},
             "Large Ramp intersection",
             0,
             "ランプの合流点（大）",
             {Shape::Crossing, Colour::Blue}},
    LargeRow{{8248, "large exit without services smbl"},
             "Large exit without services",
             8,
             "出口（大，サービスなし）",
             {Shape::Exit, Colour::Blue}},
    LargeRow{{8249, "police/official badge symbol"}, "Police Station", 0, "警察署", {Shape::Shield, Colour::Amber}},
    LargeRow{{8250, "gambling/casino symbol"}, "Gambling/casino", 0, "カジノ", {Shape::Dice, Colour::Red}},
    LargeRow{{8251, "snow skiing symbol"}, "Ski Resort", 0, "スキー場", {Shape::Ski, Colour::Red}},
    LargeRow{{8252, "ice skating symbol"}, "Ice Skating", 0, "スケート場", {Shape::Skate, Colour::Blue}},
    LargeRow{{8253, "tow truck (wrecker) symbol"}, "Wrecker", 0, "レッカー車", {Shape::Truck, Colour::Red}},
    LargeRow{{8254, "border crossing (port of entry)"},
             "Border Crossing (Port Of Entry)",
             0,
             "国境検問所",
             {Shape::Gate, Colour::Red}},
    LargeRow{{16389, "private field symbol"}, "Private Field", 0, "私設飛行場", {Shape::Airfield, Colour::Violet}},
    LargeRow{{16390, "soft field symbol"}, "Soft Field", 0, "軟弱地飛行場", {Shape::Airfield, Colour::Green}},
    LargeRow{{16391, "tall tower symbol"}, "Tall Tower", 0, "高い塔", {Shape::Tower, Colour::Red}},
    LargeRow{{16393, "glider symbol"}, "Glider Area", 0, "グライダー場", {Shape::Glider, Colour::Blue}},
    LargeRow{{16394, "ultralight symbol"}, "Ultralight Area", 0, "超軽量機飛行場", {Shape::Glider, Colour::Orange}},
    LargeRow{{16395, "parachute symbol"}, "Parachute Area", 0, "パラシュート降下場", {Shape::Parachute, Colour::Red}},
    LargeRow{{16397, "VOR-DME symbol"}, "VOR-DME", 0, "VOR-DME", {Shape::Hexagon, Colour::Blue}},
    LargeRow{{16398, "first approach fix"}, "First approach fix", 0, "進入開始点（FAF）", {Shape::Fix, Colour::Blue}},
    LargeRow{{16399, "localizer outer marker"},
             "Localizer Outer Marker",
             0,
             "ローカライザー外側マーカー",
             {Shape::Beacon, Colour::Blue}},
    LargeRow{{16400, "missed approach point"}, "Missed approach point", 0, "進入復行点", {Shape::Fix, Colour::Red}},
    LargeRow{{16401, "TACAN symbol"}, "TACAN", 0, "TACAN", {Shape::Hexagon, Colour::Green}},
    LargeRow{{16402, "Seaplane Base"}, "Seaplane Base", 0, "水上機基地", {Shape::Airfield, Colour::Blue}},
};

/// A symbol of later receivers, and the nearest of the 16 and of D104's and D108's.
struct LaterRow {
  int code;
  std::string_view gpx;
  std::uint8_t small;
  std::uint16_t large;
};

// Sorted by code.
constexpr std::array LaterRows{
    LaterRow{180, "Open 24 Hours", 0, 8220},
    LaterRow{181, "Fishing Hot Spot Facility", 4, 7},
    LaterRow{182, "Bottom Conditions", 0, 18},
    LaterRow{183, "Tide/Current Prediction Station", 0, 18},
    LaterRow{184, "Anchor Prohibited", 6, 18},
    LaterRow{185, "Beacon", 0, 37},
    LaterRow{186, "Coast Guard", 0, 8249},
    LaterRow{187, "Reef", 0, 18},
    LaterRow{188, "Weed Bed", 0, 18},
    LaterRow{189, "Dropoff", 0, 18},
    LaterRow{190, "Dock", 5, 150},
    LaterRow{191, "Marina", 5, 150},
    LaterRow{192, "Bait and Tackle", 0, 7},
    LaterRow{193, "Stump", 0, 18},
    LaterRow{8255, "Geocache", 0, 18},
    LaterRow{8256, "Geocache Found", 0, 18},
    LaterRow{8257, "Contact, Smiley", 0, 18},
    LaterRow{8258, "Contact, Ball Cap", 0, 18},
    LaterRow{8259, "Contact, Big Ears", 0, 18},
    LaterRow{8260, "Contact, Spike", 0, 18},
    LaterRow{8261, "Contact, Goatee", 0, 18},
    LaterRow{8262, "Contact, Afro", 0, 18},
    LaterRow{8263, "Contact, Dreadlocks", 0, 18},
    LaterRow{8264, "Contact, Female1", 0, 18},
    LaterRow{8265, "Contact, Female2", 0, 18},
    LaterRow{8266, "Contact, Female3", 0, 18},
    LaterRow{8267, "Contact, Ranger", 0, 18},
    LaterRow{8268, "Contact, Kung-Fu", 0, 18},
    LaterRow{8269, "Contact, Sumo", 0, 18},
    LaterRow{8270, "Contact, Pirate", 0, 18},
    LaterRow{8271, "Contact, Biker", 0, 18},
    LaterRow{8272, "Contact, Alien", 0, 18},
    LaterRow{8273, "Contact, Bug", 0, 18},
    LaterRow{8274, "Contact, Cat", 0, 18},
    LaterRow{8275, "Contact, Dog", 0, 18},
    LaterRow{8276, "Contact, Pig", 0, 18},
    LaterRow{8282, "Water Hydrant", 0, 154},
    LaterRow{8284, "Flag, Blue", 10, 178},
    LaterRow{8285, "Flag, Green", 10, 178},
    LaterRow{8286, "Flag, Red", 10, 178},
    LaterRow{8287, "Pin, Blue", 0, 18},
    LaterRow{8288, "Pin, Green", 0, 18},
    LaterRow{8289, "Pin, Red", 0, 18},
    LaterRow{8290, "Block, Blue", 0, 15},
    LaterRow{8291, "Block, Green", 0, 15},
    LaterRow{8292, "Block, Red", 0, 16},
    LaterRow{8293, "Bike Trail", 0, 175},
    LaterRow{8294, "Circle, Red", 0, 36},
    LaterRow{8295, "Circle, Green", 0, 36},
    LaterRow{8296, "Circle, Blue", 0, 36},
    LaterRow{8299, "Diamond, Blue", 0, 2},
    LaterRow{8300, "Oval, Red", 0, 18},
    LaterRow{8301, "Oval, Green", 0, 18},
    LaterRow{8302, "Oval, Blue", 0, 18},
    LaterRow{8303, "Rectangle, Red", 0, 18},
    LaterRow{8304, "Rectangle, Green", 0, 18},
    LaterRow{8305, "Rectangle, Blue", 0, 18},
    LaterRow{8308, "Square, Blue", 0, 15},
    LaterRow{8309, "Letter A, Red", 0, 18},
    LaterRow{8310, "Letter B, Red", 0, 18},
    LaterRow{8311, "Letter C, Red", 0, 18},
    LaterRow{8312, "Letter D, Red", 0, 18},
    LaterRow{8313, "Letter A, Green", 0, 18},
    LaterRow{8314, "Letter C, Green", 0, 18},
    LaterRow{8315, "Letter B, Green", 0, 18},
    LaterRow{8316, "Letter D, Green", 0, 18},
    LaterRow{8317, "Letter A, Blue", 0, 18},
    LaterRow{8318, "Letter B, Blue", 0, 18},
    LaterRow{8319, "Letter C, Blue", 0, 18},
    LaterRow{8320, "Letter D, Blue", 0, 18},
    LaterRow{8321, "Number 0, Red", 0, 18},
    LaterRow{8322, "Number 1, Red", 0, 18},
    LaterRow{8323, "Number 2, Red", 0, 18},
    LaterRow{8324, "Number 3, Red", 0, 18},
    LaterRow{8325, "Number 4, Red", 0, 18},
    LaterRow{8326, "Number 5, Red", 0, 18},
    LaterRow{8327, "Number 6, Red", 0, 18},
    LaterRow{8328, "Number 7, Red", 0, 18},
    LaterRow{8329, "Number 8, Red", 0, 18},
    LaterRow{8330, "Number 9, Red", 0, 18},
    LaterRow{8331, "Number 0, Green", 0, 18},
    LaterRow{8332, "Number 1, Green", 0, 18},
    LaterRow{8333, "Number 2, Green", 0, 18},
    LaterRow{8334, "Number 3, Green", 0, 18},
    LaterRow{8335, "Number 4, Green", 0, 18},
    LaterRow{8336, "Number 5, Green", 0, 18},
    LaterRow{8337, "Number 6, Green", 0, 18},
    LaterRow{8338, "Number 7, Green", 0, 18},
    LaterRow{8339, "Number 8, Green", 0, 18},
    LaterRow{8340, "Number 9, Green", 0, 18},
    LaterRow{8341, "Number 0, Blue", 0, 18},
    LaterRow{8342, "Number 1, Blue", 0, 18},
    LaterRow{8343, "Number 2, Blue", 0, 18},
    LaterRow{8344, "Number 3, Blue", 0, 18},
    LaterRow{8345, "Number 4, Blue", 0, 18},
    LaterRow{8346, "Number 5, Blue", 0, 18},
    LaterRow{8347, "Number 6, Blue", 0, 18},
    LaterRow{8348, "Number 7, Blue", 0, 18},
    LaterRow{8349, "Number 8, Blue", 0, 18},
    LaterRow{8350, "Number 9, Blue", 0, 18},
    LaterRow{8351, "Triangle, Blue", 0, 18},
    LaterRow{8352, "Triangle, Green", 0, 18},
    LaterRow{8353, "Triangle, Red", 0, 18},
    LaterRow{8359, "Asian Food", 0, 11},
    LaterRow{8360, "Deli", 0, 11},
    LaterRow{8361, "Italian food", 0, 11},
    LaterRow{8362, "Seafood", 0, 11},
    LaterRow{8363, "Steak", 0, 11},
    LaterRow{16384, "Airport", 0, 18},
    LaterRow{16385, "Intersection", 0, 8223},
    LaterRow{16386, "Non-directional beacon", 0, 18},
    LaterRow{16387, "VHF Omni-range", 0, 18},
    LaterRow{16388, "Heliport", 0, 16402},
    LaterRow{16392, "Short Tower", 0, 16391},
    LaterRow{16396, "VOR/TACAN", 0, 18},
};

/// A further name that GPX files use, and the symbol for it.
struct OtherNameRow {
  std::string_view gpx;
  GpxSymbol symbol;
};

constexpr std::array OtherNames{
    OtherNameRow{"ATV", {170, false}},
    OtherNameRow{"Animal Tracks", {18, false}},
    OtherNameRow{"Big Game", {171, false}},
    OtherNameRow{"Blind", {18, false}},
    OtherNameRow{"Blood Trail", {18, false}},
    OtherNameRow{"City Hall", {8237, false}},
    OtherNameRow{"Contact, Blonde", {18, false}},
    OtherNameRow{"Contact, Clown", {18, false}},
    OtherNameRow{"Contact, Glasses", {18, false}},
    OtherNameRow{"Contact, Panda", {18, false}},
    OtherNameRow{"Cover", {18, false}},
    OtherNameRow{"Covey", {18, false}},
    OtherNameRow{"Food Source", {11, false}},
    OtherNameRow{"Furbearer", {18, false}},
    OtherNameRow{"Ground Transportation", {170, false}},
    OtherNameRow{"Library", {8216, false}},
    OtherNameRow{"Lodge", {173, false}},
    OtherNameRow{"Multi-Cache", {18, false}},
    OtherNameRow{"Puzzle Cache", {18, false}},
    OtherNameRow{"Small Game", {171, false}},
    OtherNameRow{"Tree Stand", {171, false}},
    OtherNameRow{"Treed Quarry", {18, false}},
    OtherNameRow{"Truck", {176, false}},
    OtherNameRow{"Upland Game", {171, false}},
    OtherNameRow{"Water Source", {154, false}},
    OtherNameRow{"Waterfowl", {171, false}},
    OtherNameRow{"Winery", {13, false}},
    OtherNameRow{"House", {10, true}},
    OtherNameRow{"Hotel", {173, true}},
    OtherNameRow{"Small City", {8198, true}},
    OtherNameRow{"U Marina", {150, false}},
    OtherNameRow{"U stump", {18, false}},
    OtherNameRow{"Letterbox Cache", {18, false}},
};

constexpr NamedCode DisplayModes[] = {
    {0, "Display symbol with waypoint name"},
    {1, "Display symbol by itself"},
    {2, "Display symbol with comment"},
};

constexpr NamedCode D104DisplayModes[] = {
    {0, "Display symbol non"},
    {1, "Display symbol by itself"},
    {3, "Display symbol with waypoint name"},
    {5, "Display symbol with comment"},
};

/// The pictures that a user draws; GPX numbers them from 0.
constexpr int FirstCustom = 7680;
constexpr int LastCustom = 8191;
constexpr std::string_view CustomName = "Custom ";

/// The symbols of a table alone.
template <const auto& Rows>
constexpr auto SymbolsOf = [] {
  std::array<NamedCode, Rows.size()> symbols{};
  std::ranges::transform(Rows, symbols.begin(), [](const auto& row) { return row.symbol; });
  return symbols;
}();

template <typename Rows, typename Code>
const typename Rows::value_type* Find(const Rows& rows, int code, Code code_of) {
  const auto row = std::ranges::lower_bound(rows, code, {}, code_of);
  return row != rows.end() && code_of(*row) == code ? &*row : nullptr;
}
const LargeRow* FindLarge(int code) {
  return Find(LargeRows, code, [](const LargeRow& row) { return row.symbol.code; });
}
const LaterRow* FindLater(int code) {
  return Find(LaterRows, code, [](const LaterRow& row) { return row.code; });
}

/// The row with the name and the picture of a type's symbol; null where it has none.
const LargeRow* FindShown(WaypointType type, int code) {
  const bool small = type == WaypointType::D103 || type == WaypointType::D107;
  if (!small) return FindLarge(code);
  return code >= 0 && code <= LargestSmallSymbol ? FindLarge(LargeSymbolFor(code)) : nullptr;
}

template <typename Rows>
auto FindName(const Rows& rows, std::string_view name) {
  return std::ranges::find_if(rows, [name](const auto& row) { return SameWord(row.gpx, name); });
}

bool IsCustomName(std::string_view name) {
  if (!BeginsWithWord(name, CustomName)) return false;
  const std::string_view number = name.substr(CustomName.size());
  return !number.empty() && number.size() <= 3 && std::ranges::all_of(number, IsDigit) &&
         LeadingInteger(number, 0, LastCustom) <= LastCustom - FirstCustom;
}

}  // namespace

std::span<const NamedCode> SymbolNames(WaypointType type) {
  switch (type) {
    case WaypointType::D103:
    case WaypointType::D107:
      return SymbolsOf<SmallRows>;
    case WaypointType::D104:
    case WaypointType::D108:
      return SymbolsOf<LargeRows>;
  }
  return {};
}

std::span<const NamedCode> DisplayNames(WaypointType type) {
  switch (type) {
    case WaypointType::D103:
    case WaypointType::D107:
    case WaypointType::D108:
      return DisplayModes;
    case WaypointType::D104:
      return D104DisplayModes;
  }
  return {};
}

std::string_view NameOf(std::span<const NamedCode> names, int code) {
  const auto row = std::ranges::lower_bound(names, code, {}, &NamedCode::code);
  return row != names.end() && row->code == code ? row->name : std::string_view{};
}

std::string_view JapaneseDisplayName(WaypointType type, int code) {
  constexpr std::pair<std::string_view, std::string_view> Names[] = {
      {"Display symbol non", "表示しない"},
      {"Display symbol by itself", "シンボルだけ"},
      {"Display symbol with waypoint name", "シンボルと名前"},
      {"Display symbol with comment", "シンボルとコメント"}};
  const std::string_view english = NameOf(DisplayNames(type), code);
  for (const auto& [name, japanese] : Names) {
    if (name == english) return japanese;
  }
  return {};
}

std::string_view JapaneseSymbolName(WaypointType type, int code) {
  const LargeRow* const row = FindShown(type, code);
  return row != nullptr ? row->japanese : std::string_view{};
}

SymbolPicture SymbolPictureOf(WaypointType type, int code) {
  const LargeRow* const row = FindShown(type, code);
  return row != nullptr ? row->picture : SymbolPicture{};
}

SmallSymbol SmallSymbolFor(int code) {
  if (const LargeRow* const row = FindLarge(code)) return {row->small, SmallRows[row->small].large == code};
  if (const LaterRow* const row = FindLater(code)) return {row->small, false};
  return {};
}

std::uint16_t LargeSymbolFor(int code) {
  const auto row = static_cast<std::size_t>(std::clamp(code, 0, LargestSmallSymbol + 1));
  return row < SmallRows.size() ? SmallRows[row].large : WaypointDotSymbol;
}

bool HasSmallSymbol(const Waypoint& waypoint) {
  if (waypoint.type == WaypointType::D108) return waypoint.symbol_set == SymbolSet::Small;
  return waypoint.type != WaypointType::D104;
}

bool HasLargeSymbol(const Waypoint& waypoint) {
  if (waypoint.type == WaypointType::D108) return waypoint.symbol_set == SymbolSet::Large;
  return waypoint.type == WaypointType::D104;
}

SymbolSet SymbolSetOf(int code, std::string_view name) {
  if (code > LargestSmallSymbol || name.empty()) return SymbolSet::Untold;
  if (name == NameOf(SymbolsOf<SmallRows>, code)) return SymbolSet::Small;
  return name == NameOf(SymbolsOf<LargeRows>, code) ? SymbolSet::Large : SymbolSet::Untold;
}

std::string GpxSymbolName(int code) {
  if (const LargeRow* const row = FindLarge(code)) return std::string(row->gpx);
  if (const LaterRow* const row = FindLater(code)) return std::string(row->gpx);
  if (code < FirstCustom || code > LastCustom) return {};
  return std::string(CustomName) + std::to_string(code - FirstCustom);
}

std::optional<GpxSymbol> SymbolOfGpxName(std::string_view name) {
  // The first row of a name counts: of the three that are named Waypoint, the dot's.
  if (const auto row = FindName(LargeRows, name); row != LargeRows.end()) {
    return GpxSymbol{static_cast<std::uint16_t>(row->symbol.code), true};
  }
  if (const auto row = FindName(LaterRows, name); row != LaterRows.end()) return GpxSymbol{row->large, false};
  if (const auto row = FindName(OtherNames, name); row != OtherNames.end()) return row->symbol;
  if (IsCustomName(name)) return GpxSymbol{WaypointDotSymbol, false};
  return std::nullopt;
}

}  // namespace walrim
