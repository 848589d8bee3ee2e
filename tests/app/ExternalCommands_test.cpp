// The commands that other programs give.
#include "app/AppTest.h"
#include "app/Messages.h"

namespace walrim {
namespace {

constexpr std::string_view AllKinds =
    "WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\tSUMMIT\r\n"
    "RTH\t3\tRIDGE\t1\r\nRTP\tD\tWGS84\tSTART\t35.5\t139.25\tX\r\n"
    "TRH\t1\tTRUE\t4\tLOG\r\nTRP\tD\tWGS84\t35.5\t139.25\t2002/11/15 09:00:00\tTRUE\r\n";
constexpr std::string_view OneRoute = "RTH\t4\tVALLEY\t1\r\nRTP\tD\tWGS84\tGOAL\t35.5\t139.25\tX\r\n";

class ExternalCommandsTest : public AppTest {};

// ---- Delete

TEST_F(ExternalCommandsTest, DeleteAllEmptiesEverythingInAnyCase) {
  for (const auto& [word, what] : {std::pair{"Delete", "ALL"}, {"delete", "all"}, {"DELETE", "All"}}) {
    Hold(AllKinds);
    main.State().Settings().chosen_kinds.fill(false);
    EXPECT_EQ(main.External().Run(word, what, ""), CommandDone) << word;
    EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{true, true, true}));
    EXPECT_EQ(Held(), (Counts{std::nullopt, std::nullopt, std::nullopt}));
    EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
    EXPECT_TRUE(desktop.Showed(std::string(messages::Deleting)));
    EXPECT_EQ(desktop.messages, Strings{});
  }
}

TEST_F(ExternalCommandsTest, DeleteOfAnythingElseDeletesNothing) {
  Hold(AllKinds);
  main.State().Settings().chosen_kinds.fill(false);
  for (const char* what : {"", "Waypoint", "ALLE", "0"})
    EXPECT_EQ(main.External().Run("Delete", what, ""), CommandUnknown) << what;
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{false, false, false}));
}

TEST_F(ExternalCommandsTest, OtherWordsAreUnknownAndDoNothing) {
  Hold(AllKinds);
  for (const char* word : {"", "Del", "Delete ", "GetFiles", "Upload", "取り込み"})
    EXPECT_EQ(main.External().Run(word, "ALL", "1"), CommandUnknown) << word;
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_EQ(desktop.captions, Strings{});
}

// ---- SetDoCheck

TEST_F(ExternalCommandsTest, SetDoCheckTicksAKindByItsNumber) {
  EXPECT_EQ(main.External().Run("SetDoCheck", "1", "1"), CommandDone);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{false, true, false}));
  EXPECT_EQ(main.External().Run("SETDOCHECK", "2", "True"), CommandDone);
  EXPECT_EQ(main.External().Run("setdocheck", "0", "-1"), CommandDone);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{true, true, true}));
  EXPECT_EQ(main.External().Run("SetDoCheck", "1", "0"), CommandDone);
  EXPECT_EQ(main.External().Run("SetDoCheck", "2", "FALSE"), CommandDone);
  EXPECT_EQ(main.External().Run("SetDoCheck", "0", ""), CommandDone);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{false, false, false}));
  EXPECT_EQ(desktop.changes, 6);
}

TEST_F(ExternalCommandsTest, SetDoCheckWithoutAKindDoesNothing) {
  main.State().Settings().chosen_kinds = {true, false, true};
  EXPECT_EQ(main.External().Run("SetDoCheck", "", "0"), CommandDone);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{true, false, true}));
}

TEST_F(ExternalCommandsTest, SetDoCheckOfAKindThereIsNotIsRefused) {
  for (const char* kind : {"3", "-1", "1e9", "99999999999999999999"})
    EXPECT_EQ(main.External().Run("SetDoCheck", kind, "1"), CommandRefused) << kind;
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{false, false, false}));
}

// ---- GetFile

TEST_F(ExternalCommandsTest, GetFileImportsAFileWithItsStatusTexts) {
  const std::string path = Put("a.grc", AllKinds);
  for (const char* word : {"GetFile", "getfile", "GETFILE"})
    EXPECT_EQ(main.External().Run(word, path, ""), CommandDone) << word;
  EXPECT_EQ(desktop.captions[0], "Import from " + path);
  EXPECT_EQ(desktop.captions[1], "取り込み：Waypoint 1，Route 1（1点），TrackLog 1（1点）．");
  EXPECT_EQ(Held(), (Counts{3, 3, 3}));
  EXPECT_FALSE(main.State().Busy());
  EXPECT_FALSE(Uploaded());
}

