// Files, texts, links and points, wherever they come from.
#include <algorithm>
#include <filesystem>
#include <tuple>

#include "app/AppTest.h"
#include "support/Refusals.h"
#include "text/Cp932.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;

/// A text in one of the formats, and how a paste of it is told. Each holds the waypoint 高尾.
struct FormatCase {
  const char* name;
  const char* file;
  std::string_view text;
  std::string_view status;
  std::string_view temporary_ending;
};
void PrintTo(const FormatCase& one, std::ostream* out) {
  *out << one.name;
}

constexpr FormatCase Formats[] = {
    {"Standard", "a.grc", "WPT\tD\tWGS84\t=\"高尾\"\t35.5\t139.25\t=\"山頂\"\r\n", "Import From ClipBoard (標準形式)",
     ".grc"},
    {"WptPlus", "a.txt", "Datum,WGS84,WGS84,0,0,0,0,0\r\nWP,D,高尾, 35.5, 139.25,11/15/2002,14:25:30,山頂\r\n",
     "Import From ClipBoard (Wpt+形式）", ".txt"},
    {"Script", "a.mps",
     "//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:25:30;\r\nmapserver script ver=1.0;\r\n"
     "\t\ttheme\tstr=Walrim Datum:WGS84 UTCOffset:0;\r\n"
     "\t\tpoint\toid=1\r\n\t\t\t\tgid=5131\r\n\t\t\t\tpos=35/30/00.0,139/15/00.0\r\n\t\t\t\tstr=高尾    \r\n"
     "\t\t\t\tstrformat=right\r\n\t\t\t\tinfo=[WP]<高尾><山頂>;\r\nmapserver end;\r\n",
     "Import From ClipBoard (MPS形式)", ".mps"},
};
constexpr std::string_view Summary = "取り込み：Waypoint 1，Route 0，TrackLog 0．";

std::string WithLineEnds(std::string_view text, std::string_view line_end) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text.substr(at, 2) == "\r\n") {
      result.append(line_end);
      ++at;
    } else {
      result += text[at];
    }
  }
  return result;
}

std::string Encoded(const std::string& text, std::string_view encoding) {
  if (encoding == "mark") return "\xEF\xBB\xBF" + text;
  return encoding == "sjis" ? EncodeCp932(text).value() : text;
}

std::string Waypoints(int count, const std::string& prefix = "W") {
  std::string text;
  for (int i = 1; i <= count; ++i)
    text += "WPT\tD\tWGS84\t" + prefix + std::to_string(i) + "\t35.5\t139.25\r\n";
  return text;
}

class ImportSources : public AppTest {
 protected:
  void ExpectTakao() {
    EXPECT_EQ(Idents(), Strings{"高尾"});
    EXPECT_EQ(HeldValue(1, WaypointField::cmnt).substr(0, 6), "山頂");
    EXPECT_NEAR(LeadingNumber(HeldValue(1, WaypointField::lat)), 35.5, 0.00001);
    EXPECT_NEAR(LeadingNumber(HeldValue(1, WaypointField::lon)), 139.25, 0.00001);
    EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"1", "-", "-"}));
    EXPECT_TRUE(main.DataSetLoaded(DataKind::Waypoint));
    EXPECT_EQ(desktop.messages, Strings{});
  }
  /// The files of the private folder that is there while something is read; they are private.
  [[nodiscard]] Strings TemporaryFiles() const {
    Strings names;
    for (const std::string& name : scratch.Names()) {
      const fs::path temporary = scratch.Path(name);
      EXPECT_EQ(fs::status(temporary).permissions(), fs::perms::owner_all);
      for (const auto& entry : fs::directory_iterator(temporary))
        names.push_back(entry.path().filename());
    }
    return names;
  }
};

// ---- Every format from every source

class EveryFormat : public ImportSources, public ::testing::WithParamInterface<FormatCase> {};

