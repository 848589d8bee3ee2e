// Dates that are 1024 weeks behind, and the receiver's clock, in the window.
#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QTableWidget>
#include <QTimer>

#include "app/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

class DatesWindowTest : public WindowTest {
 protected:
  DatesWindowTest() { clock.utc_s = SecondsSinceGarminEpoch({2026, 11, 22, 9, 0, 0}); }

  [[nodiscard]] QAction& Action(const char* name) const {
    auto* action = window->findChild<QAction*>(name);
    if (action == nullptr) throw std::runtime_error(std::string("no action ") + name);
    return *action;
  }
  [[nodiscard]] bool HasLogOf(int year) const {
    const auto point = Data().Logs().at(0).points.at(0);
    return LocalTimeOfGarminTime(point.time, 9).year == year;
  }
  /// Presses the menu's entry and answers the dialog; the texts of its first row.
  QStringList FixDates(QDialog::DialogCode answer) {
    QStringList row;
    QTimer::singleShot(0, window.get(), [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      const auto* table = dialog->findChild<QTableWidget*>("DateRepairTable");
      ASSERT_NE(table, nullptr);
      for (int column = 0; column < table->columnCount(); ++column)
        row.append(table->item(0, column)->text());
      dialog->done(answer);
    });
    Action("FixDates").trigger();
    return row;
  }
};

TEST_F(DatesWindowTest, AreFixedFromTheMenuWhenTheUserAgrees) {
  EXPECT_FALSE(Action("FixDates").isEnabled());
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  EXPECT_TRUE(HasLogOf(2002));
  EXPECT_TRUE(Action("FixDates").isEnabled());
  EXPECT_NE(Status().find(messages::FixDatesByMenu), std::string::npos);
  const QStringList row = FixDates(QDialog::Rejected);
  ASSERT_EQ(row.size(), 3);
  EXPECT_TRUE(row[1].startsWith("2002/11/15 08:40:00")) << row[1].toStdString();
  EXPECT_TRUE(row[2].startsWith("2022/07/01 08:40:00")) << row[2].toStdString();
  EXPECT_TRUE(HasLogOf(2002));
  static_cast<void>(FixDates(QDialog::Accepted));
  EXPECT_TRUE(HasLogOf(2022));
  EXPECT_FALSE(Action("FixDates").isEnabled());
}

TEST_F(DatesWindowTest, TheReceiversClockIsToldAndSet) {
  Click("Get_GpsInfo");
  EXPECT_TRUE(Status().starts_with("受信機の時計：2002/12/08 03:00:0")) << Status();
  EXPECT_TRUE(Get<QLabel>("GpsInfo").toolTip().contains(QString::fromUtf8("受信機の時計：2002/12/08")));
  answerer.Answer(QMessageBox::No);
  Action("SetClock").trigger();
  ASSERT_EQ(answerer.boxes.size(), 1U);
  EXPECT_NE(Messages().find("2002/12/08 03:00:0"), std::string::npos);
  EXPECT_NE(Messages().find("2026/11/22 09:00:00"), std::string::npos);
  answerer.Answer(QMessageBox::Yes);
  Action("SetClock").trigger();
  EXPECT_TRUE(Status().starts_with("受信機の時計を合わせました：2026/11/22 09:00:0")) << Status();
  EXPECT_TRUE(Get<QLabel>("GpsInfo").toolTip().contains(QString::fromUtf8("受信機の時計：2026/11/22")));
}

}  // namespace
}  // namespace walrim
