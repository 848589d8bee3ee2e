// What an upload would lose, and what it lost, over a pseudo-terminal with receivers as strict as their models are.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cli/Messages.h"
#include "support/Processes.h"

namespace walrim {
namespace {

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);)
    lines.push_back(line);
  return lines;
}

std::string Fields(std::string_view tag, const std::string& ident, double lat_deg, const std::string& rest) {
  return std::string(tag) + "\tD\tWGS84\t=\"" + ident + "\"\t" + std::to_string(lat_deg) +
         "\t139.2\t=\"comment\"\t=\"" + rest + "\"\r\n";
}

/// Names that collide, Japanese ones, a picture of the many, a route of a hundred points, which is what a data set
/// holds of one of two hundred, two of one number, and a log of 2500 points.
std::string Walk() {
  std::string text;
  double lat_deg = 35;
  for (const auto* ident :
       {"LONGNAMEONE", "LONGNAMETWO", "高尾山", "きたほだか岳", "ﾄｻﾞﾝｸﾞﾁ", "camp", "CAMP", "GOAL 1", "OK"})
    text += Fields("WPT", ident, lat_deg += 0.01, "18");
  text += Fields("WPT", "PICT", 35.5, "8246");
  text += "RTH\t3\t=\"ながいルート\"\t200\r\n";
  for (int point = 0; point < 200; ++point)
    text += Fields("RTP", "P" + std::to_string(point), 36 + 0.001 * point, "18");
  for (const auto* name : {"FIRST", "SECOND"})
    text += "RTH\t7\t=\"" + std::string(name) + "\"\t1\r\n" + Fields("RTP", "ONLY", 37, "18");
  text += "TRH\t0\tTRUE\t255\t=\"秋の山\"\r\n";
  for (int point = 0; point < 2500; ++point) {
    text += "TRP\tD\tWGS84\t" + std::to_string(38 + 0.0001 * point) + "\t" + std::to_string(139 + 0.001 * (point % 7)) +
            "\t2022/11/15 09:00:00\t" + (point == 0 ? "TRUE" : "FALSE") + "\t100\t1E+25\t0\r\n";
  }
  return text;
}

class PreflightCli : public ::testing::TestWithParam<const char*> {
 protected:
  PreflightCli() {
    PutFile(folder.Path("walk.grc"), Walk());
    ::setenv("XDG_DATA_HOME", folder.Path("data").c_str(), 1);
    receiver_ = std::make_unique<Process>(
        std::vector<std::string>{WALRIM_RECEIVER, "--baud", "0", "--strict", "--model", GetParam()});
    EXPECT_TRUE(receiver_->ReadUntil("\n")) << receiver_->Err();
    port_ = receiver_->Out().substr(0, receiver_->Out().find('\n'));
  }

  int Upload(std::vector<std::string> options) {
    std::vector<std::string> words{WALRIM_CLI, "upload", "--quiet", "--port", port_, "--pacing", "0.1"};
    words.insert(words.end(), options.begin(), options.end());
    words.push_back(folder.Path("walk.grc"));
    Process process(words);
    const int status = process.Wait();
    out = LinesOf(process.Out());
    err = process.Err();
    return status;
  }

  TemporaryFolder folder;
  std::vector<std::string> out;
  std::string err;

  std::string port_;

 private:
  std::unique_ptr<Process> receiver_;
};

/// Whether a line of --check, without its proposal, tells of what a line of --verify tells.
bool Tells(std::string check, const std::string& verify) {
  check = check.substr(0, check.find("（提案"));
  const std::size_t record = verify.find("：") + std::string("：").size();
  return check.starts_with(verify.substr(0, record)) && check.ends_with(verify.substr(record));
}

/// The lines of one list that no line of another tells of.
template <typename Told>
std::vector<std::string> Untold(const std::vector<std::string>& lines, const std::vector<std::string>& others,
                                Told told) {
  std::vector<std::string> untold;
  std::ranges::copy_if(lines, std::back_inserter(untold), [&](const std::string& line) {
    return std::ranges::none_of(others, [&](const std::string& other) { return told(line, other); });
  });
  return untold;
}

using Strings = std::vector<std::string>;

TEST_P(PreflightCli, WhatIsForetoldIsFoundAndNothingElse) {
  ASSERT_EQ(Upload({"--check", "--backup", folder.Path("before.grc")}), 4) << err;
  const Strings foretold = out;
  EXPECT_EQ(FileContents(folder.Path("before.grc")), "") << "checking writes nothing";
  ASSERT_EQ(Upload({"--verify", "--backup", folder.Path("before.grc")}), 4) << err;
  EXPECT_GT(out.size(), 5U);
  EXPECT_EQ(Untold(out, foretold, [](const auto& found, const auto& line) { return Tells(line, found); }), Strings{});
  EXPECT_EQ(Untold(foretold, out, Tells), Strings{});
}

