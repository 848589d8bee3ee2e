#include "records/Splice.h"

#include <gtest/gtest.h>
#include <string>

namespace walrim {
namespace {

using Strings = std::vector<std::string>;

/// A list behind an exchange; and it is as it was before, and as it was then, behind further ones.
Strings Exchanged(const Strings& list, Splice<std::string> splice) {
  EXPECT_TRUE(splice.FitsInto(list.size()));
  Strings now = list;
  splice.Exchange(now);
  const Strings changed = now;
  EXPECT_TRUE(splice.FitsInto(now.size()));
  splice.Exchange(now);
  EXPECT_EQ(now, list);
  splice.Exchange(now);
  EXPECT_EQ(now, changed);
  return changed;
}

const Strings List{"a", "b", "c", "d", "e"};

TEST(Splice, ReplacesInsertsErasesAndMoves) {
  EXPECT_EQ(Exchanged(List, Replacement<std::string>(1, "B")), (Strings{"a", "B", "c", "d", "e"}));
  EXPECT_EQ(Exchanged(List, Replacement<std::string>(1, 3, Strings{"x"})), (Strings{"a", "x", "e"}));
  EXPECT_EQ(Exchanged(List, Replacement<std::string>(0, 5, Strings{"x"})), (Strings{"x"}));
  EXPECT_EQ(Exchanged({}, Replacement<std::string>(0, 0, Strings{"x"})), (Strings{"x"}));
  EXPECT_EQ(Exchanged(List, Insertion<std::string>(5, {"f", "g"})), (Strings{"a", "b", "c", "d", "e", "f", "g"}));
  EXPECT_EQ(Exchanged(List, Erasure<std::string>({0, 1, 3})), (Strings{"c", "e"}));
  EXPECT_EQ(Exchanged(List, Move(List, 3, 1)), (Strings{"a", "d", "b", "c", "e"}));
  EXPECT_EQ(Exchanged(List, Move(List, 0, 4)), (Strings{"b", "c", "d", "e", "a"}));
}

TEST(Splice, ChangesMoreThanOnePlaceAtOnce) {
  const Splice<std::string> splice{0, {{0, 0, 1}, {1, 2, 0}, {4, 1, 2}}, {"x", "y", "z"}};
  EXPECT_EQ(Exchanged(List, splice), (Strings{"x", "a", "d", "y", "z"}));
}

TEST(Splice, HoldsOnlyWhatIsNotInTheList) {
  Strings list = List;
  Splice<std::string> erasure = Erasure<std::string>({1, 2});
  EXPECT_TRUE(erasure.absent.empty());
  erasure.Exchange(list);
  EXPECT_EQ(erasure.absent, (Strings{"b", "c"}));
  erasure.Exchange(list);
  EXPECT_TRUE(erasure.absent.empty());
}

TEST(Splice, FitsOnlyWhereItsRunsDo) {
  EXPECT_FALSE(Replacement<std::string>(5, "x").FitsInto(5));
  EXPECT_FALSE(Insertion<std::string>(6, {"x"}).FitsInto(5));
  EXPECT_FALSE((Splice<std::string>{0, {{2, 1, 0}, {1, 1, 0}}, {}}).FitsInto(5)) << "not in rising order";
  EXPECT_FALSE((Splice<std::string>{0, {{1, 2, 0}, {2, 1, 0}}, {}}).FitsInto(5)) << "one inside another";
  EXPECT_FALSE((Splice<std::string>{0, {{1, 1, 2}}, {"x"}}).FitsInto(5)) << "a record too few";
  EXPECT_FALSE((Splice<std::string>{0, {{1, static_cast<std::size_t>(-1), 0}}, {}}).FitsInto(5));
}

TEST(Splice, KnowsWhetherItChangesAnything) {
  EXPECT_FALSE(Replacement<std::string>(1, "b").Changes(List));
  EXPECT_TRUE(Replacement<std::string>(1, "c").Changes(List));
  EXPECT_TRUE(Erasure<std::string>({4}).Changes(List));
  EXPECT_FALSE(Erasure<std::string>({}).Changes(List));
}

}  // namespace
}  // namespace walrim
