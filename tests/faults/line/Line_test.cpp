// Rows of the fault matrix with the real programs: walrim-cli against walrim-receiver over a pseudo-terminal.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "cli/Messages.h"
#include "faults/Bench.h"
#include "faults/Endings.h"
#include "support/Processes.h"

namespace walrim {
namespace {

/// One row of the matrix, named by what tells it apart.
struct Sample {
  Command command = Command::Download;
  std::optional<DataKind> kind;
  std::string_view model;
  Link link = Link::Plain;
  std::string_view fault;
  Phase phase = Phase::Throughout;
  std::optional<DataKind> struck;
};

Row RowOfSample(const Sample& sample) {
  for (const Row& row : RowsOf(sample.command, sample.kind, sample.model, sample.link)) {
    if (row.fault->text == sample.fault && row.phase == sample.phase && row.struck == sample.struck) return row;
  }
  throw std::out_of_range("the matrix has no such row");
}

std::string SampleName(const ::testing::TestParamInfo<Sample>& info) {
  std::string name = std::to_string(info.index) + "_" + RowName(RowOfSample(info.param));
  std::replace_if(
      name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

void PrintTo(const Sample& sample, std::ostream* out) {
  *out << RowName(RowOfSample(sample));
}

/// The contents as a file that fills a receiver's memory, or is uploaded.
std::string MemoryText(const HeldContents& contents) {
  const auto position = [](double lat_deg, double lon_deg) {
    return std::to_string(lat_deg) + "\t" + std::to_string(lon_deg);
  };
  std::string text;
  for (const HeldWaypoint& waypoint : contents.waypoints) {
    text += "WPT\tD\tWGS84\t" + waypoint.ident + "\t" + position(waypoint.lat_deg, waypoint.lon_deg) + "\t\r\n";
  }
  for (const HeldRoute& route : contents.routes) {
    text += "RTH\t" + std::to_string(route.nmbr) + "\t" + route.cmnt + "\t" + std::to_string(route.points.size());
    text += "\r\n";
    for (const HeldRoutePoint& point : route.points) {
      text += "RTP\tD\tWGS84\t" + point.waypoint.ident + "\t";
      text += position(point.waypoint.lat_deg, point.waypoint.lon_deg) + "\t\r\n";
    }
  }
  for (const HeldTrackLog& log : contents.track_logs) {
    text += "TRH\t" + std::to_string(log.points.size()) + "\tTRUE\t4\t" + log.trk_ident + "\r\n";
    for (const HeldTrackPoint& point : log.points) {
      text += "TRP\tD\tWGS84\t" + position(point.lat_deg, point.lon_deg) + "\t2002/11/15 09:00:00\t";
      text += point.new_trk ? "TRUE\t1E+25\t1E+25\t0\r\n" : "FALSE\t1E+25\t1E+25\t0\r\n";
    }
  }
  return text;
}

std::string KindWord(DataKind kind) {
  constexpr std::array<std::string_view, DataKindCount> words{"waypoint", "route", "track"};
  return std::string(words[IndexOf(kind)]);
}

bool TellsStatus(const std::string& line) {
  constexpr std::array<std::string_view, 8> beginnings{
      "Initializing Device", "受信機の時計：", "誤り検査：",   "Get Data Num of ",
      "DownLoading : ",      "UpLoading : ",   "Import from ", "Export "};
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [&](std::string_view beginning) { return line.starts_with(beginning); });
}

/// What a program said beyond what it was doing. What an upload warns of stands in front of all that the line does, and
/// ends with how much it is.
std::string WithoutStatus(const std::string& said) {
  const std::string warned = cli_messages::WouldBeLost(0);
  std::istringstream lines(said);
  std::string rest;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(warned.substr(0, warned.find('0')))) {
      rest.clear();
    } else if (!TellsStatus(line)) {
      rest += line + "\n";
    }
  }
  return rest;
}

class FaultLine : public ::testing::TestWithParam<Sample> {
 protected:
  FaultLine() {
    PutFile(folder_.Path("moved.grc"), MemoryText(ContentsOf(MovedAmounts(row_))));
    PutFile(folder_.Path("old.grc"), MemoryText(ContentsOf(AllOld)));
  }

