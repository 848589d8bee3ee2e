// walrim-cli against walrim-receiver over a pseudo-terminal, as a person at a terminal uses them.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "app/Messages.h"
#include "cli/Messages.h"
#include "device/Messages.h"
#include "support/Processes.h"

namespace walrim {
namespace {

constexpr std::string_view LinkLost = messages::LinkLost;
constexpr std::string_view DataLoss = device_messages::DataLoss;
constexpr std::string_view AbortFrame = "10 0A 02 00 00 F4 10 03";

/// Messages as the terminal prints them.
std::string Lines(std::initializer_list<std::string_view> messages) {
  std::string lines;
  for (const std::string_view message : messages)
    lines.append(message).append("\n");
  return lines;
}

/// What the receivers of these tests hold; with Japanese names, comments and a name that looks like a number.
constexpr std::string_view Memory =
    "WPT\tD\tWGS84\t=\"高尾\"\t35.6252\t139.2437\t=\"山頂 599M\"\t=\"8\"\t\t=\"1\"\t\t0\t2\r\n"
    "WPT\tD\tWGS84\t=\"007\"\t35.63\t139.27\t=\"ﾄｻﾞﾝｸﾞﾁ\"\t=\"10\"\t\t=\"0\"\t\t12.5\t0\r\n"
    "WPT\tD\tWGS84\t=\"ABC DE\"\t-33.5\t-70.25\t=\"SOUTH WEST\"\r\n"
    "RTH\t3\t=\"高尾から陣馬\"\t2\r\n"
    "RTP\tD\tWGS84\t=\"START\"\t35.6252\t139.2437\t=\"出発\"\r\n"
    "RTP\tD\tWGS84\t=\"GOAL\"\t35.65\t139.166\t=\"\"\r\n"
    "RTH\t5\t=\"SECOND\"\t1\r\n"
    "RTP\tD\tWGS84\t=\"ONLY\"\t35.7\t139.1\t=\"\"\r\n"
    "TRH\t3\tTRUE\t4\t=\"秋の山\"\r\n"
    "TRP\tD\tWGS84\t35.6252\t139.2437\t2002/11/15 09:00:00\tTRUE\t599.5\t1E+25\t0\r\n"
    "TRP\tD\tWGS84\t35.6262\t139.2427\t2002/11/15 09:01:10\tFALSE\t605\t1E+25\t0\r\n"
    "TRP\tD\tWGS84\t35.6272\t139.2417\t2002/11/15 09:02:20\tFALSE\t610\t1E+25\t0\r\n"
    "TRH\t1\tFALSE\t0\t=\"SECOND\"\r\n"
    "TRP\tD\tWGS84\t35.7\t139.1\t2002/11/16 10:00:00\tTRUE\t100\t5.5\t0\r\n";

/// walrim-receiver with options; its terminal is known once this has been made.
class Receiver {
 public:
  explicit Receiver(std::vector<std::string> options = {}, const std::string& baud = "0") {
    std::vector<std::string> words{WALRIM_RECEIVER, "--baud", baud};
    words.insert(words.end(), options.begin(), options.end());
    process_ = std::make_unique<Process>(words);
    EXPECT_TRUE(process_->ReadUntil("\n")) << process_->Err();
    port_ = process_->Out().substr(0, process_->Out().find('\n'));
  }
  [[nodiscard]] const std::string& Port() const { return port_; }

 private:
  std::unique_ptr<Process> process_;
  std::string port_;
};

struct Result {
  int status = -1;
  std::string out;
  std::string err;
  /// Nothing is what nobody says: whoever expects silence looks at err.
  [[nodiscard]] bool Said(std::string_view text) const { return !text.empty() && err.find(text) != std::string::npos; }
};

class EndToEnd : public ::testing::Test {
 protected:
  EndToEnd() { PutFile(folder.Path("memory.grc"), Memory); }

  static std::vector<std::string> Words(std::vector<std::string> words) {
    words.insert(words.begin(), WALRIM_CLI);
    return words;
  }
  static Result Run(std::vector<std::string> words, std::string_view standard_input = {}) {
    Process process(Words(std::move(words)), standard_input);
    Result result;
    result.status = process.Wait();
    result.out = process.Out();
    result.err = process.Err();
    return result;
  }
  /// A device command at a pace that suits a line without a pace of its own.
  static Result OnLine(const std::string& command, const Receiver& receiver, std::vector<std::string> more = {}) {
    more.insert(more.begin(), {command, "--port", receiver.Port(), "--pacing", "0.1"});
    return Run(std::move(more));
  }
  [[nodiscard]] std::vector<std::string> WithMemory(std::vector<std::string> options = {}) const {
    options.insert(options.end(), {"--memory", folder.Path("memory.grc")});
    return options;
  }
  [[nodiscard]] std::string Path(std::string_view name) const { return folder.Path(name); }

