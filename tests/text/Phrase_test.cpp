#include "text/Phrase.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(Phrase, IsTheTextWithItsParts) {
  EXPECT_EQ(Phrase("保存"), "保存");
  EXPECT_EQ(Phrase("100%、%1"), "100%、%1") << "no part is given";
  EXPECT_EQ(Phrase("%1件を%2に保存しました", 19, "a.grc"), "19件をa.grcに保存しました");
  EXPECT_EQ(Phrase("%2%1%1", std::string("a"), 'b' - 'a'), "1aa");
  EXPECT_EQ(Phrase("%1 %2%", "%2"), "%2 %2%") << "a part is no pattern, and the second one is not given";
  EXPECT_EQ(Phrase("%0%1", "a"), "%0a");
}

/// Knows one text.
struct Book : PhraseBook {
  [[nodiscard]] std::optional<std::string> Find(std::string_view text) const override {
    if (text == "%1件を%2に保存しました") return "saved %1 records to %2";
    return std::nullopt;
  }
};

TEST(Phrase, SpeaksTheLanguageOfTheProcess) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new Book));
  EXPECT_EQ(Phrase("%1件を%2に保存しました", 19, "a.grc"), "saved 19 records to a.grc");
  EXPECT_EQ(Phrase("%1件", 19), "19件") << "the book lacks it";
  std::locale::global(before);
  EXPECT_EQ(Phrase("%1件を%2に保存しました", 1, "b"), "1件をbに保存しました");
}

}  // namespace
}  // namespace walrim
