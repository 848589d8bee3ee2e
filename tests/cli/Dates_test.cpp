// Dates that are 1024 weeks behind and the receiver's clock, over a pseudo-terminal.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "app/Messages.h"
#include "cli/Messages.h"
#include "support/Processes.h"

namespace walrim {
namespace {

constexpr std::string_view Log =
    "TRH\t1\tTRUE\t4\t=\"T1\"\n"
    "TRP\tD\tWGS84\t35.5\t139.5\t2003/05/03 12:00:00\tTRUE\t190\t1E+25\t0\n";

struct Result {
  int status = -1;
  std::string out;
  std::string err;

  [[nodiscard]] bool Said(std::string_view text) const { return err.find(text) != std::string::npos; }
  [[nodiscard]] bool Wrote(std::string_view text) const { return out.find(text) != std::string::npos; }
};

class Dates : public ::testing::Test {
 protected:
  static Result Run(std::vector<std::string> words, std::string_view standard_input = {}) {
    words.insert(words.begin(), WALRIM_CLI);
    Process process(words, standard_input);
    Result result;
    result.status = process.Wait();
    result.out = process.Out();
    result.err = process.Err();
    return result;
  }
  /// A receiver with options; its port.
  std::string Start(std::vector<std::string> options) {
    options.insert(options.begin(), {WALRIM_RECEIVER, "--baud", "0"});
    receiver_ = std::make_unique<Process>(options);
    EXPECT_TRUE(receiver_->ReadUntil("\n")) << receiver_->Err();
    return receiver_->Out().substr(0, receiver_->Out().find('\n'));
  }
  /// Track logs to standard output.
  static Result Download(const std::string& port, std::vector<std::string> more) {
    more.insert(more.begin(), {"download", "--kinds", "track", "-o", "-", "--port", port});
    return Run(more);
  }
  /// A file of the log above, written last in a year.
  std::string PutLog(int year) {
    const std::string path = folder.Path("log.grc");
    PutFile(path, Log);
    const std::chrono::sys_seconds day = std::chrono::sys_days(std::chrono::year(year) / 5 / 4);
    std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(day));
    return path;
  }

  TemporaryFolder folder;

