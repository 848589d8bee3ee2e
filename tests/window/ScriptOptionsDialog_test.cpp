// The settings of a map-server script, asked for by the export that writes one.
#include <algorithm>
#include <filesystem>

#include "window/DialogPlans.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr std::string_view Route =
    "RTH\t1\t=\"WALK\"\t3\r\n"
    "RTP\tD\tWGS84\t=\"A\"\t35.62\t139.24\t=\"\"\r\n"
    "RTP\tD\tWGS84\t=\"B\"\t35.63\t139.2\t=\"\"\r\n"
    "RTP\tD\tWGS84\t=\"C\"\t35.65\t139.16\t=\"\"\r\n";

class ScriptOptionsDialogTest : public WindowTest {
 protected:
  ScriptOptionsDialogTest() {
    PutFile(folder.Path("in.grc"), Route);
    window->ImportFiles({folder.Path("in.grc")});
    Check("DoCheck_1");
    auto& type = Get<QComboBox>("OutputTypeOption");
    type.setFocus();
    QTest::keyClick(&type, Qt::Key_M);
    EXPECT_EQ(window->Main().State().Settings().format, FormatId::Script);
  }

  /// Exports to out.mps; the plan is what is done in the dialog.
  void Export(DialogPlans::Plan plan) {
    plans.Next("MpsOption", std::move(plan));
    answerer.ChooseFile(QString::fromStdString(Out()));
    Click("FileExport");
  }
  [[nodiscard]] std::string Out() const { return folder.Path("out.mps"); }
  [[nodiscard]] const ScriptOptions& Options() const { return window->Main().State().Settings().script; }

  static void TypeInto(const QDialog& dialog, const char* name, const char* text) {
    TabTo(dialog, name);
    Type(dialog, QString::fromUtf8(text));
  }
  /// What the controls show, in their order.
  static std::string Shown(const QDialog& dialog) {
    QStringList texts;
    for (const char* name : {"OptUTCOffset", "OptMpsWptOrgName", "OptMpsWptDestinationName", "OptWptTrackLogStep"})
      texts.append(dialog.findChild<QLineEdit*>(name)->text());
    texts.append(dialog.findChild<QCheckBox*>("OptMpsWptRPnumberingDown")->isChecked() ? "down" : "up");
    return texts.join('|').toStdString();
  }

  DialogPlans plans;
};

TEST_F(ScriptOptionsDialogTest, OpensWithTheSettingsAndOkWritesTheFile) {
  Export([](QDialog& dialog) {
    EXPECT_TRUE(dialog.isModal());
    EXPECT_EQ(Shown(dialog), "0|||1|up");
    EXPECT_EQ(FocusOf(dialog), "OptUTCOffset");
    Press(dialog, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible()) << "Enter is Ok";
  });
  EXPECT_EQ(Options(), ScriptOptions{});
  EXPECT_TRUE(FileContents(Out()).starts_with("//Header")) << FileContents(Out()).substr(0, 80);
  EXPECT_EQ(Messages(), "");
}

TEST_F(ScriptOptionsDialogTest, WhatIsTypedShapesTheScriptAndStandsThereTheNextTime) {
  Export([](QDialog& dialog) {
    TypeInto(dialog, "OptUTCOffset", "9");
    TypeInto(dialog, "OptMpsWptOrgName", "START-1");
    TypeInto(dialog, "OptMpsWptDestinationName", "GOAL-1");
    TabTo(dialog, "OptMpsWptRPnumberingDown");
    Press(dialog, Qt::Key_Space);
    TypeInto(dialog, "OptWptTrackLogStep", "5");
    TabTo(dialog, "OptMpsWptOk");
    Press(dialog, Qt::Key_Space);
  });
  EXPECT_EQ(Options(), (ScriptOptions{9, "START-1", "GOAL-1", 1, 5}));
  const std::string script = FileContents(Out());
  EXPECT_NE(script.find("START-1"), std::string::npos);
  EXPECT_NE(script.find("GOAL-1"), std::string::npos);
  answerer.Answer(QMessageBox::Ok);
  Export([](QDialog& dialog) {
    EXPECT_EQ(Shown(dialog), "9|START-1|GOAL-1|5|down");
    TabTo(dialog, "OptMpsWptRPnumberingDown");
    Press(dialog, Qt::Key_Space);
    Press(dialog, Qt::Key_Return);
  });
  EXPECT_EQ(Options().numbering_down, 0);
}

TEST_F(ScriptOptionsDialogTest, UpdateStoresAndStaysOpen) {
  Export([this](QDialog& dialog) {
    TypeInto(dialog, "OptWptTrackLogStep", "7");
    TabTo(dialog, "OptMpsWptUpdate");
    Press(dialog, Qt::Key_Space);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Options().track_log_step, 7);
    TabTo(dialog, "OptMpsWptOk");
    Press(dialog, Qt::Key_Return);
  });
  EXPECT_EQ(Options().track_log_step, 7);
  EXPECT_TRUE(std::filesystem::exists(Out()));
}