  /// The receiver of the row; an upload meets one that holds something else.
  void Start(const std::string& fault) {
    std::vector<std::string> words{WALRIM_RECEIVER, "--baud", "0", "--model", std::string(row_.model), "--memory"};
    words.push_back(folder_.Path(row_.command == Command::Upload ? "old.grc" : "moved.grc"));
    if (!fault.empty()) words.insert(words.end(), {"--fault", fault});
    receiver_ = std::make_unique<Process>(words);
    ASSERT_TRUE(receiver_->ReadUntil("\n")) << receiver_->Err();
    port_ = receiver_->Out().substr(0, receiver_->Out().find('\n'));
  }

  /// Runs the row's command; returns its exit status. said_ is what came to standard error.
  int RunCommand() {
    std::vector<std::string> words{WALRIM_CLI, std::string(CommandName(row_.command)), "--port", port_};
    words.insert(words.end(), {"--pacing", "0.1"});
    if (row_.link == Link::Checked) words.emplace_back("--checked-link");
    if (row_.link == Link::Plain) words.emplace_back("--plain-link");
    if (row_.kind) words.insert(words.end(), {"--kinds", KindWord(*row_.kind)});
    if (row_.command == Command::Download) words.insert(words.end(), {"-o", Output(), "--force", "--fix-dates", "0"});
    if (row_.command == Command::Upload) words.push_back(folder_.Path("moved.grc"));
    Process process(words);
    const int status = process.Wait();
    said_ = process.Err();
    return status;
  }

  /// The file that a download from a receiver makes that does nothing wrong.
  std::string HealthyFile() {
    Start("");
    EXPECT_EQ(RunCommand(), 0) << said_;
    return FileContents(Output());
  }

