#include "doctor/LineExam.h"

#include <gtest/gtest.h>
#include <map>
#include <utility>

#include "doctor/Uart.h"
#include "receiver/DemoSerialPort.h"
#include "support/Fakes.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// A line on which a text comes again and again at a speed; opened at another one, it gives what a UART reads then.
class TextPort : public ScriptedPort {
 public:
  TextPort(FakeClock& clock, std::string text, int baud) : ScriptedPort(clock), text_(std::move(text)), baud_(baud) {}
  [[nodiscard]] PortResult Open(std::string_view name, int baud) override {
    PortResult result = ScriptedPort::Open(name, baud);
    result.device = "/dev/ttyS9";
    DropQueued();
    ClearInBuffer();
    for (int i = 1; i <= 8; ++i)
      Queue(seconds(i), ReadAtAnotherSpeed(text_, baud_, baud));
    return result;
  }

 private:
  std::string text_;
  int baud_;
};

const std::string Rmc = "$GPRMC,124211,A,3537.9382,N,13916.2003,E,000.0,000.0,081202,006.6,W*67\r\n";
const std::string Gga = "$GPGGA,124211,3537.9382,N,13916.2003,E,1,05,2.1,190.0,M,39.0,M,,*4C\r\n";
const std::string SimpleText = "@021208124211N3537938E13916200G015+00190E0000N0000U0000\r\n";

class LineExamTest : public testing::Test {
 protected:
  LineReport Examine(SerialPort& port, std::string_view name = "1") {
    LineExam exam(port, clock, loop, facts);
    if (cancel_after > 0) {
      loop.on_yield = [&] {
        if (loop.yields == cancel_after) exam.Cancel();
      };
    }
    const auto begun = clock.now;
    const LineReport report = exam.Examine(name, [&](ExamStep step, const LineReport&) { steps.push_back(step); });
    took = clock.now - begun;
    EXPECT_FALSE(port.PortOpen());
    return report;
  }
  LineReport ExamineDemo(std::initializer_list<std::string_view> faults) {
    DemoReceiverOptions options;
    for (const std::string_view fault : faults)
      EXPECT_EQ(AddFault(options.faults, fault), "");
    DemoSerialPort port(options, clock, [this](std::chrono::nanoseconds time) { clock.Advance(time); });
    return Examine(port, "demo");
  }

  FakeClock clock;
  FakeEventLoop loop;
  FakePortFacts facts;
  std::vector<ExamStep> steps;
  std::chrono::nanoseconds took{};
  int cancel_after = 0;
};

TEST_F(LineExamTest, AReceiverThatAnswersIsHealthy) {
  const LineReport report = ExamineDemo({});
  EXPECT_EQ(report.finding, Finding::Healthy);
  EXPECT_NE(report.description.find("eTrex"), std::string::npos);
  EXPECT_EQ(report.figures.requests, 20);
  EXPECT_EQ(report.figures.answers, 20);
  // The ACK's first byte is one byte's time behind the request; the product data take some 80 ms.
  EXPECT_LE(report.figures.ack.value_or(milliseconds(99)), milliseconds(2));
  EXPECT_GT(report.figures.round_trip.value_or(milliseconds(0)), milliseconds(50));
  EXPECT_LT(took, seconds(5));
  EXPECT_EQ(steps, (std::vector{ExamStep::Port, ExamStep::Answer, ExamStep::Figures}));
}

TEST_F(LineExamTest, ALineWithoutAByteIsSilent) {
  ScriptedPort port(clock);
  EXPECT_EQ(Examine(port).finding, Finding::Silent);
  EXPECT_LT(took, seconds(5));
  EXPECT_GE(took, milliseconds(1500));
}

TEST_F(LineExamTest, SentencesAreFoundAtEverySpeed) {
  for (const int baud : {9600, 4800, 2400, 1200, 19200}) {
    TextPort port(clock, Rmc, baud);
    const LineReport report = Examine(port);
    EXPECT_EQ(report.finding, Finding::Nmea) << baud;
    EXPECT_EQ(report.baud, baud);
    EXPECT_NEAR(report.sentences.lat_deg.value_or(0), 35.632303, 1e-6) << baud;
    EXPECT_LT(took, baud == 9600 ? seconds(5) : seconds(12)) << baud;
  }
}

/// A cycle of sentences that is met in its middle: the date comes with the next one.
class CyclePort : public ScriptedPort {
 public:
  using ScriptedPort::ScriptedPort;
  PortResult Open(std::string_view port, int baud) override {
    const PortResult result = ScriptedPort::Open(port, baud);
    ClearInBuffer();
    Queue(seconds(1), ReadAtAnotherSpeed(Gga, 9600, baud));
    Queue(seconds(3), ReadAtAnotherSpeed(Rmc, 9600, baud));
    return result;
  }
};

TEST_F(LineExamTest, TheProofOfSentencesHasPlaceTimeAndSatellites) {
  CyclePort port(clock);
  const LineReport report = Examine(port);
  EXPECT_EQ(report.finding, Finding::Nmea);
  EXPECT_TRUE(report.sentences.lat_deg.has_value());
  EXPECT_EQ(report.sentences.satellites, 5);
  EXPECT_EQ(report.sentences.utc, (CivilTime{2002, 12, 8, 12, 42, 11}));
  EXPECT_LT(took, seconds(5));
}

