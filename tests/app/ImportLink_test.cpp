#include "app/ImportLink.h"

#include <gtest/gtest.h>

#include "app/Messages.h"

namespace walrim {
namespace {

TEST(ImportLink, TheSchemeMayBeInAnyCase) {
  for (const char* text : {"http://example.com/a.grc", "HTTP://example.com/a.grc", "Http://example.com/a.grc"}) {
    EXPECT_EQ(LinkOf(text).scheme, LinkScheme::Http) << text;
    EXPECT_EQ(LinkOf(text).link, text);
  }
  EXPECT_EQ(LinkOf("https://example.com/a.grc").scheme, LinkScheme::Https);
  EXPECT_EQ(LinkOf("HTTPS://example.com/a.grc").scheme, LinkScheme::Https);
  EXPECT_EQ(LinkOf("ftp://example.com/a.grc").scheme, LinkScheme::Ftp);
  EXPECT_EQ(LinkOf("FTP://example.com/a.grc").scheme, LinkScheme::Ftp);
  EXPECT_EQ(LinkOf("file:///data/a.grc").scheme, LinkScheme::File);
  EXPECT_EQ(LinkOf("File://C:/data/a.grc").scheme, LinkScheme::File);
}

TEST(ImportLink, OneMoreLetterBehindHttpIsTheSecureScheme) {
  EXPECT_EQ(LinkOf("HTTPX://example.com/").scheme, LinkScheme::Https);
  EXPECT_EQ(LinkOf("HTTPSS://example.com/").scheme, LinkScheme::None);
  EXPECT_EQ(LinkOf("HTTP1://example.com/").scheme, LinkScheme::None);
}

TEST(ImportLink, OtherTextsAreNone) {
  for (const char* text : {"", " ", "WPT\tA", "http:/a", "http:a", "see http://example.com/", "//example.com", "://",
                           "geo:35,139", "mailto://a", "ftps://a", "file:/a", "filex://a", "C:\\a.grc", "/data//a.grc",
                           "//Header:Prog", "h\xEF\xBD\x94tp://a"}) {
    EXPECT_EQ(LinkOf(text).scheme, LinkScheme::None) << text;
    EXPECT_EQ(LinkOf(text).link, "") << text;
  }
}

TEST(ImportLink, TheLinkIsTheFirstLineWithoutBlanksAroundIt) {
  EXPECT_EQ(LinkOf(" \r\n\thttp://example.com/a b \r\nhttp://example.com/c\r\n").link, "http://example.com/a b");
  EXPECT_EQ(LinkOf("file:///a.grc\r\n").link, "file:///a.grc");
}

std::string PathOf(const char* link, char separator) {
  const LocalPath local = LocalPathOf(link, separator);
  EXPECT_EQ(local.path.empty(), !local.refusal.empty()) << link;
  return local.path;
}

TEST(LocalPath, SlashesBecomeThePlatformsSeparator) {
  EXPECT_EQ(PathOf("file://C:/data/a.grc", '\\'), "C:\\data\\a.grc");
  EXPECT_EQ(PathOf("FILE:///C:/data/a.grc", '\\'), "C:\\data\\a.grc");
  EXPECT_EQ(PathOf("file://C:\\data\\a.grc", '\\'), "C:\\data\\a.grc");
  EXPECT_EQ(PathOf("file://localhost/C:/a.grc", '\\'), "C:\\a.grc");
  EXPECT_EQ(PathOf("file:///data/a.grc", '\\'), "\\data\\a.grc");
  EXPECT_EQ(PathOf("file:///data/a.grc", '/'), "/data/a.grc");
  EXPECT_EQ(PathOf("file://localhost/data/a.grc", '/'), "/data/a.grc");
  EXPECT_EQ(PathOf("file://LocalHost/a.grc", '/'), "/a.grc");
}

TEST(LocalPath, EscapesAreDecoded) {
  EXPECT_EQ(PathOf("file:///data/a%20b%23.grc", '/'), "/data/a b#.grc");
  EXPECT_EQ(PathOf("file:///data/%E9%AB%98%e5%b0%be.grc", '/'), "/data/高尾.grc");
  EXPECT_EQ(PathOf("file:///data/100%.grc", '/'), "/data/100%.grc");
  EXPECT_EQ(PathOf("file:///a+b.grc", '/'), "/a+b.grc");
  EXPECT_EQ(PathOf("file:///C:%2Fa.grc", '\\'), "C:\\a.grc");
}

TEST(LocalPath, OtherComputersAreRefused) {
  for (const char* link : {"file://server/share/a.grc", "file://data/a.grc", "file://a.grc", "file://127.0.0.1/a.grc",
                           "file://localhost.example.com/a.grc"}) {
    EXPECT_EQ(PathOf(link, '/'), "") << link;
    EXPECT_EQ(PathOf(link, '\\'), "") << link;
  }
  EXPECT_EQ(LocalPathOf("file://server/a", '/').refusal, messages::FileOfAnotherComputer("server"));
}

TEST(LocalPath, WhatNamesNoFileIsRefused) {
  for (const char* link : {"file://", "file://localhost", "file:///a%00.grc", "http://example.com/", "", "/data/a.grc"})
    EXPECT_EQ(PathOf(link, '/'), "") << link;
}

}  // namespace
}  // namespace walrim
