// Files, texts, links and points, wherever they come from.
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <tuple>

#include "app/AppTest.h"
#include "app/Messages.h"
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
};
void PrintTo(const FormatCase& one, std::ostream* out) {
  *out << one.name;
}

constexpr FormatCase Cases[] = {
    {"Standard", "a.grc", "WPT\tD\tWGS84\t=\"高尾\"\t35.5\t139.25\t=\"山頂\"\r\n", "Import From ClipBoard (標準形式)"},
    {"WptPlus", "a.txt", "Datum,WGS84,WGS84,0,0,0,0,0\r\nWP,D,高尾, 35.5, 139.25,11/15/2002,14:25:30,山頂\r\n",
     "Import From ClipBoard (Wpt+形式）"},
    {"Script", "a.mps",
     "//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:25:30;\r\nmapserver script ver=1.0;\r\n"
     "\t\ttheme\tstr=Walrim Datum:WGS84 UTCOffset:0;\r\n"
     "\t\tpoint\toid=1\r\n\t\t\t\tgid=5131\r\n\t\t\t\tpos=35/30/00.0,139/15/00.0\r\n\t\t\t\tstr=高尾    \r\n"
     "\t\t\t\tstrformat=right\r\n\t\t\t\tinfo=[WP]<高尾><山頂>;\r\nmapserver end;\r\n",
     "Import From ClipBoard (MPS形式)"},
    {"Gpx", "a.gpx",
     "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>\r\n<gpx>\r\n<wpt lat=\"35.5\" "
     "lon=\"139.25\"><name>高尾</name><cmt>山頂</cmt></wpt></gpx>\r\n",
     "Import From ClipBoard (GPX形式)"},
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
    ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
    const Waypoint& takao = Data().Waypoints()[0];
    EXPECT_EQ(takao.cmnt.substr(0, 6), "山頂");
    EXPECT_NEAR(takao.lat_deg, 35.5, 0.00001);
    EXPECT_NEAR(takao.lon_deg, 139.25, 0.00001);
    EXPECT_EQ(Held(), (Counts{1, std::nullopt, std::nullopt}));
    EXPECT_TRUE(main.State().Loaded(DataKind::Waypoint));
    EXPECT_EQ(desktop.messages, Strings{});
  }
};

// ---- Every format from every source

class EveryFormat : public ImportSources, public ::testing::WithParamInterface<FormatCase> {};

TEST_P(EveryFormat, IsReadBehindEmptyLinesOfAPaste) {
  for (const char* before : {"\r\n", "\n\n", "\r\r\n\n"}) {
    desktop.clipboard = before + std::string(GetParam().text);
    EXPECT_EQ(main.Imports().Paste(), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{std::string(GetParam().status), std::string(Summary)}));
    ExpectTakao();
    main.State().Settings().chosen_kinds.fill(true);
    ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
    Forget();
  }
}

TEST_P(EveryFormat, IsReadFromAFileInEveryEncodingAndWithEveryLineEnd) {
  for (const char* encoding : {"sjis", "utf8", "mark"}) {
    for (const char* line_end : {"\r\n", "\n", "\r"}) {
      SCOPED_TRACE(std::string(encoding) + " " + std::to_string(line_end[0]) + std::to_string(line_end[1]));
      const std::string path = Put(GetParam().file, Encoded(WithLineEnds(GetParam().text, line_end), encoding));
      desktop.open_path = path;
      EXPECT_EQ(main.Imports().ImportChosen(), Outcome::Done);
      EXPECT_EQ(desktop.captions, (Strings{"Import from " + path, std::string(Summary)}));
      ExpectTakao();
      main.State().Settings().chosen_kinds.fill(true);
      ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
      Forget();
    }
  }
}

TEST_P(EveryFormat, IsReadFromTheClipboardWithItsStatusText) {
  for (const char* line_end : {"\r\n", "\n", "\r"}) {
    SCOPED_TRACE(std::to_string(line_end[0]) + std::to_string(line_end[1]));
    desktop.clipboard = WithLineEnds(GetParam().text, line_end);
    EXPECT_EQ(main.Imports().Paste(), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{std::string(GetParam().status), std::string(Summary)}));
    ExpectTakao();
    main.State().Settings().chosen_kinds.fill(true);
    ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
    Forget();
  }
}

TEST_P(EveryFormat, IsReadFromALinkInEveryEncoding) {
  for (const char* encoding : {"sjis", "utf8", "mark"}) {
    SCOPED_TRACE(encoding);
    inet.answer.bytes = Encoded(std::string(GetParam().text), encoding);
    const std::string link = std::string("http://example.com/") + GetParam().file;
    EXPECT_EQ(main.Imports().ImportTyped(link), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{"Import from " + link, std::string(Summary)}));
    ExpectTakao();
    main.State().Settings().chosen_kinds.fill(true);
    ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
    Forget();
  }
}

