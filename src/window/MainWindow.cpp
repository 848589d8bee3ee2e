#include "window/MainWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QIcon>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

#include "app/Messages.h"
#include "app/PlaceCommands.h"
#include "app/ProgramName.h"
#include "doctor/Messages.h"
#include "window/AboutBox.h"
#include "window/AccessibleCombo.h"
#include "window/DataPanel.h"
#include "window/DoctorPanel.h"
#include "window/ElidedLabel.h"
#include "window/HelpDialog.h"
#include "window/LanguageMenu.h"
#include "window/MapMenu.h"
#include "window/MapSplitter.h"
#include "window/Messages.h"
#include "window/ReceiverBar.h"
#include "window/RecordTables.h"
#include "window/RecoveryBar.h"
#include "window/RowMenu.h"
#include "window/SettingsPanel.h"
#include "window/StallOffer.h"
#include "window/StatusLine.h"
#include "window/TransferPanel.h"
#include "window/UndoMenu.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

/// Fits a screen of 1024 x 768 with the desktop's own bars.
constexpr QSize StartSize{1024, 680};
/// What the tables keep at least while the settings are unfolded.
constexpr int LinesBesideSettings = 3;
/// What most links to files are not longer than.
constexpr int LinkLetters = 90;

std::vector<std::string> ToStrings(const QStringList& texts) {
  std::vector<std::string> strings;
  for (const QString& text : texts)
    strings.push_back(text.toStdString());
  return strings;
}

}  // namespace

MainWindow::MainWindow(const WindowParts& parts, Contents contents)
    : status_line_(new StatusLine(*this, parts.clock)),
      event_loop_(parts.event_loop, [this] { status_line_->stall_offer->Look(); }),
      desktop_(*this, *status_line_,
               {[this] { ShowControls(); }, [this] { RefreshRecords(); },
                [this](const std::string& path) { FileUsed(path); }}),
      dialogs_(*this),
      main_(parts.port, parts.clock, event_loop_, desktop_, &dialogs_, &parts.inet, parts.facts),
      uploads_(main_, parts.clock, *this),
      binder_([this] { SettingsChanged(); }),
      ticks_(main_.State()),
      areas_(*this),
      ports_(parts.ports),
      store_(parts.store),
      port_given_(parts.port_given),
      state_(store_ != nullptr ? LoadDesktopState(*store_) : DesktopState{}) {
  setObjectName("WalrimMain");
  NameCombosByCaption();
  setWindowTitle(QString::fromStdString(WindowTitle() + "[*]"));
  main_.State().KeepSteps();
  recovery_timer_.setSingleShot(true);
  connect(&recovery_timer_, &QTimer::timeout, this, [this] { KeepRecovery(); });
  if (!parts.recovery_folder.empty()) main_.Recovery().UseFolder(parts.recovery_folder);
  resize(StartSize);
  restoreGeometry(state_.geometry);
  resize(size().boundedTo(screen()->availableSize()));
  if (contents == Contents::Later) return;
  Build();
  BuildSettings();
}

void MainWindow::Build() {
  setAcceptDrops(true);
  BuildCentre();
  status_line_->FillBar(*statusBar());
  BuildMenus();
  ConnectButtons();
  ConnectRecords();
  SetTabOrder();
  ShowControls();
  Restore();
  receiver_bar_->get_info->setFocus();
}

MainWindow::~MainWindow() = default;

// ---- Building

/// What the last command had to tell beyond its messages, where the status line has no room for all of it.
QLabel* MainWindow::MakeNotices() {
  auto* label = new QLabel;
  NameControl(*label, "Notices");
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  label->setFocusPolicy(Qt::StrongFocus);
  label->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
  label->setMargin(label->fontMetrics().averageCharWidth() / 2);
  label->hide();
  return label;
}

void MainWindow::ShowNotices(const std::vector<std::string>& notices) {
  QStringList lines;
  for (const std::string& notice : notices)
    lines.append(QString::fromStdString(notice));
  notices_->setText(lines.join(QLatin1Char('\n')));
  notices_->setVisible(!lines.isEmpty() && !status_line_->ShowsWholeStatus());
}