TEST_P(EveryFormat, IsReadBehindEmptyLinesOfAPaste) {
  for (const char* before : {"\r\n", "\n\n", "\r\r\n\n"}) {
    desktop.clipboard = before + std::string(GetParam().text);
    EXPECT_EQ(main.Paste_Click(), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{std::string(GetParam().status), std::string(Summary)}));
    ExpectTakao();
    main.controls.DoCheck.fill(true);
    ASSERT_EQ(main.Delete_Click(), Outcome::Done);
    Forget();
  }
}

TEST_P(EveryFormat, IsReadFromAFileInEveryEncodingAndWithEveryLineEnd) {
  for (const char* encoding : {"sjis", "utf8", "mark"}) {
    for (const char* line_end : {"\r\n", "\n", "\r"}) {
      SCOPED_TRACE(std::string(encoding) + " " + std::to_string(line_end[0]) + std::to_string(line_end[1]));
      const std::string path = Put(GetParam().file, Encoded(WithLineEnds(GetParam().text, line_end), encoding));
      desktop.open_path = path;
      EXPECT_EQ(main.FileImport_Click(), Outcome::Done);
      EXPECT_EQ(desktop.captions, (Strings{"Import from " + path, std::string(Summary)}));
      ExpectTakao();
      main.controls.DoCheck.fill(true);
      ASSERT_EQ(main.Delete_Click(), Outcome::Done);
      Forget();
    }
  }
}

TEST_P(EveryFormat, IsReadFromTheClipboardWithItsStatusText) {
  for (const char* line_end : {"\r\n", "\n", "\r"}) {
    SCOPED_TRACE(std::to_string(line_end[0]) + std::to_string(line_end[1]));
    desktop.clipboard = WithLineEnds(GetParam().text, line_end);
    EXPECT_EQ(main.Paste_Click(), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{std::string(GetParam().status), std::string(Summary)}));
    ExpectTakao();
    main.controls.DoCheck.fill(true);
    ASSERT_EQ(main.Delete_Click(), Outcome::Done);
    Forget();
  }
}

TEST_P(EveryFormat, PassesThroughAPrivateTemporaryFileThatGoes) {
  Strings seen;
  desktop.on_change = [&] {
    if (seen.empty()) seen = TemporaryFiles();
  };
  desktop.clipboard = GetParam().text;
  ASSERT_EQ(main.Paste_Click(), Outcome::Done);
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_TRUE(seen[0].starts_with("TempClip")) << seen[0];
  EXPECT_TRUE(seen[0].ends_with(GetParam().temporary_ending)) << seen[0];
  EXPECT_EQ(scratch.Names(), Strings{});
}

TEST_P(EveryFormat, IsReadFromALinkInEveryEncoding) {
  for (const char* encoding : {"sjis", "utf8", "mark"}) {
    SCOPED_TRACE(encoding);
    inet.answer.bytes = Encoded(std::string(GetParam().text), encoding);
    const std::string link = std::string("http://example.com/") + GetParam().file;
    EXPECT_EQ(main.ImportTyped(link), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{"Import from " + link, std::string(Summary)}));
    ExpectTakao();
    main.controls.DoCheck.fill(true);
    ASSERT_EQ(main.Delete_Click(), Outcome::Done);
    Forget();
  }
}

TEST_P(EveryFormat, IsReadFromADroppedText) {
  EXPECT_EQ(main.TakeDrop({}, std::string(GetParam().text)), Outcome::Done);
  ExpectTakao();
}

INSTANTIATE_TEST_SUITE_P(Formats, EveryFormat, ::testing::ValuesIn(Formats),
                         [](const auto& test) { return std::string(test.param.name); });

// ---- Recognition

