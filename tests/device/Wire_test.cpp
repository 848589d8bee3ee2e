#include "device/types/Wire.h"

#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

#include "support/Packets.h"

namespace walrim {
namespace {

/// What write puts into a packet.
template <typename Write>
Bytes Written(Write write) {
  EncodeNotes notes;
  PacketWriter writer(notes);
  write(writer);
  return writer.Finish();
}

Bytes WrittenAngle(double degrees) {
  return Written([=](PacketWriter& wire) { wire.Angle(degrees); });
}

/// What read takes from bytes into a value.
template <typename T, typename Read>
T Taken(const Bytes& bytes, Read read) {
  T value{};
  PacketReader reader(bytes);
  read(reader, value);
  return value;
}

double TakenAngle(const Bytes& bytes) {
  return Taken<double>(bytes, [](PacketReader& wire, double& value) { wire.Angle(value); });
}

TEST(Wire, NumbersAreLowByteFirst) {
  EXPECT_EQ(Written([](PacketWriter& wire) {
              wire.Byte(std::uint8_t{0x12});
              wire.Word(std::uint16_t{0x3456});
              wire.DWord(0x789ABCDE);
            }),
            (Bytes{0x12, 0x56, 0x34, 0xDE, 0xBC, 0x9A, 0x78}));
  const Bytes bytes{0x12, 0x56, 0x34, 0xDE, 0xBC, 0x9A, 0x78};
  PacketReader reader(bytes);
  std::uint8_t byte = 0;
  std::uint16_t word = 0;
  std::uint32_t dword = 0;
  reader.Byte(byte);
  reader.Word(word);
  reader.DWord(dword);
  EXPECT_EQ(byte, 0x12);
  EXPECT_EQ(word, 0x3456);
  EXPECT_EQ(dword, 0x789ABCDEU);
}

TEST(Wire, ASymbolThatNoTextGaveIsNumber0) {
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Word(std::optional<std::uint16_t>{}); }), (Bytes{0, 0}));
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Byte(std::optional<std::uint16_t>{}); }), Bytes{0});
}

TEST(Wire, WhatIsNotThereReadsAs0) {
  const Bytes bytes{0x01, 0x02};
  PacketReader reader(bytes);
  std::uint32_t dword = 9;
  std::string text = "x";
  std::string zero_text = "x";
  reader.DWord(dword);
  reader.Text(text, 3);
  reader.ZeroText(zero_text);
  EXPECT_EQ(dword, 0x0201U);
  EXPECT_EQ(text, std::string(3, '\0'));
  EXPECT_EQ(zero_text, "");
}

TEST(Wire, AnglesAreSemicircles) {
  // 35.0 * 2^31 / 180 = 417566264.88..., 135.0 * 2^31 / 180 = 1610612736
  EXPECT_EQ(WrittenAngle(35.0), (Bytes{0x39, 0x8E, 0xE3, 0x18}));
  EXPECT_EQ(WrittenAngle(135.0), (Bytes{0x00, 0x00, 0x00, 0x60}));
  EXPECT_EQ(TakenAngle({0, 0, 0, 0x40}), 90.0);    // 2^30 semicircles
  EXPECT_EQ(TakenAngle({0, 0, 0, 0x80}), -180.0);  // -2^31 semicircles
  EXPECT_EQ(WrittenAngle(-180.0), (Bytes{0x00, 0x00, 0x00, 0x80}));
}

TEST(Wire, AnglesOffTheGlobeDoNotFit) {
  EXPECT_THROW(static_cast<void>(WrittenAngle(180.0)), std::overflow_error);
  EXPECT_THROW(static_cast<void>(WrittenAngle(-180.1)), std::overflow_error);
  EXPECT_THROW(static_cast<void>(WrittenAngle(std::numeric_limits<double>::quiet_NaN())), std::overflow_error);
}

TEST(Wire, AnglesRoundTiesToEven) {
  const double half = 180.0 / 4294967296.0;  // half a semicircle
  EXPECT_EQ(WrittenAngle(half), (Bytes{0, 0, 0, 0}));
  EXPECT_EQ(WrittenAngle(3 * half), (Bytes{2, 0, 0, 0}));
  EXPECT_EQ(WrittenAngle(-half), (Bytes{0, 0, 0, 0}));
}

TEST(Wire, TruthsAre255And0AndReadAsNonZero) {
  EXPECT_EQ(Written([](PacketWriter& wire) {
              wire.Truth(true);
              wire.Truth(false);
            }),
            (Bytes{255, 0}));
  const auto truth = [](PacketReader& wire, bool& value) { wire.Truth(value); };
  EXPECT_TRUE(Taken<bool>({1}, truth));
  EXPECT_FALSE(Taken<bool>({0}, truth));
}