TEST_P(EveryFormat, IsReadFromADroppedText) {
  EXPECT_EQ(main.External().TakeDrop({}, std::string(GetParam().text)), Outcome::Done);
  ExpectTakao();
}

INSTANTIATE_TEST_SUITE_P(Formats, EveryFormat, ::testing::ValuesIn(Cases),
                         [](const auto& test) { return std::string(test.param.name); });

// ---- Recognition

TEST_F(ImportSources, AFileIsKnownByItsFirstWordInAnyCase) {
  // What a first line is followed by; a title or an unknown line stores nothing by itself.
  const std::string standard = "\r\nWPT\tD\tWGS84\tA\t35\t139\r\n";
  const std::string wpt = "\r\nWP,D,A,35,139,11/15/2002,10:00:00,X\r\n";
  int number = 0;
  for (const char* word : {"Walrim", "WALRIM,Ver. 1.0", "wpt", "Rth", "RTP", "trh", "TRP"}) {
    EXPECT_EQ(main.Imports().ImportFile(Put("a" + std::to_string(++number), word + standard)), Outcome::Done) << word;
    EXPECT_GE(main.Imports().LastImport().stored[0], 1) << word;
  }
  for (const char* word : {"Datum,WGS84", "tokyo mean,Bessel 1841", "WGS84,WGS84", "wp", "rn", "rp", "tp"}) {
    EXPECT_EQ(main.Imports().ImportFile(Put("b" + std::to_string(++number), word + wpt)), Outcome::Done) << word;
    EXPECT_GE(main.Imports().LastImport().stored[0], 1) << word;
  }
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(ImportSources, AScriptIsKnownByTheLastThreeLettersOfItsPath) {
  const std::string_view script = Cases[2].text;
  for (const char* name : {"a.mps", "b.MPS", "c.Mps", "stamps"}) {
    EXPECT_EQ(main.Imports().ImportFile(Put(name, script)), Outcome::Done) << name;
  }
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 4U);
  EXPECT_EQ(main.Imports().ImportFile(Put("a.txt", script)), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::UnsupportedFile(Path("a.txt"))});
}

TEST_F(ImportSources, TheFirstWordGoesBeforeThePath) {
  EXPECT_EQ(main.Imports().ImportFile(Put("a.mps", Cases[0].text)), Outcome::Done);
  ExpectTakao();
}

TEST_F(ImportSources, WhatIsNoneOfTheFormatsIsRefusedFromEverySource) {
  const std::string path = Put("a.grc", "hello\r\nWPT\tD\tWGS84\tA\t35\t139\r\n");
  EXPECT_EQ(main.Imports().ImportFrom(path), Outcome::Refused);
  desktop.clipboard = "hello";
  EXPECT_EQ(main.Imports().Paste(), Outcome::Refused);
  desktop.clipboard = "";
  EXPECT_EQ(main.Imports().Paste(), Outcome::Refused);
  inet.answer.bytes = "<html>hello</html>";
  EXPECT_EQ(main.Imports().ImportTyped("http://example.com/a.grc"), Outcome::Refused);
  EXPECT_EQ(desktop.messages,
            (Strings{messages::UnsupportedFile(path), messages::UnsupportedText(),
                     std::string(messages::EmptyClipboard), messages::UnsupportedFile("http://example.com/a.grc")}));
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(desktop.caption, "");
  EXPECT_EQ(dialogs.clip_shown, 0);
}

// ---- Links

TEST_F(ImportSources, LinksOfBothSchemesAreFetchedInAnyCase) {
  inet.answer.bytes = Cases[0].text;
  for (const char* link : {"http://example.com/a.grc", "HTTP://example.com/a.grc", "Http://example.com/a.grc",
                           "https://example.com/a.grc", "HTTPS://example.com/a.grc", "httpS://example.com/a.grc"}) {
    SCOPED_TRACE(link);
    Forget();
    inet.links.clear();
    desktop.clipboard = link;
    EXPECT_EQ(main.Imports().Paste(), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{std::string("Clip From URL=") + link, std::string(Summary)}));
    Forget();
    EXPECT_EQ(main.External().TakeDrop({}, link), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{std::string("Import from ") + link, std::string(Summary)}));
    EXPECT_EQ(inet.links, Strings(2, link));
  }
}

TEST_F(ImportSources, FtpIsRefusedWithItsMessageInAnyCase) {
  for (const char* link : {"ftp://example.com/a.grc", "FTP://example.com/a.grc", "Ftp://example.com/a.grc"}) {
    desktop.clipboard = link;
    EXPECT_EQ(main.Imports().Paste(), Outcome::Refused);
    EXPECT_EQ(main.External().TakeDrop({}, link), Outcome::Refused);
  }
  EXPECT_EQ(desktop.messages, Strings(6, std::string(messages::FtpRefused)));
  EXPECT_EQ(inet.links, Strings{});
  EXPECT_EQ(desktop.captions, Strings{});
}

