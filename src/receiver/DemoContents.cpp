#include "receiver/DemoContents.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <string_view>

#include "text/Dates.h"

namespace walrim {

namespace {

// symbol is a code of D104 and D108, small_symbol one of D103 and D107. The first six bytes of an identifier tell it
// apart from all others, because some models hold no more of it.
struct Place {
  std::string_view ident;
  std::string_view cmnt;
  double lat_deg;
  double lon_deg;
  float alt_m;
  std::uint16_t symbol;
  std::uint8_t small_symbol;
};

constexpr Place Places[] = {
    {"高尾山口駅", "登山口 駅前にトイレあり", 35.6323, 139.2700, 190, 175, 3},
    {"BIWA", "琵琶滝", 35.6296, 139.2578, 270, 161, 12},
    {"薬王院", "境内に飲料水", 35.6265, 139.2497, 530, 8236, 1},
    {"TAKAO", "高尾山 599M", 35.6252, 139.2436, 599, 8246, 10},
    {"WC-TKO", "山頂のトイレ", 35.6249, 139.2440, 595, 152, 0},
    {"もみじ台", "茶屋", 35.6243, 139.2409, 575, 160, 12},
    {"一丁平", "展望台 桜", 35.6268, 139.2292, 565, 160, 12},
    {"城山", "小仏城山 670M 茶屋", 35.6338, 139.2180, 670, 8246, 10},
    {"CAMP", "日影沢キャンプ場", 35.6400, 139.2330, 310, 151, 11},
    {"小仏峠", "相模湖駅への分岐", 35.6408, 139.2120, 548, 8238, 0},
    {"水場", "沢の水 涸れることあり", 35.6437, 139.2148, 470, 154, 0},
    {"景信山", "727M 茶屋", 35.6520, 139.2060, 727, 8246, 10},
    {"堂所山", "731M 北高尾への分岐", 35.6600, 139.1905, 731, 8246, 10},
    {"MYOO", "明王峠", 35.6545, 139.1795, 739, 161, 12},
    {"JINBA", "陣馬山 855M 白馬の像", 35.6522, 139.1667, 855, 8246, 10},
    {"陣馬高原下", "バス停 八王子駅行き", 35.6655, 139.1770, 330, 176, 3},
    {"一ノ尾", "一ノ尾尾根", 35.6440, 139.1600, 700, 18, 0},
    {"UESAWA", "上沢井", 35.6250, 139.1500, 250, 8198, 1},
    {"藤野駅", "中央線 相模湖方面", 35.6046, 139.1430, 210, 178, 10},
};

struct DemoRoute {
  std::uint8_t nmbr;
  std::string_view cmnt;
  std::span<const std::string_view> idents;
};

constexpr std::string_view RidgeIdents[] = {"高尾山口駅", "BIWA",   "TAKAO",  "もみじ台", "一丁平",
                                            "城山",       "小仏峠", "景信山", "堂所山",   "JINBA"};
constexpr std::string_view LoopIdents[] = {"高尾山口駅", "BIWA", "TAKAO", "WC-TKO", "もみじ台", "薬王院", "高尾山口駅"};
constexpr DemoRoute Routes[] = {
    {1, "高尾-陣馬 縦走", RidgeIdents},
    {2, "高尾山 一周", LoopIdents},
};

struct KeyPoint {
  double lat_deg;
  double lon_deg;
  double alt_m;
};

constexpr KeyPoint RidgeWalk[] = {
    {35.6323, 139.2700, 190}, {35.6310, 139.2672, 201}, {35.6303, 139.2625, 235}, {35.6296, 139.2578, 270},
    {35.6279, 139.2530, 350}, {35.6264, 139.2487, 450}, {35.6252, 139.2436, 599}, {35.6243, 139.2409, 575},
    {35.6251, 139.2350, 530}, {35.6268, 139.2292, 565}, {35.6300, 139.2235, 600}, {35.6338, 139.2180, 670},
    {35.6375, 139.2155, 610}, {35.6408, 139.2120, 548}, {35.6450, 139.2098, 610}, {35.6490, 139.2080, 680},
    {35.6520, 139.2060, 727}, {35.6550, 139.2010, 670}, {35.6580, 139.1955, 690}, {35.6600, 139.1905, 731},
    {35.6572, 139.1850, 690}, {35.6545, 139.1795, 739}, {35.6528, 139.1730, 740}, {35.6522, 139.1667, 855},
};
constexpr KeyPoint JinbaWalk[] = {
    {35.6655, 139.1770, 330}, {35.6640, 139.1735, 390}, {35.6625, 139.1700, 480}, {35.6600, 139.1685, 600},
    {35.6560, 139.1675, 740}, {35.6522, 139.1667, 855}, {35.6490, 139.1635, 790}, {35.6440, 139.1600, 700},
    {35.6390, 139.1570, 620}, {35.6340, 139.1540, 520}, {35.6290, 139.1515, 380}, {35.6250, 139.1500, 250},
    {35.6195, 139.1488, 230}, {35.6140, 139.1470, 225}, {35.6090, 139.1452, 215}, {35.6046, 139.1430, 210},
};
constexpr KeyPoint TakaoLoop[] = {
    {35.6323, 139.2700, 190}, {35.6300, 139.2655, 260}, {35.6275, 139.2605, 370}, {35.6262, 139.2560, 410},
    {35.6250, 139.2500, 470}, {35.6243, 139.2460, 530}, {35.6252, 139.2436, 599}, {35.6260, 139.2465, 560},
    {35.6265, 139.2497, 530}, {35.6285, 139.2535, 490}, {35.6300, 139.2570, 470}, {35.6318, 139.2600, 400},
    {35.6325, 139.2640, 290}, {35.6310, 139.2672, 201}, {35.6323, 139.2700, 190},
};

struct Walk {
  std::string_view ident;
  CivilTime start;  // local
  std::size_t point_count;
  std::span<const KeyPoint> keys;
  std::size_t second_segment;  // the point that begins it; 0 for a walk in one
};

constexpr int DemoUtcOffsetHours = 9;
// On the first walk the signal was lost among the trees behind Mt. Kagenobu.
constexpr Walk Walks[] = {
    {"TAKAO-JINBA", {2002, 11, 15, 8, 40, 0}, 180, RidgeWalk, 125},
    {"JINBA-FUJINO", {2002, 11, 23, 10, 50, 0}, 140, JinbaWalk, 0},
    {"TAKAO LOOP", {2002, 12, 8, 11, 20, 0}, 120, TakaoLoop, 0},
};

constexpr double MetresPerDegree = 111'200;

double DistanceM(const KeyPoint& from, const KeyPoint& to) {
  const double east = (to.lon_deg - from.lon_deg) * std::cos(from.lat_deg * std::numbers::pi / 180);
  return std::hypot(to.lat_deg - from.lat_deg, east) * MetresPerDegree;
}

// Walkers are fastest on a slight descent and slow down with the slope either way.
double SpeedMetresPerSecond(double slope) {
  const double km_per_hour = std::clamp(4.4 * std::exp(-2.4 * std::abs(slope + 0.03)), 2.1, 4.8);
  return km_per_hour / 3.6;
}

// The smooth curve through b and c with neighbours a and d, t from 0 at b to 1 at c.
double Curve(double a, double b, double c, double d, double t) {
  return b + 0.5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
}

// The point of leg i, from key i to key i + 1; t from 0 to 1. Heights go straight: a summit stays the highest point.
KeyPoint OnLeg(std::span<const KeyPoint> keys, std::size_t i, double t) {
  const KeyPoint& b = keys[i];
  const KeyPoint& c = keys[i + 1];
  const KeyPoint& a = i == 0 ? b : keys[i - 1];
  const KeyPoint& d = i + 2 < keys.size() ? keys[i + 2] : c;
  return {Curve(a.lat_deg, b.lat_deg, c.lat_deg, d.lat_deg, t), Curve(a.lon_deg, b.lon_deg, c.lon_deg, d.lon_deg, t),
          b.alt_m + (c.alt_m - b.alt_m) * t};
}

// Points at about equal distances along the keys, the first and the last key among them.
std::vector<KeyPoint> WalkedPoints(std::span<const KeyPoint> keys, std::size_t count) {
  std::vector<double> from_start{0};
  for (std::size_t i = 1; i < keys.size(); ++i)
    from_start.push_back(from_start.back() + DistanceM(keys[i - 1], keys[i]));
  std::vector<KeyPoint> points;
  std::size_t leg = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double along = from_start.back() * static_cast<double>(i) / static_cast<double>(count - 1);
    while (leg + 2 < keys.size() && from_start[leg + 1] < along)
      ++leg;
    points.push_back(OnLeg(keys, leg, (along - from_start[leg]) / (from_start[leg + 1] - from_start[leg])));
  }
  return points;
}

HeldTrackLog WalkedLog(const Walk& walk) {
  HeldTrackLog log;
  log.trk_ident = walk.ident;
  const std::vector<KeyPoint> points = WalkedPoints(walk.keys, walk.point_count);
  double time_s = static_cast<double>(SecondsSinceGarminEpoch(walk.start)) - DemoUtcOffsetHours * 3600.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i > 0) {
      const double distance_m = DistanceM(points[i - 1], points[i]);
      time_s += distance_m / SpeedMetresPerSecond((points[i].alt_m - points[i - 1].alt_m) / distance_m);
    }
    HeldTrackPoint& point = log.points.emplace_back();
    point.lat_deg = points[i].lat_deg;
    point.lon_deg = points[i].lon_deg;
    point.time_s = static_cast<std::uint32_t>(std::lround(time_s));
    point.new_trk = i == 0 || i == walk.second_segment;
    point.alt_m = static_cast<float>(points[i].alt_m);
  }
  return log;
}

