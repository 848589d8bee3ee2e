#include "text/HttpAnswer.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using State = HttpAnswer::State;

constexpr std::size_t Limit = 100;

/// What an answer comes to, given whole and byte by byte.
State StateOf(const std::string& bytes, bool end = false, std::string* body = nullptr) {
  HttpAnswer whole(Limit);
  HttpAnswer parts(Limit);
  whole.Take(bytes);
  for (const char byte : bytes)
    parts.Take(std::string_view(&byte, 1));
  if (end) {
    whole.End();
    parts.End();
  }
  EXPECT_EQ(whole.Now(), parts.Now()) << bytes;
  if (whole.Now() == State::Complete) {
    EXPECT_EQ(whole.body, parts.body) << bytes;
  }
  if (body != nullptr) *body = whole.body;
  return whole.Now();
}

std::string BodyOf(const std::string& bytes, bool end = false) {
  std::string body;
  return StateOf(bytes, end, &body) == State::Complete ? body : "not complete";
}

TEST(HttpAnswer, StatusReasonAndHeaders) {
  HttpAnswer answer(Limit);
  EXPECT_EQ(answer.Take("HTTP/1.1 302 Moved Away\r\nLOCATION:  /a b \r\nX: 1\r\nx: 2\r\nX: 2\r\n"), State::Header);
  EXPECT_EQ(answer.Take("Content-Length: 5\r\n\r\n"), State::Body);
  EXPECT_EQ(answer.Status(), 302);
  EXPECT_EQ(answer.Reason(), "Moved Away");
  EXPECT_EQ(answer.Header("location"), "/a b");
  EXPECT_EQ(answer.Header("x"), "1, 2, 2");
  EXPECT_EQ(answer.Header("y"), "");
  EXPECT_EQ(answer.Take("WPT\tAmore"), State::Complete);
  EXPECT_EQ(answer.body, "WPT\tA") << "what follows is not read";
}

TEST(HttpAnswer, TheBodyEndsAsTheHeaderSays) {
  EXPECT_EQ(BodyOf("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nWPT"), "WPT");
  EXPECT_EQ(BodyOf("HTTP/1.0 200\nContent-Length: 0\n\n"), "");
  EXPECT_EQ(BodyOf("HTTP/1.1 200 OK\r\n\r\nWPT", true), "WPT");
  EXPECT_EQ(BodyOf("HTTP/1.1 200 OK\r\n\r\nWPT"), "not complete");
  EXPECT_EQ(BodyOf("HTTP/1.1 204 None\r\n\r\n"), "");
  EXPECT_EQ(BodyOf("HTTP/1.1 200 OK\r\nContent-Length: 3\r\nContent-Length: 3\r\n\r\nWPT"), "WPT");
}

TEST(HttpAnswer, Chunks) {
  const std::string head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: Chunked\r\nContent-Length: 1\r\n\r\n";
  EXPECT_EQ(BodyOf(head + "3\r\nWPT\r\n0a;x=y\r\n0123456789\r\n0\r\n\r\n"), "WPT0123456789");
  EXPECT_EQ(BodyOf(head + "0\r\nTrailer: x\r\n\r\n"), "");
  EXPECT_EQ(BodyOf(head + "3\nWPT\n0\n\n"), "WPT");
  EXPECT_EQ(StateOf(head + "3\r\nWPTX\r\n"), State::Broken);
  EXPECT_EQ(StateOf(head + "\r\n"), State::Broken);
  EXPECT_EQ(StateOf(head + "-1\r\n"), State::Broken);
  EXPECT_EQ(StateOf(head + "0x3\r\n"), State::Broken);
  EXPECT_EQ(StateOf(head + "65\r\n"), State::TooLarge);
  EXPECT_EQ(StateOf(head + "ffffffffffffffffff\r\n"), State::TooLarge);
  EXPECT_EQ(StateOf(head + "64\r\n" + std::string(100, 'x') + "\r\n1\r\n"), State::TooLarge);
}