TEST_F(ImportSources, ARefusalTakesAnOlderSuccessFromTheStatusLine) {
  const std::string good = Put("good.grc", Cases[0].text);
  const std::vector<std::function<Outcome()>> refused{
      [&] { return main.Imports().ImportTyped("ftp://example.com/a.grc"); },
      [&] { return main.External().TakeDrop({}, "ftp://example.com/a.grc"); },
      [&] { return main.External().TakeDrop({}, "file://other-host/a.grc"); },
      [&] { return main.External().TakeDrop({}, "hello"); },
      [&] { return main.External().TakeDrop({Path("missing.grc")}, ""); },
      [&] {
        desktop.clipboard = " \r\n";
        return main.Imports().Paste();
      }};
  for (std::size_t i = 0; i < refused.size(); ++i) {
    ASSERT_EQ(main.Imports().ImportFrom(good), Outcome::Done);
    ASSERT_NE(desktop.caption, "");
    EXPECT_EQ(refused[i](), Outcome::Refused) << i;
    EXPECT_EQ(desktop.caption, "") << i;
  }
}

TEST_F(ImportSources, ADeleteTakesAnOlderSuccessFromTheStatusLine) {
  const std::string good = Put("good.grc", Cases[0].text);
  ASSERT_EQ(main.Imports().ImportFrom(good), Outcome::Done);
  const std::string told = desktop.caption;
  main.State().Settings().chosen_kinds.fill(false);
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(desktop.caption, told) << "nothing was deleted";
  main.State().Settings().chosen_kinds.fill(true);
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(desktop.caption, "");
}

TEST_F(ImportSources, AFileLinkIsAPathWithItsEscapesDecoded) {
  PutFile(Path("高尾 1.grc"), Cases[0].text);
  const std::string tail = "%E9%AB%98%E5%B0%BE%201.grc";
  const std::string path = Path("").substr(1);
  for (const std::string scheme : {"file:///", "FILE:///", "File://localhost/"}) {
    SCOPED_TRACE(scheme);
    Forget();
    const std::string link = std::string(scheme).append(path).append(tail);
    desktop.clipboard = link;
    EXPECT_EQ(main.Imports().Paste(), Outcome::Done);
    EXPECT_EQ(desktop.captions, (Strings{"Clip From URL=" + link, std::string(Summary)}));
    EXPECT_EQ(main.External().TakeDrop({}, link), Outcome::Done);
  }
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 6U);
  EXPECT_EQ(inet.links, Strings{});
}

TEST_F(ImportSources, AFileOnAnotherComputerIsRefused) {
  EXPECT_EQ(main.Imports().ImportTyped("file://server/share/a.grc"), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::FileOfAnotherComputer("server")});
  EXPECT_EQ(desktop.caption, "");
}

TEST_F(ImportSources, AFetchThatFailsSaysWhyAndImportsNothing) {
  inet.answer = {std::string(Cases[0].text), "サーバーが404 Not Foundと答えました．", false};
  main.State().Settings().auto_upload = true;
  EXPECT_EQ(main.External().TakeDrop({}, "http://example.com/a.grc"), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{"サーバーが404 Not Foundと答えました．"});
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(main.State().CancelEnabled());
  EXPECT_FALSE(Uploaded());
}

TEST_F(ImportSources, CancelIsThereWhileALinkIsFetchedAndEndsIt) {
  inet.answer.bytes = Cases[0].text;
  bool enabled = false;
  inet.on_open = [&] {
    enabled = main.State().CancelEnabled();
    EXPECT_TRUE(main.State().Busy());
    main.Cancel();
  };
  EXPECT_EQ(main.Imports().ImportTyped("http://example.com/a.grc"), Outcome::Cancelled);
  EXPECT_TRUE(enabled);
  EXPECT_FALSE(main.State().CancelEnabled());
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_EQ(desktop.caption, "");
  // The next fetch goes its way.
  inet.on_open = nullptr;
  EXPECT_EQ(main.Imports().ImportTyped("http://example.com/a.grc"), Outcome::Done);
  ExpectTakao();
}

TEST_F(ImportSources, CancelIsNotThereWhileWhatWasFetchedIsRead) {
  inet.answer.bytes = Cases[0].text;
  std::vector<bool> with_records;
  desktop.on_change = [&] {
    if (Data().Count(DataKind::Waypoint) > 0) with_records.push_back(main.State().CancelEnabled());
  };
  ASSERT_EQ(main.Imports().ImportTyped("http://example.com/a.grc"), Outcome::Done);
  ASSERT_FALSE(with_records.empty());
  EXPECT_EQ(std::count(with_records.begin(), with_records.end(), true), 0);
}

