#include "preflight/NameBook.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

constexpr std::string_view Book =
    "# my own remark\r\n"
    "北穂高岳\tKITAHO\t36.51300 137.66000\t2026-11-22\r\n"
    "\r\n"
    "高尾山\tTAKAO\n";

TEST(NameBook, FindsShortNamesByLongOnesAndLongOnesByPlace) {
  NameBook book;
  EXPECT_EQ(book.Read(Book), 0);
  EXPECT_EQ(book.ShortOf("北穂高岳"), "KITAHO");
  EXPECT_EQ(book.ShortOf("高尾山"), "TAKAO");
  EXPECT_EQ(book.ShortOf("南岳"), "");
  EXPECT_EQ(book.LongOf("KITAHO", {36.51303, 137.65997}), "北穂高岳");
  EXPECT_EQ(book.LongOf("KITAHO", {36.5140, 137.66}), "") << "a hundred metres off";
  EXPECT_EQ(book.LongOf("TAKAO", {0, 0}), "") << "no place is told";
}

TEST(NameBook, IsWrittenAsItIsReadWithItsRemarks) {
  NameBook book;
  EXPECT_EQ(book.Read(Book), 0);
  EXPECT_EQ(book.Text(),
            "# long name, short name, position, date\n# my own remark\n"
            "北穂高岳\tKITAHO\t36.51300 137.66000\t2026-11-22\n高尾山\tTAKAO\t\t\n");
  NameBook again;
  EXPECT_EQ(again.Read(book.Text()), 0);
  EXPECT_EQ(again.Text(), book.Text());
}

TEST(NameBook, LinesThatAreNoneAreLeftOutAndCounted) {
  for (const std::string& line :
       {std::string("高尾山"), std::string("\tTAKAO"), std::string("高尾山\t高尾"),
        std::string("高尾山\tTAKAO\tnowhere"), std::string("高尾山\tTAKAO\t91 0"), std::string("高尾山\tTAKAO\tnan 0"),
        std::string("\xFF\tTAKAO"), std::string("高\x01山\tTAKAO"), std::string(201, 'A') + "\tTAKAO"}) {
    NameBook book;
    EXPECT_EQ(book.Read(line), 1) << line;
    EXPECT_TRUE(book.Pairs().empty()) << line;
  }
}

TEST(NameBook, ANewerNameTakesThePlaceOfTheOlderOne) {
  NameBook book;
  book.Remember({"南岳", "DAKE", NamePlace{36, 137}, "2026-11-21"});
  book.Remember({"南岳", "DAKE2", NamePlace{35, 138}, "2026-11-21"});
  book.Remember({"南岳", "MINAMI", NamePlace{36, 137}, "2026-11-22"});
  EXPECT_EQ(book.Pairs().size(), 2U);
  EXPECT_EQ(book.LongOf("MINAMI", {36, 137}), "南岳");
  EXPECT_EQ(book.LongOf("DAKE", {36, 137}), "");
  EXPECT_EQ(book.LongOf("DAKE2", {35, 138}), "南岳");
  EXPECT_EQ(book.ShortOf("南岳"), "MINAMI");
}

TEST(NameBook, HoldsNoMoreThanItsLimit) {
  std::string text;
  for (std::size_t i = 0; i < NameBook::MostNames + 5; ++i)
    text += "名" + std::to_string(i) + "\tN\n";
  NameBook book;
  EXPECT_EQ(book.Read(text), 5);
  EXPECT_EQ(book.Pairs().size(), NameBook::MostNames);
}

}  // namespace
}  // namespace walrim