void MainWindow::BuildCentre() {
  auto* centre = new QWidget;
  auto* column = new QVBoxLayout(centre);
  receiver_bar_ = new ReceiverBar(ports_);
  binder_.Bind(*receiver_bar_->port, main_.State().Settings().port);
  data_panel_ = new DataPanel(main_.State(), binder_);
  centre_ = new QStackedWidget;
  records_ = new RecordTables(main_.State().Data());
  doctor_panel_ = new DoctorPanel;
  tables_and_map_ = new MapSplitter(main_.State(), records_);
  centre_->addWidget(tables_and_map_);
  centre_->addWidget(doctor_panel_);
  transfer_panel_ = new TransferPanel;
  notices_ = MakeNotices();
  for (QWidget* widget : std::initializer_list<QWidget*>{receiver_bar_, data_panel_, centre_, status_line_->stall_offer,
                                                         transfer_panel_, notices_})
    column->addWidget(widget);
  column->setStretchFactor(centre_, 1);
  setCentralWidget(centre);
}

/// The settings are folded away most of the time, and nobody waits for them at the start.
void MainWindow::BuildSettings() {
  if (settings_panel_ != nullptr) return;
  settings_panel_ = new SettingsPanel(main_.State().Settings(), binder_);
  settings_panel_->setVisible(data_panel_->settings->isChecked());
  auto* column = qobject_cast<QVBoxLayout*>(centralWidget()->layout());
  column->insertWidget(column->indexOf(centre_), settings_panel_);
  areas_.InsertBehind(data_panel_, settings_panel_);
  RestoreSettings();
  ShowControls();
}

void MainWindow::UnfoldSettings(bool unfolded) {
  BuildSettings();
  const bool by_key = data_panel_->settings->hasFocus();
  data_panel_->settings->setArrowType(unfolded ? Qt::DownArrow : Qt::RightArrow);
  settings_panel_->setVisible(unfolded);
  // On a low screen the settings take the room of the tables while they are needed.
  centre_->setMinimumHeight(unfolded ? fontMetrics().lineSpacing() * LinesBesideSettings : 0);
  if (unfolded && by_key) settings_panel_->TabOrder().front()->setFocus(Qt::TabFocusReason);
}

QAction* MainWindow::AddAction(QMenu& menu, const char* text, const QKeySequence& keys, QPushButton& button) {
  QAction* action = menu.addAction(Translated(text));
  action->setShortcut(keys);
  connect(action, &QAction::triggered, &button, [&button] { button.click(); });
  command_actions_.push_back(action);
  return action;
}

/// A command that has no button.
QAction* MainWindow::AddCommand(QMenu& menu, const char* name, const char* text, const std::function<void()>& command) {
  QAction* action = menu.addAction(Translated(text), this, command);
  action->setObjectName(name);
  command_actions_.push_back(action);
  return action;
}

void MainWindow::BuildMenus() {
  BuildFileMenu();
  BuildEditMenu();
  BuildViewMenu();
  BuildDeviceMenu();
  QMenu* help = menuBar()->addMenu(Translated("ヘルプ(&H)"));
  QAction* use = help->addAction(Translated("使い方(&H)"), this, [this] { ShowHelp(*this); });
  use->setObjectName("ShowHelp");
  use->setShortcut(QKeySequence("F1"));
  QAction* about = help->addAction(Translated("Walrimについて(&A)"), this, [this] { ShowAboutBox(*this); });
  about->setObjectName("About");
}

void MainWindow::BuildFileMenu() {
  QMenu* file = menuBar()->addMenu(Translated("ファイル(&F)"));
  AddAction(*file, "取り込み(&O)...", QKeySequence::Open, *data_panel_->file_import);
  QAction* link = file->addAction(Translated("リンクから取り込み(&L)..."), this, [this] { AskForLink(); });
  link->setObjectName("ImportLink");
  link->setShortcut(QKeySequence("Ctrl+L"));
  command_actions_.push_back(link);
  AddAction(*file, "保存(&S)...", QKeySequence::Save, *data_panel_->file_export);
  BuildRecentFiles(*file);
  file->addSeparator();
  keep_settings_ = file->addAction(Translated("設定を覚える(&K)"), this, [this] { Remember(); });
  keep_settings_->setObjectName("KeepSettings");
  keep_settings_->setCheckable(true);
  keep_settings_->setToolTip(Translated("形式・測地系・自動処理などの設定を，次に起動したときにも使います"));
  QAction* exit = file->addAction(Translated("終了(&Q)"), this, [this] { close(); });
  exit->setObjectName("Exit");
  exit->setShortcut(QKeySequence("Ctrl+Q"));
}

