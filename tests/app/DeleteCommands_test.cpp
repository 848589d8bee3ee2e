// What was not kept elsewhere as a whole is not deleted.
#include <map>

#include "app/AppTest.h"

namespace walrim {
namespace {

const std::string NotReadBack(messages::NotReadBack);
const std::string Cut(messages::CutNotDeleted);

class AutoDelete : public AppTest {
 protected:
  AutoDelete() { main.State().Settings().auto_delete = true; }

  void HoldWaypoint(std::string_view ident, std::string_view comment = "X", double lat_deg = 35.5) {
    Data().Clear(DataKind::Waypoint);
    AppTest::HoldWaypoint(ident, comment, lat_deg);
  }
  /// Holds a route whose only point lies off the globe.
  void HoldRouteOffTheGlobe() {
    RoutePoint point;
    point.waypoint.lat_deg = 100;
    ASSERT_EQ(Data().Begin(Route{}), AddResult::Stored);
    ASSERT_EQ(Data().Add(point), AddResult::Stored);
    main.State().SetHeldCount(DataKind::Route, 1);
  }
  void Choose(FormatId format, AngleNotation notation = AngleNotation::D) {
    main.State().Settings().format = format;
    main.State().Settings().notation = notation;
    desktop.save_path = Path("out." + std::string(FormatOf(format).ending));
  }
  /// True for a deletion. That nothing was deleted must be said.
  [[nodiscard]] bool ExportDeletes() {
    EXPECT_EQ(main.Exports().Export(), Outcome::Done);
    return EndedWithDeletion();
  }
  [[nodiscard]] bool CopyDeletes() {
    EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
    return EndedWithDeletion();
  }
  bool EndedWithDeletion() {
    const bool deleted = Held() == Counts{std::nullopt, std::nullopt, std::nullopt};
    const Strings notices = main.State().Told().Take();
    const bool said = !notices.empty() && notices.back() == NotReadBack && desktop.caption.ends_with(NotReadBack);
    EXPECT_NE(deleted, said) << desktop.caption;
    EXPECT_EQ(desktop.messages, Strings{});
    return deleted;
  }
};

TEST_F(AutoDelete, KeepsWhatAFormatThatIsNotReadWasWrittenOf) {
  HoldWaypoint("A", "B");
  Choose(FormatId::Kml);
  EXPECT_FALSE(ExportDeletes());
  EXPECT_FALSE(CopyDeletes());
}

class AutoDeleteByType : public AutoDelete, public ::testing::WithParamInterface<FormatId> {
 protected:
  static bool HasHeaders() { return FormatOf(GetParam()).holds_all; }
};

INSTANTIATE_TEST_SUITE_P(OutputType, AutoDeleteByType,
                         ::testing::Values(FormatId::Standard, FormatId::WptPlus, FormatId::Script, FormatId::Gpx),
                         [](const auto& type) { return std::string(FormatOf(type.param).ending); });

TEST_P(AutoDeleteByType, TakesOnlyTextsThatTheFileGivesBack) {
  Choose(GetParam());
  desktop.ok = true;
  std::string kept;
  for (char c = ' '; c < 0x7F; ++c) {
    if (c >= 'a' && c <= 'z') continue;  // texts are held in capitals
    const std::string ident = std::string("A") + c + c + "B";
    const std::string comment = std::string("C") + c + "D>" + c + "<E";
    HoldWaypoint(ident, comment);
    if (!ExportDeletes()) {
      kept += c;
      continue;
    }
    ASSERT_EQ(main.Imports().ImportFrom(*desktop.save_path), Outcome::Done);
    EXPECT_EQ(Idents(), Strings{ident});
    EXPECT_EQ(Data().Waypoints().at(0).cmnt, comment);
  }
  const std::map<FormatId, std::string_view> lost{
      {FormatId::Standard, ""}, {FormatId::WptPlus, "\",="}, {FormatId::Script, "\",;="}, {FormatId::Gpx, ""}};
  EXPECT_EQ(kept, lost.at(GetParam()));
}

TEST_P(AutoDeleteByType, TakesAllKindsThatComeBack) {
  for (const Datum datum : {Datum::Wgs84, Datum::Tokyo}) {
    for (const AngleNotation notation : {AngleNotation::D, AngleNotation::DMS}) {
      Hold(
          "WPT\tD\tWGS84\tA\t35.1234567\t139.25\r\nWPT\tD\tWGS84\tB\t35.5\t139.25\tSUMMIT\r\n"
          "RTH\t3\tRIDGE\t2\r\nRTP\tD\tWGS84\tS\t35.5\t139.25\tFIRST\r\nRTP\tD\tWGS84\tG\t35.75\t139.125\r\n"
          "TRH\t2\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\r\n"
          "TRP\tD\tWGS84\t35.6\t139.25\t\tFALSE\r\n");
      main.State().Settings().datum = datum;
      Choose(GetParam(), notation);
      EXPECT_TRUE(ExportDeletes()) << DatumName(datum) << AngleNotationName(notation);
    }
  }
}

TEST_P(AutoDeleteByType, KeepsPositionsOffTheGlobe) {
  Choose(GetParam());
  HoldWaypoint("FAR", "X", 100);
  EXPECT_FALSE(ExportDeletes());
  HoldWaypoint("NEAR", "X", 60);
  EXPECT_TRUE(ExportDeletes());
}

TEST_P(AutoDeleteByType, KeepsARecordThatTheFileLacksInTheMiddleOfAKind) {
  HoldRouteOffTheGlobe();
  // Of the next file's points without a header.
  Hold("RTP\tD\tWGS84\tB\t35\t139\r\n");
  Choose(GetParam());
  EXPECT_FALSE(ExportDeletes());
  EXPECT_FALSE(CopyDeletes());
}

TEST_P(AutoDeleteByType, KeepsATrackPointThatTheFileLacks) {
  Hold("TRH\t2\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\r\n");
  TrackPoint point;
  point.lat_deg = -100;
  ASSERT_EQ(Data().Add(point), AddResult::Stored);
  Choose(GetParam());
  EXPECT_FALSE(ExportDeletes());
}

TEST_P(AutoDeleteByType, LooksAtTheKindsThatWereWrittenAlone) {
  Hold("WPT\tD\tWGS84\tA\t35\t139\r\n");
  HoldRouteOffTheGlobe();
  main.State().Settings().chosen_kinds = {true, false, false};
  Choose(GetParam());
  EXPECT_EQ(main.Exports().Export(), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{std::nullopt, 1, std::nullopt}));
}

TEST_P(AutoDeleteByType, KeepsALogWithoutPointsWhereLogsHaveNoHeaders) {
  Hold("TRH\t0\tTRUE\t4\tEMPTY\r\nTRH\t1\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\r\n");
  Choose(GetParam());
  EXPECT_EQ(ExportDeletes(), HasHeaders());
}

TEST_P(AutoDeleteByType, KeepsLogsThatTheFileRunsTogether) {
  Hold(
      "TRH\t1\tTRUE\t4\tA\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\r\n"
      "TRH\t2\tTRUE\t4\tB\r\nTRP\tD\tWGS84\t36\t139\t\tFALSE\r\nTRP\tD\tWGS84\t37\t139\t\tTRUE\r\n");
  Choose(GetParam());
  EXPECT_EQ(ExportDeletes(), HasHeaders()) << "the others have no headers";
}

TEST_P(AutoDeleteByType, TakesALogOfTwoSegments) {
  Hold("TRH\t2\tTRUE\t4\tA\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\r\nTRP\tD\tWGS84\t36\t139\t\tTRUE\r\n");
  Choose(GetParam());
  EXPECT_TRUE(ExportDeletes());
}

TEST_F(AutoDelete, KeepsSouthAndWestInDms) {
  Choose(FormatId::Standard, AngleNotation::DMS);
  HoldWaypoint("SOUTH", "X", -33.5);
  EXPECT_FALSE(ExportDeletes());
  EXPECT_FALSE(CopyDeletes());
  Choose(FormatId::Standard);
  EXPECT_TRUE(ExportDeletes());
}

TEST_F(AutoDelete, KeepsTrackPointsInTheWestInDms) {
  Hold("TRH\t2\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35\t-70.5\t\tTRUE\r\n");
  Choose(FormatId::Standard, AngleNotation::DMS);
  EXPECT_FALSE(ExportDeletes());
}

TEST_F(AutoDelete, KeepsACommentThatIsCut) {
  Choose(FormatId::WptPlus);
  HoldWaypoint("A", "HUT,CLOSED");
  EXPECT_FALSE(ExportDeletes());
  HoldWaypoint("A", "");
  EXPECT_TRUE(ExportDeletes()) << "a stamp in the place of no comment loses nothing";
}

TEST_F(AutoDelete, KeepsTimesThatAScriptsStepLeavesOut) {
  constexpr std::string_view Log =
      "TRH\t2\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35\t139\t2002/11/15 09:00:00\tTRUE\r\n"
      "TRP\tD\tWGS84\t35\t139\t2002/11/15 09:00:10\tFALSE\r\nTRP\tD\tWGS84\t35\t139\t2002/11/15 09:00:20\tFALSE\r\n";
  Hold(Log);
  Choose(FormatId::Script);
  main.State().Settings().script.track_log_step = 2;
  EXPECT_FALSE(ExportDeletes());
  main.State().Settings().script.track_log_step = 1;
  EXPECT_TRUE(ExportDeletes());
}

TEST_F(AutoDelete, KeepsWhatWentWhereNothingCanBeReadBack) {
  HoldWaypoint("A");
  Choose(FormatId::Standard);
  desktop.save_path = "/dev/null";
  EXPECT_FALSE(ExportDeletes());
}

TEST_F(AutoDelete, LooksAtTheBytesOfTheFile) {
  // In Shift-JIS these letters are bytes that are two other letters of UTF-8, as which they would be read.
  HoldWaypoint("縺√＝");
  Choose(FormatId::Standard);
  EXPECT_FALSE(ExportDeletes());
  EXPECT_TRUE(CopyDeletes());
}

class AutoDeleteAfterDownload : public AutoDelete {
 protected:
  AutoDeleteAfterDownload() {
    main.State().Settings().download_kinds = {true, false, false};
    main.State().Settings().auto_save = true;
    main.State().Settings().auto_copy = true;
    receiver.description = "GPS 12 Software";
  }
  [[nodiscard]] bool DownloadOf(std::string_view ident) {
    Bytes data(ident.begin(), ident.end());
    data.resize(6, ' ');
    data.resize(18, 0);
    data.resize(58, ' ');
    data.resize(60, 0);
    receiver.packets_of[7] = {{35, data}};
    EXPECT_EQ(main.Device().Download(), Outcome::Done);
    return EndedWithDeletion();
  }
};

TEST_F(AutoDeleteAfterDownload, WaitsForASaveAndACopyThatLoseNothing) {
  Choose(FormatId::WptPlus);
  EXPECT_FALSE(DownloadOf("\"W\""));
  Choose(FormatId::Standard);
  EXPECT_TRUE(DownloadOf("\"W\""));
}

TEST_F(AutoDeleteAfterDownload, KeepsWhatWasCopiedWholeAndSavedNot) {
  Choose(FormatId::Standard);
  EXPECT_FALSE(DownloadOf("\xE3\x81\x81\xE3\x81\x81"));
}

// ---- Uploads

class AutoDeleteAfterUpload : public AutoDelete {
 protected:
  [[nodiscard]] bool UploadDeletes() {
    EXPECT_EQ(main.Device().Upload(), Outcome::Done);
    const bool deleted = Held() == Counts{std::nullopt, std::nullopt, std::nullopt};
    const Strings notices = main.State().Told().Take();
    EXPECT_NE(deleted, !notices.empty() && notices.back() == Cut);
    EXPECT_EQ(desktop.caption.ends_with(Cut), !deleted) << desktop.caption;
    return deleted;
  }
};

TEST_F(AutoDeleteAfterUpload, KeepsNamesAndCommentsThatTheReceiverHasNoRoomFor) {
  receiver.description = "GPS 12 Software";
  HoldWaypoint("SIXSIX", std::string(40, 'C'));
  EXPECT_TRUE(UploadDeletes());
  HoldWaypoint("SEVEN77", "X");
  EXPECT_FALSE(UploadDeletes());
  HoldWaypoint("A", std::string(41, 'C'));
  EXPECT_FALSE(UploadDeletes());
  HoldWaypoint("高尾山頂");
  EXPECT_FALSE(UploadDeletes());
  receiver.description = "eTrex Software";
  HoldWaypoint("SEVEN77", std::string(41, 'C'));
  EXPECT_TRUE(UploadDeletes());
}

TEST_F(AutoDeleteAfterUpload, SaysWhatWasCutAlsoWithoutAutoDelete) {
  receiver.description = "GPS 12 Software";
  HoldWaypoint("SEVEN77", std::string(41, 'C'));
  main.State().Settings().auto_delete = false;
  EXPECT_EQ(main.Device().Upload(), Outcome::Done);
  EXPECT_EQ(main.State().Told().Take(), Strings{messages::CutTexts(DataKind::Waypoint, 2)});
}

TEST_F(AutoDeleteAfterUpload, KeepsTextsOfARouteThatTheReceiverHasNoRoomFor) {
  receiver.description = "GPS 12 Software";
  const std::string point = "RTP\tD\tWGS84\tA\t35\t139\r\n";
  Hold("RTH\t1\t" + std::string(20, 'R') + "\t1\r\n" + point);
  EXPECT_TRUE(UploadDeletes());
  Hold("RTH\t1\t" + std::string(21, 'R') + "\t1\r\n" + point);
  EXPECT_FALSE(UploadDeletes());
  main.State().Settings().auto_delete = false;
  main.State().Settings().chosen_kinds.fill(true);
  main.Deletes().Delete();
  main.State().Settings().auto_delete = true;
  Hold("RTH\t1\tR\t2\r\n" + point + "RTP\tD\tWGS84\tSEVEN77\t35\t139\r\n");
  EXPECT_FALSE(UploadDeletes());
}

TEST_F(AutoDeleteAfterUpload, KeepsARecordThatIsTooLongForItsPacket) {
  receiver.description = "eTrex Software";
  HoldWaypoint("LONG", std::string(300, 'C'));
  EXPECT_FALSE(UploadDeletes());
  EXPECT_EQ(desktop.messages, Strings{messages::CutRecords(DataKind::Waypoint, {"Waypoint 1"})});
}

}  // namespace
}  // namespace walrim
