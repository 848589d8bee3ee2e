// What is dropped on the window, pasted into it, or typed as a link.
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "app/Messages.h"
#include "window/DialogPlans.h"
#include "window/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr std::string_view OneWaypoint = "WPT\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n";
constexpr std::string_view OneRoute = "RTH\t1\t=\"R\"\t1\r\nRTP\tD\tWGS84\t=\"A\"\t35\t139\t=\"\"\r\n";
const std::string OnePoint = "35.6252, 139.2437";
const std::string FtpMessage(messages::FtpRefused);

/// Data as a file manager or a browser drags them.
struct Dragged {
  explicit Dragged(const QList<QUrl>& links, const std::string& text = {}) {
    mime.setUrls(links);
    if (!text.empty()) mime.setText(QString::fromStdString(text));
  }
  explicit Dragged(const std::string& text) { mime.setText(QString::fromStdString(text)); }

  QMimeData mime;
};

/// Drags data over a widget; whether the window would take them.
bool DragOver(QWidget& widget, const Dragged& dragged) {
  QDragEnterEvent event(QPoint(2, 2), Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, &dragged.mime, Qt::LeftButton,
                        {});
  event.ignore();
  QApplication::sendEvent(&widget, &event);
  return event.isAccepted();
}

/// Takes the point of a dialog as it is.
void TakeTakao(QDialog& dialog) {
  EXPECT_EQ(dialog.findChild<QLineEdit*>("ClipLat")->text(), "35.6252");
  EXPECT_EQ(dialog.findChild<QLineEdit*>("ClipLon")->text(), "139.2437");
  TabTo(dialog, "Ok");
  Press(dialog, Qt::Key_Return);
}

class DropTest : public WindowTest {
 protected:
  DropTest() {
    PutFile(folder.Path("a.grc"), OneWaypoint);
    PutFile(folder.Path("b.grc"), OneRoute);
  }

  /// Drags data over a widget and lets them go; whether they were taken.
  static bool Drop(QWidget& widget, const Dragged& dragged) {
    if (!DragOver(widget, dragged)) return false;
    QDropEvent event(QPointF(2, 2), Qt::CopyAction | Qt::MoveAction, &dragged.mime, Qt::LeftButton, {});
    event.ignore();
    QApplication::sendEvent(&widget, &event);
    const bool taken = event.isAccepted();
    EXPECT_TRUE(!taken || event.dropAction() == Qt::CopyAction) << "a file manager must not delete what it gave away";
    // The import comes once whoever drags has been let go.
    QCoreApplication::processEvents();
    return taken;
  }
  bool Drop(const Dragged& dragged) { return Drop(*window, dragged); }

  [[nodiscard]] QUrl FileUrl(const char* name) const {
    return QUrl::fromLocalFile(QString::fromStdString(folder.Path(name)));
  }
  [[nodiscard]] QWidget& ImportButton() const { return Get<QPushButton>("FileImport"); }
};

// ---- Drops

TEST_F(DropTest, AFileIsImportedFromTheButtonAndFromAnywhere) {
  EXPECT_TRUE(Drop(ImportButton(), Dragged({FileUrl("a.grc")})));
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
  EXPECT_TRUE(Status().starts_with("取り込み：Waypoint 1，")) << Status();
  EXPECT_TRUE(Drop(Dragged({FileUrl("b.grc")})));
  EXPECT_EQ(Texts("GpsNum"), "1|1|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(DropTest, EveryPlaceOfTheWindowTakesAFileWhateverElseItWouldTake) {
  const Dragged file({FileUrl("a.grc")}, folder.Path("a.grc"));
  std::size_t drops = 0;
  Unfold();
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->window() != window.get()) continue;
    EXPECT_TRUE(Drop(*widget, file)) << widget->metaObject()->className() << widget->objectName().toStdString();
    EXPECT_EQ(Data().Count(DataKind::Waypoint), ++drops)
        << widget->metaObject()->className() << widget->objectName().toStdString();
  }
  EXPECT_GT(drops, 50);
}

TEST_F(DropTest, SeveralFilesAreReadOneAfterTheOther) {
  PutFile(folder.Path("other.bin"), "hello\r\n");
  EXPECT_TRUE(Drop(Dragged({FileUrl("a.grc"), FileUrl("other.bin"), FileUrl("b.grc")})));
  EXPECT_EQ(Texts("GpsNum"), "1|1|-");
  EXPECT_EQ(Messages(), messages::UnsupportedFile(folder.Path("other.bin")))
      << "one that cannot be used does not keep the others out";
  EXPECT_TRUE(Status().starts_with("取り込み：Waypoint 1，Route 1")) << Status();
}

