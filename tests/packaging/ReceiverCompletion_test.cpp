// share/bash-completion of walrim-receiver, in a real bash.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "packaging/Bash.h"
#include "receiver/ReceiverFaults.h"
#include "receiver/ReceiverModel.h"
#include "support/Processes.h"

namespace walrim {
namespace {

using Words = std::vector<std::string>;

const std::string CompletionFile = WALRIM_SOURCE_DIR "/share/bash-completion/completions/walrim-receiver";

/// What is offered behind these words, the last one being typed. "(files)" stands for the files that bash itself
/// offers.
Words Offers(const Words& words) {
  std::string all = "walrim-receiver";
  for (const std::string& word : words)
    all += " " + Quoted(word);
  Process bash(Bash({"-c", "source " + Quoted(CompletionFile) +
                               "\ncompopt() { if [[ $* == '-o default' ]]; then files=1; fi; }"
                               "\nCOMP_WORDS=(" +
                               all + ") COMP_CWORD=" + std::to_string(words.size()) +
                               "\nset -u\n_walrim_receiver"
                               "\nfor offer in \"${COMPREPLY[@]}\"; do printf '%s\\n' \"$offer\"; done"
                               "\nif [[ -n ${files-} && ${#COMPREPLY[@]} == 0 ]]; then echo '(files)'; fi"}));
  EXPECT_EQ(bash.Wait(), 0);
  EXPECT_EQ(bash.Err(), "");
  return LinesOf(bash.Out());
}

/// The arguments that walrim-receiver gets when a person types keys (\t completes) and Return, each in brackets.
std::string Typed(const std::string& keys) {
  Process bash(Bash({"-i"}), "bind 'set bell-style none'; source " + Quoted(CompletionFile) +
                                 "; walrim-receiver() { printf '<%s>' \"$@\"; }\n" + keys + "\nexit\n");
  EXPECT_EQ(bash.Wait(), 0) << keys;
  return bash.Out();
}

TEST(ReceiverCompletion, OffersTheOptionsOfTheHelpAndNoOthers) {
  Words offers = Offers({"--"});
  std::sort(offers.begin(), offers.end());
  EXPECT_EQ(offers, LongOptions(HelpOptions({WALRIM_RECEIVER})));
  EXPECT_EQ(Offers({"--strict", "--fa"}), Words{"--fault"});
}

TEST(ReceiverCompletion, OffersTheFaultsOfTheHelpAndNoOthers) {
  Words expected;
  for (const std::string& form : FaultForms()) {
    const std::string kind = form.substr(0, form.find_first_of("[="));
    const bool needs_number = form == kind + "=N";
    if (!needs_number) expected.push_back(kind);
    if (form != kind) expected.push_back(kind + "=");
  }
  EXPECT_EQ(Offers({"--fault", ""}), expected);
}

TEST(ReceiverCompletion, OffersTheModels) {
  Words expected;
  for (const ReceiverModel& model : ReceiverModels()) {
    const std::string name(model.name);
    const std::size_t blank = name.find(' ');
    expected.push_back(blank == std::string::npos ? name : name.substr(0, blank) + "\\" + name.substr(blank));
  }
  EXPECT_EQ(Offers({"--model", ""}), expected);
}

TEST(ReceiverCompletion, OffersFilesWhereFilesBelongAndNothingWhereANumberDoes) {
  EXPECT_EQ(Offers({"--memory", ""}), Words{"(files)"});
  EXPECT_EQ(Offers({"--link", "/t"}), Words{"(files)"});
  EXPECT_EQ(Offers({"--baud", ""}), Words{});
  EXPECT_EQ(Offers({"--utc-offset", ""}), Words{});
}

TEST(ReceiverCompletion, TypedWordsArriveWhole) {
  EXPECT_EQ(Typed("walrim-receiver --model GPS\\ 12C\t --st\t"), "<--model><GPS 12CX><--strict>");
  EXPECT_EQ(Typed("walrim-receiver --model 'GPS 4\t"), "<--model><GPS 48>");
  EXPECT_EQ(Typed("walrim-receiver --fault late\t20"), "<--fault><late-ack=20>");
}

}  // namespace
}  // namespace walrim
