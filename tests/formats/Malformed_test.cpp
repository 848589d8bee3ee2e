// Every file of the corpora is read as each of the formats, and what came of it written.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "Support.h"
#include "text/Cp932.h"

namespace walrim {
namespace {

std::vector<std::string> Corpus() {
  std::vector<std::string> texts;
  for (const char* name : {"standard_file", "wpt_reader", "mps_script", "mps_statement"}) {
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(WALRIM_SOURCE_DIR "/fuzz/corpus/") + name)) {
      std::ifstream in(entry.path(), std::ios::binary);
      const std::string bytes(std::istreambuf_iterator<char>(in), {});
      texts.push_back(EncodingOf(bytes) == TextEncoding::Utf8 ? bytes : DecodeCp932(bytes));
    }
  }
  return texts;
}

TEST(MalformedFiles, AreReadToTheirEndAndGrowWithinBounds) {
  const std::vector<std::string> texts = Corpus();
  ASSERT_GT(texts.size(), 20U);
  for (const std::string& text : texts) {
    for (const Format& format : Formats()) {
      if (format.read == nullptr) continue;
      DataSet data;
      Read(format.id, data, text);
      EXPECT_LT(Written(FormatId::WptPlus, data).size(), 80 * text.size() + 200) << text.substr(0, 60);
      EXPECT_LT(Written(FormatId::Script, data).size(), 400 * text.size() + 5000) << text.substr(0, 60);
    }
  }
}

TEST(MalformedFiles, WhatIsHeldIsNotHarmed) {
  DataSet data;
  (void)data.Add(Named("HELD"));
  (void)data.Begin(Numbered(3, "HELD", {Named("P")}));
  AddLog(data, {At(35.5, 139.25, 406339200, true)});
  const DataSet held = data;
  for (const std::string& text : Corpus()) {
    for (const Format& format : Formats()) {
      if (format.read != nullptr) Read(format.id, data, "RTH\t1\r\nTRH\t0\r\nRN,1,x\r\n" + text);
    }
  }
  EXPECT_EQ(data.Waypoints()[0], held.Waypoints()[0]);
  EXPECT_EQ(data.Routes()[0], held.Routes()[0]);
  EXPECT_EQ(data.Logs()[0], held.Logs()[0]);
}

TEST(MalformedFiles, LongLinesAndManyLinesAreReadToTheirEnd) {
  DataSet data;
  const std::string commas(1 << 20, ',');
  const std::string quotes(1 << 20, '"');
  const std::string slashes(1 << 20, '/');
  const std::string ends(1 << 20, '\r');
  for (const std::string& text : {commas, quotes, slashes, ends, "WP" + commas, "point oid=" + commas + ";",
                                  "point pos=" + slashes + "," + slashes + ";", "WP,D,A," + slashes + "," + slashes}) {
    for (const Format& format : Formats()) {
      if (format.read != nullptr) Read(format.id, data, text);
    }
  }
  EXPECT_TRUE(data.Waypoints().empty());
}

}  // namespace
}  // namespace walrim
