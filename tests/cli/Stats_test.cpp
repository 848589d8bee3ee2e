// walrim-cli stats over files with walks that were computed by hand.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "cli/Messages.h"
#include "support/Processes.h"

namespace walrim {
namespace {

/// A thousandth of a degree on the sphere of the distances.
constexpr double Step_m = 6377397.155 * 3.14159265358979 / 180 / 1000;

/// Ten minutes, four steps to the north, over 30 m; a step of gap; and a route of two legs.
constexpr const char* Walk =
    "TRH\t5\tTRUE\t255\t=\"裏山\"\r\n"
    "TRP\tD\tWGS84\t35.000\t139\t2002/11/12 09:00:00\tTRUE\t100\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.001\t139\t2002/11/12 09:02:00\tFALSE\t130\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.002\t139\t2002/11/12 09:04:00\tFALSE\t110\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.003\t139\t2002/11/12 09:06:00\tTRUE\t110\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.005\t139\t2002/11/12 09:10:00\tFALSE\t110\t1E+25\t\r\n";

class Stats : public ::testing::Test {
 protected:
  Process& Run(std::vector<std::string> words, std::string_view contents) {
    PutFile(folder_.Path("walk.grc"), std::string(contents));
    words.insert(words.begin(), {WALRIM_CLI, "stats"});
    words.push_back(folder_.Path("walk.grc"));
    process_ = std::make_unique<Process>(words);
    status_ = process_->Wait();
    return *process_;
  }

  TemporaryFolder folder_;
  std::unique_ptr<Process> process_;
  int status_ = -1;
};

TEST_F(Stats, AsJsonInMetresAndSeconds) {
  const QJsonObject all = QJsonDocument::fromJson(QByteArray::fromStdString(Run({"--json"}, Walk).Out())).object();
  ASSERT_EQ(status_, 0) << process_->Err();
  ASSERT_EQ(all["logs"].toArray().size(), 1);
  const QJsonObject log = all["logs"].toArray()[0].toObject();
  EXPECT_EQ(log["name"].toString(), QString::fromUtf8("裏山"));
  EXPECT_EQ(log["number"].toInt(), 1);
  EXPECT_EQ(log["points"].toInt(), 5);
  EXPECT_EQ(log["segments"].toInt(), 2);
  EXPECT_NEAR(log["distance"].toDouble(), 4 * Step_m, 0.01);
  EXPECT_EQ(log["start"].toString(), "2002-11-12T00:00:00Z");
  EXPECT_EQ(log["end"].toString(), "2002-11-12T00:10:00Z");
  EXPECT_EQ(log["duration"].toInt(), 600);
  EXPECT_EQ(log["movingTime"].toInt(), 120 + 120 + 240);
  EXPECT_EQ(log["ascent"].toDouble(), 30);
  EXPECT_EQ(log["descent"].toDouble(), 20);
  EXPECT_EQ(log["lowest"].toDouble(), 100);
  EXPECT_EQ(log["highest"].toDouble(), 130);
  EXPECT_NEAR(log["highestSpeed"].toDouble(), Step_m / 120, 1e-4);
  EXPECT_EQ(all["total"].toObject()["duration"].toInt(), 600);
  EXPECT_EQ(all["ascentThreshold"].toDouble(), 10);
}

TEST_F(Stats, AsATableWhoseColumnsStandBelowEachOther) {
  const std::string out = Run({"--quiet"}, Walk).Out();
  ASSERT_EQ(status_, 0);
  EXPECT_EQ(process_->Err(), "");
  EXPECT_EQ(out,
            "番号  名前                 開始                 終了  点数  区間  距離 km     時間     移動  平均 km/h  "
            "移動平均  最高速  上り m  下り m  最低 m  最高 m\n"
            "   1  裏山  2002/11/12 09:00:00  2002/11/12 09:10:00     5     2     0.45  0:10:00  0:08:00        2.7  "
            "     3.3     3.3      30      20     100     130\n"
            "上り・下りは，10m以上の高度差だけを数えます．\n");
}

TEST_F(Stats, WhatIsNotKnownIsADash) {
  const std::string out =
      Run({}, "TRH\t1\tTRUE\t255\t=\"A\"\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\t1E+25\t1E+25\t\r\n").Out();
  EXPECT_EQ(status_, 0);
  EXPECT_NE(out.find("   1  A        -     -     1     1     0.00     -     -          -         -       -       -"),
            std::string::npos)
      << out;
}

TEST_F(Stats, AFileWithoutLogsAndRoutesIsRefused) {
  const std::string out = Run({}, "WPT\tD\tWGS84\t=\"BIWA\"\t35.5\t139.25\t=\"\"\t=\"161\"\t\t=\"0\"\t\r\n").Out();
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(out, "");
  EXPECT_NE(process_->Err().find(cli_messages::NothingToMeasure), std::string::npos);
}

}  // namespace
}  // namespace walrim