void MainWindow::BuildEditMenu() {
  QMenu* edit = menuBar()->addMenu(Translated("編集(&E)"));
  undo_menu_ = new UndoMenu(*edit, main_, [this](const auto& command) { Run(command); });
  AddAction(*edit, "コピー(&C)", QKeySequence("Ctrl+Shift+C"), *data_panel_->copy);
  AddAction(*edit, "貼り付け(&V)", QKeySequence::Paste, *data_panel_->paste);
  edit->addSeparator();
  AddAction(*edit, "削除(&D)", {}, *data_panel_->remove);
  edit->addSeparator();
  row_menu_ = new RowMenu(*edit, main_, *records_, [this](const auto& command) { Run(command); });
  edit->addSeparator();
  AddCommand(*edit, "ImportNames", "名前の対応を取り込む(&N)...", [this] { Run([this] { main_.Names().Import(); }); });
  AddCommand(*edit, "ExportNames", "名前の対応を書き出す(&X)...", [this] { Run([this] { main_.Names().Export(); }); });
  fix_dates_ =
      AddCommand(*edit, "FixDates", "日付を直す(&F)...", [this] { Run([this] { main_.Dates().FixDates(); }); });
}

void MainWindow::BuildViewMenu() {
  QMenu* view = menuBar()->addMenu(Translated("表示(&L)"));
  view->setObjectName("View");
  new MapMenu(*view, *tables_and_map_, [this](const std::string& question) { return desktop_.AskOkCancel(question); });
  AddLanguageMenu(*view, state_.language, [this](const QString& code) { ChooseLanguage(code); });
  QAction* filter = view->addAction(Translated("表を検索(&F)"), records_, &RecordTables::OpenFilter);
  filter->setObjectName("Filter");
  filter->setShortcut(QKeySequence::Find);
  view->addAction(records_->HideEmptyColumns());
}

void MainWindow::BuildDeviceMenu() {
  QMenu* device = menuBar()->addMenu(Translated("受信機(&R)"));
  AddAction(*device, "情報取得(&I)", QKeySequence("F5"), *receiver_bar_->get_info);
  AddAction(*device, "ダウンロード(&D)", QKeySequence("Ctrl+D"), *receiver_bar_->down_load);
  AddAction(*device, "アップロード(&U)", QKeySequence("Ctrl+U"), *receiver_bar_->up_load);
  AddCommand(*device, "SendSafely", "受信機へ安全に送る(&S)...",
             [this] { RunTransfer([this] { return uploads_.SendSafely(); }); });
  send_backup_ = AddCommand(*device, "SendBackup", "受信機を送る前に戻す(&B)",
                            [this] { RunTransfer([this] { return uploads_.SendBackup(); }); });
  device->addSeparator();
  AddAction(*device, "接続を調べる(&X)", QKeySequence("Ctrl+F5"), *doctor_panel_->again);
  AddAction(*device, "すべてのポートを探す(&W)", {}, *doctor_panel_->find_receiver);
  AddAction(*device, "通信記録を保存(&J)...", {}, *doctor_panel_->save_trace)->setObjectName("SaveTraceAction");
  AddCommand(*device, "SetClock", "受信機の時計を合わせる(&T)...",
             [this] { RunWithReceiver([this] { return main_.Device().SetClock(); }); });
  device->addSeparator();
  cancel_action_ = AddAction(*device, "中止(&C)", QKeySequence(Qt::Key_Escape), *receiver_bar_->cancel);
  command_actions_.pop_back();
}

