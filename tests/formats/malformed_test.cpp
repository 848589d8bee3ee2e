// Every file of the corpora is read as each of the formats.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "support.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

std::vector<std::string> Corpus() {
  std::vector<std::string> texts;
  for (const char* name : {"wpt_reader", "mps_script", "mps_statement"}) {
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(WALRIM_SOURCE_DIR "/fuzz/corpus/") + name)) {
      std::ifstream in(entry.path(), std::ios::binary);
      texts.push_back(DecodeText(std::string(std::istreambuf_iterator<char>(in), {})));
    }
  }
  return texts;
}

TEST(MalformedFiles, AreReadToTheirEndAndGrowWithinBounds) {
  const std::vector<std::string> texts = Corpus();
  ASSERT_GT(texts.size(), 20U);
  const auto data = std::make_unique<InternalData>();
  for (const std::string& text : texts) {
    ReadWpt(*data, text);
    const Conversion wpt = ConvertScriptToWpt(text);
    EXPECT_LT(wpt.text.size(), 40 * text.size() + 200) << text.substr(0, 60);
    EXPECT_LT(wpt.text.capacity(), 80 * text.size() + 400) << text.substr(0, 60);
    const Conversion script = ConvertWptToScript(text, {}, Now);
    EXPECT_LT(script.text.size(), 40 * text.size() + 5000) << text.substr(0, 60);
    ReadWpt(*data, wpt.text);
  }
}

TEST(MalformedFiles, WhatIsHeldIsNotHarmed) {
  const auto data = std::make_unique<InternalData>();
  (void)data->AddWaypoint(Waypoint("HELD", "35.5", "139.25", "c"));
  AddRoute(*data, "3", "held", {Waypoint("P", "35.5", "139.25", "c")});
  AddLog(*data, {TrackedPoint(35.5, 139.25, 406339200, true)});
  for (const std::string& text : Corpus())
    ReadWpt(*data, text);
  EXPECT_EQ(data->d108[1].ident, "HELD");
  EXPECT_EQ(data->d108[2100].ident, "P");
  EXPECT_EQ(data->mirrored_routes.RoutePointCount[1], 1);
  EXPECT_EQ(data->mirrored_tracks.TrackPointCount[1], 1);
  EXPECT_EQ(data->track_points[0].time, 406339200);
}

TEST(MalformedFiles, LongLinesAndManyLinesAreReadToTheirEnd) {
  const auto data = std::make_unique<InternalData>();
  const std::string commas(1 << 20, ',');
  const std::string quotes(1 << 20, '"');
  const std::string slashes(1 << 20, '/');
  const std::string ends(1 << 20, '\r');
  for (const std::string& text : {commas, quotes, slashes, ends, "WP" + commas, "point oid=" + commas + ";",
                                  "point pos=" + slashes + "," + slashes + ";", "WP,D,A," + slashes + "," + slashes}) {
    ReadWpt(*data, text);
    (void)ConvertScriptToWpt(text);
    (void)ConvertWptToScript(text, {}, Now);
  }
  EXPECT_EQ(data->WaypointCount, 0);
}

}  // namespace
}  // namespace walrim