TEST(HttpAnswer, EveryShorterAnswerIsCutShort) {
  for (const std::string answer :
       {"HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nWPT",
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nWPT\r\n0\r\nT: x\r\n\r\n"}) {
    ASSERT_EQ(StateOf(answer), State::Complete);
    for (std::size_t size = 0; size < answer.size(); ++size)
      EXPECT_EQ(StateOf(answer.substr(0, size), true), State::CutShort) << answer.substr(0, size);
  }
}

TEST(HttpAnswer, InterimAnswersAreSkipped) {
  EXPECT_EQ(BodyOf("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Hints\r\nContent-Length: 9\r\n\r\n"
                   "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nWPT"),
            "WPT");
  HttpAnswer answer(Limit);
  while (answer.Now() == State::Header)
    answer.Take("HTTP/1.1 100 Continue\r\n\r\n");
  EXPECT_EQ(answer.Now(), State::Broken) << "not for ever";
}

TEST(HttpAnswer, TheBodyIsHeldToItsLimit) {
  const std::string head = "HTTP/1.1 200 OK\r\n";
  EXPECT_EQ(StateOf(head + "Content-Length: 100\r\n\r\n"), State::Body);
  EXPECT_EQ(StateOf(head + "Content-Length: 101\r\n\r\n"), State::TooLarge);
  EXPECT_EQ(StateOf(head + "Content-Length: 99999999999999999999999\r\n\r\n"), State::TooLarge);
  EXPECT_EQ(StateOf(head + "\r\n" + std::string(100, 'x'), true), State::Complete);
  EXPECT_EQ(StateOf(head + "\r\n" + std::string(101, 'x'), true), State::TooLarge);
}

TEST(HttpAnswer, LinesAreHeldToTheirLimit) {
  EXPECT_EQ(StateOf(std::string(HttpAnswer::MostLineBytes + 1, 'x')), State::Broken);
  HttpAnswer headers(Limit);
  headers.Take("HTTP/1.1 200 OK\r\n");
  for (int i = 0; i < 10000 && headers.Now() == State::Header; ++i)
    headers.Take("Name" + std::to_string(i) + ": value\r\n");
  EXPECT_EQ(headers.Now(), State::Broken);
  const std::string chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
  EXPECT_EQ(StateOf(chunked + "1;" + std::string(HttpAnswer::MostLineBytes, 'x')), State::Broken);
  EXPECT_EQ(StateOf(chunked + "0\r\n" + std::string(HttpAnswer::MostLineBytes, 'x')), State::Broken);
}

TEST(HttpAnswer, ManySmallChunksAreNoLongHeader) {
  HttpAnswer answer(50'000);
  answer.Take("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
  for (int i = 0; i < 50'000; ++i)
    answer.Take("1\r\nx\r\n");
  EXPECT_EQ(answer.Take("0\r\n\r\n"), State::Complete);
  EXPECT_EQ(answer.body.size(), 50'000U);
}

TEST(HttpAnswer, WhatIsNoAnswerIsBroken) {
  for (const char* bytes :
       {"\r\n", "220 ready\r\n", "HTTP/2 200 OK\r\n", "HTTP/1.1\r\n", "HTTP/1.1 20\r\n", "HTTP/1.1 2x0 OK\r\n",
        "HTTP/1.1 099 OK\r\n", "HTTP/1.1-200 OK\r\n", "HTTP/1.1 200 OK\r\nno colon\r\n",
        "HTTP/1.1 200 OK\r\n: no name\r\n", "HTTP/1.1 200 OK\r\n folded: x\r\n",
        "HTTP/1.1 200 OK\r\nContent-Length: x\r\n\r\n", "HTTP/1.1 200 OK\r\nContent-Length:\r\n\r\n",
        "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n",
        "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\n",
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip, chunked\r\n\r\n"})
    EXPECT_EQ(StateOf(bytes), State::Broken) << bytes;
}

}  // namespace
}  // namespace walrim
