#include "window/DialogFilters.h"

#include <gtest/gtest.h>

#include "app/OutputTypes.h"

namespace walrim {
namespace {

QString FilterOf(const OutputType& type) {
  return QString::fromStdString(DialogFilter(type));
}

TEST(DialogFilters, AFilterBecomesTheNamesThatFileDialogsShow) {
  EXPECT_EQ(NameFilters(QString::fromUtf8("すべてのファイル (*.*)|*.*|標準ファイル (*.grc)|*.grc|")),
            (QStringList{QString::fromUtf8("すべてのファイル (*)"), QString::fromUtf8("標準ファイル (*.grc)")}));
}

TEST(DialogFilters, EveryOutputTypeHasAllFilesAndItsOwn) {
  for (const OutputType& type : OutputTypes()) {
    const QStringList names = NameFilters(FilterOf(type));
    const QString extension = QString::fromUtf8(type.extension.data(), static_cast<qsizetype>(type.extension.size()));
    ASSERT_EQ(names.size(), 2) << type.name;
    EXPECT_EQ(names[0], QString::fromUtf8("すべてのファイル (*)"));
    EXPECT_TRUE(names[1].endsWith(" (*." + extension + ")")) << names[1].toStdString();
    EXPECT_EQ(DefaultSuffix(FilterOf(type)), extension);
  }
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
