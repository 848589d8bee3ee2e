// share/bash-completion, in a real bash.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "packaging/Bash.h"
#include "packaging/HelpTexts.h"
#include "receiver/DemoSerialPort.h"
#include "support/Processes.h"

namespace walrim {
namespace {

const std::string CompletionFile = WALRIM_SOURCE_DIR "/share/bash-completion/completions/walrim-cli";

/// What is offered for a line with the cursor at its end, in order. "(files)" stands for the files that bash itself
/// offers when nothing else is.
std::vector<std::string> Offers(const std::string& line) {
  Process bash(Bash({"-c", "source " + Quoted(CompletionFile) +
                               "\ncompopt() { if [[ $* == '-o default' ]]; then files=1; fi; }"
                               "\nCOMP_WORDBREAKS=$' \\t\\n\"\\'><=;|&(:'"
                               "\nCOMP_LINE=" +
                               Quoted(line) + " COMP_POINT=" + std::to_string(line.size()) +
                               "\nset -u\n_walrim_cli"
                               "\nfor offer in \"${COMPREPLY[@]}\"; do printf '%s\\n' \"$offer\"; done"
                               "\nif [[ -n ${files-} && ${#COMPREPLY[@]} == 0 ]]; then echo '(files)'; fi"}));
  EXPECT_EQ(bash.Wait(), 0) << line;
  EXPECT_EQ(bash.Err(), "") << line;
  return LinesOf(bash.Out());
}

/// The arguments that walrim-cli gets when a person types keys (\t completes) and Return, each in brackets.
std::string Typed(const std::string& keys) {
  Process bash(Bash({"-i"}), "bind 'set bell-style none'; source " + Quoted(CompletionFile) +
                                 "; walrim-cli() { printf '<%s>' \"$@\"; }\n" + keys + "\nexit\n");
  EXPECT_EQ(bash.Wait(), 0) << keys;
  return bash.Out();
}

std::vector<std::string> OfferedOptions(const std::string& command) {
  std::vector<std::string> options = Offers("walrim-cli " + command + (command.empty() ? "--" : " --"));
  std::sort(options.begin(), options.end());
  return options;
}

using Words = std::vector<std::string>;

TEST(Completion, OffersTheCommandsOfTheHelp) {
  const Words offers = Offers("walrim-cli ");
  EXPECT_EQ(offers, CommandsOfTheHelp());
  EXPECT_EQ(Offers("walrim-cli --quiet d"), (Words{"download", "doctor"}));
}

TEST(Completion, OffersTheOptionsOfTheHelpAndNoOthers) {
  EXPECT_EQ(OfferedOptions(""), LongOptions(HelpOptions({WALRIM_CLI})));
  for (const std::string& command : CommandsOfTheHelp()) {
    EXPECT_EQ(OfferedOptions(command), LongOptions(HelpOptions({WALRIM_CLI, command}))) << command;
  }
}

TEST(Completion, OffersTheValuesOfTheHelpAndNoOthers) {
  int options_with_values = 0;
  for (const HelpOption& option : HelpOptions({WALRIM_CLI, "download"})) {
    if (option.values.empty()) continue;
    ++options_with_values;
    Words offers = Offers("walrim-cli download " + option.names.back() + " ");
    std::sort(offers.begin(), offers.end());
    EXPECT_EQ(offers, option.values) << option.names.back();
  }
  EXPECT_EQ(options_with_values, 6);
}

TEST(Completion, OffersTheModelsOfTheDemonstrationReceiver) {
  const Words models = DemoModelNames();
  EXPECT_EQ(Offers("walrim-cli info --port \"demo:").size(), models.size());
  for (const std::string& model : models) {
    std::string escaped;
    for (const char c : model)
      escaped += c == ' ' ? std::string("\\ ") : std::string(1, c);
    const Words offers = Offers("walrim-cli info --port demo:" + escaped);
    EXPECT_TRUE(std::find(offers.begin(), offers.end(), escaped) != offers.end()) << model;
  }
}

TEST(Completion, OffersPortNumbersAndDemo) {
  const Words offers = Offers("walrim-cli info --port ");
  for (const char* port : {"1", "2", "3", "4", "demo"})
    EXPECT_TRUE(std::find(offers.begin(), offers.end(), port) != offers.end()) << port;
}

TEST(Completion, OffersFilesWhereFilesBelong) {
  for (const char* line : {"walrim-cli upload --port 1 ", "walrim-cli convert wal", "walrim-cli download -o ",
                           "walrim-cli download --output=wa", "walrim-cli info --trace ",
                           "walrim-cli info --port /dev/", "walrim-cli convert --datum Tokyo "}) {
    EXPECT_EQ(Offers(line), Words{"(files)"}) << line;
  }
}

TEST(Completion, OffersNothingWhereANumberOrANameBelongs) {
  for (const char* option :
       {"--pacing", "--utc-offset", "--mps-utc-offset", "--mps-origin", "--mps-destination", "--mps-step"}) {
    EXPECT_EQ(Offers(std::string("walrim-cli download ") + option + " "), Words{}) << option;
  }
}

TEST(Completion, GoesOnWithACommaListOfKinds) {
  EXPECT_EQ(Offers("walrim-cli download --kinds track,"), (Words{"track,waypoint", "track,route"}));
  EXPECT_EQ(Offers("walrim-cli download --kinds=track,w"), Words{"track,waypoint"});
  EXPECT_EQ(Offers("walrim-cli download --kinds waypoint,route,track,"), Words{});
}

TEST(Completion, TypedModelNamesWithBlanksArriveWhole) {
  EXPECT_EQ(Typed("walrim-cli info --port demo:GPS\\ 12C\t"), "<info><--port><demo:GPS 12CX>");
  EXPECT_EQ(Typed("walrim-cli info --port 'demo:GPS 12C\t"), "<info><--port><demo:GPS 12CX>");
  EXPECT_EQ(Typed("walrim-cli info --port \"demo:GPS 4\t"), "<info><--port><demo:GPS 48>");
  EXPECT_EQ(Typed("walrim-cli info --port=demo:eM\t"), "<info><--port=demo:eMap>");
  EXPECT_EQ(Typed("walrim-cli info --port d\t:G\t4\t"), "<info><--port><demo:GPS 48>");
}

TEST(Completion, TypedWordsAreCompletedAsAPersonTypesThem) {
  EXPECT_EQ(Typed("walrim-cli dow\t--po\tdemo --out\t- --ty\tgr\t--da\tT\t"),
            "<download><--port><demo><--output><-><--type><grc><--datum><Tokyo>");
  EXPECT_EQ(Typed("walrim-cli conv\t--enc\tu\t--kinds=w\t,t\t -o x"),
            "<convert><--encoding><utf8><--kinds=waypoint,track><-o><x>");
}

TEST(Completion, TypedFileNamesWithBlanksArriveWhole) {
  const TemporaryFolder folder;
  PutFile(folder.Path("my walk.grc"), "");
  const std::string path = folder.Path("my walk.grc");
  EXPECT_EQ(Typed("walrim-cli upload --port 1 " + folder.Path("my") + "\t"), "<upload><--port><1><" + path + ">");
  EXPECT_EQ(Typed("walrim-cli download --output=" + folder.Path("my") + "\t"), "<download><--output=" + path + ">");
}

}  // namespace
}  // namespace walrim