TEST_F(ImportSources, AFileIsKnownByItsFirstWordInAnyCase) {
  // What a first line is followed by; a title or an unknown line stores nothing by itself.
  const std::string standard = "\r\nWPT\tD\tWGS84\tA\t35\t139\r\n";
  const std::string wpt = "\r\nWP,D,A,35,139,11/15/2002,10:00:00,X\r\n";
  int number = 0;
  for (const char* word : {"Walrim", "WALRIM,Ver. 1.0", "wpt", "Rth", "RTP", "trh", "TRP"}) {
    EXPECT_EQ(main.ImportFile(Put("a" + std::to_string(++number), word + standard)), Outcome::Done) << word;
    EXPECT_GE(main.LastImport().summary.stored[0], 1) << word;
  }
  for (const char* word : {"Datum,WGS84", "tokyo mean,Bessel 1841", "WGS84,WGS84", "wp", "rn", "rp", "tp"}) {
    EXPECT_EQ(main.ImportFile(Put("b" + std::to_string(++number), word + wpt)), Outcome::Done) << word;
    EXPECT_GE(main.LastImport().summary.stored[0], 1) << word;
  }
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(ImportSources, AScriptIsKnownByTheLastThreeLettersOfItsPath) {
  const std::string_view script = Formats[2].text;
  for (const char* name : {"a.mps", "b.MPS", "c.Mps", "stamps"}) {
    EXPECT_EQ(main.ImportFile(Put(name, script)), Outcome::Done) << name;
  }
  EXPECT_EQ(main.Data().WaypointCount, 4);
  EXPECT_EQ(main.ImportFile(Put("a.txt", script)), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{RefusedFile(Path("a.txt"))});
}

TEST_F(ImportSources, TheFirstWordGoesBeforeThePath) {
  EXPECT_EQ(main.ImportFile(Put("a.mps", Formats[0].text)), Outcome::Done);
  ExpectTakao();
}

TEST_F(ImportSources, WhatIsNoneOfTheFormatsIsRefusedFromEverySource) {
  const std::string path = Put("a.grc", "hello\r\nWPT\tD\tWGS84\tA\t35\t139\r\n");
  EXPECT_EQ(main.ImportFrom(path), Outcome::Refused);
  desktop.clipboard = "hello";
  EXPECT_EQ(main.Paste_Click(), Outcome::Refused);
  desktop.clipboard = "";
  EXPECT_EQ(main.Paste_Click(), Outcome::Refused);
  inet.answer.bytes = "<html>hello</html>";
  EXPECT_EQ(main.ImportTyped("http://example.com/a.grc"), Outcome::Refused);
  EXPECT_EQ(desktop.messages,
            (Strings{RefusedFile(path), RefusedText, EmptyClipboard, RefusedFile("http://example.com/a.grc")}));
  EXPECT_EQ(main.Data().WaypointCount, 0);
  EXPECT_EQ(desktop.caption, "");
  EXPECT_EQ(dialogs.clip_shown, 0);
}

// ---- Links

TEST_F(ImportSources, LinksOfBothSchemesAreFetchedInAnyCase) {
  inet.answer.bytes = Formats[0].text;
  for (const char* link : {"http://example.com/a.grc", "HTTP://example.com/a.grc", "Http://example.com/a.grc",
                           "https://example.com/a.grc", "HTTPS://example.com/a.grc", "httpS://example.com/a.grc"}) {
    SCOPED_TRACE(link);
    Forget();
    inet.links.clear();
    desktop.clipboard = link;
    EXPECT_EQ(main.Paste_Click(), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{std::string("Clip From URL=") + link, std::string(Summary)}));
    Forget();
    EXPECT_EQ(main.TakeDrop({}, link), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{std::string("Import from ") + link, std::string(Summary)}));
    EXPECT_EQ(inet.links, Strings(2, link));
  }
}

TEST_F(ImportSources, FtpIsRefusedWithItsMessageInAnyCase) {
  for (const char* link : {"ftp://example.com/a.grc", "FTP://example.com/a.grc", "Ftp://example.com/a.grc"}) {
    desktop.clipboard = link;
    EXPECT_EQ(main.Paste_Click(), Outcome::Refused);
    EXPECT_EQ(main.TakeDrop({}, link), Outcome::Refused);
  }
  EXPECT_EQ(desktop.messages, Strings(6, "現時点ではFTPには対応していません（http://かfile://）"));
  EXPECT_EQ(inet.links, Strings{});
  EXPECT_EQ(desktop.captions, Strings{});
}

