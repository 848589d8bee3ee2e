// Dates that are 1024 weeks behind, and the receiver's clock.
#include "app/DateCommands.h"

#include <chrono>
#include <gtest/gtest.h>

#include "AppTest.h"
#include "device/types/DateTime.h"
#include "device/types/TrackTypes.h"

namespace walrim {
namespace {

constexpr std::string_view Log =
    "TRH\t2\tTRUE\t4\t=\"T1\"\n"
    "TRP\tD\tWGS84\t35.5\t139.5\t2007/04/07 12:00:00\tTRUE\t190\t1E+25\t0\n"
    "TRP\tD\tWGS84\t35.5\t139.5\t2007/04/08 12:00:00\tFALSE\t190\t1E+25\t0\n";

GarminSeconds At(int year, int month, int day, int hour) {
  return static_cast<GarminSeconds>(SecondsSinceGarminEpoch({year, month, day, hour, 0, 0}));
}

class DateCommandsTest : public AppTest {
 protected:
  DateCommandsTest() { clock.utc_s = SecondsSinceGarminEpoch({2026, 11, 22, 9, 0, 0}); }

  /// A file of the log above that was written last in a year.
  std::string PutLog(std::string_view name, int year) {
    const std::string path = Put(name, Log);
    const std::chrono::sys_seconds day = std::chrono::sys_days(std::chrono::year(year) / 11 / 22);
    std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(day));
    return path;
  }
  /// The time of a log's first point.
  GarminSeconds First(std::size_t log = 0) { return Data().Logs().at(log).points.at(0).time.value(); }
  /// A receiver of one log, of a time.
  void HoldInReceiver(GarminSeconds time) {
    TrackPoint point;
    point.time = time;
    receiver.packets_of[6] = {{99, {1, 255, 'A', 0}}, {34, EncodeTrackPoint(point, TrackPointType::D301)}};
    main.State().Settings().download_kinds[IndexOf(DataKind::TrackLog)] = true;
  }
  void SetReceiverClock(const CivilTime& utc) { receiver.clock = EncodeDateTime(utc); }
  [[nodiscard]] std::size_t ClockQuestions() const { return receiver.CountReceived({10, {5, 0}}); }
  std::vector<DateRepair> Repairs() { return main.State().DateRepairs(); }
};

TEST_F(DateCommandsTest, AFileIsHeldAgainstItsOwnDate) {
  ASSERT_EQ(main.Imports().ImportFrom(PutLog("true.grc", 2007)), Outcome::Done);
  EXPECT_TRUE(Repairs().empty());
  EXPECT_EQ(desktop.caption.find(messages::FixDatesByMenu), std::string::npos);
  ASSERT_EQ(main.Imports().ImportFrom(PutLog("new.grc", 2026)), Outcome::Done);
  ASSERT_EQ(Repairs().size(), 1U);
  EXPECT_EQ(Repairs()[0].log, 1U);
  EXPECT_TRUE(desktop.caption.ends_with(messages::DatesBehind(Repairs(), 9) + std::string(messages::FixDatesByMenu)));
  EXPECT_EQ(First(1), At(2007, 4, 7, 3));
  // A file of the future is not believed.
  clock.utc_s = SecondsSinceGarminEpoch({2007, 11, 22, 9, 0, 0});
  ASSERT_EQ(main.Imports().ImportFrom(PutLog("future.grc", 2026)), Outcome::Done);
  EXPECT_EQ(Repairs().size(), 1U);
}

TEST_F(DateCommandsTest, PastesAndLinksTellNothing) {
  ASSERT_EQ(main.Imports().ImportTyped(std::string(Log)), Outcome::Done);
  inet.answer.bytes = Log;
  ASSERT_EQ(main.Imports().ImportTyped("http://example.com/a.grc"), Outcome::Done);
  EXPECT_EQ(Data().Logs().size(), 2U);
  EXPECT_TRUE(Repairs().empty());
}

TEST_F(DateCommandsTest, DatesAreFixedWhenTheUserAgrees) {
  ASSERT_EQ(main.Imports().ImportFrom(PutLog("new.grc", 2026)), Outcome::Done);
  dialogs.fixes_dates = false;
  EXPECT_EQ(main.Dates().FixDates(), Outcome::Cancelled);
  EXPECT_EQ(dialogs.dates_shown.size(), 1U);
  EXPECT_EQ(First(), At(2007, 4, 7, 3));
  dialogs.fixes_dates = true;
  EXPECT_EQ(main.Dates().FixDates(), Outcome::Done);
  EXPECT_EQ(First(), At(2026, 11, 21, 3));
  EXPECT_EQ(desktop.caption, messages::DatesFixed({DateRepair{}}));
  EXPECT_EQ(main.Dates().FixDates(), Outcome::Refused);
}

TEST_F(DateCommandsTest, DeletedLogsHaveNothingToRepair) {
  ASSERT_EQ(main.Imports().ImportFrom(PutLog("new.grc", 2026)), Outcome::Done);
  main.State().Empty(DataKind::TrackLog);
  EXPECT_TRUE(Repairs().empty());
}

TEST_F(DateCommandsTest, ADownloadAsksTheReceiversClockFirst) {
  HoldInReceiver(At(2003, 5, 3, 0));
  SetReceiverClock({2026, 11, 22, 8, 59, 0});
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(ClockQuestions(), 1U);
  EXPECT_TRUE(Repairs().empty());
  SetReceiverClock({2007, 4, 8, 8, 59, 0});
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  ASSERT_EQ(Repairs().size(), 1U);
  EXPECT_EQ(desktop.caption, messages::DatesBehind(Repairs(), 9) + std::string(messages::FixDatesByMenu));
  receiver.tells_clock = false;
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Repairs().size(), 1U);
}

