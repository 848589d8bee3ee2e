// What explains: the help page, and the dialogs' own words.
#include <QAction>
#include <QDialog>
#include <QTableView>
#include <QTextBrowser>
#include <QTimer>

#include "device/Models.h"
#include "window/HelpDialog.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

TEST_F(WindowTest, F1ExplainsKeysCablesModelsAndWhereDataAre) {
  QTest::keyClick(window.get(), Qt::Key_F1);
  auto& help = Get<QDialog>("Help");
  EXPECT_TRUE(help.isVisible());
  EXPECT_FALSE(help.isModal()) << "one reads it while one works";
  const std::string page = Get<QTextBrowser>("HelpPage").toPlainText().toStdString();
  for (const char* text : {"F5", "Shift+F6", "Ctrl+Z", "GARMIN", "dialout", "/walrim/"})
    EXPECT_NE(page.find(text), std::string::npos) << text;
  EXPECT_FALSE(KnownModels().empty());
  for (const std::string_view model : KnownModels())
    EXPECT_NE(page.find(model), std::string::npos) << model;
  EXPECT_EQ(page.find('%'), std::string::npos) << "all places are filled";
  QTest::keyClick(window.get(), Qt::Key_F1);
  EXPECT_EQ(window->findChildren<QDialog*>("Help").size(), 1);
  QTest::keyClick(&help, Qt::Key_Escape);
  EXPECT_FALSE(help.isVisible());
}

TEST_F(WindowTest, TheKeysOfTheHelpPageAreThoseOfTheMenus) {
  const QString page = HelpPage();
  int seen = 0;
  for (const QAction* action : window->findChildren<QAction*>()) {
    const QString keys = action->shortcut().toString();
    if (!keys.startsWith("Ctrl+") && !keys.startsWith('F')) continue;
    if (keys == "Ctrl+Q") continue;  // the window's own
    EXPECT_TRUE(page.contains(keys)) << keys.toStdString();
    ++seen;
  }
  EXPECT_GT(seen, 10);
}

TEST_F(WindowTest, TheLinkDialogHasRoomForALinkAndNamesHttps) {
  bool seen = false;
  QTimer::singleShot(0, window.get(), [&] {
    auto* dialog = window->findChild<QDialog*>("LinkDialog");
    ASSERT_NE(dialog, nullptr);
    seen = true;
    const auto* line = dialog->findChild<QLineEdit*>();
    EXPECT_GT(line->width(), line->fontMetrics().averageCharWidth() * 70);
    EXPECT_TRUE(dialog->findChild<QLabel*>()->text().contains("https://"));
    QTest::keyClick(dialog, Qt::Key_Escape);
  });
  Get<QAction>("ImportLink").trigger();
  EXPECT_TRUE(seen);
}

TEST_F(WindowTest, WhatIsPastedIsChosenAndSeen) {
  std::string many;
  for (int i = 0; i < 200; ++i)
    many += "WPT\tD\tWGS84\t=\"A" + std::to_string(i) + "\"\t35\t139\t=\"\"\r\n";
  PutFile(folder.Path("many.grc"), many);
  window->ImportFiles({folder.Path("many.grc")});
  PasteText("RTH\t1\t=\"R\"\t1\r\nRTP\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n");
  EXPECT_TRUE(Get<QTableView>("RouteTable").isVisible());
  PasteText("WPT\tD\tWGS84\t=\"B1\"\t35\t139\t=\"\"\r\nWPT\tD\tWGS84\t=\"B2\"\t35\t139\t=\"\"\r\n");
  auto& table = Get<QTableView>("WaypointTable");
  EXPECT_TRUE(table.isVisible());
  QStringList chosen;
  for (const QModelIndex& row : table.selectionModel()->selectedRows(1))
    chosen.append(row.data().toString());
  EXPECT_EQ(chosen.join(' ').toStdString(), "B1 B2");
  QApplication::processEvents();
  EXPECT_TRUE(table.viewport()->rect().intersects(table.visualRect(table.currentIndex())));
}

TEST_F(WindowTest, TheAssistantBringsWhatIsSaidOfTheReceiverUpToDate) {
  window->Main().State().SetReceiverText("電源が入っていないか，接続されていません． (Pid:-1)");
  UseReceiver({}, 9600);
  window->Main().State().SetReceiverText("電源が入っていないか，接続されていません． (Pid:-1)");
  QTest::keyClick(window.get(), Qt::Key_F5, Qt::ControlModifier);
  EXPECT_TRUE(GpsInfo().starts_with("eTrex")) << GpsInfo();
  EXPECT_TRUE(GpsInfo().ends_with(" (Pid:130)")) << GpsInfo();
}

TEST_F(WindowTest, AFileThatIsNotThereIsSaidSo) {
  window->ImportFiles({folder.Path("none.grc")});
  EXPECT_NE(Messages().find("No such file or directory"), std::string::npos) << Messages();
}

}  // namespace
}  // namespace walrim