TEST_F(ImportSources, AnUploadAfterACancelledFetchIsNotCancelled) {
  Hold(Waypoints(1));
  inet.on_open = [&] { main.Cancel(); };
  ASSERT_EQ(main.Imports().ImportTyped("http://example.com/a.grc"), Outcome::Cancelled);
  EXPECT_EQ(main.Device().Upload(), Outcome::Done);
  EXPECT_TRUE(Uploaded());
}

TEST_F(ImportSources, AScriptBehindALinkIsKnownByTheEndingOfItsPathOrByItsTitle) {
  for (const char* link : {"https://example.com/get/A.MPS?name=x#top", "https://example.com/get?name=x.txt"}) {
    inet.answer.bytes = Cases[2].text;
    EXPECT_EQ(main.Imports().ImportTyped(link), Outcome::Done) << link;
    ExpectTakao();
    main.State().Settings().chosen_kinds.fill(true);
    ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
  }
  const std::string untitled(Cases[2].text.substr(Cases[2].text.find("		theme")));
  inet.answer.bytes = untitled;
  EXPECT_EQ(main.Imports().ImportTyped("https://example.com/get/A.MPS?name=x#top"), Outcome::Done);
  ExpectTakao();
  EXPECT_EQ(main.Imports().ImportTyped("https://example.com/get?name=A.mps"), Outcome::Refused);
}

TEST_F(ImportSources, GpxThatIsNoXmlIsRefusedWithItsPlace) {
  const std::string bad = "<gpx><wpt lat='1' lon='2'/>\n<a></gpx>";
  const std::string why = "XMLの書き方が不正です（2行目の10文字目）";
  EXPECT_EQ(main.Imports().ImportFrom(Put("a.gpx", bad)), Outcome::Refused);
  desktop.clipboard = bad;
  EXPECT_EQ(main.Imports().Paste(), Outcome::Refused);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(desktop.messages, (Strings{messages::RefusedFile(Path("a.gpx"), why), messages::RefusedFile("", why)}));
}

TEST_F(ImportSources, WithoutTheNetLinksAreRefused) {
  WalrimMain plain(port, clock, loop, desktop, &dialogs);
  EXPECT_EQ(plain.Imports().ImportTyped("http://example.com/a.grc"), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::UnsupportedFile("http://example.com/a.grc")});
  EXPECT_FALSE(plain.State().Busy());
}

TEST_F(ImportSources, AFolderForTemporaryFilesThatIsMissingDoesNotMatter) {
  const EnvironmentVariable missing("TMPDIR", Path("missing"));
  desktop.clipboard = Cases[0].text;
  EXPECT_EQ(main.Imports().Paste(), Outcome::Done);
  ExpectTakao();
}

// ---- Drops

TEST_F(ImportSources, DroppedFilesAreReadOneAfterTheOther) {
  const std::string first = Put("1.grc", Waypoints(2, "A"));
  const std::string second = Put("2.txt", "WP,D,B,35,139,11/15/2002,10:00:00,X\r\n");
  const std::string third = Put("3.grc", "RTH\t1\tR\t1\r\nRTP\tD\tWGS84\tP\t35\t139\tX\r\n");
  EXPECT_EQ(main.External().TakeDrop({first, second, third}, "http://example.com/not-this"), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"A1", "A2", "B"}));
  EXPECT_EQ(desktop.captions, (Strings{"Import from " + first, "取り込み：Waypoint 2，Route 0，TrackLog 0．",
                                       "Import from " + second, "取り込み：Waypoint 1，Route 0，TrackLog 0．",
                                       "Import from " + third, "取り込み：Waypoint 0，Route 1（1点），TrackLog 0．",
                                       "取り込み：Waypoint 3，Route 1（1点），TrackLog 0．"}));
  EXPECT_EQ(Held(), (Counts{3, 1, std::nullopt}));
  EXPECT_EQ(inet.links, Strings{});
  EXPECT_FALSE(Uploaded());
}

TEST_F(ImportSources, ADroppedFileThatCannotBeReadDoesNotStopTheOthers) {
  EXPECT_EQ(
      main.External().TakeDrop({Put("1.grc", Waypoints(1, "A")), Path("none"), Put("3.grc", Waypoints(1, "B"))}, ""),
      Outcome::Refused);
  EXPECT_EQ(Idents(), (Strings{"A1", "B1"}));
  EXPECT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(main.Imports().LastImport().stored[0], 2);
}

