// A point from a map on its way into the data set, with keys alone.
#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QAccessible>
#include <QStyleOptionViewItem>

#include "app/Messages.h"
#include "window/DialogPlans.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

class ClipDialogTest : public WindowTest {
 protected:
  /// Pastes a text from a map; the plan is what is done in the dialog that it opens.
  void Paste(const char* text, DialogPlans::Plan plan) {
    plans.Next("ClipProAtlas", std::move(plan));
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTest::keyClick(window.get(), Qt::Key_V, Qt::ControlModifier);
  }
  void Paste(DialogPlans::Plan plan) { Paste("35.6252, 139.2437", std::move(plan)); }

  static std::string Text(const QDialog& dialog, const char* name) {
    return dialog.findChild<QLineEdit*>(name)->text().toStdString();
  }
  static std::string Position(const QDialog& dialog) { return Text(dialog, "ClipLat") + " " + Text(dialog, "ClipLon"); }
  static QComboBox& Box(const QDialog& dialog, const char* name) { return *dialog.findChild<QComboBox*>(name); }

  /// The waypoint that was taken in last.
  [[nodiscard]] const Waypoint& Held() const { return Data().Waypoints().back(); }

  DialogPlans plans;
};

TEST_F(ClipDialogTest, OpensWithThePointInDegreesAndAsksForItsName) {
  Paste("geo:35.6252,139.2437?q=35.6252,139.2437(Takao)", [](QDialog& dialog) {
    EXPECT_EQ(Position(dialog), "35.6252 139.2437");
    EXPECT_EQ(FocusOf(dialog), "ClipIdent");
    EXPECT_TRUE(dialog.isModal());
    EXPECT_EQ(Text(dialog, "ClipIdent"), dialog.findChild<QLineEdit*>("ClipIdent")->selectedText().toStdString());
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, EnterGoesFromFieldToFieldAndIsOkInTheLast) {
  for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
    Paste([enter](QDialog& dialog) {
      std::string way = FocusOf(dialog);
      for (int i = 0; i < 3; ++i) {
        Press(dialog, enter);
        way += " " + FocusOf(dialog);
      }
      EXPECT_EQ(way, "ClipIdent ClipCmnt SmblType DsplType");
      EXPECT_TRUE(dialog.isVisible());
      Press(dialog, enter);
      EXPECT_FALSE(dialog.isVisible());
      EXPECT_EQ(dialog.result(), QDialog::Accepted);
    });
  }
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 2U);
  EXPECT_EQ(Texts("GpsNum"), "2|-|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(ClipDialogTest, AWaypointIsCompletedWithKeysAlone) {
  Paste([](QDialog& dialog) {
    Type(dialog, "takao-1");
    Press(dialog, Qt::Key_Return);
    Type(dialog, QString::fromUtf8("高尾山の山頂"));
    Press(dialog, Qt::Key_Return);
    Press(dialog, Qt::Key_Home);
    Press(dialog, Qt::Key_Return);
    Press(dialog, Qt::Key_End);
    Press(dialog, Qt::Key_Return);
  });
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_EQ(Held().ident, "TAKAO-1") << "as receivers have it";
  EXPECT_EQ(Held().cmnt, "高尾山の山頂");
  EXPECT_NEAR(Held().lat_deg, 35.6252, 1e-6);
  EXPECT_NEAR(Held().lon_deg, 139.2437, 1e-6);
  EXPECT_EQ(Held().smbl, 0);
  EXPECT_NE(Held().dspl, 0);
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
}

TEST_F(ClipDialogTest, ACompletedWaypointIsAppendedAndCanBeSaved) {
  PutFile(folder.Path("in.grc"), "WPT\tD\tWGS84\t=\"FIRST\"\t35\t139\t=\"\"\r\n");
  window->ImportFiles({folder.Path("in.grc")});
  Paste([](QDialog& dialog) {
    Type(dialog, "SECOND");
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Space);
  });
  EXPECT_EQ(Texts("GpsNum"), "2|-|-");
  EXPECT_EQ(Data().Waypoints().at(0).ident, "FIRST");
  EXPECT_EQ(Held().ident, "SECOND");
  Check("DoCheck_0");
  Click("Copy");
  EXPECT_NE(Clipboard().find("\t=\"SECOND\"\t35.625"), std::string::npos) << Clipboard();
}