// The code that shows a waypoint's symbol with its name.
std::uint8_t SymbolWithName(WaypointLayout layout) {
  return layout == WaypointLayout::D104 ? 3 : 0;
}

HeldWaypoint WaypointOfPlace(const Place& place, WaypointLayout layout) {
  const bool small_symbols = layout == WaypointLayout::D103 || layout == WaypointLayout::D107;
  HeldWaypoint waypoint;
  waypoint.ident = place.ident;
  waypoint.cmnt = place.cmnt;
  waypoint.lat_deg = place.lat_deg;
  waypoint.lon_deg = place.lon_deg;
  waypoint.alt_m = place.alt_m;
  waypoint.smbl = small_symbols ? place.small_symbol : place.symbol;
  waypoint.dspl = SymbolWithName(layout);
  return waypoint;
}

HeldRoute RouteOfPlaces(const DemoRoute& demo, WaypointLayout layout) {
  HeldRoute route;
  route.nmbr = demo.nmbr;
  route.cmnt = demo.cmnt;
  for (const std::string_view ident : demo.idents) {
    const auto* place = std::find_if(std::begin(Places), std::end(Places),
                                     [ident](const Place& candidate) { return candidate.ident == ident; });
    if (place != std::end(Places)) route.points.emplace_back().waypoint = WaypointOfPlace(*place, layout);
  }
  return route;
}

}  // namespace

HeldContents DemoContents(const ReceiverModel& model) {
  HeldContents contents;
  for (const Place& place : Places)
    contents.waypoints.push_back(WaypointOfPlace(place, model.waypoint_layout));
  for (const DemoRoute& route : Routes)
    contents.routes.push_back(RouteOfPlaces(route, model.waypoint_layout));
  for (const Walk& walk : Walks)
    contents.track_logs.push_back(WalkedLog(walk));
  return contents;
}

}  // namespace walrim