TEST_F(ExternalCommandsTest, GetFileOfCancelAndOfNothingDoesNothing) {
  Hold(AllKinds);
  main.State().Settings().auto_upload = true;
  PutFile(Path("cancel"), AllKinds);
  EXPECT_EQ(main.External().Run("GetFile", "cancel", ""), CommandDone);
  EXPECT_EQ(main.External().Run("GetFile", "", ""), CommandDone);
  EXPECT_EQ(desktop.captions, Strings{});
  EXPECT_EQ(desktop.messages, Strings{});
  EXPECT_EQ(Idents(), Strings{"TAKAO"});
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{true, true, true}));
  EXPECT_FALSE(Uploaded());
}

TEST_F(ExternalCommandsTest, GetFileOfAFileThatCannotBeUsedIsRefusedAndUploadsNothing) {
  Hold(AllKinds);
  main.State().Settings().auto_upload = true;
  EXPECT_EQ(main.External().Run("GetFile", Path("missing.grc"), ""), CommandRefused);
  EXPECT_EQ(main.External().Run("GetFile", Put("a.grc", "what is this\r\n"), ""), CommandRefused);
  ASSERT_EQ(desktop.messages.size(), 2U);
  EXPECT_EQ(desktop.messages[1], messages::UnsupportedFile(Path("a.grc")));
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(Uploaded());
}

TEST_F(ExternalCommandsTest, GetFileReadsAFileThatIsCalledADashAndNeverStandardInput) {
  EXPECT_EQ(main.External().Run("GetFile", "-", ""), CommandRefused);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0], messages::ReadProblem("./-", "No such file or directory"));
  PutFile(Path("-"), AllKinds);
  EXPECT_EQ(main.External().Run("GetFile", "-", ""), CommandDone);
  EXPECT_EQ(Idents(), Strings{"TAKAO"});
}

TEST_F(ExternalCommandsTest, GetFileWithAutoUploadUploadsOnlyTheKindsThatCameIn) {
  Hold(AllKinds);
  main.State().Settings().auto_upload = true;
  EXPECT_EQ(main.External().Run("GetFile", Put("a.grc", OneRoute), ""), CommandDone);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{false, true, false}));
  EXPECT_TRUE(desktop.Showed("UpLoading : Route"));
  EXPECT_FALSE(desktop.Showed("UpLoading : Waypoint"));
  EXPECT_FALSE(desktop.Showed("UpLoading : TrackLog"));
  EXPECT_TRUE(Uploaded());
}

TEST_F(ExternalCommandsTest, AnUploadWithoutAReceiverHasAResultOfItsOwn) {
  main.State().Settings().auto_upload = true;
  receiver.silent_after = 0;
  EXPECT_EQ(main.External().Run("GetFile", Put("a.grc", AllKinds), ""), CommandNoReceiver);
  EXPECT_EQ(Idents(), Strings{"TAKAO"});
}

TEST_F(ExternalCommandsTest, AFileThatBringsNothingUploadsNothing) {
  Hold(AllKinds);
  main.State().Settings().auto_upload = true;
  EXPECT_EQ(main.External().Run("GetFile", Put("a.grc", "WPT\tDegreeType\tDatum\r\n"), ""), CommandRefused);
  EXPECT_EQ(desktop.messages, Strings{std::string(messages::NothingToUpload)});
  EXPECT_FALSE(Uploaded());
}

// ---- While another command runs

TEST_F(ExternalCommandsTest, ACommandDuringAnotherIsAnsweredAsBusyAndDoesNothing) {
  Hold(AllKinds);
  const std::string path = Put("a.grc", OneRoute);
  std::vector<std::int32_t> results;
  dialogs.on_mps = [&](ScriptOptions&) {
    results = {main.External().Run("Delete", "ALL", ""), main.External().Run("GetFile", path, ""),
               main.External().Run("SetDoCheck", "0", "0"), main.External().Run("nonsense", "", "")};
    return true;
  };
  main.State().Settings().format = FormatId::Script;
  EXPECT_EQ(main.Exports().Copy(), Outcome::Done);
  EXPECT_EQ(results, std::vector<std::int32_t>(4, CommandBusy));
  EXPECT_EQ(Data().Count(DataKind::Route), 1U);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (Checks{true, true, true}));
}

TEST_F(ExternalCommandsTest, ACommandDuringAnUploadOrAFetchIsAnsweredAsBusyToo) {
  Hold(AllKinds);
  std::vector<std::int32_t> results;
  loop.on_yield = [&] { results.push_back(main.External().Run("Delete", "ALL", "")); };
  EXPECT_EQ(main.Device().Upload(), Outcome::Done);
  loop.on_yield = nullptr;
  ASSERT_FALSE(results.empty());
  EXPECT_EQ(results, std::vector<std::int32_t>(results.size(), CommandBusy));
  std::int32_t during_fetch = CommandDone;
  inet.on_open = [&] { during_fetch = main.External().Run("Delete", "ALL", ""); };
  inet.answer.bytes = OneRoute;
  EXPECT_EQ(main.Imports().ImportTyped("http://example.com/a.grc"), Outcome::Done);
  EXPECT_EQ(during_fetch, CommandBusy);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
}

}  // namespace
}  // namespace walrim
