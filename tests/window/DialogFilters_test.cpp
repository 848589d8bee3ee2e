#include "window/DialogFilters.h"

#include <gtest/gtest.h>

#include "formats/Format.h"

namespace walrim {
namespace {

QString FilterOf(const Format& format) {
  return QString::fromStdString(DialogFilter(format));
}

TEST(DialogFilters, AFilterBecomesTheNamesThatFileDialogsShow) {
  EXPECT_EQ(NameFilters(QString::fromUtf8("すべてのファイル (*.*)|*.*|標準ファイル (*.grc)|*.grc|")),
            (QStringList{QString::fromUtf8("すべてのファイル (*)"), QString::fromUtf8("標準ファイル (*.grc)")}));
}

TEST(DialogFilters, EveryOutputTypeHasAllFilesAndItsOwn) {
  for (const Format& format : Formats()) {
    const QStringList names = NameFilters(FilterOf(format));
    const QString extension = QString::fromUtf8(format.ending.data(), static_cast<qsizetype>(format.ending.size()));
    ASSERT_EQ(names.size(), 2) << format.name;
    EXPECT_EQ(names[0], QString::fromUtf8("すべてのファイル (*)"));
    EXPECT_TRUE(names[1].endsWith(" (*." + extension + ")")) << names[1].toStdString();
    EXPECT_EQ(DefaultSuffix(FilterOf(format)), extension);
  }
}

TEST(DialogFilters, SeveralPatternsStandBehindOneName) {
  EXPECT_EQ(NameFilters(QString::fromUtf8("対応ファイル (*.grc;*.txt)|*.grc;*.txt|すべてのファイル (*.*)|*.*|")),
            (QStringList{QString::fromUtf8("対応ファイル (*.grc *.txt)"), QString::fromUtf8("すべてのファイル (*)")}));
}

TEST(DialogFilters, AFilterWithoutATypeHasNoSuffix) {
  for (const char* filter : {"", "|", "All (*.*)|*.*|", "All (*.*)"})
    EXPECT_EQ(DefaultSuffix(filter), "") << filter;
}

TEST(DialogFilters, ABrokenFilterGivesWhatIsWholeOfIt) {
  EXPECT_TRUE(NameFilters("").isEmpty());
  EXPECT_TRUE(NameFilters("Lines").isEmpty());
  EXPECT_EQ(NameFilters("Lines|*.grc"), QStringList{"Lines (*.grc)"});
  EXPECT_EQ(NameFilters("Lines|*.grc|Others"), QStringList{"Lines (*.grc)"});
}

}  // namespace
}  // namespace walrim
