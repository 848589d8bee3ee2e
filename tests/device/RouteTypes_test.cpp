// Route headers and links against bytes written by hand, both ways.
#include "device/types/RouteTypes.h"

#include <gtest/gtest.h>
#include <string>

#include "support/Packets.h"

namespace walrim {
namespace {

using enum RouteHeaderType;

const Bytes NoSubclassBytes{0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

Bytes Encoded(const Route& route, RouteHeaderType type) {
  EncodeNotes notes;
  return EncodeRouteHeader(route, type, notes);
}
EncodeNotes NotesOf(const Route& route, RouteHeaderType type) {
  EncodeNotes notes;
  static_cast<void>(EncodeRouteHeader(route, type, notes));
  return notes;
}
Bytes EncodedLink(const RouteLink& link, RouteLinkType type) {
  EncodeNotes notes;
  return EncodeRouteLink(link, type, notes);
}

TEST(RouteTypes, D201) {
  const Bytes vector = Joined({{0x05}, TextBytes("TAKAO TO JINBA"), {0}, TextBytes("", 5)});
  const Route route = DecodeRouteHeader(vector, D201, 3);
  EXPECT_EQ(route.type, D201);
  EXPECT_EQ(route.nmbr, 5);
  EXPECT_EQ(route.cmnt, std::string("TAKAO TO JINBA\0     ", 20));
  EXPECT_EQ(Encoded(route, D201), vector);
}

TEST(RouteTypes, D202AndItsEmptyIdent) {
  const Bytes vector = Joined({TextBytes("JINBA"), {0x00}});
  const Route route = DecodeRouteHeader(vector, D202, 3);
  EXPECT_EQ(route.type, D202);
  EXPECT_EQ(route.nmbr, 3);
  EXPECT_EQ(route.cmnt, "JINBA");
  EXPECT_EQ(Encoded(route, D202), vector);
  const Route empty = DecodeRouteHeader(Bytes{0x00}, D202, 1);
  EXPECT_EQ(empty.cmnt, "");
  EXPECT_EQ(Encoded(empty, D202), Bytes{0x00});
}

TEST(RouteTypes, ANameBecomesACommentOf20BytesInUpperCase) {
  const Route route{D202, 7, "Jinba", {}};
  EXPECT_EQ(Encoded(route, D201), Joined({{7}, TextBytes("JINBA", 20)}));
  const Route long_one{D202, 7, "ABCDEFGHIJKLMNOPQRS山", {}};  // the character would need bytes 20 and 21
  EXPECT_EQ(Encoded(long_one, D201), Joined({{7}, TextBytes("ABCDEFGHIJKLMNOPQRS", 20)}));
  EXPECT_EQ(NotesOf(long_one, D201).cut_texts, 1);
  EXPECT_EQ(NotesOf(long_one, D202).cut_texts, 0);
  EXPECT_EQ(NotesOf(route, D201).cut_texts, 0);
}

TEST(RouteTypes, ACommentBecomesANameWithoutTheBlanksAtItsEnd) {
  const Route route{D201, 7, std::string(" jin\0ba\0\0  ", 11), {}};
  EXPECT_EQ(Encoded(route, D202), Joined({TextBytes(" jin ba"), {0}}));
  const Route blank{D201, 7, std::string(20, ' '), {}};
  EXPECT_EQ(Encoded(blank, D202), Bytes{0});
}

TEST(RouteTypes, AHeaderOfJust250BytesIsSentWhole) {
  Route route{D202, 1, std::string(249, 'R'), {}};
  EXPECT_EQ(Encoded(route, D202).size(), 250U);
  EXPECT_FALSE(NotesOf(route, D202).cut);
  route.cmnt += 'R';
  EXPECT_EQ(Encoded(route, D202).size(), 250U);
  EXPECT_TRUE(NotesOf(route, D202).cut);
}

TEST(RouteTypes, D210) {
  const Bytes vector = Joined({{0x03, 0x01}, NoSubclassBytes, TextBytes("LINK"), {0x00}});
  const RouteLink link = DecodeRouteLink(vector);
  EXPECT_EQ(link.link_class, 259);
  EXPECT_EQ(link.subclass, NoSubclass);
  EXPECT_EQ(link.ident, "LINK");
  EXPECT_EQ(EncodedLink(link, RouteLinkType::D210), vector);
  EXPECT_EQ(EncodedLink(link, RouteLinkType::Empty), Bytes{});
}

}  // namespace
}  // namespace walrim