TEST_F(ImportSources, ARefusalTakesAnOlderSuccessFromTheStatusLine) {
  const std::string good = Put("good.grc", Formats[0].text);
  const std::vector<std::function<Outcome()>> refused{[&] { return main.ImportTyped("ftp://example.com/a.grc"); },
                                                      [&] { return main.TakeDrop({}, "ftp://example.com/a.grc"); },
                                                      [&] { return main.TakeDrop({}, "file://other-host/a.grc"); },
                                                      [&] { return main.TakeDrop({}, "hello"); },
                                                      [&] { return main.TakeDrop({Path("missing.grc")}, ""); },
                                                      [&] {
                                                        desktop.clipboard = " \r\n";
                                                        return main.Paste_Click();
                                                      }};
  for (std::size_t i = 0; i < refused.size(); ++i) {
    ASSERT_EQ(main.ImportFrom(good), Outcome::Done);
    ASSERT_NE(desktop.caption, "");
    EXPECT_EQ(refused[i](), Outcome::Refused) << i;
    EXPECT_EQ(desktop.caption, "") << i;
  }
}

TEST_F(ImportSources, ADeleteTakesAnOlderSuccessFromTheStatusLine) {
  const std::string good = Put("good.grc", Formats[0].text);
  ASSERT_EQ(main.ImportFrom(good), Outcome::Done);
  const std::string told = desktop.caption;
  main.controls.DoCheck.fill(false);
  EXPECT_EQ(main.Delete_Click(), Outcome::Done);
  EXPECT_EQ(desktop.caption, told) << "nothing was deleted";
  main.controls.DoCheck.fill(true);
  EXPECT_EQ(main.Delete_Click(), Outcome::Done);
  EXPECT_EQ(desktop.caption, "");
}

TEST_F(ImportSources, AFileLinkIsAPathWithItsEscapesDecoded) {
  PutFile(Path("高尾 1.grc"), Formats[0].text);
  const std::string tail = "%E9%AB%98%E5%B0%BE%201.grc";
  const std::string path = Path("").substr(1);
  for (const std::string scheme : {"file:///", "FILE:///", "File://localhost/"}) {
    SCOPED_TRACE(scheme);
    Forget();
    const std::string link = std::string(scheme).append(path).append(tail);
    desktop.clipboard = link;
    EXPECT_EQ(main.Paste_Click(), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{"Clip From URL=" + link, std::string(Summary)}));
    EXPECT_EQ(main.TakeDrop({}, link), Outcome::Done);
  }
  EXPECT_EQ(main.Data().WaypointCount, 6);
  EXPECT_EQ(inet.links, Strings{});
}

TEST_F(ImportSources, AFileOnAnotherComputerIsRefused) {
  EXPECT_EQ(main.ImportTyped("file://server/share/a.grc"), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{"ほかのコンピュータ（server）のファイルは読み込めません．"});
  EXPECT_EQ(desktop.caption, "");
}

TEST_F(ImportSources, AFetchThatFailsSaysWhyAndImportsNothing) {
  inet.answer = {std::string(Formats[0].text), "サーバーが404 Not Foundと答えました．", false};
  main.controls.AutoUpload = true;
  EXPECT_EQ(main.TakeDrop({}, "http://example.com/a.grc"), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{"サーバーが404 Not Foundと答えました．"});
  EXPECT_EQ(main.Data().WaypointCount, 0);
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(main.controls.CancelEnabled);
  EXPECT_FALSE(Uploaded());
}

TEST_F(ImportSources, CancelIsThereWhileALinkIsFetchedAndEndsIt) {
  inet.answer.bytes = Formats[0].text;
  bool enabled = false;
  inet.on_open = [&] {
    enabled = main.controls.CancelEnabled;
    EXPECT_TRUE(main.Busy());
    main.Cancel_Click();
  };
  EXPECT_EQ(main.ImportTyped("http://example.com/a.grc"), Outcome::Cancelled);
  EXPECT_TRUE(enabled);
  EXPECT_FALSE(main.controls.CancelEnabled);
  EXPECT_EQ(main.Data().WaypointCount, 0);
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_EQ(desktop.caption, "");
  // The next fetch goes its way.
  inet.on_open = nullptr;
  EXPECT_EQ(main.ImportTyped("http://example.com/a.grc"), Outcome::Done);
  ExpectTakao();
}

