// What the last line of the window tells, and how far a transfer has come.
#include <QDesktopServices>
#include <QUrl>

#include "app/Messages.h"
#include "window/Messages.h"
#include "window/StallOffer.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

constexpr std::string_view TwoWaypoints =
    "WPT\tD\tWGS84\t=\"A\"\t35.5\t139.25\t=\"\"\r\nWPT\tD\tWGS84\t=\"B\"\t36\t140\t=\"\"\r\n";

/// Takes the links that would be opened.
class OpenedLinks : public QObject {
  Q_OBJECT

 public:
  OpenedLinks() { QDesktopServices::setUrlHandler("file", this, "Take"); }
  OpenedLinks(const OpenedLinks&) = delete;
  OpenedLinks& operator=(const OpenedLinks&) = delete;
  ~OpenedLinks() override { QDesktopServices::unsetUrlHandler("file"); }

  Q_INVOKABLE void Take(const QUrl& url) { paths.append(url.toLocalFile()); }

  QStringList paths;
};

class StatusLineTest : public WindowTest {
 protected:
  [[nodiscard]] std::string Told() const {
    const auto& told = Get<QLabel>("Told");
    return told.isVisible() ? told.text().toStdString() : std::string();
  }
  [[nodiscard]] bool Shown(const char* name) const { return Get<QWidget>(name).isVisible(); }
  void Import(std::string_view contents) {
    PutFile(folder.Path("in.grc"), contents);
    window->ImportFiles({folder.Path("in.grc")});
  }
};

// ---- What was done

TEST_F(StatusLineTest, ASavedFileIsToldAndItsFolderOpens) {
  EXPECT_EQ(Told(), "");
  EXPECT_FALSE(Shown("OpenFolder"));
  Check("DownCheck_0");
  Click("GpsDownLoad");
  Check("DoCheck_0");
  const std::string path = folder.Path("高尾 山.grc");
  answerer.ChooseFile(QString::fromStdString(path));
  Click("FileExport");
  EXPECT_EQ(Told(), "19件を " + path + " に保存しました．");
  EXPECT_EQ(Status(), "") << "the status text is as it was";
  ASSERT_TRUE(Shown("OpenFolder"));
  OpenedLinks links;
  Click("OpenFolder");
  ASSERT_EQ(links.paths.size(), 1);
  EXPECT_EQ(links.paths.first().toStdString() + "/高尾 山.grc", path);
}

TEST_F(StatusLineTest, CopiesAndUploadsAreToldAndStayUntilSomethingElseIsDone) {
  Import(TwoWaypoints);
  Click("Copy");
  EXPECT_EQ(Told(), "2件をコピーしました．");
  Click("GpsUpLoad");
  EXPECT_EQ(Told(), "2件を送信しました．");
  EXPECT_FALSE(Shown("OpenFolder"));
  Click("Get_GpsInfo");
  EXPECT_EQ(Told(), "2件を送信しました．");
  answerer.ChooseFile("");
  Click("FileExport");
  EXPECT_EQ(Told(), "2件を送信しました．") << "nothing was saved";
}

TEST_F(StatusLineTest, OnlyCheckedRecordsAreCounted) {
  Import(TwoWaypoints);
  Data().SetChosen(DataKind::Waypoint, 0, false);
  Click("Copy");
  EXPECT_EQ(Told(), "1件をコピーしました．");
}

TEST_F(StatusLineTest, AnUploadThatFailsIsNotTold) {
  DemoReceiverOptions options;
  options.faults.silent_after = 8;
  UseReceiver(options);
  Import(TwoWaypoints);
  EXPECT_EQ(Told(), "2件を取り込みました．");
  Click("GpsUpLoad");
  EXPECT_EQ(Messages(), std::string(messages::LinkLost));
  EXPECT_EQ(Told(), "2件を取り込みました．");
}

// ---- Duplicates

TEST_F(StatusLineTest, WhatWasThereAlreadyIsToldAndTakenOutWithOnePress) {
  Import(TwoWaypoints);
  EXPECT_EQ(Told(), "2件を取り込みました．");
  EXPECT_FALSE(Shown("RemoveDuplicates"));
  Import(std::string(TwoWaypoints) + "WPT\tD\tWGS84\t=\"C\"\t36\t140\t=\"\"\r\n");
  EXPECT_EQ(Told(), "3件を取り込みました（重複 2件）．");
  EXPECT_EQ(Texts("GpsNum"), "5|-|-");
  ASSERT_TRUE(Shown("RemoveDuplicates"));
  Click("RemoveDuplicates");
  EXPECT_EQ(Texts("GpsNum"), "3|-|-");
  EXPECT_EQ(Data().Waypoints().back().ident, "C");
  EXPECT_FALSE(Shown("RemoveDuplicates"));
  QTest::keySequence(window.get(), QKeySequence("Ctrl+Z"));
  EXPECT_EQ(Texts("GpsNum"), "5|-|-");
  EXPECT_FALSE(Shown("RemoveDuplicates")) << "it was told before something else was done";
}

TEST_F(StatusLineTest, WhatWasDownloadedAndSavedIsKnownWhenItComesBack) {
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  CheckAll("DoCheck");
  answerer.ChooseFile(QString::fromStdString(folder.Path("all.grc")));
  Click("FileExport");
  const std::string held = Texts("GpsNum");
  EXPECT_TRUE(Told().starts_with("24件を ")) << Told() << held;
  window->ImportFiles({folder.Path("all.grc")});
  EXPECT_EQ(Told(), "24件を取り込みました（重複 24件）．");
  Click("RemoveDuplicates");
  EXPECT_EQ(Data().Waypoints().size(), 19U);
  EXPECT_EQ(Data().Routes().size(), 2U);
  EXPECT_EQ(Data().Logs().size(), 3U);
}

