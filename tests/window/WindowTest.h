// The real window, clicked and typed at, in front of a receiver made of software.
#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QToolButton>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "qt/QtEventLoop.h"
#include "receiver/DemoSerialPort.h"
#include "support/Fakes.h"
#include "support/Processes.h"
#include "window/Answerer.h"
#include "window/MainWindow.h"

namespace walrim {

/// The window's event loop, with a look at every turn.
class WatchedLoop : public QtEventLoop {
 public:
  void Yield() override {
    QtEventLoop::Yield();
    if (on_yield) on_yield();
  }

  std::function<void()> on_yield;
};

class WindowTestBase : public testing::Test {
 protected:
  /// The window in front of a line.
  void Open(SerialPort& port, const Clock& clock) {
    window = std::make_unique<MainWindow>(WindowParts{port, clock, event_loop, inet, [this] { return ports; }, &facts,
                                                      store.get(), recovery_folder, port_given});
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
  }

  template <typename Widget>
  [[nodiscard]] Widget& Get(const QString& name) const {
    auto* widget = window->findChild<Widget*>(name);
    if (widget == nullptr) throw std::runtime_error("no widget " + name.toStdString());
    return *widget;
  }
  void Click(const QString& name) const { QTest::mouseClick(&Get<QPushButton>(name), Qt::LeftButton); }
  /// Shows the settings.
  void Unfold() const { QTest::mouseClick(&Get<QToolButton>("Settings"), Qt::LeftButton); }
  void Check(const QString& name, bool checked = true) const {
    auto& box = Get<QCheckBox>(name);
    if (!box.isVisible()) Unfold();
    if (box.isChecked() != checked) {
      QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.height() / 2, box.height() / 2));
    }
    ASSERT_EQ(box.isChecked(), checked) << name.toStdString();
  }
  void CheckAll(const char* control) const {
    for (int kind = 0; kind < 3; ++kind)
      Check(QString("%1_%2").arg(control).arg(kind));
  }
  void ChooseLink(const char* text) const {
    auto& box = Get<QComboBox>("CheckedLink");
    box.setCurrentIndex(box.findText(QString::fromUtf8(text)));
  }
  /// The texts of an indexed text box: "12|2|3".
  [[nodiscard]] std::string Texts(const char* control) const {
    QStringList texts;
    for (int kind = 0; kind < 3; ++kind)
      texts.append(Get<QLineEdit>(QString("%1_%2").arg(control).arg(kind)).text());
    return texts.join('|').toStdString();
  }
  [[nodiscard]] std::string GpsInfo() const { return Get<QLabel>("GpsInfo").text().toStdString(); }
  [[nodiscard]] std::string Status() const { return Get<QLabel>("Status").text().toStdString(); }
  [[nodiscard]] std::string Messages() const { return answerer.Texts().join('|').toStdString(); }
  [[nodiscard]] DataSet& Data() const { return window->Main().State().Data(); }
  void PasteText(std::string_view text) const {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    Click("Paste");
  }
  static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }

  Answerer answerer;
  WatchedLoop event_loop;
  FakeInet inet;
  FakePortFacts facts;
  std::vector<NumberedPort> ports;
  TemporaryFolder folder;
  std::string recovery_folder;       ///< empty: nothing is kept
  std::unique_ptr<QSettings> store;  ///< what the window remembers; none at first
  bool port_given = false;
  std::unique_ptr<MainWindow> window;
};

/// In front of the demonstration receiver, in a time that passes only where the program waits.
class WindowTest : public WindowTestBase {
 protected:
  WindowTest() { UseReceiver({}); }

  void UseReceiver(DemoReceiverOptions options, int baud = 0) {
    window.reset();
    options.baud = baud;
    demo_port = std::make_unique<DemoSerialPort>(options, clock,
                                                 [this](std::chrono::nanoseconds time) { clock.Advance(time); });
    Open(*demo_port, clock);
    window->Main().State().Settings().port = "demo";
    window->ShowControls();
  }

  FakeClock clock;
  std::unique_ptr<DemoSerialPort> demo_port;
};

}  // namespace walrim