  TemporaryFolder folder;
};

// ---- All models

class EveryModel : public EndToEnd, public ::testing::WithParamInterface<const char*> {};

TEST_P(EveryModel, GivesTheSameFileAfterAnUploadAndADownload) {
  const Receiver full(WithMemory({"--model", GetParam()}));
  ASSERT_EQ(OnLine("download", full, {"-o", Path("a.grc")}).status, 0);
  const std::string first = FileContents(Path("a.grc"));
  EXPECT_NE(first.find("WPT\tD\tWGS84\t=\"\x8d\x82\x94\xf6"), std::string::npos);  // 高尾 in Shift-JIS
  EXPECT_NE(first.find("RTP\tD\tWGS84\t=\"ONLY"), std::string::npos);
  EXPECT_NE(first.find("\t2002/11/16 10:00:00\tTRUE\t"), std::string::npos);

  const Receiver other({"--model", GetParam()});
  const Result upload = OnLine("upload", other, {Path("a.grc")});
  ASSERT_EQ(upload.status, 0) << upload.err;
  ASSERT_EQ(OnLine("download", other, {"-o", Path("b.grc")}).status, 0);
  EXPECT_EQ(FileContents(Path("b.grc")), first);
}

TEST_P(EveryModel, GivesTheSameFileAfterAnUploadOfGpxToo) {
  const Receiver full(WithMemory({"--model", GetParam()}));
  ASSERT_EQ(OnLine("download", full, {"-o", Path("a.grc")}).status, 0);
  ASSERT_EQ(OnLine("download", full, {"-o", Path("a.gpx")}).status, 0);
  const std::string first = FileContents(Path("a.grc"));
  const std::string gpx = FileContents(Path("a.gpx"));
  EXPECT_NE(gpx.find("<name>高尾"), std::string::npos) << gpx;
  EXPECT_EQ(OnLine("download", full, {"-o", "-", "--type", "gpx"}).out, gpx);

  const Receiver other({"--model", GetParam()});
  const Result upload = OnLine("upload", other, {Path("a.gpx")});
  ASSERT_EQ(upload.status, 0) << upload.err;
  ASSERT_EQ(OnLine("download", other, {"-o", Path("b.grc")}).status, 0);
  EXPECT_EQ(FileContents(Path("b.grc")), first);

  ASSERT_EQ(Run({"convert", Path("a.grc"), "-o", Path("c.gpx")}).status, 0);
  ASSERT_EQ(Run({"convert", Path("c.gpx"), "-o", Path("c.grc")}).status, 0);
  ASSERT_EQ(Run({"convert", Path("a.grc"), "-o", Path("d.grc")}).status, 0);
  EXPECT_EQ(FileContents(Path("c.grc")), FileContents(Path("d.grc")));
}

INSTANTIATE_TEST_SUITE_P(Models, EveryModel,
                         ::testing::Values("GPS 12", "GPS 12XL", "GPS 12CX", "GPS 48", "GPS II+", "GPS III", "GPS III+",
                                           "eMap", "eTrex"));

class DemonstrationData : public EndToEnd, public ::testing::WithParamInterface<const char*> {};

TEST_P(DemonstrationData, ComeBackAsTheyWereToo) {
  const Receiver receiver({"--model", GetParam()});
  ASSERT_EQ(OnLine("download", receiver, {"-o", Path("a.grc")}).status, 0);
  ASSERT_EQ(OnLine("upload", receiver, {Path("a.grc")}).status, 0);
  ASSERT_EQ(OnLine("download", receiver, {"-o", Path("b.grc")}).status, 0);
  EXPECT_EQ(FileContents(Path("a.grc")), FileContents(Path("b.grc")));
}

INSTANTIATE_TEST_SUITE_P(Models, DemonstrationData,
                         ::testing::Values("GPS 12", "GPS 12XL", "GPS 12CX", "GPS 48", "GPS II+", "GPS III", "GPS III+",
                                           "eMap", "eTrex"));

TEST_F(EndToEnd, ALogOfTwoSegmentsDoesNotTakeTheNextOnesName) {
  const Receiver receiver;
  const Result download = OnLine("download", receiver, {"-o", "-", "--encoding", "utf8", "--kinds", "track"});
  ASSERT_EQ(download.status, 0) << download.err;
  std::vector<std::string> headers;
  std::istringstream lines(download.out);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("TRH")) headers.push_back(line.substr(0, line.find('\r')));
  }
  EXPECT_EQ(headers,
            (std::vector<std::string>{"TRH\t180\tTRUE\t255\t=\"TAKAO-JINBA\"", "TRH\t140\tTRUE\t255\t=\"JINBA-FUJINO\"",
                                      "TRH\t120\tTRUE\t255\t=\"TAKAO LOOP\""}));
}