TEST_F(ImportSources, CancelIsNotThereWhileWhatWasFetchedIsRead) {
  inet.answer.bytes = Formats[0].text;
  std::vector<bool> with_files;
  desktop.on_change = [&] {
    if (!scratch.Names().empty()) with_files.push_back(main.controls.CancelEnabled);
  };
  ASSERT_EQ(main.ImportTyped("http://example.com/a.grc"), Outcome::Done);
  ASSERT_FALSE(with_files.empty());
  EXPECT_EQ(std::count(with_files.begin(), with_files.end(), true), 0);
}

TEST_F(ImportSources, AnUploadAfterACancelledFetchIsNotCancelled) {
  Hold(Waypoints(1));
  inet.on_open = [&] { main.Cancel_Click(); };
  ASSERT_EQ(main.ImportTyped("http://example.com/a.grc"), Outcome::Cancelled);
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Done);
  EXPECT_TRUE(Uploaded());
}

TEST_F(ImportSources, AFetchedAnswerPassesThroughAPrivateFileWithTheEndingOfItsLink) {
  inet.answer.bytes = Formats[2].text;
  Strings seen;
  desktop.on_change = [&] {
    if (seen.empty()) seen = TemporaryFiles();
  };
  EXPECT_EQ(main.ImportTyped("https://example.com/get/A.MPS?name=x#top"), Outcome::Done);
  ExpectTakao();
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_TRUE(seen[0].ends_with(".mps")) << seen[0];
}

TEST_F(ImportSources, WithoutTheNetLinksAreRefused) {
  WalrimMain plain(port, clock, loop, desktop, &dialogs);
  EXPECT_EQ(plain.ImportTyped("http://example.com/a.grc"), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{RefusedFile("http://example.com/a.grc")});
  EXPECT_FALSE(plain.Busy());
}

TEST_F(ImportSources, WithoutAFolderForTemporaryFilesAPasteIsRefusedWithTheReason) {
  const EnvironmentVariable missing("TMPDIR", Path("missing"));
  desktop.clipboard = Formats[0].text;
  EXPECT_EQ(main.Paste_Click(), Outcome::Refused);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_TRUE(desktop.messages[0].starts_with("ファイルに書き込めません：TempClip.grc（")) << desktop.messages[0];
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(main.Busy());
}

// ---- Drops

TEST_F(ImportSources, DroppedFilesAreReadOneAfterTheOther) {
  const std::string first = Put("1.grc", Waypoints(2, "A"));
  const std::string second = Put("2.txt", "WP,D,B,35,139,11/15/2002,10:00:00,X\r\n");
  const std::string third = Put("3.grc", "RTH\t1\tR\t1\r\nRTP\tD\tWGS84\tP\t35\t139\tX\r\n");
  EXPECT_EQ(main.TakeDrop({first, second, third}, "http://example.com/not-this"), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A1", "A2", "B"}));
  EXPECT_EQ(desktop.captions, (Strings{"Import from " + first, "取り込み：Waypoint 2，Route 0，TrackLog 0．",
                                       "Import from " + second, "取り込み：Waypoint 1，Route 0，TrackLog 0．",
                                       "Import from " + third, "取り込み：Waypoint 0，Route 1（1点），TrackLog 0．",
                                       "取り込み：Waypoint 3，Route 1（1点），TrackLog 0．"}));
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"3", "1", "-"}));
  EXPECT_EQ(inet.links, Strings{});
  EXPECT_FALSE(Uploaded());
}

TEST_F(ImportSources, ADroppedFileThatCannotBeReadDoesNotStopTheOthers) {
  EXPECT_EQ(main.TakeDrop({Put("1.grc", Waypoints(1, "A")), Path("none"), Put("3.grc", Waypoints(1, "B"))}, ""),
            Outcome::Refused);
  EXPECT_EQ(Idents(), (Strings{"A1", "B1"}));
  EXPECT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(main.LastImport().summary.stored[0], 2);
}