TEST_F(LineExamTest, TheSimpleTextIsFound) {
  TextPort port(clock, SimpleText, 4800);
  const LineReport report = Examine(port);
  EXPECT_EQ(report.finding, Finding::TextOut);
  EXPECT_EQ(report.baud, 4800);
}

TEST_F(LineExamTest, CorrectionsAreToldFromNoise) {
  TextPort port(clock, "\x66\x59\x7F\x40\x55\x6A\x41\x5E", 9600);
  EXPECT_EQ(Examine(port).finding, Finding::Rtcm);
}

TEST_F(LineExamTest, NoiseIsDamageWithFigures) {
  TextPort port(clock, "\x91\xA5\x10\xFF\x5A\x03\xC3\x81\x99\xF1", 9600);
  const LineReport report = Examine(port);
  EXPECT_EQ(report.finding, Finding::Damaged);
  EXPECT_EQ(report.figures.answers, 0);
  EXPECT_LT(took, seconds(12));
}

TEST_F(LineExamTest, NoiseBetweenFramesIsDamage) {
  const LineReport report = ExamineDemo({"garbage"});
  EXPECT_EQ(report.finding, Finding::Damaged);
  EXPECT_GT(report.figures.stray_bytes, 0);
  EXPECT_LT(took, seconds(5));
}

TEST_F(LineExamTest, LateAcksAreSlow) {
  const LineReport report = ExamineDemo({"late-ack=100"});
  EXPECT_EQ(report.finding, Finding::Slow);
  EXPECT_GE(report.figures.ack.value_or(milliseconds(0)), milliseconds(100));
  EXPECT_LT(took, seconds(5));
}

TEST_F(LineExamTest, FixesThatComeUnaskedDoNotMatter) {
  EXPECT_EQ(ExamineDemo({"pvt=1"}).finding, Finding::Healthy);
}

TEST_F(LineExamTest, APortThatCannotBeOpenedIsNamedWithItsReason) {
  const std::pair<PortProblem, Finding> cases[] = {{PortProblem::Missing, Finding::NoPort},
                                                   {PortProblem::NotPermitted, Finding::NotPermitted},
                                                   {PortProblem::InUse, Finding::Held},
                                                   {PortProblem::Other, Finding::NotOpened}};
  for (const auto& [problem, finding] : cases) {
    ScriptedPort port(clock);
    port.open_result.problem = problem;
    EXPECT_EQ(Examine(port).finding, finding);
    EXPECT_TRUE(port.sent.empty());
  }
  facts.vanished = true;
  ScriptedPort port(clock);
  port.open_result.problem = PortProblem::Missing;
  EXPECT_EQ(Examine(port).finding, Finding::Vanished);
}

TEST_F(LineExamTest, ALineThatGoesMeanwhileHasVanished) {
  ScriptedPort port(clock);
  loop.on_yield = [&] { port.line_lost = true; };
  EXPECT_EQ(Examine(port).finding, Finding::Vanished);
}

TEST_F(LineExamTest, WhoTakesTheBytesIsNamed) {
  ScriptedPort port(clock);
  port.open_result.device = "/dev/ttyUSB0";
  facts.holders["/dev/ttyUSB0"] = {{PortHolder::Kind::Gpsd, "", 0}};
  EXPECT_EQ(Examine(port).finding, Finding::Held);
  facts.holders["/dev/ttyUSB0"] = {{PortHolder::Kind::ModemManager, "", 0}};
  EXPECT_EQ(Examine(port).finding, Finding::Silent);
}

TEST_F(LineExamTest, CancelEndsItAtOnce) {
  ScriptedPort port(clock);
  cancel_after = 3;
  EXPECT_EQ(Examine(port).finding, Finding::Cancelled);
  EXPECT_LT(took, milliseconds(200));
}

TEST_F(LineExamTest, AllPortsAreAskedButThoseThatAreHeld) {
  DemoSerialPort demo({}, clock, [this](std::chrono::nanoseconds time) { clock.Advance(time); });
  facts.ports = {{"1", "/dev/ttyUSB0"}, {"2", "/dev/ttyUSB1"}, {"demo", "/dev/demo"}};
  facts.holders["/dev/ttyUSB1"] = {{PortHolder::Kind::Process, "minicom", 77}};
  LineExam exam(demo, clock, loop, facts);
  std::vector<std::pair<std::string, bool>> asked;
  const auto found =
      exam.FindReceiver([&](const PortChoice& port, bool answers) { asked.emplace_back(port.name, answers); });
  EXPECT_EQ(found, (PortChoice{"demo", "/dev/demo"}));
  EXPECT_EQ(asked, (std::vector<std::pair<std::string, bool>>{{"1", false}, {"2", false}, {"demo", true}}));
}

TEST_F(LineExamTest, AHeldPortIsNotEvenOpened) {
  ScriptedPort port(clock);
  facts.ports = {{"2", "/dev/ttyUSB1"}};
  facts.holders["/dev/ttyUSB1"] = {{PortHolder::Kind::Process, "minicom", 77}};
  LineExam exam(port, clock, loop, facts);
  EXPECT_FALSE(exam.FindReceiver([](const PortChoice&, bool) {}));
  EXPECT_EQ(port.opened, 0);
}

}  // namespace
}  // namespace walrim