TEST_F(ScriptOptionsDialogTest, CancelKeepsTheSettingsAndWritesNothing) {
  PutFile(Out(), "precious");
  Check("AutoDelete");
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
    answerer.Answer(QMessageBox::Ok);
    Export([key](QDialog& dialog) {
      TypeInto(dialog, "OptUTCOffset", "9");
      TypeInto(dialog, "OptMpsWptOrgName", "NO");
      if (key == Qt::Key_Return) TabTo(dialog, "Cancel");
      Press(dialog, key);
      EXPECT_FALSE(dialog.isVisible());
    });
  }
  EXPECT_EQ(Options(), ScriptOptions{});
  EXPECT_EQ(FileContents(Out()), "precious");
  EXPECT_EQ(answerer.boxes.size(), 2U) << "the question before a file is replaced, and nothing else: " << Messages();
  EXPECT_EQ(Status(), "");
  EXPECT_EQ(Texts("GpsNum"), "-|1|-") << "what was not written is not deleted";
}

TEST_F(ScriptOptionsDialogTest, CancelDoesNotTakeBackAnUpdate) {
  Export([](QDialog& dialog) {
    TypeInto(dialog, "OptUTCOffset", "9");
    TabTo(dialog, "OptMpsWptUpdate");
    Press(dialog, Qt::Key_Space);
    TypeInto(dialog, "OptUTCOffset", "5");
    Press(dialog, Qt::Key_Escape);
  });
  EXPECT_EQ(Options().utc_offset_hours, 9);
  EXPECT_FALSE(std::filesystem::exists(Out()));
}

TEST_F(ScriptOptionsDialogTest, NumbersAreTheirLeadingOnes) {
  const struct {
    const char* text;
    int stored;
  } cases[] = {{"9h", 9}, {"abc", 0}, {"", 0}, {"-3", -3}, {"2.6x", 3}, {"32767", 32767}, {"-32768", -32768}};
  for (const auto& one : cases) {
    answerer.Answer(QMessageBox::Ok);
    Export([&](QDialog& dialog) {
      TypeInto(dialog, "OptUTCOffset", one.text);
      Press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(Options().utc_offset_hours, one.stored) << one.text;
  }
}

TEST_F(ScriptOptionsDialogTest, ANumberOutOfRangeIsToldAndNothingIsStored) {
  for (const char* control : {"OptUTCOffset", "OptWptTrackLogStep"}) {
    for (const char* number : {"32768", "-32769", "1E99"}) {
      Export([&](QDialog& dialog) {
        TypeInto(dialog, "OptMpsWptOrgName", "NO");
        TypeInto(dialog, control, number);
        answerer.boxes.clear();
        Press(dialog, Qt::Key_Return);
        ASSERT_EQ(answerer.boxes.size(), 1U);
        EXPECT_TRUE(answerer.boxes[0].text.endsWith(number)) << Messages();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(FocusOf(dialog), control) << "the number to correct";
        TabTo(dialog, "OptMpsWptUpdate");
        Press(dialog, Qt::Key_Space);
        EXPECT_EQ(answerer.boxes.size(), 2U);
        Press(dialog, Qt::Key_Escape);
      });
      EXPECT_EQ(Options(), ScriptOptions{}) << number;
      EXPECT_FALSE(std::filesystem::exists(Out()));
    }
  }
}

TEST_F(ScriptOptionsDialogTest, ACopyAsksAsWell) {
  plans.Next("MpsOption", [](QDialog& dialog) {
    TypeInto(dialog, "OptMpsWptOrgName", "START-1");
    Press(dialog, Qt::Key_Return);
  });
  Click("Copy");
  EXPECT_TRUE(Clipboard().starts_with("//Header")) << Clipboard().substr(0, 80);
  EXPECT_NE(Clipboard().find("START-1"), std::string::npos);
}

TEST_F(ScriptOptionsDialogTest, OtherTypesAskNothing) {
  auto& type = Get<QComboBox>("OutputTypeOption");
  for (int i = 0; i < 2; ++i) {
    QTest::keyClick(&type, Qt::Key_Up);
    Click("Copy");
    EXPECT_FALSE(Clipboard().empty());
    EXPECT_FALSE(Clipboard().starts_with("//Header"));
  }
  EXPECT_EQ(window->Main().State().Settings().format, FormatId::Standard);
}

TEST_F(ScriptOptionsDialogTest, TabFollowsTheReadingOrderHoweverTheDesktopPlacesButtons) {
  constexpr int Layouts = 6;
  for (int layout = 0; layout < Layouts; ++layout) {
    qApp->setStyleSheet(QString("QDialogButtonBox { button-layout: %1 }").arg(layout));
    Export([&](QDialog& dialog) {
      QList<QWidget*> buttons{dialog.findChild<QWidget*>("OptMpsWptUpdate"), dialog.findChild<QWidget*>("OptMpsWptOk"),
                              dialog.findChild<QWidget*>("Cancel")};
      std::sort(buttons.begin(), buttons.end(), [](const QWidget* a, const QWidget* b) { return a->x() < b->x(); });
      std::string order =
          "OptUTCOffset OptMpsWptOrgName OptMpsWptDestinationName OptMpsWptRPnumberingDown OptWptTrackLogStep";
      for (const QWidget* button : buttons)
        order += " " + button->objectName().toStdString();
      EXPECT_EQ(TabOrderOf(dialog), order) << layout;
      Press(dialog, Qt::Key_Escape);
    });
  }
  qApp->setStyleSheet(QString());
}

TEST_F(ScriptOptionsDialogTest, NoKeyLeadsToTwoControls) {
  Export([](QDialog& dialog) {
    EXPECT_EQ(MnemonicsOf(dialog), "DGSTUZ");
    Press(dialog, Qt::Key_Escape);
  });
}

}  // namespace
}  // namespace walrim