TEST_F(ImportSources, WithAutoUploadWhatWasDroppedIsUploaded) {
  Hold("TRH\t1\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\r\n");
  main.controls.AutoUpload = true;
  EXPECT_EQ(
      main.TakeDrop({Put("1.grc", Waypoints(1)), Put("2.grc", "RTH\t1\tR\t1\r\nRTP\tD\tWGS84\tP\t35\t139\r\n")}, ""),
      Outcome::Done);
  EXPECT_EQ(main.controls.DoCheck, (Checks{true, true, false}));
  EXPECT_TRUE(desktop.Showed("UpLoading : Waypoint"));
  EXPECT_TRUE(desktop.Showed("UpLoading : Route"));
  EXPECT_FALSE(desktop.Showed("UpLoading : TrackLog"));
}

TEST_F(ImportSources, WithAutoUploadADroppedLinkIsUploadedAndAnImportByHandIsNot) {
  main.controls.AutoUpload = true;
  inet.answer.bytes = Formats[0].text;
  desktop.clipboard = Formats[0].text;
  EXPECT_EQ(main.Paste_Click(), Outcome::Done);
  desktop.open_path = Put("a.grc", Formats[0].text);
  EXPECT_EQ(main.FileImport_Click(), Outcome::Done);
  EXPECT_FALSE(Uploaded());
  EXPECT_EQ(main.TakeDrop({}, "http://example.com/a.grc"), Outcome::Done);
  EXPECT_TRUE(Uploaded());
}

// ---- What an import tells

TEST_F(ImportSources, UnknownCommandsAreToldTwentyTimesAndThenCounted) {
  std::string text = "Datum,WGS84,WGS84,0,0,0,0,0\r\n";
  std::string expected = "取り込み：Waypoint 1，Route 0，TrackLog 0．";
  for (int i = 1; i <= 25; ++i) {
    text += "X" + std::to_string(i) + ",1,2\r\n";
    if (i <= 20) expected += (i > 1 ? " " : "") + ("command [X" + std::to_string(i)) + "] is not suppoted";
  }
  text += "WP,D,A,35,139,11/15/2002,10:00:00,X\r\n";
  EXPECT_EQ(main.ImportFrom(Put("a.txt", text)), Outcome::Done);
  EXPECT_EQ(desktop.caption, expected + " ほかに5行，分からない命令があります．");
  EXPECT_EQ(Idents(), Strings{"A"});
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(ImportSources, UnknownCommandsOfSeveralFilesAreCountedTogether) {
  std::string text = "WP,D,A,35,139,11/15/2002,10:00:00,X\r\n";
  for (int i = 1; i <= 15; ++i)
    text += "XY,1\r\n";
  EXPECT_EQ(main.ImportFiles({Put("a.txt", text), Put("b.txt", text)}), Outcome::Done);
  EXPECT_EQ(main.LastImport().messages.count, 30);
  EXPECT_EQ(main.LastImport().messages.kept.size(), 20U);
  EXPECT_TRUE(desktop.caption.ends_with(" ほかに10行，分からない命令があります．")) << desktop.caption;
}

TEST_F(ImportSources, SkippedLinesAreCountedWithTheReasonOfTheFirst) {
  EXPECT_EQ(main.ImportFrom(Put(
                "a.grc", "WPT\tD\tWGS84\tA\t35\t139\r\nWPT\tD\tWGS84\tB\tx\t139\r\nWPT\tXY\tWGS84\tC\t35\t139\r\n")),
            Outcome::Done);
  EXPECT_TRUE(
      desktop.caption.starts_with("取り込み：Waypoint 1，Route 0，TrackLog 0．2行を読み飛ばしました（最初は2行目："))
      << desktop.caption;
}

TEST_F(ImportSources, AStatementWithoutAPositionIsTold) {
  EXPECT_EQ(main.ImportFrom(Put(
                "a.mps", std::string(Formats[2].text) + "\t\tpoint\toid=2\r\n\t\t\t\tpos=99/30/00.0,139/15/00.0;\r\n")),
            Outcome::Done);
  EXPECT_EQ(desktop.caption, std::string(Summary) + "1個の文を読み飛ばしました（最初の理由：位置が読めません）．");
}

TEST_F(ImportSources, AnImportGoesBehindWhatIsHeldAndTheCountersShowAll) {
  const std::string path =
      Put("a.grc",
          "WPT\tD\tWGS84\tA\t35\t139\r\nRTH\t1\tR\t1\r\nRTP\tD\tWGS84\tP\t35\t139\r\nTRH\t1\tTRUE\t4\tL\r\n"
          "TRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\r\n");
  ASSERT_EQ(main.ImportFrom(path), Outcome::Done);
  ASSERT_EQ(main.ImportFrom(path), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"2", "2", "2"}));
  EXPECT_EQ(desktop.caption, "取り込み：Waypoint 1，Route 1（1点），TrackLog 1（1点）．");
}