TEST_F(EndToEnd, InfoPrintsFourLines) {
  const Receiver receiver(WithMemory());
  const Result info = OnLine("info", receiver);
  EXPECT_EQ(info.status, 0);
  EXPECT_EQ(std::count(info.out.begin(), info.out.end(), '\n'), 4);
  EXPECT_EQ(info.out.find("eTrex "), 0U);
  EXPECT_NE(info.out.find(" (Pid:"), std::string::npos);
  // 3 waypoints; 2 headers, 3 points and 3 links; 2 headers and 4 points.
  EXPECT_NE(info.out.find("\nWaypoint 3\nRoute 8\nTrackLog 6\n"), std::string::npos) << info.out;
}

TEST_F(EndToEnd, ADownloadAtThePaceOfARealLineGivesTheSameFile) {
  const Receiver fast(WithMemory());
  const Receiver real(WithMemory(), "9600");
  ASSERT_EQ(OnLine("download", fast, {"-o", Path("a.grc")}).status, 0);
  const Result download = Run({"download", "--port", real.Port(), "-o", Path("b.grc")});
  ASSERT_EQ(download.status, 0) << download.err;
  EXPECT_EQ(FileContents(Path("a.grc")), FileContents(Path("b.grc")));
  EXPECT_TRUE(download.Said("DownLoading : Waypoint [3/3] Remaining 00:00")) << download.err;
  EXPECT_EQ(download.out, "");
}

TEST_F(EndToEnd, KindsCanBeChosen) {
  const Receiver receiver(WithMemory());
  ASSERT_EQ(OnLine("download", receiver, {"-o", Path("a.grc"), "--kinds", "track,waypoint"}).status, 0);
  const std::string text = FileContents(Path("a.grc"));
  EXPECT_NE(text.find("WPT\t"), std::string::npos);
  EXPECT_EQ(text.find("RTH\t"), std::string::npos);
  EXPECT_NE(text.find("TRH\t"), std::string::npos);
}

TEST_F(EndToEnd, StandardOutputTakesTheDataAndNothingElse) {
  const Receiver receiver(WithMemory());
  const Result download = OnLine("download", receiver, {"-o", "-", "--encoding", "utf8", "--kinds", "waypoint"});
  EXPECT_EQ(download.status, 0);
  EXPECT_EQ(download.out.find("WPT\tD\tWGS84\t=\"高尾\"\t35.62519"), 0U) << download.out;
  EXPECT_EQ(std::count(download.out.begin(), download.out.end(), '\n'), 3);
}

TEST_F(EndToEnd, QuietShowsMessagesAlone) {
  const Receiver receiver(WithMemory());
  EXPECT_EQ(OnLine("download", receiver, {"-o", Path("a.grc"), "--quiet", "--kinds", "waypoint,route"}).err, "");
  const Receiver loses(WithMemory({"--fault", "early-complete=2"}));
  EXPECT_TRUE(OnLine("download", loses, {"-o", Path("b.grc"), "--quiet"}).Said(DataLoss));
}

TEST_F(EndToEnd, AnUploadShowsItsProgress) {
  const Receiver receiver;
  const Result upload = OnLine("upload", receiver, {Path("memory.grc")});
  EXPECT_EQ(upload.status, 0) << upload.err;
  EXPECT_TRUE(upload.Said("UpLoading : Waypoint"));
  EXPECT_TRUE(upload.Said("UpLoading : TrackLog [6/6] Remaining 00:00")) << upload.err;
  EXPECT_EQ(upload.out, "");
}