void MainWindow::ConnectButtons() {
  const auto connect_command = [this](QPushButton* button, auto& room, auto command) {
    connect(button, &QPushButton::clicked, this,
            [this, &room, command] { Run([&room, command] { (room.*command)(); }); });
  };
  connect(receiver_bar_->get_info, &QPushButton::clicked, this,
          [this] { RunWithReceiver([this] { return GetInfo(); }); });
  const auto connect_download = [this](QPushButton* button, Outcome (DeviceCommands::*command)()) {
    connect(button, &QPushButton::clicked, this,
            [this, command] { RunTransfer([this, command] { return (main_.Device().*command)(); }); });
  };
  connect_download(receiver_bar_->down_load, &DeviceCommands::Download);
  connect_download(transfer_panel_->again, &DeviceCommands::DownloadChecked);
  connect_command(transfer_panel_->remove_missing, main_.Edits(), &EditCommands::RemoveMissing);
  connect(receiver_bar_->up_load, &QPushButton::clicked, this,
          [this] { RunTransfer([this] { return uploads_.Upload(); }); });
  connect(doctor_panel_->again, &QPushButton::clicked, this, [this] { RunDoctor(&DoctorCommands::Examine); });
  connect(doctor_panel_->find_receiver, &QPushButton::clicked, this,
          [this] { RunDoctor(&DoctorCommands::FindReceiver); });
  connect(doctor_panel_->back, &QPushButton::clicked, this, [this] { centre_->setCurrentWidget(tables_and_map_); });
  connect_command(doctor_panel_->save_trace, main_.Traces(), &TraceCommands::Save);
  connect_command(data_panel_->file_export, main_.Exports(), &ExportCommands::Export);
  connect_command(data_panel_->copy, main_.Exports(), &ExportCommands::Copy);
  connect_command(data_panel_->remove, main_.Deletes(), &DeleteCommands::Delete);
  connect_command(data_panel_->file_import, main_.Imports(), &ImportCommands::ImportChosen);
  connect(data_panel_->paste, &QPushButton::clicked, this, [this] { Paste(); });
  connect(receiver_bar_->cancel, &QPushButton::clicked, this, [this] { CancelTransfer(); });
  connect(data_panel_, &DataPanel::Ticked, this, [this] { ticks_.Leave(); });
  connect(status_line_->stall_offer->cancel, &QPushButton::clicked, this, [this] { CancelTransfer(); });
  connect(status_line_->open_folder, &QPushButton::clicked, this, [this] { OpenFolder(); });
  connect(status_line_->remove_duplicates, &QPushButton::clicked, this, [this] {
    const RecordIndices duplicates = status_line_->AlreadyHeld();
    Run([&] { main_.Records().DeleteRecords(duplicates); });
  });
  connect(data_panel_->settings, &QToolButton::toggled, this, [this](bool unfolded) { UnfoldSettings(unfolded); });
  drop_timer_.setSingleShot(true);
  connect(&drop_timer_, &QTimer::timeout, this, [this] { ImportDropped(); });
}

void MainWindow::ConnectRecords() {
  // Neither changes anything: both may come amid a transfer.
  connect(records_, &RecordTables::MapChosen, this,
          [this](const MapPage& page, const MapPlace& place) { OpenOnMap(desktop_, page, place); });
  connect(records_, &RecordTables::GeoLinkChosen, this,
          [this](const MapPlace& place) { CopyGeoLink(desktop_, place); });
  connect(tables_and_map_, &MapSplitter::WaypointWanted, this,
          [this](const MapPlace& place) { Run([&] { main_.Imports().NewWaypoint(place); }); });
  records_->SetEditCell([this](DataKind kind, const RecordPlace& place, EditField field, const std::string& text) {
    return main_.Records().EditCell(kind, place, field, text);
  });
  connect(records_, &RecordTables::CheckChosen, this, [this](DataKind kind, const auto& indices, bool checked) {
    static_cast<void>(main_.Edits().Choose(kind, indices, checked));
    ShowControls();
    RefreshRecords();
  });
}

void MainWindow::SetTabOrder() {
  for (const auto& order : {receiver_bar_->TabOrder(), data_panel_->TabOrder()}) {
    for (std::size_t i = 1; i < order.size(); ++i)
      setTabOrder(order[i - 1], order[i]);
  }
  // The map is what is left of the splitter beside the tables.
  for (QWidget* area :
       std::initializer_list<QWidget*>{receiver_bar_, data_panel_, records_, tables_and_map_, doctor_panel_,
                                       status_line_->stall_offer, transfer_panel_, notices_, statusBar()})
    areas_.Append(area);
  const auto add_key = [this](const QKeySequence& keys, bool forward) {
    auto* key = new QShortcut(keys, this);
    connect(key, &QShortcut::activated, this, [this, forward] { areas_.Move(forward); });
  };
  add_key(QKeySequence("F6"), true);
  add_key(QKeySequence("Shift+F6"), false);
}