TEST_F(ImportSources, AnImportLeavesTheCountersOfOtherKinds) {
  const Bytes begins{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
  const Bytes goes_on(13, 0);
  receiver.description = "GPS 12 Software";
  receiver.packets_of[6] = {{34, begins}, {34, goes_on}, {34, goes_on}};
  main.controls.DownCheck = {false, false, true};
  ASSERT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  ASSERT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"-", "-", "3"}));
  ASSERT_EQ(main.ImportFrom(Put("a.grc", Waypoints(2))), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"2", "-", "3"}));
  EXPECT_FALSE(main.DataSetLoaded(DataKind::Route));
}

TEST_F(ImportSources, AFullKindSaysSoOnceAndTheRestIsCounted) {
  const std::string path = Put("a.grc", Waypoints(MaxWaypoints + 3));
  ASSERT_EQ(main.ImportFrom(path), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum[0], "1999");
  EXPECT_EQ(main.controls.DataTypeBackColor[0], FullBackColor);
  EXPECT_EQ(desktop.messages, Strings{CapacityMessage(DataKind::Waypoint)});
  EXPECT_EQ(main.LastImport().summary.skipped, 3);
  ASSERT_EQ(main.ImportFrom(path), Outcome::Done);
  EXPECT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(main.controls.GpsNum[0], "1999");
}

TEST_F(ImportSources, AFileWithoutRecordsLoadsNothing) {
  ASSERT_EQ(main.ImportFrom(Put("a.grc", "WPT\tDegreeType\tDatum\tident\r\n")), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum[0], "-");
  EXPECT_FALSE(main.DataSetLoaded(DataKind::Waypoint));
  EXPECT_EQ(desktop.caption, "取り込み：Waypoint 0，Route 0，TrackLog 0．");
}

// ---- Points from a map

class MapPoints : public ImportSources {
 protected:
  MapPoints() {
    dialogs.on_clip = [this](ClipProAtlas& clip) {
      shown_lat = clip.ClipLat;
      shown_lon = clip.ClipLon;
      EXPECT_EQ(clip.Notation(), "D");
      EXPECT_FALSE(clip.smbl_entries.empty());
      EXPECT_TRUE(main.Busy());
      clip.ClipIdent = "takao";
      clip.ClipCmnt = "山頂";
      return clip.Ok().waypoint;
    };
  }

  std::string shown_lat;
  std::string shown_lon;
};

TEST_F(MapPoints, APastedPointIsCompletedInTheDialogAndAppended) {
  Hold(Waypoints(1));
  main.controls.DoCheck.fill(false);
  desktop.clipboard = "35.6252, 139.2437";
  EXPECT_EQ(main.Paste_Click(), Outcome::Done);
  EXPECT_EQ(shown_lat, "35.6252");
  EXPECT_EQ(shown_lon, "139.2437");
  EXPECT_EQ(Idents(), (Strings{"W1", "TAKAO"}));
  EXPECT_EQ(HeldValue(2, WaypointField::cmnt).substr(0, 6), "山頂");
  EXPECT_EQ(LeadingNumber(HeldValue(2, WaypointField::lat)), 35.6252);
  EXPECT_EQ(LeadingNumber(HeldValue(2, WaypointField::lon)), 139.2437);
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"2", "-", "-"}));
  EXPECT_EQ(main.LastImport().summary.stored, (std::array<int, 3>{1, 0, 0}));
  EXPECT_FALSE(main.Busy());
}

