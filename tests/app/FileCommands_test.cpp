// Export, copy and import, and the files behind them.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <signal.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "WholeFiles.h"
#include "app/FileStore.h"
#include "app/Messages.h"
#include "app/ProgramName.h"
#include "app/WalrimMain.h"
#include "support/Fakes.h"
#include "support/Processes.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;

class FilesTest : public ::testing::Test {
 protected:
  FilesTest() {
    std::string pattern = (fs::temp_directory_path() / "walrim-test-XXXXXX").string();
    folder = ::mkdtemp(pattern.data());
    before = fs::current_path();
    fs::current_path(folder);
  }
  ~FilesTest() override {
    fs::current_path(before);
    fs::permissions(folder, fs::perms::owner_all);
    fs::remove_all(folder);
  }

  std::string Path(std::string_view name) const { return (folder / name).string(); }
  static std::string Contents(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  static void Put(const fs::path& path, std::string_view text) {
    std::ofstream(path, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size()));
  }
  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator{}));
  }
  /// The message about a file of the folder; the folder itself for no name.
  std::string ReadProblem(std::string_view name, int error_number) const {
    return messages::ReadProblem(name.empty() ? folder.string() : Path(name), std::strerror(error_number));
  }
  [[nodiscard]] DataSet& Data() { return main.State().Data(); }
  [[nodiscard]] std::optional<int> Held(DataKind kind = DataKind::Waypoint) { return main.State().HeldCount(kind); }
  /// Holds one waypoint and ticks it.
  void HoldWaypoint(std::string_view ident = "TAKAO") {
    Waypoint waypoint;
    waypoint.ident = ident;
    waypoint.lat_deg = 35.5;
    waypoint.lon_deg = 139.25;
    ASSERT_EQ(Data().Add(waypoint), AddResult::Stored);
    main.State().SetHeldCount(DataKind::Waypoint, static_cast<int>(Data().Count(DataKind::Waypoint)));
    main.State().Settings().chosen_kinds[0] = true;
  }

  fs::path folder;
  fs::path before;
  FakeClock clock;
  ScriptedPort port{clock};
  FakeEventLoop loop;
  RecordingDesktop desktop;
  WalrimMain main{port, clock, loop, desktop};
};

// ---- Export

TEST_F(FilesTest, ExportWithoutDataOrSelectionIsRefused) {
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  HoldWaypoint();
  main.State().Settings().chosen_kinds.fill(false);
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.messages,
            (std::vector<std::string>{std::string(messages::NothingDownloaded), std::string(messages::NothingChosen)}));
}

TEST_F(FilesTest, ExportAsksForAPathWithTheTypesFilter) {
  HoldWaypoint();
  desktop.save_path = Path("a.grc");
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(desktop.filters, std::vector<std::string>{"すべてのファイル (*.*)|*.*|標準ファイル (*.grc)|*.grc|"});
  EXPECT_EQ(Contents(Path("a.grc")).substr(0, 30), "WPT\tD\tWGS84\t=\"TAKAO\"\t35.5\t139.");
  EXPECT_TRUE(desktop.Showed("Export to " + Path("a.grc")));
  EXPECT_TRUE(desktop.Showed("Export Wpt[1/1]"));
  EXPECT_EQ(desktop.caption, "");
}

TEST_F(FilesTest, ACancelledSaveDialogWritesNothing) {
  HoldWaypoint();
  main.State().Settings().auto_delete = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(FilesInFolder(), 0U);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
}

TEST_F(FilesTest, AutoFileNameIsMadeOfDateAndTime) {
  HoldWaypoint();
  main.State().Settings().auto_file_name = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_TRUE(fs::exists(Path("20021115_142530.grc")));
  EXPECT_TRUE(desktop.filters.empty());
}