TEST_F(DateCommandsTest, WhatIsRightAsksNobody) {
  HoldInReceiver(At(2026, 5, 3, 0));
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_TRUE(Repairs().empty());
  EXPECT_EQ(ClockQuestions(), 0U);
}

TEST_F(DateCommandsTest, NeverSendsNothing) {
  HoldInReceiver(At(2003, 5, 3, 0));
  main.State().Settings().date_fixing = DateFixing::Never;
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Repairs().size(), 1U);
  EXPECT_EQ(ClockQuestions(), 0U);
  EXPECT_EQ(desktop.caption, "");
}

TEST_F(DateCommandsTest, TheUserKnowsBetter) {
  HoldInReceiver(At(2026, 5, 3, 0));
  main.State().Settings().date_fixing = DateFixing::ByNumber;
  main.State().Settings().roll_overs = 1;
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Repairs().size(), 1U);
  ASSERT_EQ(main.Imports().ImportTyped(std::string(Log)), Outcome::Done);
  EXPECT_EQ(Repairs().size(), 2U);
  EXPECT_EQ(ClockQuestions(), 0U);
}

TEST_F(DateCommandsTest, TheReceiversClockIsTold) {
  SetReceiverClock({2007, 4, 8, 9, 0, 1});
  main.Dates().TellReceiverClock();
  EXPECT_EQ(desktop.caption, "受信機の時計：2007/04/08 09:00:01（UTC）");
  EXPECT_EQ(main.State().ReceiverClock(), desktop.caption);
  desktop.caption = "before";
  main.Dates().TellReceiverClock();
  EXPECT_EQ(desktop.caption, "before");
  receiver.tells_clock = false;
  main.Dates().TellReceiverClock();
  EXPECT_EQ(desktop.caption, "before");
  EXPECT_EQ(main.State().ReceiverClock(), "");
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DateCommandsTest, TheClockIsSetWhenTheUserAgrees) {
  SetReceiverClock({2007, 4, 8, 9, 0, 0});
  const auto setting = [this] {
    const std::vector<int> ids = receiver.ReceivedIds();
    return std::count(ids.begin(), ids.end(), 14);
  };
  desktop.yes = false;
  EXPECT_EQ(main.Device().SetClock(), Outcome::Refused);
  EXPECT_EQ(setting(), 0);
  ASSERT_EQ(desktop.questions.size(), 1U);
  EXPECT_EQ(desktop.questions[0],
            messages::SetClockQuestion(SecondsSinceGarminEpoch({2007, 4, 8, 9, 0, 0}), clock.utc_s));
  desktop.yes = true;
  receiver.takes_clock = true;
  EXPECT_EQ(main.Device().SetClock(), Outcome::Done);
  EXPECT_EQ(setting(), 1);
  EXPECT_EQ(receiver.clock, EncodeDateTime({2026, 11, 22, 9, 0, 0}));
  EXPECT_EQ(desktop.caption, messages::ClockSet(clock.utc_s));
}

TEST_F(DateCommandsTest, AReceiverThatKeepsItsDateIsTold) {
  EXPECT_EQ(main.Device().SetClock(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::ClockNotTaken(SecondsSinceGarminEpoch({2002, 12, 8, 3, 0, 0}))});
}

TEST_F(DateCommandsTest, AReceiverWithoutAClock) {
  receiver.tells_clock = false;
  EXPECT_EQ(main.Device().SetClock(), Outcome::NoReceiver);
  EXPECT_EQ(desktop.messages, Strings{std::string(messages::NoReceiverClock)});
  EXPECT_TRUE(desktop.questions.empty());
}

}  // namespace
}  // namespace walrim
