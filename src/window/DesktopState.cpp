#include "window/DesktopState.h"

namespace walrim {

namespace {

constexpr const char* Geometry = "window/geometry";
constexpr const char* Columns = "window/columns";
constexpr const char* Map = "window/map";
constexpr const char* LanguageChosen = "window/language";
constexpr const char* SettingsUnfolded = "window/settings_unfolded";
constexpr const char* HideEmptyColumns = "window/hide_empty_columns";
constexpr const char* OpenFolder = "folders/open";
constexpr const char* SaveFolder = "folders/save";
constexpr const char* Files = "files/recent";
constexpr const char* PortDevice = "port/device";
constexpr const char* PortSerial = "port/serial_number";
constexpr const char* PortTyped = "port/typed";
constexpr const char* CheckedLink = "port/checked_link";
constexpr const char* KeepSettings = "settings/keep";
constexpr const char* Settings = "settings/values";

constexpr const char* ScriptOffset = "ScriptUtcOffset";
constexpr const char* ScriptOrigin = "ScriptOrigin";
constexpr const char* ScriptDestination = "ScriptDestination";
constexpr const char* ScriptDescending = "ScriptDescending";
constexpr const char* ScriptStep = "ScriptStep";

}  // namespace

DesktopState LoadDesktopState(const QSettings& store) {
  DesktopState state;
  state.geometry = store.value(Geometry).toByteArray();
  state.columns = store.value(Columns).toMap();
  state.map = store.value(Map).toMap();
  state.language = store.value(LanguageChosen).toString();
  state.settings_unfolded = store.value(SettingsUnfolded).toBool();
  state.hide_empty_columns = store.value(HideEmptyColumns, true).toBool();
  state.open_folder = store.value(OpenFolder).toString();
  state.save_folder = store.value(SaveFolder).toString();
  state.files = store.value(Files).toStringList().mid(0, MostRecentFiles);
  state.port_device = store.value(PortDevice).toString();
  state.port_serial = store.value(PortSerial).toString();
  state.port_typed = store.value(PortTyped).toBool();
  state.checked_link = store.value(CheckedLink);
  state.keep_settings = store.value(KeepSettings).toBool();
  if (state.keep_settings) state.settings = store.value(Settings).toMap();
  return state;
}

void SaveDesktopState(QSettings& store, const DesktopState& state) {
  store.setValue(Geometry, state.geometry);
  store.setValue(Columns, state.columns);
  store.setValue(Map, state.map);
  store.setValue(LanguageChosen, state.language);
  store.setValue(SettingsUnfolded, state.settings_unfolded);
  store.setValue(HideEmptyColumns, state.hide_empty_columns);
  store.setValue(OpenFolder, state.open_folder);
  store.setValue(SaveFolder, state.save_folder);
  store.setValue(Files, state.files);
  store.setValue(PortDevice, state.port_device);
  store.setValue(PortSerial, state.port_serial);
  store.setValue(PortTyped, state.port_typed);
  store.setValue(CheckedLink, state.checked_link);
  store.setValue(KeepSettings, state.keep_settings);
  if (state.keep_settings) {
    store.setValue(Settings, state.settings);
  } else {
    store.remove(Settings);
  }
  store.sync();
}

void RememberFile(DesktopState& state, const QString& path) {
  state.files.removeAll(path);
  state.files.prepend(path);
  state.files = state.files.mid(0, MostRecentFiles);
}

bool IsRememberedPort(const DesktopState& state, const NumberedPort& port) {
  if (!state.port_serial.isEmpty()) return port.serial_number == state.port_serial.toStdString();
  return port.device == state.port_device.toStdString();
}

void RememberPort(DesktopState& state, const NumberedPort& port) {
  state.port_device = QString::fromStdString(port.device);
  state.port_serial = QString::fromStdString(port.serial_number);
}

void AddScriptOptions(QVariantMap& settings, const ScriptOptions& options) {
  settings.insert(ScriptOffset, options.utc_offset_hours);
  settings.insert(ScriptOrigin, QString::fromStdString(options.origin_name));
  settings.insert(ScriptDestination, QString::fromStdString(options.destination_name));
  settings.insert(ScriptDescending, options.numbering_down);
  settings.insert(ScriptStep, options.track_log_step);
}

void TakeScriptOptions(ScriptOptions& options, const QVariantMap& settings) {
  if (!settings.contains(ScriptOffset)) return;
  options.utc_offset_hours = settings.value(ScriptOffset).value<std::int16_t>();
  options.origin_name = settings.value(ScriptOrigin).toString().toStdString();
  options.destination_name = settings.value(ScriptDestination).toString().toStdString();
  options.numbering_down = settings.value(ScriptDescending).toBool();
  options.track_log_step = settings.value(ScriptStep).value<std::int16_t>();
}

}  // namespace walrim