 private:
  std::unique_ptr<Process> receiver_;
};

/// What tells that dates are behind.
constexpr std::string_view Behind = "1024週";

TEST_F(Dates, ATrueLogStaysWhereItsFileIsAsOld) {
  const Result kept = Run({"convert", PutLog(2003), "-o", "-", "--fix-dates", "auto"});
  EXPECT_EQ(kept.status, 0);
  EXPECT_TRUE(kept.Wrote("2003/05/03 12:00:00"));
  EXPECT_FALSE(kept.Said(Behind));
}

TEST_F(Dates, WithoutTheOptionTheyAreToldAlone) {
  const std::string path = PutLog(2026);
  const Result told = Run({"convert", path, "-o", "-", "--quiet"});
  EXPECT_EQ(told.status, 0);
  EXPECT_TRUE(told.Wrote("2003/05/03 12:00:00"));
  EXPECT_TRUE(told.Said("2003/05/03～2003/05/03は，正しくは2022/12/17～2022/12/17"));
  EXPECT_TRUE(told.Said(cli_messages::FixDatesAdvice));
  // Nobody is there to be asked.
  const Result asked = Run({"convert", path, "-o", "-", "--quiet", "--fix-dates", "ask"});
  EXPECT_EQ(asked.out, told.out);
  EXPECT_EQ(asked.err, told.err);
  EXPECT_FALSE(Run({"convert", path, "-o", "-", "--kinds", "waypoint"}).Said(Behind));
}

TEST_F(Dates, TheyAreFixed) {
  const std::string path = PutLog(2026);
  const Result fixed = Run({"convert", path, "-o", "-", "--fix-dates", "auto"});
  EXPECT_TRUE(fixed.Wrote("2022/12/17 12:00:00"));
  EXPECT_TRUE(fixed.Said(messages::DatesFixed({DateRepair{}})));
  EXPECT_TRUE(Run({"convert", path, "-o", "-", "--fix-dates", "2"}).Wrote("2042/08/02 12:00:00"));
  const Result none = Run({"convert", path, "-o", "-", "--fix-dates", "0"});
  EXPECT_TRUE(none.Wrote("2003/05/03 12:00:00"));
  EXPECT_FALSE(none.Said(Behind));
  EXPECT_EQ(Run({"convert", path, "-o", "-", "--fix-dates", "4"}).status, 2);
}

TEST_F(Dates, StandardInputTellsNothing) {
  EXPECT_FALSE(Run({"convert", "-", "-o", "-"}, Log).Said(Behind));
  EXPECT_TRUE(Run({"convert", "-", "-o", "-", "--fix-dates", "1"}, Log).Wrote("2022/12/17 12:00:00"));
}

TEST_F(Dates, AReceiverThatHasFallenBackIsFoundAndCured) {
  const std::string port = Start({"--clock", "2026-11-22T09:00:00Z", "--rollovers", "1"});
  const Result never = Download(port, {"--quiet"});
  EXPECT_TRUE(never.Wrote("2007/"));
  EXPECT_TRUE(never.Said(Behind));
  const Result fixed = Download(port, {"--fix-dates", "auto"});
  EXPECT_EQ(fixed.status, 0);
  EXPECT_FALSE(fixed.Wrote("2007/"));
  EXPECT_TRUE(fixed.Wrote("2026/11/"));

  const Result info = Run({"info", "--port", port});
  EXPECT_EQ(std::count(info.out.begin(), info.out.end(), '\n'), 4);
  EXPECT_TRUE(info.Said("受信機の時計：2007/04/08 09:0"));
  const Result refused = Run({"set-clock", "--port", port});
  EXPECT_EQ(refused.status, 1);
  EXPECT_TRUE(refused.Said("受信機の時計は2007/04/08 09:0"));
  EXPECT_TRUE(refused.Said(cli_messages::YesAdvice));
  const Result set = Run({"set-clock", "--port", port, "--yes"});
  EXPECT_EQ(set.status, 0);
  EXPECT_TRUE(set.Said("受信機の時計を合わせました"));
  EXPECT_EQ(set.out, "");
  const Result cured = Download(port, {"--quiet"});
  EXPECT_TRUE(cured.Wrote("2026/11/"));
  EXPECT_EQ(cured.err, "");
}

TEST_F(Dates, OnlyWhoAsksOrFixesAsksTheReceiver) {
  const std::string port = Start({});  // with the computer's clock, and logs of 2002
  const auto trace_of = [&](const char* fixing) {
    const std::string path = folder.Path(fixing);
    EXPECT_EQ(Download(port, {"--fix-dates", fixing, "--trace", path}).status, 0);
    return FileContents(path);
  };
  // Command 5.
  constexpr std::string_view question = "10 0A 02 05 00 EF 10 03";
  EXPECT_EQ(trace_of("never").find(question), std::string::npos);
  EXPECT_EQ(trace_of("1").find(question), std::string::npos);
  EXPECT_NE(trace_of("auto").find(question), std::string::npos);
  EXPECT_NE(trace_of("ask").find(question), std::string::npos);
  // Its clock is right, and so are its logs.
  const Result asked = Download(port, {"--fix-dates", "auto", "--quiet"});
  EXPECT_TRUE(asked.Wrote("2002/11/15"));
  EXPECT_EQ(asked.err, "");
}

TEST_F(Dates, AReceiverThatIsNotThereHasNoClock) {
  const std::string port = Start({"--fault", "silent"});
  EXPECT_EQ(Run({"set-clock", "--port", port, "--yes"}).status, 3);
}

}  // namespace
}  // namespace walrim