TEST_F(EndToEnd, TheDemonstrationReceiverNeedsNoHardware) {
  const Result info = Run({"info", "--port", "demo:GPS 48"});
  EXPECT_EQ(info.status, 0) << info.err;
  EXPECT_EQ(info.out.find("GPS 48 "), 0U);
  const Result unknown = Run({"info", "--port", "demo:GPS 99"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_TRUE(unknown.Said("GPS 12XL"));
}

// ---- Faults: tests/faults/line has every kind of them

TEST_F(EndToEnd, AReceiverThatSendsByteForByteIsReadWholeOnEitherLink) {
  const Receiver healthy(WithMemory());
  ASSERT_EQ(OnLine("download", healthy, {"-o", Path("a.grc"), "--kinds", "waypoint"}).status, 0);
  const Receiver slow(WithMemory({"--fault", "dribble=1"}));
  for (const char* link : {"--plain-link", "--checked-link"}) {
    const Result download =
        OnLine("download", slow, {"-o", Path("b.grc"), "--force", "--kinds", "waypoint", "--quiet", link});
    EXPECT_EQ(download.status, 0) << download.err;
    EXPECT_EQ(download.err, "") << link;
    EXPECT_EQ(FileContents(Path("b.grc")), FileContents(Path("a.grc"))) << link;
  }
}

// ---- The checked link

TEST_F(EndToEnd, SixFramesInABurstFailOnTheCheckedLinkAtTheLinesPace) {
  const Receiver faulty(WithMemory({"--fault", "burst=6"}), "9600");
  const Result download =
      Run({"download", "--port", faulty.Port(), "--kinds", "route", "-o", Path("a.grc"), "--checked-link"});
  EXPECT_EQ(download.status, 1) << download.err;
  EXPECT_TRUE(download.Said(std::string(messages::BadData))) << download.err;
}

TEST_F(EndToEnd, WithoutAnOptionTheLinkIsChosenSaidAndMendsDamage) {
  const Receiver faulty(WithMemory({"--fault", "bad-checksum=1"}));
  const Result download = OnLine("download", faulty, {"-o", Path("a.grc"), "--trace", Path("trace")});
  EXPECT_EQ(download.status, 0) << download.err;
  EXPECT_FALSE(download.Said("破損")) << download.err;
  EXPECT_TRUE(download.Said(messages::LinkInUse(true, true) + "\n")) << download.err;
  const std::string trace = FileContents(Path("trace"));
  EXPECT_NE(trace.find("\t--\tchecked link\n"), std::string::npos) << trace;
  EXPECT_NE(trace.find("\tTX\t6\t2\t10 06 02 FF 00 F9 10 03\n"), std::string::npos) << "the ACK of the product data";
}

TEST_F(EndToEnd, ThePlainLinkAcknowledgesNoProductDataAndSaysSo) {
  const Receiver receiver(WithMemory());
  const Result info = OnLine("info", receiver, {"--plain-link", "--trace", Path("trace")});
  EXPECT_EQ(info.status, 0);
  EXPECT_TRUE(info.Said(messages::LinkInUse(false, false) + "\n")) << info.err;
  const std::string trace = FileContents(Path("trace"));
  EXPECT_NE(trace.find("\t--\tplain link\n"), std::string::npos) << trace;
  EXPECT_EQ(trace.find("10 06 02 FF 00 F9 10 03"), std::string::npos) << trace;
}

TEST_F(EndToEnd, DamagedRecordsNameTheOptionThatHelps) {
  const Receiver faulty(WithMemory({"--fault", "bad-checksum=1"}));
  const Result download = OnLine("download", faulty, {"-o", Path("a.grc"), "--plain-link"});
  EXPECT_EQ(download.status, 0);
  EXPECT_TRUE(download.Said("--checked-link")) << download.err;
}

// ---- Traces that are played

class Replay : public EndToEnd, public ::testing::WithParamInterface<std::pair<const char*, const char*>> {};

/// The messages of a command; the ports in them apart, which differ. Whether a pulled cable shows when the port is
/// opened again, with a message of two lines, or when it is read is a matter of microseconds.
std::string WithoutPort(std::string text, const std::string& port) {
  if (text.starts_with("Serial Port [")) text.erase(0, text.find('\n', text.find('\n') + 1) + 1);
  for (std::size_t at = text.find(port); at != std::string::npos; at = text.find(port))
    text.replace(at, port.size(), "PORT");
  return text;
}

TEST_P(Replay, OfAFaultyDownloadGivesTheSameMessagesAndTheSameData) {
  const auto [fault, link] = GetParam();
  const Receiver faulty(WithMemory({"--fault", fault}));
  const Result first = OnLine("download", faulty, {"-o", Path("a.grc"), "--quiet", link, "--trace", Path("trace")});
  const Receiver replay({"--replay", Path("trace")});
  const Result second = OnLine("download", replay, {"-o", Path("b.grc"), "--quiet", link});
  EXPECT_EQ(second.status, first.status) << second.err;
  EXPECT_EQ(WithoutPort(second.err, replay.Port()), WithoutPort(first.err, faulty.Port()));
  EXPECT_EQ(FileContents(Path("b.grc")), FileContents(Path("a.grc")));
}

INSTANTIATE_TEST_SUITE_P(
    Faults, Replay,
    ::testing::Values(std::pair{"garbage=6", "--checked-link"}, std::pair{"bad-checksum=2", "--plain-link"},
                      std::pair{"early-complete=1", "--plain-link"}, std::pair{"short-count=1", "--checked-link"},
                      std::pair{"unplug-after=9", "--plain-link"}, std::pair{"nak=3", "--checked-link"}));

TEST_F(EndToEnd, AHiddenTraceTellsNoPlaceAndIsPlayed) {
  const Receiver receiver(WithMemory());
  ASSERT_EQ(OnLine("download", receiver, {"-o", Path("a.grc"), "--trace", Path("trace"), "--hide-positions"}).status,
            0);
  const Receiver replay({"--replay", Path("trace")});
  const Result second =
      OnLine("download", replay, {"-o", "-", "--encoding", "utf8", "--kinds", "waypoint,route,track"});
  ASSERT_EQ(second.status, 0) << second.err;
  EXPECT_EQ(second.out.find("WPT\tD\tWGS84\t=\"高尾\"\t0\t0\t"), 0U) << second.out;
  EXPECT_NE(second.out.find("RTP\tD\tWGS84\t=\"START\"\t0\t0\t"), std::string::npos) << second.out;
  EXPECT_EQ(second.out.find("\t35."), std::string::npos) << second.out;
  EXPECT_EQ(second.out.find("\t139."), std::string::npos) << second.out;
  EXPECT_EQ(Run({"info", "--port", "demo", "--hide-positions"}).status, 2) << "without a trace";
}

// ---- Ctrl-C

TEST_F(EndToEnd, CtrlCSendsTheAbortCommandAndLeavesNoFile) {
  const Receiver receiver({}, "9600");
  Process process(Words(
      {"download", "--port", receiver.Port(), "--kinds", "track", "-o", Path("a.grc"), "--trace", Path("trace")}));
  ASSERT_TRUE(process.ReadUntil("DownLoading : TrackLog [")) << process.Err();
  process.Signal(SIGINT);
  EXPECT_EQ(process.Wait(), 1);
  EXPECT_NE(FileContents(Path("trace")).find(AbortFrame), std::string::npos);
  EXPECT_EQ(folder.Names().size(), 2U);  // the memory file and the trace
  EXPECT_EQ(OnLine("info", receiver).status, 0);
}

TEST_F(EndToEnd, CtrlCWhileStandardInputIsReadExitsWithOneAndLeavesNoFile) {
  // A pipe that nobody writes to: the open end keeps the program waiting.
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  const int held = ::open(Path("pipe").c_str(), O_RDWR | O_CLOEXEC);
  Process process(
      {"/bin/sh", "-c", "exec " + std::string(WALRIM_CLI) + " convert - -o " + Path("a.grc") + " <" + Path("pipe")});
  ASSERT_TRUE(process.ReadUntil("Import from")) << process.Err();
  process.Signal(SIGINT);
  EXPECT_EQ(process.Wait(), 1);
  EXPECT_EQ(folder.Names().size(), 2U);
  ::close(held);
}

TEST_F(EndToEnd, APipeThatNobodyWritesToIsNotWaitedFor) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  const Result convert = Run({"convert", Path("pipe"), "-o", Path("a.grc"), "--quiet"});
  EXPECT_EQ(convert.status, 1);
  EXPECT_EQ(convert.err, messages::ReadProblem(Path("pipe"), messages::NoRegularFile) + "\n");
}

class IgnoredSignal : public EndToEnd, public ::testing::WithParamInterface<const char*> {};

TEST_P(IgnoredSignal, StaysIgnored) {
  const Receiver receiver({}, "38400");
  Process process({"/bin/sh", "-c",
                   "trap '' " + std::string(GetParam()) + "; exec " + WALRIM_CLI + " download --port " +
                       receiver.Port() + " --kinds waypoint -o " + Path("a.grc")});
  ASSERT_TRUE(process.ReadUntil("DownLoading : Waypoint [")) << process.Err();
  process.Signal(GetParam() == std::string_view("HUP")   ? SIGHUP
                 : GetParam() == std::string_view("INT") ? SIGINT
                                                         : SIGTERM);
  EXPECT_EQ(process.Wait(), 0) << process.Err();
  EXPECT_EQ(FileContents(Path("a.grc")).find("WPT\t"), 0U);
}

INSTANTIATE_TEST_SUITE_P(Names, IgnoredSignal, ::testing::Values("HUP", "INT", "TERM"));

TEST_F(EndToEnd, ClosedStandardStreamsAreNoFilesOfTheProgram) {
  const Receiver receiver(WithMemory());
  const std::string download = std::string(WALRIM_CLI) + " download --pacing 0.1 --port " + receiver.Port();
  Process to_file(
      {"/bin/sh", "-c", "exec " + download + " -o " + Path("a.grc") + " --trace " + Path("trace") + " 0<&- 1>&- 2>&-"});
  EXPECT_EQ(to_file.Wait(), 0);
  EXPECT_EQ(FileContents(Path("a.grc")).find("WPT\t"), 0U);
  const std::string trace = FileContents(Path("trace"));
  EXPECT_EQ(trace.find("# seconds\t"), 0U);
  EXPECT_EQ(trace.find("Export"), std::string::npos) << trace;
  EXPECT_EQ(trace.find("DownLoading"), std::string::npos) << trace;
  Process to_output({"/bin/sh", "-c", "exec " + download + " -o - 1>&-"});
  EXPECT_EQ(to_output.Wait(), 1) << "data that nobody gets";
  Process from_input({"/bin/sh", "-c", "exec " + std::string(WALRIM_CLI) + " convert - -o - 0<&-"});
  EXPECT_EQ(from_input.Wait(), 1);
  EXPECT_NE(from_input.Err().find("Bad file descriptor"), std::string::npos);
}

TEST_F(EndToEnd, CtrlCDuringTheIdentificationExitsWithOneToo) {
  const Receiver receiver({"--fault", "silent"});
  Process process(Words({"info", "--port", receiver.Port()}));
  ASSERT_TRUE(process.ReadUntil("Initializing Device")) << process.Err();
  process.Signal(SIGINT);
  EXPECT_EQ(process.Wait(), 1);
}

TEST_F(EndToEnd, AReaderOfStandardErrorThatGoesAwayDoesNotEndTheTransfer) {
  const Receiver receiver(WithMemory());
  Process process({"/bin/sh", "-c",
                   std::string(WALRIM_CLI) + " download --port " + receiver.Port() + " --pacing 0.1 -o " +
                       Path("a.grc") + " 2>&1 | head -n 1; test -s " + Path("a.grc")});
  EXPECT_EQ(process.Wait(), 0);
  EXPECT_EQ(FileContents(Path("a.grc")).find("WPT\t"), 0U);
}

// ---- The trace

TEST_F(EndToEnd, ATraceIsNeverWrittenOverTheData) {
  const std::string before = FileContents(Path("memory.grc"));
  const Receiver receiver;
  EXPECT_EQ(OnLine("upload", receiver, {Path("memory.grc"), "--trace", Path("memory.grc")}).status, 1);
  EXPECT_EQ(FileContents(Path("memory.grc")), before);
  EXPECT_EQ(OnLine("download", receiver, {"-o", Path("a.grc"), "--trace", Path("a.grc")}).status, 1);
  const Result nowhere = OnLine("info", receiver, {"--trace", Path("missing/trace")});
  EXPECT_EQ(nowhere.status, 1);
  EXPECT_TRUE(nowhere.Said("No such file or directory"));
  EXPECT_TRUE(OnLine("info", receiver, {"--trace", "/dev/full"}).Said("No space left on device"));
}

TEST_F(EndToEnd, AFileThatIsNoTraceIsNotReplacedByOneWithoutForce) {
  const Receiver receiver;
  PutFile(Path("notes"), "mine");
  const Result refused = OnLine("info", receiver, {"--trace", Path("notes"), "--quiet"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err,
            Lines({messages::WriteProblem(Path("notes"), cli_messages::NoTrace), cli_messages::ForceAdvice}));
  EXPECT_EQ(FileContents(Path("notes")), "mine");
  EXPECT_EQ(OnLine("info", receiver, {"--trace", Path("notes"), "--force"}).status, 0);
  EXPECT_EQ(FileContents(Path("notes")).find("# seconds\t"), 0U);
  EXPECT_EQ(OnLine("info", receiver, {"--trace", Path("notes")}).status, 0) << "an older trace";
}

TEST_F(EndToEnd, TheTraceHoldsEveryFrameAlsoWhenTheLinkFails) {
  const Receiver receiver(WithMemory({"--fault", "silent-after=5"}));
  EXPECT_EQ(OnLine("download", receiver, {"-o", Path("a.grc"), "--trace", Path("trace")}).status, 3);
  const std::string trace = FileContents(Path("trace"));
  EXPECT_NE(trace.find("\tTX\t254\t2\t10 FE 02 00 00 00 10 03\n"), std::string::npos) << trace;
  EXPECT_NE(trace.find("\tRX\t6\t2\t10 06 02 FE 00 FA 10 03\n"), std::string::npos);
  EXPECT_NE(trace.find("\tTX\t10\t2\t10 0A 02 07 00 ED 10 03\n"), std::string::npos);
  EXPECT_NE(trace.find("time-out"), std::string::npos);
  EXPECT_NE(trace.find(AbortFrame), std::string::npos);
}

// ---- Ports

TEST_F(EndToEnd, AMissingPortIsSaidWithTheSystemsMessage) {
  const Result info = Run({"info", "--port", Path("none")});
  EXPECT_EQ(info.status, 1);
  EXPECT_TRUE(info.Said(device_messages::PortNotOpened(Path("none"), {PortProblem::Missing, Path("none"), {}, {}})))
      << info.err;
}

TEST_F(EndToEnd, APortInUseIsSaid) {
  const Receiver receiver({}, "9600");
  Process first(Words({"download", "--port", receiver.Port(), "--kinds", "track", "-o", Path("a.grc")}));
  ASSERT_TRUE(first.ReadUntil("DownLoading : TrackLog [")) << first.Err();
  const Result second = Run({"info", "--port", receiver.Port()});
  EXPECT_EQ(second.status, 1);
  EXPECT_TRUE(
      second.Said(device_messages::PortNotOpened(receiver.Port(), {PortProblem::InUse, receiver.Port(), {}, {}})))
      << second.err;
  first.Signal(SIGINT);
  EXPECT_EQ(first.Wait(), 1);
}

// ---- Files

TEST_F(EndToEnd, AnExistingFileIsLeftAloneBeforeAnythingIsDownloaded) {
  PutFile(Path("a.grc"), "old");
  const Receiver receiver(WithMemory());
  const Result download = OnLine("download", receiver, {"-o", Path("a.grc")});
  EXPECT_EQ(download.status, 1);
  EXPECT_TRUE(download.Said(messages::OverwriteQuestion(Path("a.grc"))));
  EXPECT_TRUE(download.Said(Lines({"", cli_messages::ForceAdvice})));
  EXPECT_FALSE(download.Said("DownLoading"));
  EXPECT_EQ(FileContents(Path("a.grc")), "old");
}

TEST_F(EndToEnd, AFolderThatDoesNotExistIsSaidBeforeAnythingIsDownloaded) {
  const Receiver receiver(WithMemory());
  const Result download = OnLine("download", receiver, {"-o", Path("missing/a.grc")});
  EXPECT_EQ(download.status, 1);
  EXPECT_FALSE(download.Said("DownLoading"));
  EXPECT_TRUE(download.Said("No such file or directory"));
  EXPECT_FALSE(download.Said("--force"));
}

TEST_F(EndToEnd, AFileThatCannotBeImportedIsNamedOnce) {
  const Result missing = Run({"convert", Path("none.grc"), "-o", "-", "--quiet"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err, messages::ReadProblem(Path("none.grc"), "No such file or directory") + "\n");
  PutFile(Path("unknown"), "what is this");
  const Result unknown = Run({"convert", Path("unknown"), "-o", "-", "--quiet"});
  EXPECT_EQ(unknown.status, 1);
  const std::size_t at = unknown.err.find(Path("unknown"));
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(unknown.err.find(Path("unknown"), at + 1), std::string::npos);
}

TEST_F(EndToEnd, ConvertReadsSeveralFilesIntoOne) {
  PutFile(Path("1.grc"), "WPT\tD\tWGS84\tONE\t35\t139\r\n");
  PutFile(Path("2.grc"), "wpt\tDMS\tTokyo\tTWO\t35.400000\t139.100000\r\n");
  const Result convert = Run({"convert", Path("1.grc"), Path("2.grc"), "-", "-o", "-"}, "WPT,D,WGS84,SAN,36,140\n");
  EXPECT_EQ(convert.status, 0) << convert.err;
  EXPECT_NE(convert.out.find("=\"ONE\"\t35\t139\t"), std::string::npos);
  EXPECT_NE(convert.out.find("=\"TWO\"\t35.669"), std::string::npos) << convert.out;
  EXPECT_NE(convert.out.find("=\"SAN\"\t36\t140\t"), std::string::npos);
}

TEST_F(EndToEnd, ConvertWritesDatumNotationHeaderAndEncoding) {
  PutFile(Path("1.grc"), "WPT\tDMS\tTokyo\t高尾\t35.373070\t139.143730\r\n");
  const Result convert = Run(
      {"convert", Path("1.grc"), "-o", "-", "--datum", "tokyo", "--degree", "DMS", "--header", "--encoding", "utf8"});
  EXPECT_EQ(convert.status, 0) << convert.err;
  EXPECT_EQ(convert.out.find("WPT\tDegreeType\tDatum\tident\t"), 0U);
  EXPECT_NE(convert.out.find("WPT\tDMS\tTokyo\t=\"高尾\"\t35.3730"), std::string::npos) << convert.out;
}

TEST_F(EndToEnd, SkippedLinesAreCountedAndTheFirstIsNamed) {
  PutFile(Path("1.grc"), "WPT\tD\tWGS84\tONE\t35\t139\r\nWPT\tXYZ\tWGS84\tTWO\t35\t139\r\n");
  const Result convert = Run({"convert", Path("1.grc"), "-o", "-", "--quiet"});
  EXPECT_EQ(convert.status, 0);
  EXPECT_TRUE(convert.Said("1行を読み飛ばしました（最初は2行目：")) << convert.err;
}

TEST_F(EndToEnd, ACommaThatCutATextIsTold) {
  const Receiver receiver(WithMemory());
  ASSERT_EQ(OnLine("download", receiver, {"-o", Path("a.grc"), "--kinds", "waypoint"}).status, 0);
  std::string text = FileContents(Path("a.grc"));
  text.replace(text.find("=\"SOUTH WEST"), 12, "SOUTH,\"WEST");
  PutFile(Path("b.grc"), text);
  const Result convert = Run({"convert", Path("b.grc"), "-o", "-", "--quiet"});
  EXPECT_EQ(convert.status, 0);
  EXPECT_TRUE(convert.Said("1行で列が多すぎます（最初は3行目）")) << convert.err;
}

TEST_F(EndToEnd, NothingToStoreOrWriteIsARefusal) {
  PutFile(Path("1.grc"), "WPT\tDegreeType\tDatum\r\n");
  const Result nothing = Run({"convert", Path("1.grc"), "-o", Path("a.grc"), "--quiet"});
  EXPECT_EQ(nothing.status, 1);
  EXPECT_EQ(nothing.err, Lines({cli_messages::NothingImported}));
  PutFile(Path("2.grc"), "WPT\tD\tWGS84\tONE\t35\t139\r\n");
  const Result none_chosen = Run({"convert", Path("2.grc"), "-o", Path("a.grc"), "--kinds", "route", "--quiet"});
  EXPECT_EQ(none_chosen.status, 1);
  EXPECT_EQ(none_chosen.err, nothing.err);
  const Result upload = Run({"upload", "--port", "demo", Path("1.grc"), "--quiet"});
  EXPECT_EQ(upload.status, 1);
  EXPECT_EQ(upload.err, nothing.err);
  PutFile(Path("3.grc"), "what is this\r\n");
  const Result unknown = Run({"convert", Path("3.grc"), "-o", Path("a.grc")});
  EXPECT_EQ(unknown.status, 1);
  EXPECT_TRUE(unknown.Said(messages::UnsupportedFile(Path("3.grc"))));
  EXPECT_EQ(folder.Names().size(), 4U);
}

TEST_F(EndToEnd, ACharacterThatShiftJisLacksIsNamedAndNothingIsWritten) {
  PutFile(Path("1.grc"), "WPT\tD\tWGS84\tNIŠ\t35\t139\r\n");
  const Result convert = Run({"convert", Path("1.grc"), "-o", Path("a.grc")});
  EXPECT_EQ(convert.status, 1);
  EXPECT_TRUE(convert.Said("「Š」")) << convert.err;
  EXPECT_TRUE(convert.Said("--encoding utf8"));
  EXPECT_EQ(folder.Names().size(), 2U);
  EXPECT_EQ(Run({"convert", Path("1.grc"), "-o", Path("a.grc"), "--encoding", "utf8"}).status, 0);
}

// ---- The command line

TEST_F(EndToEnd, AWrongCommandLineExitsWithTwo) {
  const std::vector<std::vector<std::string>> wrong{{},
                                                    {"fly"},
                                                    {"info"},
                                                    {"download", "--port", "demo"},
                                                    {"info", "--port", "0"},
                                                    {"info", "--port", "5"},
                                                    {"info", "--port", "demo", "--pacing", "nan"},
                                                    {"download", "--port", "demo", "-o", ""},
                                                    {"convert", "-o", "-"},
                                                    {"info", "--port", "demo", "--baud", "1"},
                                                    {"convert", "a", "-o", "-", "--degree", "DM"},
                                                    {"convert", "a", "-o", "-", "--datum", "ED50"},
                                                    {"convert", "a", "-o", "-", "--kinds", "waypoint,tree"},
                                                    {"convert", "a", "-o", "-", "--utc-offset", "nine"},
                                                    {"convert", "a", "-o", "-", "--encoding", "latin1"}};
  for (const auto& words : wrong) {
    const Result result = Run(words);
    EXPECT_EQ(result.status, 2) << (words.empty() ? "" : words.front());
    EXPECT_NE(result.err, "");
    EXPECT_EQ(result.out, "");
  }
}

TEST_F(EndToEnd, VersionAndHelpGoToStandardOutput) {
  const Result version = Run({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out.find("walrim-cli "), 0U);
  const Result help = Run({"download", "--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("--pacing"), std::string::npos);
}

TEST_F(EndToEnd, UtcOffsetMayBeNegativeAndAppliesToReadingAndWriting) {
  PutFile(Path("1.grc"), "TRH\t1\tTRUE\t0\tA\r\nTRP\tD\tWGS84\t35\t139\t2002/11/15 09:00:00\tTRUE\r\n");
  const Result convert = Run({"convert", Path("1.grc"), "-o", "-", "--utc-offset", "-5"});
  EXPECT_EQ(convert.status, 0) << convert.err;
  EXPECT_NE(convert.out.find("\t2002/11/15 09:00:00\t"), std::string::npos);
}

}  // namespace
}  // namespace walrim