TEST_F(MapPoints, ThePointIsTakenFromAStatementALinkAndAPairOfAngles) {
  for (const char* text : {"point oid=1 gid=1 pos=35/37/30.7,139/14/37.3 str=X;", "geo:35.6252,139.2437",
                           "35°37'30.7\"N 139°14'37.3\"E", "N35.37.30.7 E139.14.37.3"}) {
    desktop.clipboard = text;
    EXPECT_EQ(main.Paste_Click(), Outcome::Done) << text;
    EXPECT_NEAR(LeadingNumber(shown_lat), 35.6252, 0.00001) << text;
    EXPECT_NEAR(LeadingNumber(shown_lon), 139.2437, 0.00001) << text;
  }
  EXPECT_EQ(main.Data().WaypointCount, 4);
  // The statement's position was on Tokyo, where the same numbers are a place 450 m away.
  EXPECT_NEAR(LeadingNumber(HeldValue(1, WaypointField::lat)), 35.6252 + 0.00324, 0.0001);
  EXPECT_NEAR(LeadingNumber(HeldValue(2, WaypointField::lat)), 35.6252, 0.00001);
}

TEST_F(MapPoints, WhatTheDialogDoesNotAskForIsUnknownAsForAPointFromAFile) {
  ASSERT_EQ(main.RetClip({35.6252, 139.2437, "HILL", "", 18, 0}), 1);
  EXPECT_EQ(HeldValue(1, WaypointField::alt), "1E+25");
  EXPECT_EQ(HeldValue(1, WaypointField::dpth), "1E+25");
  EXPECT_EQ(HeldValue(1, WaypointField::color), "255");
  EXPECT_EQ(HeldValue(1, SubclassField(17)), "255");
}

TEST_F(MapPoints, ACancelledDialogAddsNothing) {
  dialogs.on_clip = nullptr;
  desktop.clipboard = "35.6252, 139.2437";
  EXPECT_EQ(main.Paste_Click(), Outcome::Cancelled);
  EXPECT_EQ(dialogs.clip_shown, 1);
  EXPECT_EQ(main.Data().WaypointCount, 0);
  EXPECT_EQ(main.controls.GpsNum[0], "-");
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(MapPoints, AFullStoreTakesNoPointAndSaysSo) {
  Hold(Waypoints(MaxWaypoints));
  desktop.clipboard = "35.6252, 139.2437";
  EXPECT_EQ(main.Paste_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{CapacityMessage(DataKind::Waypoint)});
  EXPECT_EQ(main.Data().WaypointCount, MaxWaypoints);
  EXPECT_EQ(HeldValue(MaxWaypoints, WaypointField::ident), "W1999");
  EXPECT_EQ(main.RetClip({}), AddRejected);
}

TEST_F(MapPoints, TheLastPointThatFitsTellsThatTheKindIsFull) {
  Hold(Waypoints(MaxWaypoints - 1));
  desktop.clipboard = "35.6252, 139.2437";
  EXPECT_EQ(main.Paste_Click(), Outcome::Done);
  EXPECT_EQ(desktop.messages, Strings{CapacityMessage(DataKind::Waypoint)});
  EXPECT_EQ(main.controls.GpsNum[0], "1999");
}

TEST_F(MapPoints, WithoutDialogsAPointIsRefused) {
  WalrimMain plain(port, clock, loop, desktop);
  EXPECT_EQ(plain.ImportTyped("35.6252, 139.2437"), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{RefusedText});
}

TEST_F(MapPoints, WithAutoUploadADroppedPointUploadsItsKindAlone) {
  ASSERT_EQ(main.ImportFrom(Put("a.grc", "RTH\t1\tR\t1\r\nRTP\tD\tWGS84\tP\t35\t139\r\n")), Outcome::Done);
  Forget();
  main.controls.AutoUpload = true;
  EXPECT_EQ(main.TakeDrop({}, "35.6252, 139.2437"), Outcome::Done);
  EXPECT_EQ(main.controls.DoCheck, (Checks{true, false, false}));
  EXPECT_TRUE(desktop.Showed("UpLoading : Waypoint"));
  EXPECT_FALSE(desktop.Showed("UpLoading : Route"));
}

}  // namespace
}  // namespace walrim
