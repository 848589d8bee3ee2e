// The main window: the program's commands under the user's hands.
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/WalrimMain.h"
#include "window/ControlBinder.h"
#include "window/DefaultTicks.h"
#include "window/DesktopState.h"
#include "window/DropTarget.h"
#include "window/FocusAreas.h"
#include "window/ObservedLoop.h"
#include "window/PortBox.h"
#include "window/UploadActions.h"
#include "window/WindowDesktop.h"
#include "window/WindowDialogs.h"

class QAction;
class QLabel;
class QMenu;
class QPushButton;
class QStackedWidget;

namespace walrim {

class DataPanel;
class DoctorPanel;
class MapSplitter;
class ReceiverBar;
class RecordTables;
class RecoveryBar;
class RowMenu;
class SettingsPanel;
class StatusLine;
class TransferPanel;
class UndoMenu;

/// What the window stands on; all must outlive it.
struct WindowParts {
  SerialPort& port;
  const Clock& clock;
  EventLoop& event_loop;
  Inet& inet;
  PortBox::Ports ports;              ///< the serial ports there are now
  const PortFacts* facts = nullptr;  ///< without, nothing is known of who keeps them
  QSettings* store = nullptr;        ///< what is remembered between two starts; without, nothing is
  std::string recovery_folder{};  ///< for what is held should the program not come to its end; empty: nothing is kept
  bool port_given = false;        ///< the user has named a port for this start: the remembered one stays as it is
};

/// When the window's contents are made. An empty window is on the screen in a fraction of the time; who wants that
/// calls Build once it is.
enum class Contents { AtOnce, Later };

class MainWindow : public QMainWindow {
 public:
  explicit MainWindow(const WindowParts& parts, Contents contents = Contents::AtOnce);
  ~MainWindow() override;

  [[nodiscard]] WalrimMain& Main() { return main_; }

  /// Makes the contents; nothing else but showing and closing may come before.
  void Build();
  /// Makes what is folded away at first, unless it was unfolded before. To be called once all else can be used.
  void BuildSettings();

  void ShowStatus(std::string_view text) { desktop_.SetStatusCaption(text); }
  /// Shows controls that the program itself has changed.
  void ShowControls();
  /// Asks what becomes of the records that were held by programs that did not come to their end, and goes on.
  void OfferRecovery();
  /// Reads files one after the other, as the import button does with one.
  void ImportFiles(const std::vector<std::string>& paths);
  /// Runs a command that another program gives; returns ExternalCommands::Run's result.
  [[nodiscard]] std::int32_t RunExternalCommand(const std::string& command, const std::string& argument1,
                                                const std::string& argument2);
  /// Looks up the serial ports. One that has come since the last time is told, and chosen where the port that is set
  /// is not there.
  void LookAtPorts();

 protected:
  /// Asks what becomes of unsaved records. During a command the window closes as soon as that has ended; a transfer is
  /// cancelled for it.
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void BuildCentre();
  [[nodiscard]] QLabel* MakeNotices();
  void UnfoldSettings(bool unfolded);
  void BuildMenus();
  void BuildFileMenu();
  void BuildEditMenu();
  void BuildViewMenu();
  void BuildDeviceMenu();
  void ConnectButtons();
  void ConnectRecords();
  void SetTabOrder();
  QAction* AddAction(QMenu& menu, const char* text, const QKeySequence& keys, QPushButton& button);

  QAction* AddCommand(QMenu& menu, const char* name, const char* text, const std::function<void()>& command);

  /// Runs a command with the window's other commands out of reach. Does nothing while one runs.
  void Run(const std::function<void()>& command);
  /// The same for one that talks to the receiver: where none answers, the line is examined.
  void RunWithReceiver(const std::function<Outcome()>& command);
  void RunTransfer(const std::function<Outcome()>& command);
  [[nodiscard]] Outcome GetInfo();
  void BeginCommand();
  void EndCommand();
  [[nodiscard]] bool MayClose();
  void ShowDeeds(const std::vector<DownloadResult>& results);
  void Paste();
  void OpenFolder();
  void KeepRecovery();
  void AwaitRecovery();
  /// Shows them below the tables, a line each, when the status line cuts them off.
  void ShowNotices(const std::vector<std::string>& notices);
  void SettingsChanged();
  void RefreshRecords();
  void CancelTransfer();
  void ImportDropped();
  void AskForLink();
  void RunDoctor(Outcome (DoctorCommands::*command)());
  void ExamineLine();
  [[nodiscard]] QString TypedLink();
  void ShowDropHint(bool shown);
  void BuildRecentFiles(QMenu& file);
  void ShowRecentFiles();
  void FileUsed(const std::string& path);
  void ForgetFiles();
  /// Shows what the last start left behind.
  void Restore();
  void RestoreSettings();
  /// Leaves it for the next one.
  void Remember();
  void RememberChosenPort();
  void ChooseLanguage(const QString& code);
  void StoreState();

  StatusLine* status_line_;
  ObservedLoop event_loop_;
  WindowDesktop desktop_;
  WindowDialogs dialogs_;
  WalrimMain main_;
  UploadActions uploads_;
  ControlBinder binder_;
  DefaultTicks ticks_;
  FocusAreas areas_;
  PortBox::Ports ports_;
  QSettings* store_;
  bool port_given_;
  DesktopState state_;
  std::vector<NumberedPort> known_ports_;
  bool ports_known_ = false;
  ReceiverBar* receiver_bar_ = nullptr;
  DataPanel* data_panel_ = nullptr;
  SettingsPanel* settings_panel_ = nullptr;  ///< null until it is unfolded, or the start is over
  QStackedWidget* centre_ = nullptr;         ///< the tables, or the connection assistant
  RecordTables* records_ = nullptr;
  MapSplitter* tables_and_map_ = nullptr;
  DoctorPanel* doctor_panel_ = nullptr;
  TransferPanel* transfer_panel_ = nullptr;
  RecoveryBar* recovery_bar_ = nullptr;  ///< where something is left
  QLabel* notices_ = nullptr;
  std::vector<QAction*> command_actions_;
  UndoMenu* undo_menu_ = nullptr;
  RowMenu* row_menu_ = nullptr;
  QAction* fix_dates_ = nullptr;
  QAction* send_backup_ = nullptr;
  QMenu* recent_files_ = nullptr;
  QAction* keep_settings_ = nullptr;
  QAction* cancel_action_ = nullptr;
  std::array<std::uint64_t, DataKindCount> revisions_told_{};  ///< what was held when it was told what came in
  QWidget* focus_before_ = nullptr;                            ///< what had the focus when the command began
  bool command_runs_ = false;
  bool external_ = false;  ///< the command that runs is another program's
  bool close_wanted_ = false;
  bool asks_to_close_ = false;
  Dropped dropped_;  ///< waits for the event loop to turn
  QTimer drop_timer_;
  QTimer recovery_timer_;
};

}  // namespace walrim