/// Tables and settings are made when they are needed: their place in the order is found then.
bool MainWindow::focusNextPrevChild(bool next) {
  areas_.OrderTabs();
  return QMainWindow::focusNextPrevChild(next);
}

// ---- Running commands

void MainWindow::Run(const std::function<void()>& command) {
  if (command_runs_) return;
  BeginCommand();
  try {
    command();
  } catch (const std::exception& error) {
    desktop_.ShowMessage(messages::BrokenOff(error.what()));
  }
  EndCommand();
}

void MainWindow::RunWithReceiver(const std::function<Outcome()>& command) {
  Run([&] {
    static_cast<void>(command());
    const DeviceCommands& device = main_.Device();
    if (device.Identified().product_id > 0) centre_->setCurrentWidget(tables_and_map_);
    if (device.IdentificationFailed()) ExamineLine();
  });
}

/// What is told of the last download is over.
void MainWindow::RunTransfer(const std::function<Outcome()>& command) {
  if (command_runs_) return;
  transfer_panel_->hide();
  RunWithReceiver(command);
}

/// With the receiver's clock, which not every receiver tells.
Outcome MainWindow::GetInfo() {
  const Outcome outcome = main_.Device().GetInfo();
  if (outcome == Outcome::Done) main_.Dates().TellReceiverClock();
  if (outcome == Outcome::Done) ticks_.ReceiverCounted();
  return outcome;
}

/// The panel comes at once, and fills as the assistant goes on.
void MainWindow::RunDoctor(Outcome (DoctorCommands::*command)()) {
  Run([&] {
    centre_->setCurrentWidget(doctor_panel_);
    static_cast<void>((main_.Doctor().*command)());
  });
}

void MainWindow::ExamineLine() {
  centre_->setCurrentWidget(doctor_panel_);
  static_cast<void>(main_.Doctor().Examine());
}

void MainWindow::BeginCommand() {
  focus_before_ = focusWidget();
  command_runs_ = true;
  main_.State().Done().Clear();
  ShowNotices({});
  ShowControls();
}

void MainWindow::EndCommand() {
  command_runs_ = false;
  desktop_.SetProgress(0, 0);
  const std::vector<DownloadResult> results = main_.Device().TakeDownloadResults();
  if (!results.empty()) transfer_panel_->ShowResults(results, main_.State());
  ShowDeeds(results);
  ShowControls();
  RefreshRecords();
  ShowNotices(main_.State().Told().Take());
  if (focus_before_ != nullptr) focus_before_->setFocus();
  KeepRecovery();
  if (std::exchange(close_wanted_, false)) {
    desktop_.Speak();
    close();
  }
}

/// What has come in is to be saved next; other programs say themselves what is.
void MainWindow::ShowDeeds(const std::vector<DownloadResult>& results) {
  const Deeds& deeds = main_.State().Done();
  DataKinds came{};
  for (const DownloadResult& result : results)
    came[IndexOf(result.kind)] = result.received;
  for (const Deed& deed : deeds.All()) {
    for (const DataKind kind : AllDataKinds)
      came[IndexOf(kind)] = came[IndexOf(kind)] || deed.kinds[IndexOf(kind)];
  }
  if (!external_) ticks_.CameIn(came);
  status_line_->ShowDeeds(deeds);
  revisions_told_ = deeds.All().empty() ? revisions_told_ : main_.State().Revisions();
}

void MainWindow::KeepRecovery() {
  main_.Recovery().Keep();
  AwaitRecovery();
}

/// Edits of cells are no commands of the window's; what they change is kept by the timer.
void MainWindow::AwaitRecovery() {
  const auto due = main_.Recovery().DueIn();
  if (due && !recovery_timer_.isActive()) {
    recovery_timer_.start(std::chrono::ceil<std::chrono::milliseconds>(*due));
  }
}

