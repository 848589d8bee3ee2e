#include "device/SmallSymbols.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace walrim {

namespace {

struct Row {
  int code;
  SmallSymbol small;
};

// Sorted by code; what has no row becomes the dot.
constexpr Row Rows[] = {
    {18, {0, true}},      // waypoint dot
    {19, {7, true}},      // wreck
    {21, {9, false}},     // man overboard
    {150, {5, true}},     // boat ramp
    {151, {11, true}},    // campground
    {156, {14, true}},    // first aid
    {158, {3, false}},    // parking
    {160, {11, false}},   // picnic
    {166, {9, false}},    // danger
    {167, {9, false}},    // restricted area
    {170, {3, true}},     // car
    {171, {13, true}},    // deer
    {173, {1, false}},    // lodging
    {174, {9, false}},    // mine
    {175, {10, false}},   // trail head
    {176, {3, false}},    // truck stop
    {177, {8, true}},     // exit
    {178, {10, true}},    // flag
    {179, {12, true}},    // circle with x
    {181, {4, false}},    // fishing hot spot
    {184, {6, false}},    // anchor prohibited
    {190, {5, false}},    // dock
    {191, {5, false}},    // marina
    {8196, {15, true}},   // back track
    {8206, {3, false}},   // car rental
    {8207, {3, false}},   // car repair
    {8212, {14, false}},  // pharmacy
    {8215, {11, false}},  // RV park
    {8222, {8, false}},   // ramp intersection
    {8229, {8, false}},   // exit without services
    {8234, {1, false}},   // building
    {8246, {10, false}},  // summit
    {8248, {8, false}},   // large exit without services
    {8284, {10, false}},  // flags of three colours
    {8285, {10, false}}, {8286, {10, false}},
};

}  // namespace

SmallSymbol SmallSymbolFor(int code) {
  const auto* const row = std::lower_bound(std::begin(Rows), std::end(Rows), code,
                                           [](const Row& r, int wanted) { return r.code < wanted; });
  return row != std::end(Rows) && row->code == code ? row->small : SmallSymbol{};
}

}  // namespace walrim