TEST_P(PreflightCli, WithTheProposalsOnlyWhatCannotBeKeptIsLost) {
  static_cast<void>(Upload({"--fit", "--verify", "--backup", folder.Path("before.grc")}));
  EXPECT_FALSE(out.empty()) << "the log's name cannot be kept";
  const Strings losses{"受信機に残りません", "点だけ", "名前「"};
  const Strings kept =
      Untold(out, losses, [](const auto& line, const auto& loss) { return line.find(loss) != std::string::npos; });
  EXPECT_EQ(kept, out);
}

TEST_P(PreflightCli, WithoutACheckItWarnsAndGoesOn) {
  EXPECT_EQ(Upload({"--kinds", "waypoint"}), 0) << err;
  EXPECT_TRUE(out.empty());
  EXPECT_NE(err.find("--check を指定すると"), std::string::npos) << err;
}

INSTANTIATE_TEST_SUITE_P(Models, PreflightCli,
                         ::testing::Values("GPS 12", "GPS 12XL", "GPS 12CX", "GPS 48", "GPS II+", "GPS III", "GPS III+",
                                           "eMap", "eTrex"));

// Sent with --fit, a Japanese name gets a short one, which finds it again when it comes back.
TEST_P(PreflightCli, AJapaneseNameComesBack) {
  static_cast<void>(Upload({"--fit", "--kinds", "waypoint"}));
  const std::string names = FileContents(folder.Path("data/walrim/names.tsv"));
  EXPECT_NE(names.find("きたほだか岳\tKITAHO"), std::string::npos) << names;
  EXPECT_EQ(names.find("LONGNAMEONE"), std::string::npos) << names;
  Process download({WALRIM_CLI, "download", "--quiet", "--port", port_, "--kinds", "waypoint", "--encoding", "utf8",
                    "-o", "-", "--pacing", "0.1"});
  EXPECT_EQ(download.Wait(), 0) << download.Err();
  EXPECT_NE(download.Out().find("=\"きたほだか岳\"\t35.0"), std::string::npos) << download.Out();
  EXPECT_NE(download.Err().find("元の名前に戻しました"), std::string::npos) << download.Err();
}

// A short name that the user wrote into the file is proposed.
TEST_P(PreflightCli, AShortNameFromTheFileIsSent) {
  std::filesystem::create_directories(folder.Path("data/walrim"));
  PutFile(folder.Path("data/walrim/names.tsv"), "# mine\n高尾山\tTKO\n");
  static_cast<void>(Upload({"--fit", "--kinds", "waypoint"}));
  const std::string names = FileContents(folder.Path("data/walrim/names.tsv"));
  EXPECT_NE(names.find("# mine\n"), std::string::npos) << names;
  EXPECT_NE(names.find("高尾山\tTKO\t"), std::string::npos) << names;
}

class BackupCli : public PreflightCli {};

TEST_P(BackupCli, ThatFailsStopsBeforeAnythingIsSent) {
  EXPECT_EQ(Upload({"--backup", folder.Path("nowhere/before.grc")}), 1);
  PutFile(folder.Path("there.grc"), "mine");
  EXPECT_EQ(Upload({"--backup", folder.Path("there.grc")}), 1);
  EXPECT_NE(err.find(cli_messages::ForceAdvice), std::string::npos) << err;
  EXPECT_EQ(FileContents(folder.Path("there.grc")), "mine");
  EXPECT_EQ(Upload({"--backup", folder.Path("walk.grc"), "--force"}), 1);
  EXPECT_EQ(FileContents(folder.Path("walk.grc")), Walk());
  ASSERT_EQ(Upload({"--kinds", "track", "--backup", folder.Path("first.grc")}), 0) << err;
  const std::string first = FileContents(folder.Path("first.grc"));
  ASSERT_EQ(Upload({"--kinds", "track", "--backup", folder.Path("there.grc"), "--force"}), 0) << err;
  EXPECT_EQ(FileContents(folder.Path("there.grc")).substr(0, first.find("TRH")), first.substr(0, first.find("TRH")));
  EXPECT_NE(FileContents(folder.Path("there.grc")).find("WPT\tD\tWGS84"), std::string::npos);
}

TEST_P(BackupCli, CheckingAndSendingExcludeEachOther) {
  EXPECT_EQ(Upload({"--check", "--fit"}), 2);
  EXPECT_EQ(Upload({"--check", "--verify"}), 2);
  EXPECT_EQ(Upload({"--backup", ""}), 2);
}

INSTANTIATE_TEST_SUITE_P(Models, BackupCli, ::testing::Values("eTrex"));

}  // namespace
}  // namespace walrim