TEST_F(ImportSources, WithAutoUploadWhatWasDroppedIsUploaded) {
  Hold("TRH\t1\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\r\n");
  main.State().Settings().auto_upload = true;
  EXPECT_EQ(main.External().TakeDrop(
                {Put("1.grc", Waypoints(1)), Put("2.grc", "RTH\t1\tR\t1\r\nRTP\tD\tWGS84\tP\t35\t139\r\n")}, ""),
            Outcome::Done);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{true, true, false}));
  EXPECT_TRUE(desktop.Showed("UpLoading : Waypoint"));
  EXPECT_TRUE(desktop.Showed("UpLoading : Route"));
  EXPECT_FALSE(desktop.Showed("UpLoading : TrackLog"));
}

TEST_F(ImportSources, WithAutoUploadADroppedLinkIsUploadedAndAnImportByHandIsNot) {
  main.State().Settings().auto_upload = true;
  inet.answer.bytes = Cases[0].text;
  desktop.clipboard = Cases[0].text;
  EXPECT_EQ(main.Imports().Paste(), Outcome::Done);
  desktop.open_path = Put("a.grc", Cases[0].text);
  EXPECT_EQ(main.Imports().ImportChosen(), Outcome::Done);
  EXPECT_FALSE(Uploaded());
  EXPECT_EQ(main.External().TakeDrop({}, "http://example.com/a.grc"), Outcome::Done);
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
  EXPECT_EQ(main.Imports().ImportFrom(Put("a.txt", text)), Outcome::Done);
  EXPECT_EQ(desktop.caption, expected + " ほかに5行，分からない命令があります．");
  EXPECT_EQ(Idents(), Strings{"A"});
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(ImportSources, UnknownCommandsOfSeveralFilesAreCountedTogether) {
  std::string text = "WP,D,A,35,139,11/15/2002,10:00:00,X\r\n";
  for (int i = 1; i <= 15; ++i)
    text += "XY,1\r\n";
  EXPECT_EQ(main.Imports().ImportFiles({Put("a.txt", text), Put("b.txt", text)}), Outcome::Done);
  EXPECT_EQ(main.Imports().LastImport().messages.count, 30);
  EXPECT_EQ(main.Imports().LastImport().messages.kept.size(), 20U);
  EXPECT_TRUE(desktop.caption.ends_with(" ほかに10行，分からない命令があります．")) << desktop.caption;
}

TEST_F(ImportSources, SkippedLinesAreCountedWithTheReasonOfTheFirst) {
  EXPECT_EQ(main.Imports().ImportFrom(Put(
                "a.grc", "WPT\tD\tWGS84\tA\t35\t139\r\nWPT\tD\tWGS84\tB\tx\t139\r\nWPT\tXY\tWGS84\tC\t35\t139\r\n")),
            Outcome::Done);
  EXPECT_TRUE(
      desktop.caption.starts_with("取り込み：Waypoint 1，Route 0，TrackLog 0．2行を読み飛ばしました（最初は2行目："))
      << desktop.caption;
}

TEST_F(ImportSources, AStatementWithoutAPositionIsTold) {
  EXPECT_EQ(main.Imports().ImportFrom(Put(
                "a.mps", std::string(Cases[2].text) + "\t\tpoint\toid=2\r\n\t\t\t\tpos=99/30/00.0,139/15/00.0;\r\n")),
            Outcome::Done);
  EXPECT_EQ(desktop.caption, std::string(Summary) + "1個の文を読み飛ばしました（最初の理由：位置が読めません）．");
}

TEST_F(ImportSources, AnImportGoesBehindWhatIsHeldAndTheCountersShowAll) {
  const std::string path =
      Put("a.grc",
          "WPT\tD\tWGS84\tA\t35\t139\r\nRTH\t1\tR\t1\r\nRTP\tD\tWGS84\tP\t35\t139\r\nTRH\t1\tTRUE\t4\tL\r\n"
          "TRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\r\n");
  ASSERT_EQ(main.Imports().ImportFrom(path), Outcome::Done);
  ASSERT_EQ(main.Imports().ImportFrom(path), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{2, 2, 2}));
  EXPECT_EQ(desktop.caption, "取り込み：Waypoint 1，Route 1（1点），TrackLog 1（1点）．");
}

TEST_F(ImportSources, AnImportLeavesTheCountersOfOtherKinds) {
  const Bytes begins{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
  const Bytes goes_on(13, 0);
  receiver.description = "GPS 12 Software";
  receiver.packets_of[6] = {{34, begins}, {34, goes_on}, {34, goes_on}};
  main.State().Settings().download_kinds = {false, false, true};
  ASSERT_EQ(main.Device().Download(), Outcome::Done);
  ASSERT_EQ(Held(), (Counts{std::nullopt, std::nullopt, 3}));
  ASSERT_EQ(main.Imports().ImportFrom(Put("a.grc", Waypoints(2))), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{2, std::nullopt, 3}));
  EXPECT_FALSE(main.State().Loaded(DataKind::Route));
}

