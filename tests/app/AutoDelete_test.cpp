// What was not kept elsewhere as a whole is not deleted.
#include <map>

#include "app/AppTest.h"

namespace walrim {
namespace {

const std::string NotReadBack(NotReadBackNotice);
const std::string Cut = "切って送信した文字列があるため，内部データは削除しませんでした．";

class AutoDelete : public AppTest {
 protected:
  AutoDelete() { main.controls.AutoDelete = true; }

  void HoldWaypoint(std::string_view ident, std::string_view comment = "X", double lat_deg = 35.5) {
    main.Data().Clear(DataKind::Waypoint);
    WaypointRecord record;
    record[WaypointField::ident] = ident;
    record[WaypointField::cmnt] = comment;
    ASSERT_EQ(main.Data().AddWaypoint(record), 1);
    main.Data().d108[1].lat_deg = lat_deg;
    main.Data().d108[1].lon_deg = 139.25;
    main.SetGpsNum(DataKind::Waypoint, "1");
    main.controls.DoCheck.fill(true);
    Forget();
  }
  void Choose(const std::string& type, const std::string& degree_type = "D") {
    main.controls.OutputTypeOption = type;
    main.controls.DegreeType = degree_type;
    desktop.save_path = Path("out." + std::string(OutputTypeOfName(type).extension));
  }
  /// True for a deletion. That nothing was deleted must be said.
  [[nodiscard]] bool ExportDeletes() {
    EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
    return EndedWithDeletion();
  }
  [[nodiscard]] bool CopyDeletes() {
    EXPECT_EQ(main.Copy_Click(), Outcome::Done);
    return EndedWithDeletion();
  }
  bool EndedWithDeletion() {
    const bool deleted = main.controls.GpsNum == std::array<std::string, DataKindCount>{"-", "-", "-"};
    const Strings notices = main.TakeNotices();
    const bool said = !notices.empty() && notices.back() == NotReadBack && desktop.caption.ends_with(NotReadBack);
    EXPECT_NE(deleted, said) << desktop.caption;
    EXPECT_EQ(desktop.messages, Strings{});
    return deleted;
  }
};

class AutoDeleteByType : public AutoDelete, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(OutputType, AutoDeleteByType, ::testing::Values("標準", "WPT+", "MPS"),
                         [](const auto& type) { return std::string(OutputTypeOfName(type.param).extension); });

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
    ASSERT_EQ(main.ImportFrom(desktop.save_path), Outcome::Done);
    EXPECT_EQ(Idents(), Strings{ident});
    EXPECT_EQ(HeldValue(1, WaypointField::cmnt), comment);
  }
  const std::map<std::string_view, std::string_view> lost{{"標準", ""}, {"WPT+", "\",="}, {"MPS", "\",;="}};
  EXPECT_EQ(kept, lost.at(GetParam()));
}