TEST_F(FilesTest, ASecondExportWithinTheSameSecondAsksFirst) {
  HoldWaypoint();
  main.State().Settings().auto_file_name = true;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  const std::string first = Contents(Path("20021115_142530.grc"));
  HoldWaypoint("JINBA");
  desktop.ok = false;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  const std::string path = (fs::current_path() / "20021115_142530.grc").string();
  EXPECT_EQ(desktop.questions, std::vector<std::string>{messages::OverwriteQuestion(path)});
  EXPECT_EQ(Contents(Path("20021115_142530.grc")), first);
  desktop.ok = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_GT(Contents(Path("20021115_142530.grc")).size(), first.size());
}

TEST_F(FilesTest, AutoDeleteEmptiesTheExportedKinds) {
  HoldWaypoint();
  main.State().Settings().auto_delete = true;
  desktop.save_path = Path("a.grc");
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(Held(), std::nullopt);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

TEST_F(FilesTest, AutoDeleteKeepsWhatCouldNotBeWritten) {
  HoldWaypoint();
  main.State().Settings().auto_delete = true;
  desktop.save_path = Path("missing/a.grc");
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.messages,
            std::vector<std::string>{messages::WriteProblem(Path("missing/a.grc"), std::strerror(ENOENT))});
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
}

TEST_F(FilesTest, SelectedKindsWithoutRecordsShowBothMessages) {
  HoldWaypoint();
  main.State().Settings().chosen_kinds = {false, true, false};
  desktop.save_path = Path("a.grc");
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.messages,
            (std::vector<std::string>{std::string(messages::NothingToSave), std::string(messages::NothingWritten)}));
  EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(FilesTest, FilesAreShiftJisByDefaultAndUtf8OnRequest) {
  HoldWaypoint("高尾");
  desktop.save_path = Path("a.grc");
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_NE(Contents(Path("a.grc")).find("=\"\x8d\x82\x94\xf6\""), std::string::npos);
  main.State().Settings().encoding = TextEncoding::Utf8;
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_NE(Contents(Path("a.grc")).find("=\"高尾\""), std::string::npos);
}

TEST_F(FilesTest, ACharacterThatShiftJisLacksIsNamedAndNothingIsWrittenUnasked) {
  HoldWaypoint("TAKAO");
  HoldWaypoint("CAFé");
  desktop.save_path = Path("a.grc");
  desktop.yes = false;
  EXPECT_EQ(main.Exports().Export(), Outcome::Refused);
  EXPECT_EQ(desktop.questions, std::vector<std::string>{messages::Utf8Question("2行目のWPT「CAFé」", "é")});
  EXPECT_EQ(FilesInFolder(), 0U);
  desktop.yes = true;
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_NE(Contents(Path("a.grc")).find("=\"CAFé\""), std::string::npos);
}

TEST_F(FilesTest, HeaderLinesComeWhereWanted) {
  HoldWaypoint();
  main.State().Settings().with_header = true;
  EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_EQ(desktop.clipboard.substr(0, 32), "WPT\tDegreeType\tDatum\tident\tlat\tl");
}