TEST_F(ImportSources, AFullKindSaysSoOnceAndTheRestIsCounted) {
  const std::string path = Put("a.grc", Waypoints(MaxWaypoints + 3));
  ASSERT_EQ(main.Imports().ImportFrom(path), Outcome::Done);
  EXPECT_EQ(Held()[0], 1999);
  EXPECT_EQ(main.State().Full(DataKind::Waypoint), true);
  EXPECT_EQ(desktop.messages, Strings{messages::KindFull(DataKind::Waypoint)});
  EXPECT_EQ(main.Imports().LastImport().skipped.count, 3);
  ASSERT_EQ(main.Imports().ImportFrom(path), Outcome::Done);
  EXPECT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(Held()[0], 1999);
}

TEST_F(ImportSources, AFileWithoutRecordsLoadsNothing) {
  ASSERT_EQ(main.Imports().ImportFrom(Put("a.grc", "WPT\tDegreeType\tDatum\tident\r\n")), Outcome::Done);
  EXPECT_EQ(Held()[0], std::nullopt);
  EXPECT_FALSE(main.State().Loaded(DataKind::Waypoint));
  EXPECT_EQ(desktop.caption, "取り込み：Waypoint 0，Route 0，TrackLog 0．");
}

// ---- Points from a map

class MapPoints : public ImportSources {
 protected:
  MapPoints() {
    dialogs.on_clip = [this](ClipProAtlas& clip) {
      shown_lat = clip.lat;
      shown_lon = clip.lon;
      EXPECT_EQ(clip.notation, AngleNotation::D);
      EXPECT_FALSE(clip.smbl_entries.empty());
      EXPECT_TRUE(main.State().Busy());
      clip.ident = "takao";
      clip.cmnt = "山頂";
      return FinishClip(clip).waypoint;
    };
  }

  std::string shown_lat;
  std::string shown_lon;
};

TEST_F(MapPoints, APastedPointIsCompletedInTheDialogAndAppended) {
  Hold(Waypoints(1));
  main.State().Settings().chosen_kinds.fill(false);
  desktop.clipboard = "35.6252, 139.2437";
  EXPECT_EQ(main.Imports().Paste(), Outcome::Done);
  EXPECT_EQ(shown_lat, "35.6252");
  EXPECT_EQ(shown_lon, "139.2437");
  EXPECT_EQ(Idents(), (Strings{"W1", "TAKAO"}));
  const Waypoint& takao = Data().Waypoints().at(1);
  EXPECT_EQ(takao.cmnt.substr(0, 6), "山頂");
  EXPECT_EQ(takao.lat_deg, 35.6252);
  EXPECT_EQ(takao.lon_deg, 139.2437);
  EXPECT_EQ(Held(), (Counts{2, std::nullopt, std::nullopt}));
  EXPECT_EQ(main.Imports().LastImport().stored, (std::array<int, 3>{1, 0, 0}));
  EXPECT_FALSE(main.State().Busy());
}

TEST_F(MapPoints, ThePointIsTakenFromAStatementALinkAndAPairOfAngles) {
  for (const char* text : {"point oid=1 gid=1 pos=35/37/30.7,139/14/37.3 str=X;", "geo:35.6252,139.2437",
                           "35°37'30.7\"N 139°14'37.3\"E", "N35.37.30.7 E139.14.37.3"}) {
    desktop.clipboard = text;
    EXPECT_EQ(main.Imports().Paste(), Outcome::Done) << text;
    EXPECT_NEAR(LeadingNumber(shown_lat), 35.6252, 0.00001) << text;
    EXPECT_NEAR(LeadingNumber(shown_lon), 139.2437, 0.00001) << text;
  }
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 4U);
  // The statement's position was on Tokyo, where the same numbers are a place 450 m away.
  EXPECT_NEAR(Data().Waypoints().at(0).lat_deg, 35.6252 + 0.00324, 0.0001);
  EXPECT_NEAR(Data().Waypoints().at(1).lat_deg, 35.6252, 0.00001);
}