  [[nodiscard]] std::string Output() const { return folder_.Path("out.grc"); }
  [[nodiscard]] bool Said(std::string_view text) const {
    return !text.empty() && said_.find(text) != std::string::npos;
  }
  Row row_ = RowOfSample(GetParam());
  TemporaryFolder folder_;
  std::unique_ptr<Process> receiver_;
  std::string port_;
  std::string said_;
};

TEST_P(FaultLine, EndsAsTheMatrixSays) {
  const Ending& ending = EndingOf(row_);
  const std::string fault = FaultText(row_, CleanRun(row_));
  SCOPED_TRACE("--fault " + fault);
  const std::string healthy = row_.command == Command::Download ? HealthyFile() : "";
  PutFile(Output(), "old");
  Start(fault);
  EXPECT_EQ(RunCommand(), ending.exit_status) << said_;
  for (const std::string& message : MessagesOf(row_, ending)) {
    // Whether a pulled cable shows when the port is opened again or when it is read is a matter of microseconds.
    if (message.find("Serial Port [") == std::string::npos) {
      EXPECT_TRUE(Said(message)) << message << "\n" << said_;
    }
  }
  const std::string status = StatusOf(row_, ending);
  const std::string_view last_message = TerminalMessage(ending);
  EXPECT_TRUE(status.empty() || Said(status)) << said_;
  EXPECT_TRUE(last_message.empty() || Said(last_message)) << said_;
  if (MessagesOf(row_, ending).empty() && ending.notice == nullptr && TerminalMessage(ending).empty()) {
    EXPECT_EQ(WithoutStatus(said_), "");
  }
  const bool written = row_.command == Command::Download && ending.exit_status == 0;
  EXPECT_EQ(FileContents(Output()) != "old", written);
  EXPECT_EQ(folder_.Names().size(), 3U) << "no half-written file";

  Start("");
  EXPECT_EQ(RunCommand(), 0) << said_;
  EXPECT_EQ(WithoutStatus(said_), "");
  if (row_.command == Command::Download) {
    EXPECT_EQ(healthy.find(row_.kind == DataKind::TrackLog ? "TRH\t" : "WPT\t"), 0U);
    EXPECT_EQ(FileContents(Output()), healthy);
  }
}

using enum Command;
using enum DataKind;
constexpr auto All = std::nullopt;
constexpr auto NoKind = std::nullopt;
constexpr std::string_view Old12 = "GPS 12";
constexpr std::string_view ETrex = "eTrex";

INSTANTIATE_TEST_SUITE_P(
    Sample, FaultLine,
    ::testing::Values(Sample{Info, All, ETrex, Link::Plain, "", Phase::Throughout, NoKind},
                      Sample{Info, All, Old12, Link::Plain, "silent", Phase::Throughout, NoKind},
                      Sample{Info, All, ETrex, Link::Plain, "unplug-after=N", Phase::Opening, Route},
                      Sample{Info, All, ETrex, Link::Automatic, "", Phase::Throughout, NoKind},
                      Sample{Download, All, ETrex, Link::Automatic, "bad-checksum=N", Phase::First, NoKind},
                      Sample{Upload, All, Old12, Link::Automatic, "nak=N", Phase::Last, TrackLog},
                      Sample{Info, All, ETrex, Link::Checked, "garbage", Phase::Throughout, NoKind},
                      Sample{Download, All, ETrex, Link::Plain, "silent-after=N", Phase::Middle, Route},
                      Sample{Download, All, Old12, Link::Plain, "unplug-after=N", Phase::Last, TrackLog},
                      Sample{Download, All, Old12, Link::Plain, "unplug-after=N", Phase::End, Waypoint},
                      Sample{Download, TrackLog, ETrex, Link::Plain, "silent-after=N", Phase::Close, TrackLog},
                      Sample{Download, All, ETrex, Link::Plain, "early-complete=N", Phase::Middle, Waypoint},
                      Sample{Download, All, Old12, Link::Plain, "short-count=1", Phase::Number, NoKind},
                      Sample{Download, All, ETrex, Link::Plain, "gap=200", Phase::Throughout, NoKind},
                      Sample{Download, All, Old12, Link::Plain, "garbage=N", Phase::Number, Route},
                      Sample{Download, All, Old12, Link::Checked, "garbage", Phase::Throughout, NoKind},
                      Sample{Download, All, ETrex, Link::Plain, "overlong=N", Phase::Last, TrackLog},
                      Sample{Download, All, Old12, Link::Plain, "burst=6", Phase::First, NoKind},
                      Sample{Download, All, Old12, Link::Plain, "bad-checksum=N", Phase::Middle, Waypoint},
                      Sample{Download, All, ETrex, Link::Checked, "bad-checksum=N", Phase::First, NoKind},
                      Sample{Download, All, ETrex, Link::Plain, "nak=N", Phase::Opening, Waypoint},
                      Sample{Download, All, ETrex, Link::Checked, "nak=N", Phase::Opening, Waypoint},
                      Sample{Upload, All, ETrex, Link::Plain, "silent-after=N", Phase::First, Route},
                      Sample{Upload, All, Old12, Link::Plain, "unplug-after=N", Phase::Middle, Waypoint},
                      Sample{Download, All, Old12, Link::Plain, "bad-ack=N", Phase::Opening, Route},
                      Sample{Upload, All, ETrex, Link::Checked, "bad-ack=N", Phase::Middle, Waypoint},
                      Sample{Upload, All, Old12, Link::Plain, "nak=N", Phase::Last, TrackLog},
                      Sample{Upload, All, ETrex, Link::Checked, "nak=N", Phase::Last, TrackLog},
                      Sample{Upload, All, ETrex, Link::Plain, "garbage=N", Phase::NewNumber, Waypoint}),
    SampleName);

}  // namespace
}  // namespace walrim
