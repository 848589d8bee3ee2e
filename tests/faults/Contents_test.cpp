// Receivers that lay out their records otherwise than most: what they send comes as it is, and goes back so.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "faults/Bench.h"

namespace walrim {
namespace {

class OtherContents : public ::testing::TestWithParam<Link> {
 protected:
  /// Downloads a kind from an eTrex with this fault.
  std::vector<std::string> Downloaded(DataKind kind, const std::string& fault) {
    bench.Plug("eTrex", AllLarge, fault, 0);
    EXPECT_EQ(bench.Run(Command::Download, kind), Outcome::Done);
    EXPECT_EQ(bench.desktop.messages, std::vector<std::string>{});
    return bench.Lines(kind);
  }
  /// The same with what was uploaded to a receiver that does nothing unusual.
  std::vector<std::string> GoneBack(DataKind kind) {
    bench.Plug("eTrex", AllOld, "", 0);
    EXPECT_EQ(bench.Run(Command::Upload, kind), Outcome::Done);
    EXPECT_EQ(bench.Run(Command::Download, kind), Outcome::Done);
    EXPECT_EQ(bench.desktop.messages, std::vector<std::string>{});
    return bench.Lines(kind);
  }

  Bench bench{GetParam()};
};

TEST_P(OtherContents, RoutesWithoutALinkBehindTheirLastPoint) {
  const std::vector<std::string> all = Downloaded(DataKind::Route, "");
  std::vector<std::string> between;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const bool last = i + 1 == all.size() || all[i + 1].starts_with("route");
    if (!last) between.push_back(all[i]);
  }
  ASSERT_EQ(between.size() + 2, all.size());
  EXPECT_EQ(Downloaded(DataKind::Route, "links-between"), between);
  EXPECT_EQ(GoneBack(DataKind::Route), between);
}

TEST_P(OtherContents, ALogOfTwoSegmentsUnderOneHeader) {
  const std::vector<std::string> all = Downloaded(DataKind::TrackLog, "");
  const std::vector<std::string> segments = Downloaded(DataKind::TrackLog, "two-segments");
  ASSERT_EQ(segments.size(), all.size());
  std::size_t flags = 0;
  for (std::size_t i = 0; i < all.size(); ++i)
    flags += all[i] != segments[i] ? 1U : 0U;
  EXPECT_EQ(flags, 1U) << "one point more begins a segment";
  EXPECT_EQ(bench.main.State().Data().Count(DataKind::TrackLog), 2U);
  EXPECT_EQ(GoneBack(DataKind::TrackLog), segments);
}

INSTANTIATE_TEST_SUITE_P(Links, OtherContents, ::testing::ValuesIn(AllLinks),
                         [](const auto& tested) { return std::string(LinkName(tested.param)); });

}  // namespace
}  // namespace walrim
