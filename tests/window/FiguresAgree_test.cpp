// One walk, one set of figures: in the window, in the terminal, and in KML.
#include <QAction>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTabWidget>

#include "window/FigureTexts.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

/// A hill, a stop of five minutes, and a gap.
constexpr const char* Walk =
    "TRH\t8\tTRUE\t255\t=\"HILL\"\r\n"
    "TRP\tD\tWGS84\t35.000\t139\t2002/11/12 09:00:00\tTRUE\t100\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.002\t139\t2002/11/12 09:03:00\tFALSE\t160\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.004\t139\t2002/11/12 09:07:00\tFALSE\t220\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.004\t139.00001\t2002/11/12 09:12:00\tFALSE\t221\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.006\t139\t2002/11/12 09:15:00\tFALSE\t150\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.020\t139\t2002/11/12 09:40:00\tTRUE\t140\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.021\t139.001\t2002/11/12 09:42:00\tFALSE\t138\t1E+25\t\r\n"
    "TRP\tD\tWGS84\t35.022\t139.002\t2002/11/12 09:44:30\tFALSE\t120\t1E+25\t\r\n";

class FiguresAgree : public WindowTest {
 protected:
  FiguresAgree() { PutFile(Path(), Walk); }

  [[nodiscard]] std::string Path() const { return folder.Path("walk.grc"); }
  [[nodiscard]] QJsonObject InTerminal() const {
    Process process({WALRIM_CLI, "stats", "--json", Path()});
    EXPECT_EQ(process.Wait(), 0) << process.Err();
    const QJsonArray logs = QJsonDocument::fromJson(QByteArray::fromStdString(process.Out()))["logs"].toArray();
    EXPECT_EQ(logs.size(), 1);
    return logs[0].toObject();
  }
  [[nodiscard]] std::string InKml() const {
    Process process({WALRIM_CLI, "convert", Path(), "-o", folder.Path("walk.kml")});
    EXPECT_EQ(process.Wait(), 0) << process.Err();
    const std::string kml = FileContents(folder.Path("walk.kml"));
    const std::size_t begin = kml.find("距離");
    return begin == std::string::npos ? "" : kml.substr(begin, kml.find('<', begin) - begin);
  }
  /// What stands behind a caption in the overview of all logs.
  [[nodiscard]] QString InWindow(std::string_view caption) const {
    QString overview = Get<QLabel>("Figures").text();
    overview.remove("&nbsp;");
    const QStringList cells = overview.split(QRegularExpression("<[^>]*>"), Qt::SkipEmptyParts);
    const qsizetype at = cells.indexOf(QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size())));
    return at < 0 || at + 1 >= cells.size() ? QString() : cells[at + 1].trimmed();
  }
};

TEST_F(FiguresAgree, InWindowTerminalAndKml) {
  if (!Get<QAction>("ShowMap").isChecked()) Get<QAction>("ShowMap").trigger();
  window->ImportFiles({Path()});
  auto& panel = Get<QTabWidget>("WayPanel");
  panel.setCurrentIndex(1);
  const QJsonObject told = InTerminal();
  const double metres = told["distance"].toDouble();
  // Six thousandths of a degree to the north, a step aside, and twice a thousandth to the north-east.
  EXPECT_NEAR(metres, 6 * 111.3 + 0.9 + 2 * 143.8, 1);
  const auto seconds = static_cast<std::int64_t>(told["duration"].toInteger());
  const auto moving = static_cast<std::int64_t>(told["movingTime"].toInteger());
  EXPECT_EQ(seconds, 44 * 60 + 30);
  EXPECT_EQ(moving, (3 + 4 + 3 + 2) * 60 + 150);
  const double up_m = told["ascent"].toDouble();
  const double down_m = told["descent"].toDouble();
  EXPECT_EQ(up_m, 120);
  EXPECT_EQ(down_m, 100) << "220 to 150, 150 to 140, 140 to 120; nothing of it is less than 10 m";

  EXPECT_EQ(InWindow("距離"), DistanceText(metres));
  EXPECT_EQ(InWindow("時間"), DurationText(seconds));
  EXPECT_EQ(InWindow("移動時間"), DurationText(moving));
  EXPECT_EQ(InWindow("平均速度"), SpeedText(metres / static_cast<double>(seconds)));
  EXPECT_EQ(InWindow("移動平均速度"), SpeedText(metres / static_cast<double>(moving)));
  EXPECT_EQ(InWindow("登り"), HeightText(up_m));
  EXPECT_EQ(InWindow("下り"), HeightText(down_m));
  EXPECT_EQ(InWindow("最低高度"), HeightText(told["lowest"].toDouble()));
  EXPECT_EQ(InWindow("最高高度"), HeightText(told["highest"].toDouble()));
  EXPECT_EQ(InWindow("区間数"), QString::number(told["segments"].toInt()));

  EXPECT_EQ(InKml(), "距離 " + DistanceText(metres).toStdString() + "，時間 " + DurationText(seconds).toStdString() +
                         "（移動 " + DurationText(moving).toStdString() + "），登り " + HeightText(up_m).toStdString() +
                         "，下り " + HeightText(down_m).toStdString() + "（10 m以上の高低差）");
}

}  // namespace
}  // namespace walrim