void MainWindow::OfferRecovery() {
  main_.Recovery().FindLeft();
  if (!main_.Recovery().Question()) return;
  recovery_bar_ = new RecoveryBar(main_.Recovery(), [this](const auto& answer) { Run(answer); });
  centralWidget()->layout()->addWidget(recovery_bar_);
  ShowControls();
}

bool MainWindow::MayClose() {
  bool may = true;
  asks_to_close_ = true;
  const ProgramState& state = main_.State();
  if (AnyOf(state.UnsavedKinds()) || AnyOf(state.DroppedKinds())) Run([&] { may = main_.Exports().MayEnd(); });
  asks_to_close_ = false;
  return may;
}

void MainWindow::CancelTransfer() {
  main_.Cancel();
  receiver_bar_->cancel->setEnabled(false);
  cancel_action_->setEnabled(false);
  status_line_->ShowStatus(Translated(window_messages::Cancelling));
}

void MainWindow::ImportFiles(const std::vector<std::string>& paths) {
  if (!paths.empty()) Run([&] { main_.Imports().ImportFiles(paths); });
}

std::int32_t MainWindow::RunExternalCommand(const std::string& command, const std::string& argument1,
                                            const std::string& argument2) {
  std::int32_t result = CommandBusy;
  const DataKinds chosen = main_.State().Settings().chosen_kinds;
  external_ = true;
  Run([&] {
    result = CommandRefused;  // what a call that fails midway comes to
    result = main_.External().Run(command, argument1, argument2);
  });
  external_ = false;
  if (main_.State().Settings().chosen_kinds != chosen) ticks_.Leave();
  return result;
}

void MainWindow::Paste() {
  if (command_runs_) return;
  Run([this] { main_.Imports().Paste(); });
  for (const Deed& deed : main_.State().Done().All()) {
    const auto came = std::ranges::find(deed.kinds, true) - deed.kinds.begin();
    if (came == std::ssize(deed.kinds)) continue;
    const auto kind = static_cast<std::size_t>(came);
    records_->SelectFrom(AllDataKinds.at(kind), deed.held_before.at(kind));
  }
}

/// Nothing is changed by it: it may come amid a command.
void MainWindow::OpenFolder() {
  const QString link = QUrl::fromLocalFile(status_line_->Folder()).toString(QUrl::FullyEncoded);
  if (!desktop_.OpenLink(link.toStdString())) desktop_.ShowMessage(messages::LinkNotOpened(link.toStdString()));
}

// ---- Showing

void MainWindow::ShowControls() {
  AwaitRecovery();
  binder_.Show();
  data_panel_->ShowState(command_runs_);
  doctor_panel_->ShowState(main_.Doctor(), command_runs_);
  transfer_panel_->ShowState(main_.State(), command_runs_);
  if (recovery_bar_ != nullptr) recovery_bar_->ShowState(command_runs_);
  receiver_bar_->ShowReceiver(main_.State().ReceiverText(), main_.State().ReceiverClock());
  receiver_bar_->ShowState(command_runs_, main_.State().CancelEnabled());
  if (settings_panel_ != nullptr) settings_panel_->setEnabled(!command_runs_);
  for (QAction* action : command_actions_)
    action->setEnabled(!command_runs_);
  if (main_.State().Revisions() != revisions_told_) status_line_->ForgetDuplicates();
  status_line_->ShowState(command_runs_);
  undo_menu_->ShowState(command_runs_);
  row_menu_->ShowState(command_runs_);
  setWindowModified(AnyOf(main_.State().UnsavedKinds()));
  send_backup_->setEnabled(!command_runs_ && main_.Uploads().HasBackup());
  fix_dates_->setEnabled(!command_runs_ && !main_.State().DateRepairs().empty());
  cancel_action_->setEnabled(main_.State().CancelEnabled());
}

void MainWindow::SettingsChanged() {
  records_->SetWithHeader(main_.State().Settings().with_header);
  RefreshRecords();
}

void MainWindow::RefreshRecords() {
  const UserSettings& settings = main_.State().Settings();
  records_->Refresh({settings.notation, settings.datum, settings.utc_offset_hours});
  tables_and_map_->Refresh();
}

