#include "window/Program.h"

#include <QApplication>
#include <QFileSystemWatcher>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTimer>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "app/PortSwitch.h"
#include "qt/CommandSocket.h"
#include "qt/PortList.h"
#include "qt/QtClock.h"
#include "qt/QtEventLoop.h"
#include "qt/QtInet.h"
#include "qt/QtSerialPort.h"
#include "qt/SystemPortFacts.h"
#include "receiver/DemoSerialPort.h"
#include "window/AboutBox.h"
#include "window/DesktopState.h"
#include "window/FirstFrame.h"
#include "window/Language.h"
#include "window/MainWindow.h"
#include "window/WindowArguments.h"

namespace walrim {

namespace {

bool IsDemoPort(std::string_view name) {
  return name == DemoPortName;
}

/// The words of Qt's own dialogs in the language of the window.
void LoadTranslation(QTranslator& translator, Language language) {
  const QLocale locale(LanguageCode(language));
  if (translator.load(locale, "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&translator);
    // Dialogs that open next have words of their own, which must not be translated behind them.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange);
  }
}

/// A command's result; nothing while the window is busy.
std::optional<std::int32_t> AnswerCommand(MainWindow& window, const std::string& word, const std::string& arg1,
                                          const std::string& arg2) {
  const std::int32_t result = window.RunExternalCommand(word, arg1, arg2);
  if (result == CommandBusy) return std::nullopt;
  return result;
}

/// Device nodes come and go in their folder; who may use a new one is settled a moment later.
class PortWatch {
 public:
  void Start(MainWindow& window) {
    settle_.setSingleShot(true);
    settle_.setInterval(std::chrono::milliseconds(300));
    QObject::connect(&folder_, &QFileSystemWatcher::directoryChanged, &settle_, [this] { settle_.start(); });
    QObject::connect(&settle_, &QTimer::timeout, &window, [&window] { window.LookAtPorts(); });
    folder_.addPath("/dev");
    window.LookAtPorts();
  }

 private:
  QFileSystemWatcher folder_;
  QTimer settle_;
};

/// A second window works as well; it gets the commands once the first one has gone.
void TakeCommands(CommandSocket& socket, MainWindow& window) {
  const CommandPlace place = FindCommandPlace();
  if (place.problem.empty()) static_cast<void>(socket.ListenWhenFree(place.name));
  if (!place.problem.empty()) window.ShowStatus(place.problem);
}

std::string RecoveryFolder() {
  const auto state = UserStateFolder();
  return state ? (*state / "walrim").string() : std::string();
}

/// What a window stands on in a program of its own.
class Surroundings {
 public:
  explicit Surroundings(const WindowArguments& arguments)
      : arguments_(arguments),
        serial_port_(arguments.mapping),
        demo_port_({}, clock_, [](std::chrono::nanoseconds time) { std::this_thread::sleep_for(time); }),
        port_(serial_port_, demo_port_, IsDemoPort),
        facts_(clock_, arguments.mapping),
        store_(QSettings::IniFormat, QSettings::UserScope, "walrim", "walrim") {}

  [[nodiscard]] WindowParts Parts() {
    const auto list_ports = [this] {
      std::vector<NumberedPort> ports = ListPorts(arguments_.mapping);
      facts_.Look(ports);
      return ports;
    };
    const bool port_given = arguments_.demo || !arguments_.mapping.empty();
    return {port_, clock_, event_loop_, inet_, list_ports, &facts_, &store_, RecoveryFolder(), port_given};
  }

 private:
  const WindowArguments& arguments_;
  QtClock clock_;
  QtEventLoop event_loop_;
  QtSerialPort serial_port_;
  DemoSerialPort demo_port_;
  PortSwitch port_;
  QtInet inet_;
  SystemPortFacts facts_;
  QSettings store_;
};

int RunWindow(const WindowArguments& arguments, const StartHooks& hooks) {
  Surroundings surroundings(arguments);
  const Language language = LanguageOf(LoadDesktopState(*surroundings.Parts().store).language, QLocale());
  Speak(language);
  MainWindow window(surroundings.Parts(), Contents::Later);
  window.Main().Names().Use(NamesPath(std::getenv("XDG_DATA_HOME"), std::getenv("HOME")));
  if (arguments.demo) window.Main().State().Settings().port = DemoPortName;
  QTranslator translator;
  PortWatch port_watch;
  CommandSocket socket([&window](const std::string& word, const std::string& arg1, const std::string& arg2) {
    return AnswerCommand(window, word, arg1, arg2);
  });
  // What nobody sees comes once the window can be used.
  const auto finish = [&] {
    if (hooks.complete) hooks.complete();
    window.BuildSettings();
    window.setWindowIcon(ProgramIcon());
    LoadTranslation(translator, language);
    TakeCommands(socket, window);
    port_watch.Start(window);
    window.OfferRecovery();
    window.ImportFiles(arguments.files);
  };
  CallAfterFirstFrame(window, [&] {
    if (hooks.first_frame) hooks.first_frame();
    window.Build();
    CallAfterFirstFrame(*window.centralWidget(), finish);
  });
  window.show();
  return QApplication::exec();
}

int RunCommandCall(const CommandCall& call) {
  const CommandAnswer answer = SendCommand(FindCommandPlace(), call);
  if (answer.outcome == CommandAnswer::Outcome::Result) {
    std::printf("%d\n", answer.result);
    return std::fflush(stdout) == 0 ? 0 : 1;
  }
  if (answer.outcome == CommandAnswer::Outcome::Busy) {
    std::printf("%d\n", CommandBusy);
    return std::fflush(stdout) == 0 ? 0 : 1;
  }
  std::fprintf(stderr, "%s\n", answer.error.c_str());
  return 1;
}

int RunWithoutWindow(int argc, char** argv) {
  const ParsedWindowArguments parsed = ParseWindowArguments(argc, argv);
  if (!parsed.arguments) return parsed.exit_status;
  const QCoreApplication application(argc, argv);
  return parsed.arguments->command ? RunCommandCall(*parsed.arguments->command) : 1;
}

}  // namespace

int RunProgram(int argc, char** argv, const StartHooks& hooks) {
  if (NeedsNoWindow(argc, argv)) return RunWithoutWindow(argc, argv);
  QApplication application(argc, argv);
  QApplication::setApplicationName("walrim");
  QApplication::setApplicationDisplayName("");
  QApplication::setDesktopFileName("walrim");
  const ParsedWindowArguments parsed = ParseWindowArguments(argc, argv);
  if (!parsed.arguments) return parsed.exit_status;
  return RunWindow(*parsed.arguments, hooks);
}

}  // namespace walrim
