// The man pages and the programs say the same.
#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "packaging/HelpTexts.h"
#include "packaging/ManPage.h"
#include "receiver/DemoSerialPort.h"
#include "receiver/ReceiverFaults.h"
#include "support/Processes.h"

namespace walrim {
namespace {

using Names = std::set<std::string>;

const char* const Pages[] = {"man1/walrim.1", "man1/walrim-cli.1", "man1/walrim-receiver.1", "ja/man1/walrim.1"};

Names HelpNames(const std::vector<std::string>& program) {
  Names names;
  for (const HelpOption& option : HelpOptions(program))
    names.insert(option.names.begin(), option.names.end());
  return names;
}

/// The options that the parts of a page describe which wanted takes.
template <typename Wanted>
Names DescribedWhere(const ManPage& page, Wanted wanted) {
  Names names;
  for (const ManPage::Part& part : page.parts) {
    if (!wanted(part)) continue;
    for (const std::string& head : part.heads)
      names.merge(OptionsOfHead(head));
  }
  return names;
}

Names Described(const ManPage& page) {
  return DescribedWhere(page, [](const ManPage::Part&) { return true; });
}

bool HasWord(const std::string& text, const std::string& word) {
  std::string plain = text;
  std::replace(plain.begin(), plain.end(), ',', ' ');
  return (" " + plain + " ").find(" " + word + " ") != std::string::npos;
}

TEST(ManPages, DescribeTheOptionsOfTheWindowAndNoOthers) {
  const Names options = HelpNames({WALRIM_WINDOW});
  EXPECT_EQ(Described(ReadManPage("man1/walrim.1")), options);
  EXPECT_EQ(Described(ReadManPage("ja/man1/walrim.1")), options);
}

TEST(ManPages, NameTheTypesOfTheHelp) {
  const std::string text = ReadManPage("man1/walrim-cli.1").text;
  for (const HelpOption& option : HelpOptions({WALRIM_CLI, "convert"})) {
    if (option.names.back() != "--type") continue;
    EXPECT_GE(option.values.size(), 3U);
    for (const std::string& type : option.values)
      EXPECT_NE(text.find("\n.B " + type + "\n("), std::string::npos) << type;
  }
}

TEST(ManPages, DescribeTheOptionsOfTheReceiverAndNoOthers) {
  EXPECT_EQ(Described(ReadManPage("man1/walrim-receiver.1")), HelpNames({WALRIM_RECEIVER}));
}

TEST(ManPages, DescribeTheOptionsOfTheTerminalUnderTheCommandsThatTakeThem) {
  const ManPage page = ReadManPage("man1/walrim-cli.1");
  for (const std::string& command : CommandsOfTheHelp()) {
    const auto of_command = [&](const ManPage::Part& part) { return HasWord(part.subsection, command); };
    EXPECT_EQ(DescribedWhere(page, of_command), HelpNames({WALRIM_CLI, command})) << command;
  }
  const auto of_program = [](const ManPage::Part& part) { return HasWord(part.subsection, "walrim-cli"); };
  EXPECT_EQ(DescribedWhere(page, of_program), HelpNames({WALRIM_CLI}));
}

TEST(ManPages, DescribeTheCommandsOfTheTerminal) {
  const ManPage page = ReadManPage("man1/walrim-cli.1");
  const auto commands = std::find_if(page.parts.begin(), page.parts.end(),
                                     [](const ManPage::Part& part) { return part.section == "COMMANDS"; });
  ASSERT_NE(commands, page.parts.end());
  EXPECT_EQ(commands->heads, CommandsOfTheHelp());
}

TEST(ManPages, NameNoOptionThatNoProgramHas) {
  Names known;
  for (const std::string program : {WALRIM_WINDOW, WALRIM_CLI, WALRIM_RECEIVER})
    known.merge(HelpNames({program}));
  for (const std::string& command : CommandsOfTheHelp())
    known.merge(HelpNames({WALRIM_CLI, command}));
  for (const char* name : Pages) {
    for (const std::string& option : LongOptionsIn(ReadManPage(name).text))
      EXPECT_TRUE(known.contains(option)) << name << ": " << option;
  }
}

TEST(ManPages, DescribeTheFaultsOfTheReceiverAndNoOthers) {
  Names heads;
  for (const ManPage::Part& part : ReadManPage("man1/walrim-receiver.1").parts) {
    if (part.section != "OPTIONS") continue;
    std::copy_if(part.heads.begin(), part.heads.end(), std::inserter(heads, heads.end()),
                 [](const std::string& head) { return !head.starts_with('-'); });
  }
  const std::vector<std::string> forms = FaultForms();
  EXPECT_EQ(heads, Names(forms.begin(), forms.end()));
}

TEST(ManPages, NameEveryModel) {
  for (const char* name : {"man1/walrim-cli.1", "man1/walrim-receiver.1"}) {
    const std::string text = ReadManPage(name).text;
    for (const std::string& model : DemoModelNames())
      EXPECT_NE(text.find(model), std::string::npos) << name << ": " << model;
  }
}

/// "0.1.0" of what walrim-cli says.
std::string Version() {
  Process process({WALRIM_CLI, "--version"});
  EXPECT_EQ(process.Wait(), 0);
  const std::string said = LinesOf(process.Out()).at(0);
  return said.substr(said.rfind(' ') + 1);
}

TEST(Version, IsTheSameInTheManPagesTheChangelogAndTheCatalogue) {
  const std::string top = WALRIM_SOURCE_DIR;
  const std::string version = Version();
  for (const char* name : Pages)
    EXPECT_EQ(ReadManPage(name).version, "Walrim " + version) << name;
  EXPECT_TRUE(FileContents(top + "/packaging/changelog").starts_with("walrim (" + version + ") "));
  const std::string catalogue = FileContents(top + "/share/metainfo/io.github.walrim.walrim.metainfo.xml");
  const std::size_t newest = catalogue.find("<release ");
  ASSERT_NE(newest, std::string::npos);
  EXPECT_EQ(catalogue.find("<release version=\"" + version + "\""), newest);
}

}  // namespace
}  // namespace walrim
