// The wordings of what is told of an upload.
#include "preflight/Messages.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using namespace preflight_messages;

TEST(PreflightMessages, OfLosses) {
  const auto text = [](Loss loss) { return LossText({DataKind::Waypoint, loss, 0, {}, 12, "45", "30"}); };
  EXPECT_EQ(text(Loss::Missing), "受信機に残りません");
  EXPECT_EQ(text(Loss::Points), "45点のうち30点だけが残ります");
  EXPECT_EQ(text(Loss::Name), "名前「45」→「30」");
  EXPECT_EQ(text(Loss::Comment), "コメント「45」→「30」");
  EXPECT_EQ(text(Loss::Picture), "絵「45」→「30」");
  EXPECT_EQ(text(Loss::Number), "番号「45」→「30」");
  EXPECT_EQ(text(Loss::Overwrites), "受信機にある「30」を上書きします");
  EXPECT_EQ(text(Loss::SharedName), "ほかの場所と同じ名前です");
  EXPECT_EQ(text(Loss::SharedRouteName), "ほかのルートと同じ名前です");
  EXPECT_EQ(text(Loss::NoRouteName), "名前がありません");
  EXPECT_EQ(text(Loss::Capitals), "小文字が大文字になります（12件）");
  EXPECT_EQ(text(Loss::Colour), "色が残りません（12件）");
  EXPECT_EQ(text(Loss::Height), "標高が残りません（12件）");
  EXPECT_EQ(text(Loss::Depth), "水深が残りません（12件）");
  EXPECT_EQ(text(Loss::Distance), "近接警報の距離が残りません（12件）");
  EXPECT_EQ(text(Loss::Details), "施設や住所が残りません（12件）");
  EXPECT_EQ(text(Loss::LogName), "名前が残りません（12件）");
  EXPECT_EQ(text(Loss::Time), "日時が残りません（12件）");
}

TEST(PreflightMessages, OfFindings) {
  DataSet data;
  Waypoint waypoint;
  waypoint.ident = "北穂高岳";
  ASSERT_EQ(data.Add(waypoint), AddResult::Stored);
  UploadFinding finding{{DataKind::Waypoint, Loss::Missing, 0, {}, 1, "北穂高岳", "X"}, Cause::Letters, {}, {}};
  finding.proposals = {{Change::Rename, DataKind::Waypoint, 0, {}, "KITAHO", 0}};
  EXPECT_EQ(FindingLine(data, finding),
            "Waypoint 1「北穂高岳」：名前に受信機の文字がないため，受信機に残りません（提案：名前「KITAHO」）");
  EXPECT_EQ(DifferenceLine(data, finding.difference), "Waypoint 1「北穂高岳」：受信機に残りません");
  finding.other = 4;
  const auto text = [&](Cause cause) {
    finding.cause = cause;
    return FindingText(finding);
  };
  EXPECT_EQ(text(Cause::Overwritten), "Waypoint 5と同じ名前か番号になるため，受信機に残りません");
  EXPECT_EQ(text(Cause::NoRoom), "受信機に入りきらないため，受信機に残りません");
  EXPECT_EQ(text(Cause::TooLong), "Waypoint 5の文字列が長すぎて受信機が受け取らないため，受信機に残りません");
  EXPECT_EQ(text(Cause::NotSendable), "Waypoint 5に送れない文字か位置があるため，受信機に残りません");
}

}  // namespace
}  // namespace walrim