TEST_F(ClipDialogTest, EscapeAndTheCancelButtonAddNothing) {
  Paste([](QDialog& dialog) {
    Type(dialog, "NO");
    Press(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  Paste([](QDialog& dialog) {
    Type(dialog, "NO");
    TabTo(dialog, "Cancel");
    Press(dialog, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_EQ(Messages(), "");
  EXPECT_TRUE(Get<QPushButton>("Paste").isEnabled());
}

TEST_F(ClipDialogTest, AClosedDialogAddsNothing) {
  Paste([](QDialog& dialog) { dialog.close(); });
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
}

// ---- The position

TEST_F(ClipDialogTest, TheButtonShowsDegreesMinutesAndSecondsAndBack) {
  Paste([](QDialog& dialog) {
    Press(dialog, Qt::Key_Backtab);
    ASSERT_EQ(FocusOf(dialog), "ClipPnt");
    Press(dialog, Qt::Key_Space);
    EXPECT_EQ(Position(dialog), "35.373072 139.143732");
    EXPECT_EQ(FocusOf(dialog), "ClipPnt");
    Press(dialog, Qt::Key_Return);
    EXPECT_EQ(Position(dialog), "35.6252 139.2437") << "Enter presses a button that has the focus";
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, OkInDegreesMinutesAndSecondsGivesTheSamePosition) {
  Paste([](QDialog& dialog) {
    Press(dialog, Qt::Key_Backtab);
    Press(dialog, Qt::Key_Space);
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Space);
  });
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_NEAR(Held().lat_deg, 35.6252, 1e-6);
  EXPECT_NEAR(Held().lon_deg, 139.2437, 1e-6);
}

TEST_F(ClipDialogTest, TheNextPointIsShownInDegreesAgain) {
  Paste([](QDialog& dialog) {
    Press(dialog, Qt::Key_Backtab);
    Press(dialog, Qt::Key_Space);
    Press(dialog, Qt::Key_Escape);
  });
  Paste("36.5, 138.25", [](QDialog& dialog) {
    EXPECT_EQ(Position(dialog), "36.5 138.25");
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, ACorrectedPositionIsTheOneThatCounts) {
  Paste([](QDialog& dialog) {
    TabTo(dialog, "ClipLat");
    Type(dialog, "-35.5");
    Press(dialog, Qt::Key_Tab);
    Type(dialog, " 139.75 ");
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Return);
  });
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_NEAR(Held().lat_deg, -35.5, 1e-6);
  EXPECT_NEAR(Held().lon_deg, 139.75, 1e-6);
}

TEST_F(ClipDialogTest, APositionThatIsNoneIsToldAndEverythingStays) {
  Paste([this](QDialog& dialog) {
    Type(dialog, "KEPT");
    TabTo(dialog, "ClipLat");
    for (const char* wrong : {"abc", "", "91", "N35"}) {
      Type(dialog, wrong);
      const std::size_t told = answerer.boxes.size();
      Press(dialog, Qt::Key_Return);
      ASSERT_EQ(answerer.boxes.size(), told + 1) << wrong;
      EXPECT_TRUE(answerer.boxes.back().text.contains(QString::fromUtf8("緯度「%1」").arg(wrong))) << Messages();
      EXPECT_EQ(answerer.boxes.back().buttons, QStringList{"OK"});
      ASSERT_TRUE(dialog.isVisible());
    }
    Press(dialog, Qt::Key_Tab);
    Press(dialog, Qt::Key_Tab);
    ASSERT_EQ(FocusOf(dialog), "ClipPnt");
    Press(dialog, Qt::Key_Space);
    EXPECT_EQ(answerer.boxes.size(), 5U);
    EXPECT_EQ(Position(dialog), "N35 139.2437");
    EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
    TabTo(dialog, "ClipLat");
    Type(dialog, "35");
    Press(dialog, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_EQ(Held().ident, "KEPT");
}

TEST_F(ClipDialogTest, APointOnTheOldDatumIsShownAsItIsAndStoredOnWgs84) {
  Paste("Tokyo 35.6252 139.2437", [](QDialog& dialog) {
    EXPECT_EQ(Position(dialog), "35.6252 139.2437");
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Return);
  });
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_NEAR(Held().lat_deg, 35.6252 + 0.00324, 3e-4);
  EXPECT_NEAR(Held().lon_deg, 139.2437 - 0.00322, 3e-4);
}

// ---- The lists

TEST_F(ClipDialogTest, TheListsOfferCodesWithTheirNamesInAscendingOrder) {
  Paste([](QDialog& dialog) {
    const struct {
      const char* name;
      int largest;
    } lists[] = {{"SmblType", 18000}, {"DsplType", 15}};
    for (const auto& list : lists) {
      const QComboBox& box = Box(dialog, list.name);
      ASSERT_GT(box.count(), 1) << list.name;
      int before = -1;
      for (int i = 0; i < box.count(); ++i) {
        const QString entry = box.itemText(i);
        EXPECT_EQ(entry.mid(5, 3), " : ") << entry.toStdString();
        EXPECT_FALSE(entry.mid(8).trimmed().isEmpty()) << entry.toStdString();
        EXPECT_GT(entry.left(5).toInt(), before) << entry.toStdString();
        before = entry.left(5).toInt();
      }
      EXPECT_LE(before, list.largest);
    }
    EXPECT_TRUE(Box(dialog, "SmblType").currentText().startsWith("00018 : "));
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, AChosenSymbolIsStoredAndStaysChosenForTheNextPoint) {
  int code = 0;
  Paste([&](QDialog& dialog) {
    TabTo(dialog, "SmblType");
    // Far down the list, where an entry's place is not its code.
    Press(dialog, Qt::Key_End);
    Press(dialog, Qt::Key_Up);
    code = Box(dialog, "SmblType").currentText().left(5).toInt();
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Return);
  });
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_GT(code, 8192);
  EXPECT_EQ(Held().smbl, code);
  Paste([&](QDialog& dialog) {
    EXPECT_EQ(Box(dialog, "SmblType").currentText().left(5).toInt(), code);
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, ASymbolIsFoundByItsJapaneseName) {
  Paste([](QDialog& dialog) {
    TabTo(dialog, "SmblType");
    QComboBox& box = Box(dialog, "SmblType");
    EXPECT_FALSE(box.itemIcon(box.currentIndex()).isNull());
    Type(dialog, "キャンプ場");
    Press(dialog, Qt::Key_Return);
    EXPECT_EQ(FocusOf(dialog), "DsplType");
    Press(dialog, Qt::Key_Return);
  });
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_EQ(Held().smbl, 151);
}

TEST_F(ClipDialogTest, TheListSaysTheJapaneseNamesToo) {
  Paste([](QDialog& dialog) {
    const QComboBox& box = Box(dialog, "SmblType");
    const QModelIndex entry = box.model()->index(box.currentIndex(), 0);
    EXPECT_EQ(box.currentText(), "00018 : waypoint dot");
    QStyleOptionViewItem option;
    EXPECT_GT(box.view()->itemDelegate()->sizeHint(option, entry).width(),
              QFontMetrics(option.font).horizontalAdvance(box.currentText() + "　点"));
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, ASymbolThatIsNotOneAloneIsToldAndEverythingStays) {
  Paste([this](QDialog& dialog) {
    TabTo(dialog, "SmblType");
    Type(dialog, "航路標識");
    Press(dialog, Qt::Key_Return);
    Press(dialog, Qt::Key_Return);
    EXPECT_EQ(Messages(), messages::NoSuchSymbol);
    EXPECT_EQ(FocusOf(dialog), "SmblType");
    ASSERT_TRUE(dialog.isVisible());
    Type(dialog, "summit");
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Return);
  });
  ASSERT_EQ(Data().Count(DataKind::Waypoint), 1U);
  EXPECT_EQ(Held().smbl, 8246);
}

TEST_F(ClipDialogTest, EnterInAnOpenListChoosesAndGoesNoFurther) {
  Paste([](QDialog& dialog) {
    TabTo(dialog, "SmblType");
    QComboBox& box = Box(dialog, "SmblType");
    const int before = box.currentIndex();
    box.showPopup();
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    EXPECT_EQ(box.currentIndex(), before + 1);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(FocusOf(dialog), "SmblType");
    Press(dialog, Qt::Key_Escape);
  });
}

// ---- As a whole

TEST_F(ClipDialogTest, TabFollowsTheReadingOrderAndNoKeyStandsTwice) {
  Paste([](QDialog& dialog) {
    TabTo(dialog, "ClipLat");
    EXPECT_EQ(TabOrderOf(dialog), "ClipLat ClipLon ClipPnt ClipIdent ClipCmnt SmblType DsplType Ok Cancel");
    EXPECT_EQ(MnemonicsOf(dialog), "BCDLNPS");
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, ThePositionIsSeenFromItsBeginningWithItsNotation) {
  Paste([](QDialog& dialog) {
    const auto* form = dialog.findChild<QLabel*>("ClipForm");
    EXPECT_EQ(form->text().toStdString(), "度");
    dialog.findChild<QPushButton*>("ClipPnt")->click();
    EXPECT_EQ(form->text().toStdString(), "度分秒");
    for (const char* name : {"ClipLat", "ClipLon"}) {
      const auto* line = dialog.findChild<QLineEdit*>(name);
      EXPECT_EQ(line->cursorPosition(), 0) << name;
      EXPECT_GT(line->width(), line->fontMetrics().horizontalAdvance(line->text())) << name;
    }
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, TheControlsAreNamedForAssistiveTools) {
  Paste([](QDialog& dialog) {
    const std::pair<const char*, const char*> captions[] = {
        {"ClipLat", "緯度"},      {"ClipLon", "経度"},      {"ClipPnt", "D ⇔ DMS"}, {"ClipIdent", "名前"},
        {"ClipCmnt", "コメント"}, {"SmblType", "シンボル"}, {"DsplType", "表示"},   {"Ok", "OK"},
        {"Cancel", "キャンセル"}};
    for (const auto& [name, caption] : captions) {
      auto* widget = dialog.findChild<QWidget*>(name);
      ASSERT_NE(widget, nullptr) << name;
      EXPECT_EQ(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString(), caption);
    }
    Press(dialog, Qt::Key_Escape);
  });
}

TEST_F(ClipDialogTest, WhileItIsOpenOtherProgramsAreToldToWait) {
  Paste([this](QDialog& dialog) {
    EXPECT_EQ(window->RunExternalCommand("Delete", "ALL", ""), CommandBusy);
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Return);
  });
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 1U);
}

}  // namespace
}  // namespace walrim
