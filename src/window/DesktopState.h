// What is kept between two starts: the desktop's own state, and the settings of the data where the user wants that.
#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <vector>

#include "formats/ScriptOptions.h"
#include "qt/PortList.h"

namespace walrim {

struct DesktopState {
  QByteArray geometry;             ///< of the window, as QWidget::saveGeometry has it
  QVariantMap columns;             ///< of each table, by its name: widths in pixels by the titles of the columns
  QVariantMap map;                 ///< as MapSplitter has it
  QString language;                ///< as LanguageCode has it; empty: the desktop\'s
  bool hide_empty_columns = true;  ///< in the tables
  QString open_folder;             ///< where the last file was chosen to be read
  QString save_folder;             ///< and to be written
  QStringList files;               ///< used lately, the last one first
  QString port_device;             ///< of the port that was chosen, or the demonstration receiver's name
  QString port_serial;             ///< the serial number of its adapter; empty where it has none
  bool port_typed = false;         ///< it was typed as a path, and is no port of the list
  QVariant checked_link;           ///< the choice in CheckedLink
  bool settings_unfolded = false;
  bool keep_settings = false;
  QVariantMap settings;  ///< the values of the other controls, by their names; empty unless they are kept
};

/// At most so many files are remembered.
inline constexpr int MostRecentFiles = 10;

/// Values that are missing, or of another type, are as they are at first.
[[nodiscard]] DesktopState LoadDesktopState(const QSettings& store);
void SaveDesktopState(QSettings& store, const DesktopState& state);

/// Puts a file in front of those that were used lately.
void RememberFile(DesktopState& state, const QString& path);

/// Whether a port is the one that was chosen: by its adapter's serial number, or by its device where it has none.
[[nodiscard]] bool IsRememberedPort(const DesktopState& state, const NumberedPort& port);
void RememberPort(DesktopState& state, const NumberedPort& port);

/// The options of scripts, which have no controls in the window, among the settings.
void AddScriptOptions(QVariantMap& settings, const ScriptOptions& options);
void TakeScriptOptions(ScriptOptions& options, const QVariantMap& settings);

}  // namespace walrim
