#include "window/WindowArguments.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <initializer_list>

namespace walrim {
namespace {

/// What the command line gave, and what was printed about it.
struct Read {
  ParsedWindowArguments parsed;
  std::string out;
  std::string err;
};

Read Parse(std::initializer_list<const char*> words) {
  std::vector<const char*> argv{"walrim"};
  argv.insert(argv.end(), words.begin(), words.end());
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  ParsedWindowArguments parsed = ParseWindowArguments(static_cast<int>(argv.size()), argv.data());
  std::string out = testing::internal::GetCapturedStdout();
  return {std::move(parsed), std::move(out), testing::internal::GetCapturedStderr()};
}

WindowArguments Arguments(std::initializer_list<const char*> words) {
  const Read read = Parse(words);
  EXPECT_TRUE(read.parsed.arguments) << read.err;
  EXPECT_EQ(read.out + read.err, "");
  return read.parsed.arguments.value_or(WindowArguments{});
}

CommandCall Call(std::initializer_list<const char*> words) {
  return Arguments(words).command.value_or(CommandCall{});
}

bool NeedsNone(std::initializer_list<const char*> words) {
  std::vector<const char*> argv{"walrim"};
  argv.insert(argv.end(), words.begin(), words.end());
  return NeedsNoWindow(static_cast<int>(argv.size()), argv.data());
}

TEST(WindowArguments, WithoutAnyTheWindowStartsPlainly) {
  const WindowArguments arguments = Arguments({});
  EXPECT_TRUE(arguments.mapping.empty());
  EXPECT_FALSE(arguments.demo);
  EXPECT_TRUE(arguments.files.empty());
  EXPECT_FALSE(arguments.command);
}

TEST(WindowArguments, PortsFilesAndTheDemonstrationInAnyOrder) {
  const WindowArguments arguments =
      Arguments({"a.grc", "--port", "2=/dev/ttyUSB0", "b c.txt", "--demo", "--port=4=/dev/ttyS0", "d.mps"});
  EXPECT_EQ(arguments.mapping, (PortMapping{{2, "/dev/ttyUSB0"}, {4, "/dev/ttyS0"}}));
  EXPECT_TRUE(arguments.demo);
  EXPECT_EQ(arguments.files, (std::vector<std::string>{"a.grc", "b c.txt", "d.mps"}));
}

TEST(WindowArguments, TheLastDeviceOfANumberIsItsDevice) {
  EXPECT_EQ(Arguments({"--port", "1=/dev/a", "--port", "1=/dev/b"}).mapping, (PortMapping{{1, "/dev/b"}}));
}

TEST(WindowArguments, WhatCannotBeReadIsSaidAndEndsTheProgram) {
  for (const auto& words : {std::initializer_list<const char*>{"--port", "5=/dev/a"},
                            {"--port", "ttyUSB0"},
                            {"--port"},
                            {"--command"},
                            {"--command", "GetFile", "a.grc", "b.grc", "c.grc"},
                            {"c.grc", "--command", "GetFile", "a.grc"},
                            {"--unknown"}}) {
    const Read read = Parse(words);
    EXPECT_FALSE(read.parsed.arguments) << *words.begin();
    EXPECT_EQ(read.parsed.exit_status, 2);
    EXPECT_NE(read.err, "");
    EXPECT_EQ(read.out, "");
  }
}

TEST(WindowArguments, HelpAndVersionArePrintedAndAreNoError) {
  const Read help = Parse({"--help"});
  EXPECT_FALSE(help.parsed.arguments);
  EXPECT_EQ(help.parsed.exit_status, 0);
  EXPECT_NE(help.out.find("--command"), std::string::npos) << help.out;
  const Read version = Parse({"--version"});
  EXPECT_EQ(version.parsed.exit_status, 0);
  EXPECT_TRUE(version.out.starts_with("walrim ")) << version.out;
}

TEST(WindowArguments, ACommandHasAWordAndAtMostTwoArguments) {
  EXPECT_EQ(Call({"--command", "Delete", "ALL"}), (CommandCall{"Delete", "ALL", ""}));
  EXPECT_EQ(Call({"--command", "SetDoCheck", "1", "TRUE"}), (CommandCall{"SetDoCheck", "1", "TRUE"}));
  EXPECT_EQ(Call({"--command", "SetDoCheck", "1", "-1"}), (CommandCall{"SetDoCheck", "1", "-1"}));
  EXPECT_EQ(Call({"--command", "SetDoCheck", "", "1"}), (CommandCall{"SetDoCheck", "", "1"}));
  EXPECT_EQ(Call({"--command", "Whatever"}), (CommandCall{"Whatever", "", ""}));
}

TEST(WindowArguments, APathOfTheCallersFolderIsMadeWhole) {
  const std::string here = std::filesystem::current_path().string();
  EXPECT_EQ(Call({"--command", "GetFile", "a b.grc"}).arg1, here + "/a b.grc");
  EXPECT_EQ(Call({"--command", "getfile", "a.grc"}).arg1, here + "/a.grc") << "words count in any case";
  EXPECT_EQ(Call({"--command", "GetFile", "/data/高尾.grc"}).arg1, "/data/高尾.grc");
  EXPECT_EQ(Call({"--command", "GetFile", "cancel"}).arg1, "cancel") << "the word that does nothing";
  EXPECT_EQ(Call({"--command", "Delete", "ALL"}).arg1, "ALL") << "no path";
}

TEST(WindowArguments, WhatPrintsOrCallsNeedsNoDisplay) {
  for (const auto& words : {std::initializer_list<const char*>{"--help"},
                            {"-h"},
                            {"--version"},
                            {"--command", "Delete", "ALL"},
                            {"--command=Delete"},
                            {"--demo", "--version"}})
    EXPECT_TRUE(NeedsNone(words)) << *words.begin();
  for (const auto& words : {std::initializer_list<const char*>{}, {"--demo"}, {"a.grc"}, {"--commands"}})
    EXPECT_FALSE(NeedsNone(words));
}

}  // namespace
}  // namespace walrim