TEST(Wire, SinglesAreIeeeBytes) {
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Distance(1.0F); }), (Bytes{0x00, 0x00, 0x80, 0x3F}));
  const auto distance = [](PacketReader& wire, float& value) { wire.Distance(value); };
  EXPECT_EQ(Taken<float>({0x00, 0x00, 0x00, 0xC0}, distance), -2.0F);
  EXPECT_EQ(Taken<float>({0x00, 0x00, 0xC0, 0x7F}, distance), 1.0e25F);  // no number
}

TEST(Wire, AnUnknownHeightIs1e25) {
  const Bytes unknown{0x51, 0x59, 0x04, 0x69};
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Height(std::nullopt); }), unknown);
  using Metres = std::optional<float>;
  const auto height = [](PacketReader& wire, Metres& value) { wire.Height(value); };
  EXPECT_EQ(Taken<Metres>(unknown, height), std::nullopt);
  EXPECT_EQ(Taken<Metres>({0x00, 0x00, 0x80, 0x7F}, height), std::nullopt);  // infinite
  EXPECT_EQ(Taken<Metres>({0x00, 0x00, 0x48, 0x41}, height), 12.5F);
}

TEST(Wire, AnUnknownTimeIs0OrOneOfTheLastSix) {
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Time(std::nullopt); }), (Bytes{0, 0, 0, 0}));
  using Time = std::optional<GarminSeconds>;
  const auto time = [](PacketReader& wire, Time& value) { wire.Time(value); };
  EXPECT_EQ(Taken<Time>({0, 0, 0, 0}, time), std::nullopt);
  EXPECT_EQ(Taken<Time>({0xFA, 0xFF, 0xFF, 0xFF}, time), std::nullopt);
  EXPECT_EQ(Taken<Time>({0xFF, 0xFF, 0xFF, 0xFF}, time), std::nullopt);
  EXPECT_EQ(Taken<Time>({0xF9, 0xFF, 0xFF, 0xFF}, time), 4294967289U);
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Time(4294967289U); }), (Bytes{0xF9, 0xFF, 0xFF, 0xFF}));
}

TEST(Wire, ATextIsExactlyItsWidth) {
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Text("A", 3); }), (Bytes{'A', ' ', ' '}));
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Text("ABCD", 3); }), (Bytes{'A', 'B', 'C'}));
  // 山 is 8E 52 in code page 932. It is never cut in two.
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Text("A山", 3); }), (Bytes{'A', 0x8E, 0x52}));
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Text("AB山", 3); }), (Bytes{'A', 'B', ' '}));
}

TEST(Wire, ATextKeepsItsZeroCharactersAndBlanks) {
  const Bytes bytes{'A', 0, ' '};
  const auto text = [](PacketReader& wire, std::string& value) { wire.Text(value, 3); };
  EXPECT_EQ(Taken<std::string>(bytes, text), std::string("A\0 ", 3));
  const auto bare = [](PacketReader& wire, std::string& value) { wire.BareText(value, 3); };
  EXPECT_EQ(Taken<std::string>(bytes, bare), std::string("A\0", 2));
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.Text(std::string_view("A\0 ", 3), 3); }), bytes);
}

TEST(Wire, WhatTheCodePageLacksIsSentAsAQuestionMarkAndNoted) {
  EncodeNotes notes;
  PacketWriter writer(notes);
  writer.Text("é!ß", 4);
  EXPECT_EQ(writer.Finish(), (Bytes{'?', '!', ' ', ' '}));
  ASSERT_TRUE(notes.lacking);
  EXPECT_EQ(notes.lacking->utf8, "é");
}

TEST(Wire, AZeroTextEndsAtItsFirstZeroCharacter) {
  EXPECT_EQ(Written([](PacketWriter& wire) { wire.ZeroText(std::string_view("A\0B", 3)); }), (Bytes{'A', 0}));
}

TEST(Wire, TextsThatAreCutAreCountedWithoutTheBlanksAroundThem) {
  EncodeNotes notes;
  NoteCutText("ABCDEF", 6, notes);
  NoteCutText("  ABCDEF ", 6, notes);
  NoteCutText(std::string_view("ABCDEF\0\0", 8), 6, notes);
  NoteCutText("高尾山", 6, notes);
  EXPECT_EQ(notes.cut_texts, 0);
  NoteCutText("ABCDEFG", 6, notes);
  NoteCutText("高尾山A", 6, notes);
  EXPECT_EQ(notes.cut_texts, 2);
}

}  // namespace
}  // namespace walrim