TEST_F(StatusLineTest, AChangeOfTheRecordsTakesTheOfferAway) {
  Import(TwoWaypoints);
  Import(TwoWaypoints);
  ASSERT_TRUE(Shown("RemoveDuplicates"));
  EXPECT_EQ(window->Main().Records().EditCell(DataKind::Waypoint, {0, {}}, EditField::Name, "Z"), "");
  window->ShowControls();
  EXPECT_FALSE(Shown("RemoveDuplicates"));
}

// ---- Progress

TEST_F(StatusLineTest, OneProgressGoesThroughAllTheKinds) {
  CheckAll("DownCheck");
  Click("Get_GpsInfo");
  int last = 0;
  QStringList parts;
  event_loop.on_yield = [&] {
    const auto& bar = Get<QProgressBar>("Progress");
    if (!bar.isVisible()) return;
    EXPECT_GE(bar.value(), last) << "it never goes back";
    last = bar.value();
    const QString part = Get<QLabel>("Told").text();
    if (parts.isEmpty() || parts.last() != part) parts.append(part);
    EXPECT_TRUE(Status().starts_with("DownLoading : ")) << "the status text is there beside it: " << Status();
  };
  Click("GpsDownLoad");
  event_loop.on_yield = {};
  EXPECT_EQ(parts.join(' ').toStdString(), "受信中：Waypoint（1/3） 受信中：Route（2/3） 受信中：TrackLog（3/3）");
  EXPECT_GT(last, Get<QProgressBar>("Progress").maximum() * 98 / 100);
  EXPECT_FALSE(Shown("Progress"));
  EXPECT_EQ(Told(), "");
}

TEST_F(StatusLineTest, AKindThatIsNotTransferredTakesNoPart) {
  Check("DownCheck_0");
  Check("DownCheck_2");
  Click("Get_GpsInfo");
  QStringList parts;
  event_loop.on_yield = [&] {
    const QString part = Get<QLabel>("Told").text();
    if (!part.isEmpty() && (parts.isEmpty() || parts.last() != part)) parts.append(part);
  };
  Click("GpsDownLoad");
  EXPECT_EQ(parts.join(' ').toStdString(), "受信中：Waypoint（1/2） 受信中：TrackLog（2/2）");
}

// ---- Standstill

/// Notes when a widget comes to be seen, be it for a moment.
class ShowSpy : public QObject {
 public:
  explicit ShowSpy(QWidget& widget) { widget.installEventFilter(this); }

  bool shown = false;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    shown = shown || event->type() == QEvent::Show;
    return false;
  }
};

class StandstillTest : public StatusLineTest {
 protected:
  /// Does something once, amid the waypoints.
  void AmidTheWaypoints(std::function<void()> act) {
    Check("DownCheck_0");
    bool done = false;
    event_loop.on_yield = [&] {
      if (done || !Status().starts_with("DownLoading : Waypoint [5")) return;
      done = true;
      act();
    };
    Click("GpsDownLoad");
    event_loop.on_yield = {};
    EXPECT_TRUE(done);
  }
};

TEST_F(StandstillTest, ATransferInWhichNothingMovesOffersToCancel) {
  const ShowSpy offer(Get<QWidget>("StallOffer"));
  AmidTheWaypoints([&] { clock.Advance(StallOffer::Patience); });
  EXPECT_TRUE(offer.shown);
  EXPECT_FALSE(Shown("StallOffer")) << "it goes with the transfer";
}

TEST_F(StandstillTest, AShortPauseOffersNothing) {
  const ShowSpy offer(Get<QWidget>("StallOffer"));
  AmidTheWaypoints([&] { clock.Advance(StallOffer::Patience - std::chrono::milliseconds(200)); });
  EXPECT_FALSE(offer.shown);
}

TEST_F(StandstillTest, TheOfferedButtonCancels) {
  AmidTheWaypoints([&] {
    clock.Advance(StallOffer::Patience);
    dynamic_cast<StallOffer&>(Get<QFrame>("StallOffer")).Look();
    Click("StallCancel");
  });
  EXPECT_EQ(Messages(), "");
  EXPECT_EQ(Data().Waypoints().size(), 0U);
  EXPECT_FALSE(demo_port->PortOpen());
}

TEST_F(StandstillTest, TheOfferGoesWhenSomethingMoves) {
  StallOffer offer(clock);
  offer.Look();
  EXPECT_TRUE(offer.isHidden()) << "nothing runs";
  offer.Moved();
  clock.Advance(StallOffer::Patience);
  offer.Look();
  EXPECT_FALSE(offer.isHidden());
  offer.Moved();
  EXPECT_TRUE(offer.isHidden());
  clock.Advance(StallOffer::Patience);
  offer.Ended();
  offer.Look();
  EXPECT_TRUE(offer.isHidden());
}

// ---- Cancel

TEST_F(StatusLineTest, EscapeEndsTheQuestionForTheCounts) {
  UseReceiver({}, 9600);
  bool pressed = false;
  event_loop.on_yield = [&] {
    if (pressed || Status() != messages::Counting(DataKind::Route)) return;
    pressed = true;
    EXPECT_TRUE(Get<QPushButton>("Cancel").isEnabled());
    QTest::keyClick(window.get(), Qt::Key_Escape);
  };
  Click("Get_GpsInfo");
  EXPECT_TRUE(pressed);
  EXPECT_EQ(Get<QLineEdit>("GpsDataNum_2").text(), "");
  EXPECT_FALSE(demo_port->PortOpen());
  EXPECT_EQ(Messages(), "");
  EXPECT_TRUE(Get<QPushButton>("Get_GpsInfo").isEnabled());
}

}  // namespace
}  // namespace walrim

#include "StatusLine_test.moc"