void MainWindow::LookAtPorts() {
  receiver_bar_->port->Refresh();
  const std::vector<NumberedPort> before = std::exchange(known_ports_, receiver_bar_->port->Known());
  const auto is_in = [](const std::vector<NumberedPort>& ports, const auto& is_it) {
    return std::ranges::find_if(ports, is_it) != ports.end();
  };
  std::string& chosen = main_.State().Settings().port;
  for (const NumberedPort& port : known_ports_) {
    if (command_runs_ || is_in(before, [&](const auto& each) { return each.device == port.device; })) continue;
    const bool usable = is_in(known_ports_, [&](const auto& each) { return PortName(each) == chosen; });
    const bool remembered = !ports_known_ && !port_given_ && IsRememberedPort(state_, port);
    if (remembered || (!usable && chosen != DemoPortName && !IsPortPath(chosen))) chosen = PortName(port);
    if (ports_known_) ShowStatus(doctor_messages::PortAppeared(port.device, port.description));
  }
  ports_known_ = true;
  ShowControls();
}

// ---- Events

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!command_runs_ && MayClose()) {
    Remember();
    main_.Recovery().End();
    recovery_timer_.stop();
    event->accept();
    return;
  }
  event->ignore();
  if (!command_runs_ || asks_to_close_) return;
  close_wanted_ = true;
  desktop_.FallSilent();
  if (main_.State().CancelEnabled()) {
    CancelTransfer();
  } else {
    main_.Cancel();
  }
}

/// A command from its question on, so that nothing else begins while the link is typed.
void MainWindow::AskForLink() {
  Run([this] {
    const QString link = TypedLink();
    if (!link.isEmpty()) main_.Imports().ImportTyped(link.toStdString());
  });
}

QString MainWindow::TypedLink() {
  QInputDialog dialog(this);
  dialog.setObjectName("LinkDialog");
  dialog.setWindowTitle(Translated("リンクから取り込み"));
  dialog.setLabelText(
      Translated("取り込むファイルのリンク（https://，http://，file://），または地図のページのアドレス"));
  dialog.setOkButtonText("OK");
  dialog.setCancelButtonText(Translated("キャンセル"));
  dialog.resize(dialog.fontMetrics().averageCharWidth() * LinkLetters, dialog.sizeHint().height());
  return dialog.exec() == QDialog::Accepted ? dialog.textValue().trimmed() : QString();
}

// ---- What is remembered

void MainWindow::BuildRecentFiles(QMenu& file) {
  recent_files_ = file.addMenu(Translated("最近使ったファイル(&R)"));
  recent_files_->setObjectName("RecentFiles");
  recent_files_->setToolTipsVisible(true);
  recent_files_->menuAction()->setVisible(!state_.files.isEmpty());
  command_actions_.push_back(recent_files_->menuAction());
  connect(recent_files_, &QMenu::aboutToShow, this, [this] { ShowRecentFiles(); });
}

void MainWindow::ShowRecentFiles() {
  recent_files_->clear();
  for (const QString& path : state_.files) {
    const int number = static_cast<int>(recent_files_->actions().size()) + 1;
    QString name = QFileInfo(path).fileName();
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    const QString caption = number < MostRecentFiles ? QStringLiteral("&%1 %2").arg(number).arg(name) : name;
    QAction* action = recent_files_->addAction(caption, this, [this, path] { ImportFiles({path.toStdString()}); });
    action->setToolTip(path);
  }
  recent_files_->addSeparator();
  recent_files_->addAction(Translated("一覧を消す(&X)"), this, [this] { ForgetFiles(); })->setObjectName("ForgetFiles");
}

void MainWindow::FileUsed(const std::string& path) {
  if (store_ == nullptr) return;
  RememberFile(state_, QFileInfo(QString::fromStdString(path)).absoluteFilePath());
  recent_files_->menuAction()->setVisible(true);
  StoreState();
}

void MainWindow::ForgetFiles() {
  state_.files.clear();
  recent_files_->menuAction()->setVisible(false);
  StoreState();
}