TEST_F(DropTest, AFileWithBlanksAndJapaneseInItsNameIsFound) {
  PutFile(folder.Path("高尾 山%20.grc"), OneWaypoint);
  EXPECT_TRUE(Drop(Dragged({FileUrl("高尾 山%20.grc")})));
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
}

TEST_F(DropTest, AFileThatIsGoneIsToldAndChangesNothing) {
  EXPECT_TRUE(Drop(Dragged({FileUrl("gone.grc")})));
  ASSERT_EQ(answerer.boxes.size(), 1U);
  EXPECT_TRUE(answerer.boxes[0].text.contains("gone.grc")) << Messages();
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

TEST_F(DropTest, AHttpLinkIsFetched) {
  inet.answer.bytes = OneWaypoint;
  for (const char* link : {"http://example.com/a.grc", "HTTP://example.com/a.grc", "Https://example.com/a.grc"})
    EXPECT_TRUE(Drop(ImportButton(), Dragged(link))) << link;
  EXPECT_EQ(inet.links, (std::vector<std::string>{"http://example.com/a.grc", "HTTP://example.com/a.grc",
                                                  "Https://example.com/a.grc"}));
  EXPECT_EQ(Texts("GpsNum"), "3|-|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(DropTest, ALinkFromABrowserIsFetchedOnce) {
  inet.answer.bytes = OneWaypoint;
  EXPECT_TRUE(Drop(Dragged({QUrl("https://example.com/a%20b.grc?x=1")}, "高尾山のデータ")));
  EXPECT_EQ(inet.links, std::vector<std::string>{"https://example.com/a%20b.grc?x=1"});
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
}

TEST_F(DropTest, WhileALinkIsFetchedTheStatusTellsWhichAndCancelEndsIt) {
  inet.answer.bytes = OneWaypoint;
  std::string status;
  inet.on_open = [&] {
    status = Status();
    EXPECT_FALSE(Get<QPushButton>("Paste").isEnabled());
    EXPECT_FALSE(DragOver(*window, Dragged(OnePoint)));
    Click("Cancel");
  };
  EXPECT_TRUE(Drop(Dragged("http://example.com/a.grc")));
  EXPECT_EQ(status, "Import from http://example.com/a.grc");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
  EXPECT_EQ(Messages(), "");
  EXPECT_TRUE(Get<QPushButton>("Paste").isEnabled());
  EXPECT_FALSE(Get<QPushButton>("Cancel").isEnabled());
}

TEST_F(DropTest, AnFtpLinkIsRefusedWithItsMessage) {
  EXPECT_TRUE(Drop(ImportButton(), Dragged("ftp://example.com/a.grc")));
  EXPECT_TRUE(Drop(Dragged({QUrl("ftp://example.com/a.grc")})));
  EXPECT_EQ(Messages(), FtpMessage + "|" + FtpMessage);
  EXPECT_EQ(answerer.boxes[0].buttons, QStringList{"OK"});
  EXPECT_TRUE(inet.links.empty());
}

TEST_F(DropTest, AFileLinkThatIsDroppedAsTextIsAPath) {
  EXPECT_TRUE(Drop(Dragged("FILE://" + folder.Path("a.grc"))));
  EXPECT_TRUE(Drop(Dragged("file://localhost" + folder.Path("b.grc") + "\r\n")));
  EXPECT_EQ(Texts("GpsNum"), "1|1|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(DropTest, AFileOfAnotherComputerIsRefused) {
  EXPECT_TRUE(Drop(Dragged({QUrl("file://elsewhere/a.grc")})));
  ASSERT_EQ(answerer.boxes.size(), 1U);
  EXPECT_TRUE(answerer.boxes[0].text.contains("elsewhere")) << Messages();
}

TEST_F(DropTest, ATextOfLinesIsImported) {
  EXPECT_TRUE(Drop(Dragged(std::string(OneWaypoint))));
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
}

TEST_F(DropTest, ATextThatIsNothingIsRefused) {
  EXPECT_TRUE(Drop(Dragged("good morning")));
  EXPECT_EQ(Messages(), messages::UnsupportedText());
}

TEST_F(DropTest, APointFromAMapOpensItsDialog) {
  DialogPlans plans;
  const Dragged text(OnePoint);
  const Dragged link({QUrl("geo:35.6252,139.2437")});
  for (const Dragged* dragged : {&text, &link}) {
    plans.Next("ClipProAtlas", TakeTakao);
    EXPECT_TRUE(Drop(*dragged));
  }
  EXPECT_EQ(Texts("GpsNum"), "2|-|-");
}

TEST_F(DropTest, TheAddressOfAMapsPageIsAPointHoweverItIsDragged) {
  constexpr const char* Address = "https://www.google.com/maps/search/?api=1&query=35.6252,139.2437";
  DialogPlans plans;
  const Dragged text{std::string(Address)};
  const Dragged link({QUrl(Address)}, "Google マップ");
  for (const Dragged* dragged : {&text, &link}) {
    plans.Next("ClipProAtlas", TakeTakao);
    EXPECT_TRUE(Drop(*dragged));
  }
  EXPECT_EQ(Texts("GpsNum"), "2|-|-");
  EXPECT_TRUE(inet.links.empty());
}

TEST_F(DropTest, WithAutoUploadADropGoesOnToTheReceiver) {
  Check("AutoUpload");
  Check("DoCheck_0");
  EXPECT_TRUE(Drop(Dragged({FileUrl("b.grc")})));
  EXPECT_FALSE(Get<QLineEdit>("GpsDataNum_1").text().isEmpty()) << "the receiver's new count";
  EXPECT_TRUE(Get<QLineEdit>("GpsDataNum_0").text().isEmpty());
  EXPECT_FALSE(Get<QCheckBox>("DoCheck_0").isChecked()) << "what came in is what goes out";
  EXPECT_EQ(Messages(), "");
}

TEST_F(DropTest, WithAutoUploadAPointGoesOnAsAWaypointWhateverCameInBefore) {
  EXPECT_TRUE(Drop(Dragged({FileUrl("b.grc")})));
  Check("AutoUpload");
  DialogPlans plans;
  plans.Next("ClipProAtlas", [](QDialog& dialog) {
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Return);
  });
  EXPECT_TRUE(Drop(Dragged(OnePoint)));
  EXPECT_FALSE(Get<QLineEdit>("GpsDataNum_0").text().isEmpty());
  EXPECT_TRUE(Get<QLineEdit>("GpsDataNum_1").text().isEmpty());
  EXPECT_EQ(Messages(), "");
}

TEST_F(DropTest, ADropDuringATransferIsIgnored) {
  CheckAll("DownCheck");
  int tries = 0;
  event_loop.on_yield = [&] {
    if (!Get<QProgressBar>("Progress").isVisible()) return;
    ++tries;
    EXPECT_FALSE(Drop(ImportButton(), Dragged({FileUrl("a.grc")})));
    EXPECT_FALSE(Drop(Dragged(OnePoint)));
    EXPECT_TRUE(Status().starts_with("DownLoading")) << Status();
  };
  Click("GpsDownLoad");
  event_loop.on_yield = {};
  EXPECT_GT(tries, 0);
  const std::size_t downloaded = Data().Count(DataKind::Waypoint);
  QCoreApplication::processEvents();
  EXPECT_EQ(Data().Count(DataKind::Waypoint), downloaded);
  EXPECT_EQ(Messages(), "");
}

TEST_F(DropTest, WhatWasDraggedInBeforeATransferAndDroppedDuringItIsIgnored) {
  const Dragged file({FileUrl("b.grc")});
  ASSERT_TRUE(DragOver(*window, file));
  Check("DownCheck_0");
  bool dropped = false;
  event_loop.on_yield = [&] {
    if (dropped || !Get<QProgressBar>("Progress").isVisible()) return;
    dropped = true;
    QDropEvent event(QPointF(2, 2), Qt::CopyAction, &file.mime, Qt::LeftButton, {});
    event.ignore();
    QApplication::sendEvent(window.get(), &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_TRUE(Status().starts_with("DownLoading")) << Status();
  };
  Click("GpsDownLoad");
  event_loop.on_yield = {};
  QCoreApplication::processEvents();
  EXPECT_TRUE(dropped);
  EXPECT_EQ(Get<QLineEdit>("GpsNum_1").text(), "-");
}

// ---- What a drag shows

TEST_F(DropTest, ADragSaysWhatADropWouldDoAndLeavesNoTrace) {
  window->ImportFiles({folder.Path("a.grc")});
  const std::string before = Status();
  auto& button = Get<QPushButton>("FileImport");
  ASSERT_TRUE(DragOver(*window, Dragged({FileUrl("b.grc")})));
  EXPECT_EQ(Status(), window_messages::DropHint);
  EXPECT_TRUE(button.isDown());
  QDragLeaveEvent leave;
  QApplication::sendEvent(window.get(), &leave);
  EXPECT_EQ(Status(), before);
  EXPECT_FALSE(button.isDown());
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
}

TEST_F(DropTest, DragsThatHoldNeitherFileNorTextAreNotTaken) {
  EXPECT_FALSE(DragOver(*window, Dragged(QList<QUrl>())));
  EXPECT_FALSE(DragOver(*window, Dragged(" \r\n")));
  EXPECT_EQ(Status(), "");
}

TEST_F(DropTest, WhatACommandToldDuringADragStaysWhenTheDragLeaves) {
  ASSERT_TRUE(DragOver(*window, Dragged({FileUrl("b.grc")})));
  EXPECT_EQ(window->RunExternalCommand("GetFile", folder.Path("a.grc"), ""), CommandDone);
  QDragLeaveEvent leave;
  QApplication::sendEvent(window.get(), &leave);
  EXPECT_TRUE(Status().starts_with("取り込み：Waypoint 1，")) << Status();
}

// ---- Pastes

class PasteTest : public DropTest {
 protected:
  /// Pastes a text with the key or with the button.
  void Paste(const std::string& text, bool with_key) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    if (with_key) {
      window->activateWindow();
      ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
      QTest::keyClick(window.get(), Qt::Key_V, Qt::ControlModifier);
    } else {
      Click("Paste");
    }
  }
};

TEST_F(PasteTest, LinesOfEveryTypeComeInByKeyAndByButton) {
  const std::string wpt_plus = "WP,D,A,35.6252,139.2437,11/15/2002,14:05:12,summit\r\n";
  const std::string script =
      "//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:25:30;\r\nmapserver script ver=1.0;\r\n"
      "\t\tpoint\toid=1\r\n\t\t\t\tgid=5131\r\n\t\t\t\tpos=35/37/30.7,139/14/37.3\r\n\t\t\t\tstr=TAKAO;\r\n"
      "mapserver end;\r\n";
  std::size_t held = 0;
  for (const std::string& text : {std::string(OneWaypoint), wpt_plus, script}) {
    for (const bool with_key : {true, false}) {
      Paste(text, with_key);
      EXPECT_EQ(Data().Count(DataKind::Waypoint), ++held) << text;
      EXPECT_TRUE(Status().starts_with("取り込み：Waypoint 1，")) << Status();
    }
  }
  EXPECT_EQ(Messages(), "");
}

TEST_F(PasteTest, LinksAreFollowed) {
  inet.answer.bytes = OneWaypoint;
  std::string status;
  inet.on_open = [&] { status = Status(); };
  Paste("http://example.com/a.grc\r\n", true);
  EXPECT_EQ(inet.links, std::vector<std::string>{"http://example.com/a.grc"});
  EXPECT_EQ(status, "Clip From URL=http://example.com/a.grc");
  Paste("file://" + folder.Path("b.grc"), false);
  EXPECT_EQ(Texts("GpsNum"), "1|1|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(PasteTest, FtpIsRefused) {
  Paste("Ftp://example.com/a.grc", true);
  Paste("Ftp://example.com/a.grc", false);
  EXPECT_EQ(Messages(), FtpMessage + "|" + FtpMessage);
}

TEST_F(PasteTest, APointFromAMapOpensItsDialogByTheButtonToo) {
  DialogPlans plans;
  plans.Next("ClipProAtlas", [](QDialog& dialog) {
    TabTo(dialog, "Ok");
    Press(dialog, Qt::Key_Return);
  });
  Paste("北緯35度37分30.7秒 東経139度14分37.3秒", false);
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
}

TEST_F(PasteTest, TheAddressOfAMapsPageIsAPointByKeyAndByButton) {
  DialogPlans plans;
  for (const bool with_key : {true, false}) {
    plans.Next("ClipProAtlas", TakeTakao);
    Paste("https://maps.gsi.go.jp/#15/35.6252/139.2437/&base=std", with_key);
  }
  EXPECT_EQ(Texts("GpsNum"), "2|-|-");
  EXPECT_TRUE(inet.links.empty());
}

TEST_F(PasteTest, APositionOffTheGlobeIsRefusedWithWords) {
  Paste("https://maps.gsi.go.jp/#15/139.2437/35.6252/", true);
  EXPECT_EQ(Messages(), std::string(messages::OffGlobe));
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

TEST_F(PasteTest, NothingAndNonsenseAreRefusedAndHarmNothing) {
  window->ImportFiles({folder.Path("a.grc")});
  for (const char* text : {"", "good morning", "35.6252", "91, 181"})
    Paste(text, false);
  EXPECT_EQ(Messages(), std::string(messages::EmptyClipboard) + "|" + messages::UnsupportedText() + "|" +
                            messages::UnsupportedText() + "|" + messages::UnsupportedText());
  EXPECT_EQ(Texts("GpsNum"), "1|-|-");
}

TEST_F(PasteTest, ACopiedImageIsNoText) {
  QGuiApplication::clipboard()->setImage(QImage(4, 4, QImage::Format_RGB32));
  Click("Paste");
  EXPECT_EQ(Messages(), std::string(messages::EmptyClipboard));
}

// ---- Typed links

class LinkTest : public DropTest {
 protected:
  void TypeLink(const char* link, Qt::Key end = Qt::Key_Return) {
    DialogPlans plans;
    PlanLink(plans, link, end);
    AskForLink();
  }
  static void PlanLink(DialogPlans& plans, const char* link, Qt::Key end) {
    plans.Next("LinkDialog", [link, end](QDialog& dialog) {
      Type(dialog, QString::fromUtf8(link));
      Press(dialog, end);
    });
  }
  void AskForLink() {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTest::keyClick(window.get(), Qt::Key_L, Qt::ControlModifier);
  }
};

TEST_F(LinkTest, ATypedLinkIsImported) {
  inet.answer.bytes = OneWaypoint;
  std::string status;
  inet.on_open = [&] { status = Status(); };
  TypeLink(" https://example.com/a.grc ");
  EXPECT_EQ(inet.links, std::vector<std::string>{"https://example.com/a.grc"});
  EXPECT_EQ(status, "Import from https://example.com/a.grc");
  TypeLink(("file://" + folder.Path("b.grc")).c_str());
  EXPECT_EQ(Texts("GpsNum"), "1|1|-");
  EXPECT_EQ(Messages(), "");
}

TEST_F(LinkTest, ATypedAddressOfAMapsPageIsAPoint) {
  for (const char* address :
       {"map.yahoo.co.jp/place?lat=35.6252&lon=139.2437&zoom=16", "geo:35.6252,139.2437,599;u=5"}) {
    DialogPlans plans;
    PlanLink(plans, address, Qt::Key_Return);
    plans.Next("ClipProAtlas", TakeTakao);
    AskForLink();
  }
  EXPECT_EQ(Texts("GpsNum"), "2|-|-");
  EXPECT_TRUE(inet.links.empty());
}

TEST_F(LinkTest, WhatTheServerDidNotGiveIsTold) {
  inet.answer.error = "404";
  TypeLink("http://example.com/a.grc");
  EXPECT_EQ(Messages(), "404");
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

TEST_F(LinkTest, FtpIsRefusedAndAnEmptyLinkOrEscapeDoesNothing) {
  TypeLink("ftp://example.com/a.grc");
  EXPECT_EQ(Messages(), FtpMessage);
  TypeLink("  ");
  TypeLink("http://example.com/a.grc", Qt::Key_Escape);
  EXPECT_EQ(answerer.boxes.size(), 1U);
  EXPECT_TRUE(inet.links.empty());
}

TEST_F(LinkTest, WhileALinkIsTypedOtherProgramsAreToldToWait) {
  DialogPlans plans;
  plans.Next("LinkDialog", [this](QDialog& dialog) {
    EXPECT_EQ(window->RunExternalCommand("GetFile", folder.Path("a.grc"), ""), CommandBusy);
    Press(dialog, Qt::Key_Escape);
  });
  QTest::keyClick(window.get(), Qt::Key_L, Qt::ControlModifier);
  EXPECT_EQ(Texts("GpsNum"), "-|-|-");
}

}  // namespace
}  // namespace walrim