TEST_F(MapPoints, TheAddressOfAMapsPageIsAPointHoweverItComesAndNothingIsFetched) {
  for (const char* address :
       {"https://maps.gsi.go.jp/#15/35.6252/139.2437/&base=std",
        "http://www.google.com/maps/search/?api=1&query=35.6252,139.2437", "www.google.com/maps/@35.6252,139.2437,15z",
        "https://map.yahoo.co.jp/place?lat=35.6252&lon=139.2437&zoom=16",
        "https://www.openstreetmap.org/?mlat=35.6252&mlon=139.2437#map=15/35.6/139.2",
        "geo:35.6252,139.2437,599;u=5"}) {
    Data() = {};
    desktop.clipboard = address;
    EXPECT_EQ(main.Imports().Paste(), Outcome::Done) << address;
    EXPECT_EQ(main.Imports().ImportTyped(address), Outcome::Done) << address;
    EXPECT_EQ(main.External().TakeDrop({}, address), Outcome::Done) << address;
    ASSERT_EQ(Data().Waypoints().size(), 3U) << address;
    for (const Waypoint& waypoint : Data().Waypoints()) {
      EXPECT_EQ(waypoint.lat_deg, 35.6252) << address;
      EXPECT_EQ(waypoint.lon_deg, 139.2437) << address;
    }
  }
  EXPECT_EQ(inet.links, Strings{});
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(MapPoints, APageWithoutAPositionIsFetched) {
  inet.answer.bytes = Cases[0].text;
  EXPECT_EQ(main.Imports().ImportTyped("https://maps.gsi.go.jp/a.grc"), Outcome::Done);
  EXPECT_EQ(main.Imports().ImportTyped("https://www.google.com/maps/search/?api=1&query=Takao"), Outcome::Done);
  EXPECT_EQ(inet.links,
            (Strings{"https://maps.gsi.go.jp/a.grc", "https://www.google.com/maps/search/?api=1&query=Takao"}));
  EXPECT_EQ(dialogs.clip_shown, 0);
}

TEST_F(MapPoints, APositionOffTheGlobeIsRefusedWithWords) {
  for (const char* text : {"https://maps.gsi.go.jp/#15/139.2437/35.6252/", "geo:35.6252,189.2437", "139.2437, 35.6252"})
    EXPECT_EQ(main.Imports().ImportTyped(text), Outcome::Refused) << text;
  EXPECT_EQ(desktop.messages, Strings(3, std::string(messages::OffGlobe)));
  EXPECT_EQ(inet.links, Strings{});
  EXPECT_EQ(dialogs.clip_shown, 0);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

TEST_F(MapPoints, WhatTheDialogDoesNotAskForIsUnknownAsForAPointFromAFile) {
  desktop.clipboard = "35.6252, 139.2437";
  ASSERT_EQ(main.Imports().Paste(), Outcome::Done);
  Waypoint like_a_file;
  like_a_file.ident = "TAKAO";
  like_a_file.cmnt = "山頂";
  like_a_file.lat_deg = 35.6252;
  like_a_file.lon_deg = 139.2437;
  like_a_file.smbl = Data().Waypoints().at(0).smbl;
  EXPECT_EQ(Data().Waypoints().at(0), like_a_file);
}

TEST_F(MapPoints, ACancelledDialogAddsNothing) {
  dialogs.on_clip = nullptr;
  desktop.clipboard = "35.6252, 139.2437";
  EXPECT_EQ(main.Imports().Paste(), Outcome::Cancelled);
  EXPECT_EQ(dialogs.clip_shown, 1);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(Held()[0], std::nullopt);
  EXPECT_EQ(desktop.messages, Strings{});
}

TEST_F(MapPoints, AFullStoreTakesNoPointAndSaysSo) {
  Hold(Waypoints(MaxWaypoints));
  desktop.clipboard = "35.6252, 139.2437";
  EXPECT_EQ(main.Imports().Paste(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::KindFull(DataKind::Waypoint)});
  EXPECT_EQ(Data().Count(DataKind::Waypoint), MaxWaypoints);
  EXPECT_EQ(Data().Waypoints().back().ident, "W1999");
}

TEST_F(MapPoints, TheLastPointThatFitsTellsThatTheKindIsFull) {
  Hold(Waypoints(MaxWaypoints - 1));
  desktop.clipboard = "35.6252, 139.2437";
  EXPECT_EQ(main.Imports().Paste(), Outcome::Done);
  EXPECT_EQ(desktop.messages, Strings{messages::KindFull(DataKind::Waypoint)});
  EXPECT_EQ(Held()[0], 1999);
}

TEST_F(MapPoints, WithoutDialogsAPointIsRefused) {
  WalrimMain plain(port, clock, loop, desktop);
  EXPECT_EQ(plain.Imports().ImportTyped("35.6252, 139.2437"), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::UnsupportedText()});
}

TEST_F(MapPoints, WithAutoUploadADroppedPointUploadsItsKindAlone) {
  ASSERT_EQ(main.Imports().ImportFrom(Put("a.grc", "RTH\t1\tR\t1\r\nRTP\tD\tWGS84\tP\t35\t139\r\n")), Outcome::Done);
  Forget();
  main.State().Settings().auto_upload = true;
  EXPECT_EQ(main.External().TakeDrop({}, "35.6252, 139.2437"), Outcome::Done);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{true, false, false}));
  EXPECT_TRUE(desktop.Showed("UpLoading : Waypoint"));
  EXPECT_FALSE(desktop.Showed("UpLoading : Route"));
}