void MainWindow::Restore() {
  desktop_.SetLastFolders({state_.open_folder, state_.save_folder});
  records_->SetColumnWidths(state_.columns);
  tables_and_map_->Restore(state_.map, width());
  records_->HideEmptyColumns()->setChecked(state_.hide_empty_columns);
  keep_settings_->setChecked(state_.keep_settings);
  keep_settings_->setEnabled(store_ != nullptr);
  TakeScriptOptions(main_.State().Settings().script, state_.settings);
  if (!port_given_ && state_.port_device == DemoPortName) binder_.Choose({{PortBox::Name, DemoPortName}});
  if (!port_given_ && state_.port_typed) receiver_bar_->port->ChoosePath(state_.port_device);
  data_panel_->settings->setChecked(state_.settings_unfolded);
}

/// Ticks that were kept are the user's.
void MainWindow::RestoreSettings() {
  if (!state_.settings.isEmpty()) ticks_.Leave();
  binder_.Choose(state_.settings);
  if (state_.checked_link.isValid()) binder_.Choose({{SettingsPanel::LinkName, state_.checked_link}});
}

void MainWindow::Remember() {
  if (store_ == nullptr || settings_panel_ == nullptr) return;
  state_.geometry = saveGeometry();
  state_.columns = records_->ColumnWidths();
  state_.map = tables_and_map_->State();
  state_.hide_empty_columns = records_->HideEmptyColumns()->isChecked();
  state_.open_folder = desktop_.LastFolders().open;
  state_.save_folder = desktop_.LastFolders().save;
  state_.settings_unfolded = data_panel_->settings->isChecked();
  state_.keep_settings = keep_settings_->isChecked();
  state_.settings = binder_.Values();
  state_.checked_link = state_.settings.take(SettingsPanel::LinkName);
  state_.settings.remove(PortBox::Name);
  AddScriptOptions(state_.settings, main_.State().Settings().script);
  if (!port_given_) RememberChosenPort();
  StoreState();
}

void MainWindow::RememberChosenPort() {
  const std::string& chosen = main_.State().Settings().port;
  const auto known =
      std::ranges::find_if(known_ports_, [&](const NumberedPort& port) { return PortName(port) == chosen; });
  const bool is_known = known != known_ports_.end();
  state_.port_typed = !is_known && IsPortPath(chosen);
  if (is_known) RememberPort(state_, *known);
  if (chosen == DemoPortName || state_.port_typed) RememberPort(state_, {0, chosen, {}, {}});
}

void MainWindow::ChooseLanguage(const QString& code) {
  state_.language = code;
  StoreState();
  ShowStatus(window_messages::LanguageFromNextStart);
}

void MainWindow::StoreState() {
  if (store_ != nullptr) SaveDesktopState(*store_, state_);
}

// ---- Drops

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (command_runs_ || !DroppedOf(*event->mimeData())) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  ShowDropHint(true);
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent* event) {
  ShowDropHint(false);
  QMainWindow::dragLeaveEvent(event);
}

/// The button that a drop goes to looks pressed, and the status line says what will happen.
void MainWindow::ShowDropHint(bool shown) {
  data_panel_->file_import->setDown(shown);
  if (shown) {
    status_line_->ShowHint(Translated(window_messages::DropHint));
  } else {
    status_line_->EndHint();
  }
}

void MainWindow::dropEvent(QDropEvent* event) {
  ShowDropHint(false);
  const auto dropped = DroppedOf(*event->mimeData());
  if (command_runs_ || !dropped) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  // Whoever drags waits until this returns; questions and transfers come after it.
  dropped_ = *dropped;
  drop_timer_.start();
}

void MainWindow::ImportDropped() {
  const Dropped dropped = std::exchange(dropped_, {});
  Run([&] {
    if (!dropped.files.isEmpty()) main_.External().TakeDrop(ToStrings(dropped.files), {});
    const UndoStep step(main_.State(), StepKind::Import);
    for (const QString& text : dropped.texts)
      main_.External().TakeDrop({}, text.toStdString());
  });
}

/// Return presses the button that has the focus, as in a dialog.
void MainWindow::keyPressEvent(QKeyEvent* event) {
  auto* button = qobject_cast<QAbstractButton*>(focusWidget());
  if (qobject_cast<QCheckBox*>(button) != nullptr) button = nullptr;
  const bool is_return = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (is_return && button != nullptr) {
    button->click();
    return;
  }
  QMainWindow::keyPressEvent(event);
}

}  // namespace walrim