TEST_F(FilesTest, CopyPutsStandardLinesOnTheClipboardAndAutoDeleteFollows) {
  EXPECT_EQ(main.Exports().Copy(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(messages::NothingDownloaded)});
  HoldWaypoint();
  main.State().Settings().auto_delete = true;
  EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_EQ(desktop.clipboard.substr(0, 4), "WPT\t");
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

// ---- Import

TEST_F(FilesTest, ImportReadsWhatExportWrote) {
  HoldWaypoint("高尾");
  desktop.save_path = Path("a.grc");
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
  desktop.open_path = Path("a.grc");
  EXPECT_EQ(main.Imports().ImportChosen(), Outcome::Done);
  EXPECT_TRUE(desktop.Showed("Import from " + Path("a.grc")));
  EXPECT_EQ(Held(), 1);
  EXPECT_TRUE(main.State().Loaded(DataKind::Waypoint));
  EXPECT_EQ(Data().Waypoints().at(0).ident, "高尾");
  EXPECT_EQ(desktop.caption, "取り込み：Waypoint 1，Route 0，TrackLog 0．");
}

TEST_F(FilesTest, ImportAppendsAndShowsAllThatIsHeld) {
  Put(Path("a.grc"), "WPT\tD\tWGS84\tA\t35\t139\r\n");
  ASSERT_EQ(main.Imports().ImportFile(Path("a.grc")), Outcome::Done);
  ASSERT_EQ(main.Imports().ImportFile(Path("a.grc")), Outcome::Done);
  EXPECT_EQ(Held(), 2);
  EXPECT_EQ(Held(DataKind::Route), std::nullopt);
}

TEST_F(FilesTest, AnUnknownFileIsRefusedAndNothingIsImported) {
  Put(Path("a.txt"), "hello\r\nWPT\tD\tWGS84\tA\t35\t139\r\n");
  EXPECT_EQ(main.Imports().ImportFile(Path("a.txt")), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{messages::UnsupportedFile(Path("a.txt"))});
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

TEST_F(FilesTest, ACancelledOpenDialogAndAnEmptyPathDoNothing) {
  EXPECT_EQ(main.Imports().ImportChosen(), Outcome::Refused);
  EXPECT_EQ(main.Imports().ImportFile(""), Outcome::Done);
  EXPECT_TRUE(desktop.messages.empty());
  EXPECT_TRUE(desktop.captions.empty());
}

TEST_F(FilesTest, AFileThatCannotBeReadIsSaidWithItsReason) {
  Put(Path("secret.grc"), "WPT\tD\tWGS84\tA\t35\t139\r\n");
  ::chmod(Path("secret.grc").c_str(), 0);
  ::chmod(folder.c_str(), 0755);
  const auto read_all = [this] {
    if (!BecomeNobody()) std::_Exit(2);
    EXPECT_EQ(main.Imports().ImportFile(Path("none.grc")), Outcome::Refused);
    EXPECT_EQ(main.Imports().ImportFile(Path("secret.grc")), Outcome::Refused);
    EXPECT_EQ(main.Imports().ImportFile(Path("secret.grc/a.grc")), Outcome::Refused);
    EXPECT_EQ(main.Imports().ImportFile(folder.string()), Outcome::Refused);
    EXPECT_EQ(desktop.messages,
              (std::vector<std::string>{ReadProblem("none.grc", ENOENT), ReadProblem("secret.grc", EACCES),
                                        ReadProblem("secret.grc/a.grc", ENOTDIR), ReadProblem("", EISDIR)}));
    std::_Exit(HasFailure() ? 1 : 0);
  };
  EXPECT_EXIT(read_all(), ::testing::ExitedWithCode(0), "");
}

TEST_F(FilesTest, WhatIsNoRegularFileIsRefusedAtOnce) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  const std::vector<std::string> refused{Path("pipe"), "/dev/null", "/dev/zero"};
  for (const std::string& path : refused) {
    desktop.messages.clear();
    EXPECT_EQ(main.Imports().ImportFrom(path), Outcome::Refused);
    EXPECT_EQ(main.Imports().ImportTyped("file://" + path), Outcome::Refused);
    EXPECT_EQ(main.External().TakeDrop({path}, ""), Outcome::Refused);
    EXPECT_EQ(main.External().Run("GetFile", path, ""), CommandRefused);
    desktop.open_path = path;
    EXPECT_EQ(main.Imports().ImportChosen(), Outcome::Refused);
    EXPECT_EQ(desktop.messages, std::vector<std::string>(5, messages::ReadProblem(path, messages::NoRegularFile)));
  }
}

TEST_F(FilesTest, StandardInputMayBeAPipe) {
  int pipe[2];
  ASSERT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
  ASSERT_EQ(::write(pipe[1], "WPT,D", 5), 5);
  ::close(pipe[1]);
  const int own_input = ::dup(STDIN_FILENO);
  ::dup2(pipe[0], STDIN_FILENO);
  ::close(pipe[0]);
  const auto bytes = ReadWholeFile("-");
  if (own_input >= 0) ::dup2(own_input, STDIN_FILENO);
  ::close(own_input);
  EXPECT_EQ(bytes, "WPT,D");
}

TEST_F(FilesTest, StandardInputThatIsClosedIsSaidWithItsReason) {
  const auto read_it = [this] {
    ::close(STDIN_FILENO);
    FileProblem problem;
    const bool read = ReadWholeFile("-", &problem).has_value();
    std::_Exit(!read && problem.detail == std::strerror(EBADF) ? 0 : 1);
  };
  EXPECT_EXIT(read_it(), ::testing::ExitedWithCode(0), "");
}

TEST(WindowTitle, NamesTheProgramItsVersionAndWhatItIs) {
  EXPECT_EQ(WindowTitle(), "Walrim(Ver " + std::string(ProgramVersion()) + ")－ハンディGPS(GARMIN社)用データローダー");
}

// ---- Files, whole or not at all

TEST_F(FilesTest, WritingReplacesTheOldFileAndKeepsItsMode) {
  Put(Path("a"), "old");
  ::chmod(Path("a").c_str(), 0640);
  EXPECT_FALSE(WriteWholeFile(Path("a"), "new"));
  EXPECT_EQ(Contents(Path("a")), "new");
  EXPECT_EQ(fs::status(Path("a")).permissions(), static_cast<fs::perms>(0640));
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FilesTest, AFullDiskLeavesTheOldFileAndNothingBesides) {
  // Under a file size limit a write fails as on a full disk.
  Put(Path("a"), "old");
  const auto write_under_limit = [this] {
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    limit.rlim_cur = 1000;
    limit.rlim_max = 1000;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const bool failed = WriteWholeFile(Path("a"), std::string(100000, 'x')).has_value();
    std::_Exit(failed && Contents(Path("a")) == "old" && FilesInFolder() == 1 ? 0 : 1);
  };
  EXPECT_EXIT(write_under_limit(), ::testing::ExitedWithCode(0), "");
}

TEST_F(FilesTest, ASymbolicLinkKeepsPointingAtTheFileThatIsWritten) {
  Put(Path("real"), "old");
  fs::create_symlink(Path("real"), Path("link"));
  EXPECT_FALSE(WriteWholeFile(Path("link"), "new"));
  EXPECT_TRUE(fs::is_symlink(Path("link")));
  EXPECT_EQ(Contents(Path("real")), "new");
}

TEST_F(FilesTest, ADeviceIsWrittenAndNotReplaced) {
  EXPECT_FALSE(WriteWholeFile("/dev/null", "gone"));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_TRUE(WriteWholeFile("/dev/full", "never"));  // a device that is always full
}

TEST_F(FilesTest, AFileThatCannotBeLookedAtMayExist) {
  fs::create_directory(Path("locked"));
  Put(Path("locked/a"), "old");
  ::chmod(folder.c_str(), 0755);
  ::chmod(Path("locked").c_str(), 0);
  const auto look = [this] {
    const bool right = BecomeNobody() && FileExists(Path("locked/a")) && FileExists(Path("locked/b")) &&
                       !FileExists(Path("a")) && !FileExists(Path("missing/a"));
    std::_Exit(right ? 0 : 1);
  };
  EXPECT_EXIT(look(), ::testing::ExitedWithCode(0), "");
  ::chmod(Path("locked").c_str(), 0700);
  EXPECT_FALSE(FileExists(Path("locked/a/b")));
}

TEST_F(FilesTest, AFolderCannotBeWritten) {
  EXPECT_TRUE(WriteWholeFile(folder.string(), "x"));
  EXPECT_TRUE(CheckWritable(folder.string()));
  EXPECT_TRUE(CheckWritable(Path("missing/a")));
  EXPECT_FALSE(CheckWritable(Path("a")));
  EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(FilesTest, ReadingAFileThatIsTooLargeIsRefused) {
  Put(Path("a"), "");
  fs::resize_file(Path("a"), LargestFile + 1);
  FileProblem problem;
  EXPECT_FALSE(ReadWholeFile(Path("a"), &problem));
  EXPECT_EQ(problem.detail, std::strerror(EFBIG));
}

}  // namespace
}  // namespace walrim
