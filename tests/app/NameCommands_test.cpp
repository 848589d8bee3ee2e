// Short names that are remembered, and found again.
#include "app/NameCommands.h"

#include "app/AppTest.h"

namespace walrim {
namespace {

class NameCommandsTest : public AppTest {
 protected:
  NameCommandsTest() { main.Names().Use(Path("walrim/names.tsv")); }

  [[nodiscard]] DataSet Sent(const std::vector<std::string>& idents) {
    DataSet sent;
    for (std::size_t i = 0; i < idents.size(); ++i) {
      Waypoint waypoint = Data().Waypoints()[i];
      waypoint.ident = idents[i];
      EXPECT_EQ(sent.Add(waypoint), AddResult::Stored);
    }
    return sent;
  }
  [[nodiscard]] std::string Written() const { return FileContents(Path("walrim/names.tsv")); }
};

TEST_F(NameCommandsTest, RemembersTheShortNamesOfJapaneseOnesAlone) {
  HoldWaypoint("高尾山", "", 35.5, 139.25);
  HoldWaypoint("LONGNAMEONE", "", 35.6, 139.25);
  main.Names().Remember(Data(), Sent({"TAKAO", "LONGNA"}));
  EXPECT_EQ(Written(), "# long name, short name, position, date\n高尾山\tTAKAO\t35.50000 139.25000\t2002-11-15\n");
  EXPECT_EQ(main.Names().ShortOf("高尾山"), "TAKAO");
  EXPECT_EQ(main.Names().ShortOf("LONGNAMEONE"), "");
}

TEST_F(NameCommandsTest, WithoutAPathNothingIsRemembered) {
  main.Names().Use("");
  HoldWaypoint("高尾山");
  main.Names().Remember(Data(), Sent({"TAKAO"}));
  EXPECT_EQ(Written(), "");
  EXPECT_FALSE(main.Names().FindLongNames());
}

TEST_F(NameCommandsTest, GivesLongNamesBackAsAStepWhereThePlaceIsTheSame) {
  std::filesystem::create_directories(Path("walrim"));
  PutFile(Path("walrim/names.tsv"), "高尾山\tTAKAO\t35.50000 139.25000\n陣馬山\tJINBA\t36.00000 139.00000\n");
  main.State().KeepSteps();
  HoldWaypoint("TAKAO ", "", 35.5, 139.25);
  HoldWaypoint("JINBA", "", 37, 139);
  EXPECT_TRUE(main.Names().FindLongNames());
  EXPECT_EQ(Idents(), (Strings{"高尾山", "JINBA"}));
  EXPECT_EQ(main.Edits().Undo(), Outcome::Done);
  EXPECT_EQ(Idents(), (Strings{"TAKAO ", "JINBA"}));
}

TEST_F(NameCommandsTest, AFileIsExportedOverAnotherOneOnlyWhenThatIsWanted) {
  HoldWaypoint("高尾山");
  main.Names().Remember(Data(), Sent({"TAKAO"}));
  EXPECT_EQ(main.Names().Export(), Outcome::Refused) << "no file was chosen";
  desktop.save_path = Put("mine.tsv", "mine");
  desktop.ok = false;
  EXPECT_EQ(main.Names().Export(), Outcome::Refused);
  EXPECT_EQ(FileContents(Path("mine.tsv")), "mine");
  desktop.ok = true;
  EXPECT_EQ(main.Names().Export(), Outcome::Done);
  EXPECT_EQ(FileContents(Path("mine.tsv")), Written());
}

TEST_F(NameCommandsTest, AnImportAddsToWhatIsKnown) {
  HoldWaypoint("高尾山");
  main.Names().Remember(Data(), Sent({"TAKAO"}));
  desktop.open_path = Put("other.tsv", "# mine\n陣馬山\tJINBA\n高尾山\tTKO\t35.50000 139.25000\nbroken\n");
  EXPECT_EQ(main.Names().Import(), Outcome::Done);
  EXPECT_EQ(desktop.messages, Strings{messages::NamesLeftOut(Path("other.tsv"))});
  EXPECT_EQ(desktop.caption, messages::NamesImported(2));
  EXPECT_EQ(main.Names().ShortOf("高尾山"), "TKO");
  EXPECT_EQ(main.Names().ShortOf("陣馬山"), "JINBA");
  EXPECT_NE(Written().find("陣馬山\tJINBA"), std::string::npos);
  desktop.open_path = Path("none.tsv");
  EXPECT_EQ(main.Names().Import(), Outcome::Refused);
}

TEST_F(NameCommandsTest, AFileThatCannotBeReadIsNotWrittenOver) {
  std::filesystem::create_directories(Path("walrim/names.tsv"));
  HoldWaypoint("高尾山");
  main.Names().Remember(Data(), Sent({"TAKAO"}));
  EXPECT_TRUE(std::filesystem::is_directory(Path("walrim/names.tsv")));
  EXPECT_EQ(desktop.messages.size(), 1U);
}

TEST(NamesPath, IsTheUsersDataFolder) {
  EXPECT_EQ(NamesPath("/data", "/home/a"), "/data/walrim/names.tsv");
  EXPECT_EQ(NamesPath("relative", "/home/a"), "/home/a/.local/share/walrim/names.tsv");
  EXPECT_EQ(NamesPath(nullptr, nullptr), "");
}

}  // namespace
}  // namespace walrim
