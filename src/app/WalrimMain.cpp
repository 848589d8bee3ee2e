#include "app/WalrimMain.h"

#include <algorithm>
#include <utility>

#include "app/BusyGuard.h"
#include "device/NameTables.h"
#include "text/Numbers.h"

namespace walrim {

namespace {

/// The count at which a kind is full.
constexpr std::array<int, DataKindCount> Limits{MaxWaypoints, MaxRoutes, MaxTrackLogs};

}  // namespace

std::string_view ProgramVersion() {
  return WALRIM_VERSION;
}

std::string WindowTitle() {
  return std::string(ProgramName) + "(Ver " + std::string(ProgramVersion()) +
         ")－ハンディGPS(GARMIN社)用データローダー";
}

WalrimMain::WalrimMain(SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop, Dialogs* dialogs,
                       Inet* inet)
    : clock_(clock),
      event_loop_(event_loop),
      desktop_(desktop),
      dialogs_(dialogs),
      inet_(inet),
      clip_(NameTablesFor(WaypointType::D108)),
      garmin_(data_, port, clock, event_loop, desktop) {}

std::vector<std::string> WalrimMain::TakeNotices() {
  return std::exchange(notices_, {});
}

std::string CapacityMessage(DataKind kind) {
  return "(" + std::string(DataKindName(kind)) + ")内部データ容量の限界です．";
}

void WalrimMain::SetGpsNum(DataKind kind, const std::string& text) {
  controls.GpsNum[IndexOf(kind)] = text;
  GpsNum_Change(kind);
  desktop_.ControlsChanged();
  desktop_.RecordsChanged();
}

void WalrimMain::GpsNum_Change(DataKind kind) {
  const std::size_t k = IndexOf(kind);
  const std::string& text = controls.GpsNum[k];
  if (LeadingNumber(text) > 0) loaded_[k] = true;
  if (text == "-") loaded_[k] = false;
  // After a download the text is the number of packets; what can be full is the number of waypoints, routes and logs.
  if (capacity_warned_[k] || data_.Count(kind) < Limits[k]) return;
  capacity_warned_[k] = true;
  controls.DataTypeBackColor[k] = FullBackColor;
  desktop_.ShowMessage(CapacityMessage(kind));
}

void WalrimMain::EmptyKind(DataKind kind) {
  const std::size_t k = IndexOf(kind);
  data_.Clear(kind);
  SetGpsNum(kind, "-");
  loaded_[k] = false;
  capacity_warned_[k] = false;
  controls.DataTypeBackColor[k] = NormalBackColor;
  desktop_.ControlsChanged();
}

/// What an earlier command told of the records that go is no longer true.
Outcome WalrimMain::Delete_Click() {
  if (busy_) return Outcome::Busy;
  const Outcome outcome = DeleteSelected();
  if (AnyChecked(controls.DoCheck)) ClearStatus();
  return outcome;
}

void WalrimMain::ClearStatus() {
  if (!desktop_.StatusCaption().empty()) garmin_.Status().SetCaption("");
}

Outcome WalrimMain::DeleteSelected() {
  if (busy_) return Outcome::Busy;
  const BusyGuard guard(busy_);
  StatusLine& status = garmin_.Status();
  status.SetStatus("PUSH");
  status.SetCaption("内部データ削除中");
  for (const DataKind kind : AllDataKinds) {
    if (controls.DoCheck[IndexOf(kind)]) EmptyKind(kind);
  }
  status.SetStatus("POP");
  return Outcome::Done;
}

bool WalrimMain::AnyLoaded() const {
  return std::any_of(loaded_.begin(), loaded_.end(), [](bool loaded) { return loaded; });
}

bool WalrimMain::AnyChecked(const std::array<bool, DataKindCount>& checks) const {
  return std::any_of(checks.begin(), checks.end(), [](bool checked) { return checked; });
}

}  // namespace walrim