// ---- Files

TEST_F(ImportSources, ImportReadsWhatExportWrote) {
  HoldWaypoint("高尾");
  desktop.save_path = Path("a.grc");
  ASSERT_EQ(main.Exports().Export(), Outcome::Done);
  ASSERT_EQ(main.Deletes().Delete(), Outcome::Done);
  desktop.open_path = Path("a.grc");
  EXPECT_EQ(main.Imports().ImportChosen(), Outcome::Done);
  EXPECT_TRUE(desktop.Showed("Import from " + Path("a.grc")));
  EXPECT_EQ(Held()[0], 1);
  EXPECT_TRUE(main.State().Loaded(DataKind::Waypoint));
  EXPECT_EQ(Data().Waypoints().at(0).ident, "高尾");
  EXPECT_EQ(desktop.caption, "取り込み：Waypoint 1，Route 0，TrackLog 0．");
}

TEST_F(ImportSources, ImportAppendsAndShowsAllThatIsHeld) {
  PutFile(Path("a.grc"), "WPT\tD\tWGS84\tA\t35\t139\r\n");
  ASSERT_EQ(main.Imports().ImportFile(Path("a.grc")), Outcome::Done);
  ASSERT_EQ(main.Imports().ImportFile(Path("a.grc")), Outcome::Done);
  EXPECT_EQ(Held()[0], 2);
  EXPECT_EQ(Held()[1], std::nullopt);
}

TEST_F(ImportSources, AnUnknownFileIsRefusedAndNothingIsImported) {
  PutFile(Path("a.txt"), "hello\r\nWPT\tD\tWGS84\tA\t35\t139\r\n");
  EXPECT_EQ(main.Imports().ImportFile(Path("a.txt")), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{messages::UnsupportedFile(Path("a.txt"))});
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

TEST_F(ImportSources, ACancelledOpenDialogAndAnEmptyPathDoNothing) {
  EXPECT_EQ(main.Imports().ImportChosen(), Outcome::Refused);
  EXPECT_EQ(desktop.filters, Strings{OpenDialogFilter(FormatOf(FormatId::Standard))});
  EXPECT_EQ(main.Imports().ImportFile(""), Outcome::Done);
  EXPECT_TRUE(desktop.messages.empty());
  EXPECT_TRUE(desktop.captions.empty());
}

TEST_F(ImportSources, AFileThatCannotBeReadIsSaidWithItsReason) {
  PutFile(Path("secret.grc"), "WPT\tD\tWGS84\tA\t35\t139\r\n");
  ::chmod(Path("secret.grc").c_str(), 0);
  ::chmod(folder.Path("").c_str(), 0755);
  const auto read_all = [this] {
    if (!BecomeNobody()) std::_Exit(2);
    EXPECT_EQ(main.Imports().ImportFile(Path("none.grc")), Outcome::Refused);
    EXPECT_EQ(main.Imports().ImportFile(Path("secret.grc")), Outcome::Refused);
    EXPECT_EQ(main.Imports().ImportFile(Path("secret.grc/a.grc")), Outcome::Refused);
    EXPECT_EQ(main.Imports().ImportFile(folder.Path("")), Outcome::Refused);
    EXPECT_EQ(desktop.messages, (Strings{messages::ReadProblem(Path("none.grc"), std::strerror(ENOENT)),
                                         messages::ReadProblem(Path("secret.grc"), std::strerror(EACCES)),
                                         messages::ReadProblem(Path("secret.grc/a.grc"), std::strerror(ENOTDIR)),
                                         messages::ReadProblem(folder.Path(""), std::strerror(EISDIR))}));
    std::_Exit(HasFailure() ? 1 : 0);
  };
  EXPECT_EXIT(read_all(), ::testing::ExitedWithCode(0), "");
}

TEST_F(ImportSources, WhatIsNoRegularFileIsRefusedAtOnce) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  const Strings refused{Path("pipe"), "/dev/null", "/dev/zero"};
  for (const std::string& path : refused) {
    desktop.messages.clear();
    EXPECT_EQ(main.Imports().ImportFrom(path), Outcome::Refused);
    EXPECT_EQ(main.Imports().ImportTyped("file://" + path), Outcome::Refused);
    EXPECT_EQ(main.External().TakeDrop({path}, ""), Outcome::Refused);
    EXPECT_EQ(main.External().Run("GetFile", path, ""), CommandRefused);
    desktop.open_path = path;
    EXPECT_EQ(main.Imports().ImportChosen(), Outcome::Refused);
    EXPECT_EQ(desktop.messages, Strings(5, messages::ReadProblem(path, messages::NoRegularFile)));
  }
}

}  // namespace
}  // namespace walrim