TEST_P(AutoDeleteByType, TakesAllKindsThatComeBack) {
  for (const char* datum : {"WGS84", "Tokyo"}) {
    for (const char* degree_type : {"D", "DMS"}) {
      Hold(
          "WPT\tD\tWGS84\tA\t35.1234567\t139.25\r\nWPT\tD\tWGS84\tB\t35.5\t139.25\tSUMMIT\r\n"
          "RTH\t3\tRIDGE\t2\r\nRTP\tD\tWGS84\tS\t35.5\t139.25\tFIRST\r\nRTP\tD\tWGS84\tG\t35.75\t139.125\r\n"
          "TRH\t2\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\r\n"
          "TRP\tD\tWGS84\t35.6\t139.25\t\tFALSE\r\n");
      main.controls.Datum = datum;
      Choose(GetParam(), degree_type);
      EXPECT_TRUE(ExportDeletes()) << datum << degree_type;
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
  Hold("RTH\t1\tR\t2\r\nRTP\tD\tWGS84\tA\t35\t139\r\nRTP\tD\tWGS84\tB\t35\t139\r\n");
  main.Data().d108[static_cast<std::size_t>(RoutePointSlot(1, 0))].lat_deg = 100;
  Choose(GetParam());
  EXPECT_FALSE(ExportDeletes());
  EXPECT_FALSE(CopyDeletes());
}

TEST_P(AutoDeleteByType, KeepsATrackPointThatTheFileLacks) {
  Hold("TRH\t2\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\r\nTRP\tD\tWGS84\t35\t139\t\tFALSE\r\n");
  main.Data().track_points[1].lat_deg = -100;
  Choose(GetParam());
  EXPECT_FALSE(ExportDeletes());
}

TEST_P(AutoDeleteByType, LooksAtTheKindsThatWereWrittenAlone) {
  Hold("WPT\tD\tWGS84\tA\t35\t139\r\nRTH\t1\tR\t1\r\nRTP\tD\tWGS84\tA\t35\t139\r\n");
  main.Data().d108[static_cast<std::size_t>(RoutePointSlot(1, 0))].lat_deg = 100;
  main.controls.DoCheck = {true, false, false};
  Choose(GetParam());
  EXPECT_EQ(main.FileExport_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, DataKindCount>{"-", "1", "-"}));
}

TEST_P(AutoDeleteByType, KeepsALogWithoutPointsWhereLogsHaveNoHeaders) {
  Hold("TRH\t0\tTRUE\t4\tEMPTY\r\nTRH\t1\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\r\n");
  Choose(GetParam());
  EXPECT_EQ(ExportDeletes(), GetParam() == std::string_view("標準"));
}

TEST_P(AutoDeleteByType, KeepsLogsThatTheFileRunsTogether) {
  Hold(
      "TRH\t1\tTRUE\t4\tA\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\r\n"
      "TRH\t2\tTRUE\t4\tB\r\nTRP\tD\tWGS84\t36\t139\t\tFALSE\r\nTRP\tD\tWGS84\t37\t139\t\tTRUE\r\n");
  Choose(GetParam());
  EXPECT_EQ(ExportDeletes(), GetParam() == std::string_view("標準")) << "only the standard file has headers";
}

TEST_P(AutoDeleteByType, TakesALogOfTwoSegments) {
  Hold("TRH\t2\tTRUE\t4\tA\r\nTRP\tD\tWGS84\t35\t139\t\tTRUE\r\nTRP\tD\tWGS84\t36\t139\t\tTRUE\r\n");
  Choose(GetParam());
  EXPECT_TRUE(ExportDeletes());
}

TEST_F(AutoDelete, KeepsSouthAndWestInDms) {
  Choose("標準", "DMS");
  HoldWaypoint("SOUTH", "X", -33.5);
  EXPECT_FALSE(ExportDeletes());
  EXPECT_FALSE(CopyDeletes());
  Choose("標準");
  EXPECT_TRUE(ExportDeletes());
}

TEST_F(AutoDelete, KeepsTrackPointsInTheWestInDms) {
  Hold("TRH\t2\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35\t-70.5\t\tTRUE\r\n");
  Choose("標準", "DMS");
  EXPECT_FALSE(ExportDeletes());
}

TEST_F(AutoDelete, KeepsACommentThatIsCut) {
  Choose("WPT+");
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
  Choose("MPS");
  main.controls.MpsOption.track_log_step = 2;
  EXPECT_FALSE(ExportDeletes());
  main.controls.MpsOption.track_log_step = 1;
  EXPECT_TRUE(ExportDeletes());
}

TEST_F(AutoDelete, KeepsWhatWentWhereNothingCanBeReadBack) {
  HoldWaypoint("A");
  Choose("標準");
  desktop.save_path = "/dev/null";
  EXPECT_FALSE(ExportDeletes());
}

TEST_F(AutoDelete, LooksAtTheBytesOfTheFile) {
  // In Shift-JIS these two letters are bytes that are one letter of UTF-8, as which they would be read.
  HoldWaypoint("ﾃｱ");
  Choose("標準");
  EXPECT_FALSE(ExportDeletes());
  EXPECT_TRUE(CopyDeletes());
}

class AutoDeleteAfterDownload : public AutoDelete {
 protected:
  AutoDeleteAfterDownload() {
    main.controls.DownCheck = {true, false, false};
    main.controls.AutoSave = true;
    main.controls.AutoCopy = true;
    receiver.description = "GPS 12 Software";
  }
  [[nodiscard]] bool DownloadOf(std::string_view ident) {
    Bytes data(ident.begin(), ident.end());
    data.resize(6, ' ');
    data.resize(18, 0);
    data.resize(58, ' ');
    data.resize(60, 0);
    receiver.packets_of[7] = {{35, data}};
    EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
    return EndedWithDeletion();
  }
};

TEST_F(AutoDeleteAfterDownload, WaitsForASaveAndACopyThatLoseNothing) {
  Choose("WPT+");
  EXPECT_FALSE(DownloadOf("\"W\""));
  Choose("標準");
  EXPECT_TRUE(DownloadOf("\"W\""));
}

TEST_F(AutoDeleteAfterDownload, KeepsWhatWasCopiedWholeAndSavedNot) {
  Choose("標準");
  EXPECT_FALSE(DownloadOf("\xC3\xB1"));
}

// ---- Uploads

class AutoDeleteAfterUpload : public AutoDelete {
 protected:
  [[nodiscard]] bool UploadDeletes() {
    EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Done);
    const bool deleted = main.controls.GpsNum == std::array<std::string, DataKindCount>{"-", "-", "-"};
    const Strings notices = main.TakeNotices();
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
  main.controls.AutoDelete = false;
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.TakeNotices(), Strings{"(Waypoint)受信機の欄より長い文字列が2件あり，末尾を切って送信しました．"});
}

TEST_F(AutoDeleteAfterUpload, KeepsTextsOfARouteThatTheReceiverHasNoRoomFor) {
  receiver.description = "GPS 12 Software";
  const std::string point = "RTP\tD\tWGS84\tA\t35\t139\r\n";
  Hold("RTH\t1\t" + std::string(20, 'R') + "\t1\r\n" + point);
  EXPECT_TRUE(UploadDeletes());
  Hold("RTH\t1\t" + std::string(21, 'R') + "\t1\r\n" + point);
  EXPECT_FALSE(UploadDeletes());
  main.controls.AutoDelete = false;
  main.controls.DoCheck.fill(true);
  main.Delete_Click();
  main.controls.AutoDelete = true;
  Hold("RTH\t1\tR\t2\r\n" + point + "RTP\tD\tWGS84\tSEVEN77\t35\t139\r\n");
  EXPECT_FALSE(UploadDeletes());
}

TEST_F(AutoDeleteAfterUpload, KeepsARecordThatIsTooLongForItsPacket) {
  receiver.description = "eTrex Software";
  HoldWaypoint("LONG", std::string(300, 'C'));
  EXPECT_FALSE(UploadDeletes());
  EXPECT_EQ(desktop.messages, Strings{"(Waypoint)長すぎる記録の文字列の末尾を切って送信しました：Waypoint 1"});
}

}  // namespace
}  // namespace walrim
