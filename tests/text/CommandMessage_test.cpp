#include "text/CommandMessage.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using namespace std::string_literals;

const std::string DeleteAll =
    "\x16\0\0\0"
    "\x01"
    "\x06\0\0\0Delete"
    "\x03\0\0\0ALL"
    "\0\0\0\0"s;
const std::string MinusTwo =
    "\x05\0\0\0"
    "\x02"
    "\xFE\xFF\xFF\xFF"s;
const std::string Busy =
    "\x01\0\0\0"
    "\x03"s;

TEST(CommandMessage, ACallIsWrittenAndRead) {
  const CommandCall call{"Delete", "ALL", ""};
  EXPECT_EQ(EncodeCall(call), DeleteAll);
  CommandCall read;
  EXPECT_EQ(DecodeCall(DeleteAll, read), MessageState::Complete);
  EXPECT_EQ(read, call);
}

TEST(CommandMessage, AReplyIsWrittenAndRead) {
  EXPECT_EQ(EncodeReply({-2}), MinusTwo);
  EXPECT_EQ(EncodeReply({}), Busy);
  CommandReply read;
  EXPECT_EQ(DecodeReply(MinusTwo, read), MessageState::Complete);
  EXPECT_EQ(read.result, -2);
  EXPECT_EQ(DecodeReply(Busy, read), MessageState::Complete);
  EXPECT_EQ(read.result, std::nullopt);
  for (const std::int32_t result : {0, 1, -1, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(DecodeReply(EncodeReply({result}), read), MessageState::Complete);
    EXPECT_EQ(read.result, result);
  }
}

TEST(CommandMessage, EveryShorterMessageIsIncompleteAndEveryLongerOneBroken) {
  CommandCall call{"untouched", "", ""};
  for (std::size_t size = 0; size < DeleteAll.size(); ++size)
    EXPECT_EQ(DecodeCall(DeleteAll.substr(0, size), call), MessageState::Incomplete) << size;
  EXPECT_EQ(DecodeCall(DeleteAll + "x", call), MessageState::Broken);
  EXPECT_EQ(DecodeCall(DeleteAll + DeleteAll, call), MessageState::Broken);
  EXPECT_EQ(call.word, "untouched");
  CommandReply reply{7};
  for (std::size_t size = 0; size < MinusTwo.size(); ++size)
    EXPECT_EQ(DecodeReply(MinusTwo.substr(0, size), reply), MessageState::Incomplete) << size;
  EXPECT_EQ(DecodeReply(Busy + "x", reply), MessageState::Broken);
  EXPECT_EQ(reply.result, 7);
}

TEST(CommandMessage, SizesThatCannotBeAreBrokenAtOnce) {
  CommandCall call;
  EXPECT_EQ(DecodeCall("\xFF\xFF\xFF\xFF"s, call), MessageState::Broken);
  EXPECT_EQ(DecodeCall("\x01\0\x01\0"s, call), MessageState::Broken) << "one byte above the limit";
  EXPECT_EQ(DecodeCall("\0\0\x01\0"s, call), MessageState::Incomplete) << "the limit";
  EXPECT_EQ(DecodeCall("\0\0\0\0"s, call), MessageState::Broken);
}

TEST(CommandMessage, WhatIsNoCallIsBroken) {
  CommandCall call;
  for (const std::string& body : {"\x02"s, "\x01"s, "\x01\0\0\0\0\0\0\0\0"s, "\x01\0\0\0\0\0\0\0\0\0\0\0"s,
                                  "\x01\0\0\0\0\0\0\0\0\0\0\0\0x"s, "\x01\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\0"s,
                                  "\x01\x01\0\0\0\xFF\0\0\0\0\0\0\0\0"s, "\x01\x01\0\0\0\0\0\0\0\0\0\0\0\0"s}) {
    const std::string message = std::string(1, static_cast<char>(body.size())) + "\0\0\0"s + body;
    EXPECT_EQ(DecodeCall(message, call), MessageState::Broken);
  }
  EXPECT_EQ(DecodeCall(MinusTwo, call), MessageState::Broken) << "a reply";
  CommandReply reply;
  EXPECT_EQ(DecodeReply(DeleteAll, reply), MessageState::Broken) << "a call";
  EXPECT_EQ(DecodeReply("\x04\0\0\0\x02\0\0\0"s, reply), MessageState::Broken);
}

TEST(CommandMessage, WhatCannotBeSentIsNotWritten) {
  EXPECT_FALSE(EncodeCall({"\xFF", "", ""}));
  EXPECT_FALSE(EncodeCall({"Delete", "\0"s, ""}));
  EXPECT_TRUE(EncodeCall({"GetFile", std::string(MostCommandBytes - 20, 'x'), ""}));
  EXPECT_FALSE(EncodeCall({"GetFile", std::string(MostCommandBytes - 19, 'x'), ""}));
  EXPECT_FALSE(EncodeCall({"GetFile", std::string(MostCommandBytes + 1, 'x'), ""}));
}

}  // namespace
}  // namespace walrim
