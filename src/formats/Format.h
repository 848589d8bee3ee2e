// The formats of files and texts: one row each.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "formats/ImportResult.h"
#include "formats/ScriptOptions.h"
#include "geo/AngleNotation.h"
#include "geo/Datum.h"
#include "records/DataSet.h"
#include "text/Dates.h"
#include "text/TextEncoding.h"
#include "text/TextOutput.h"

namespace walrim {

/// In the order of the rows.
enum class FormatId { Standard, WptPlus, Script, Gpx, Kml };

struct ReadSettings {
  int utc_offset_hours = 9;  ///< of times in texts that do not name their zone
};

struct WriteSettings {
  DataKinds kinds{true, true, true};
  AngleNotation notation = AngleNotation::D;
  Datum datum = Datum::Wgs84;
  int utc_offset_hours = 9;
  bool with_header = false;  ///< header lines, where the format has them
  CivilTime now;             ///< the moment of writing, local
  std::string name;          ///< of the file, without folder and ending; empty where there is none
  ScriptOptions script;
  /// Called before each waypoint, route and log with its number from 1 and how many there are. May be empty.
  std::function<void(DataKind kind, int number, int count)> progress;
};

/// What a writer has to tell.
struct WriteReport {
  int broken_texts = 0;  ///< lines with a text that holds a comma or a quote, which reading cuts it at
  int skipped = 0;       ///< records that the format cannot hold
  int off_globe = 0;     ///< records and points whose position is none on the globe, left out
};

/// The beginning of a text, by which its format is recognised.
struct TextBeginning {
  std::string first_word;  ///< in upper case, of the first line, up to a TAB or a comma
  std::string_view text;   ///< the first bytes
  std::string_view path;   ///< of the file, or empty
};

struct Format {
  FormatId id;
  std::string_view name;                 ///< in the list of output types
  std::string_view english_name;         ///< in the terminal's help
  std::string_view ending;               ///< of its files, without the point
  std::string_view filter;               ///< entry of the file dialogs' filter: "name (*.ending)|*.ending|"
  std::string_view paste_status;         ///< shown while a pasted text is read
  std::optional<TextEncoding> encoding;  ///< the only one that its files have; nothing where the user chooses
  /// The only one that positions are written in, be it on the way; nothing where the user chooses.
  std::optional<AngleNotation> notation;
  bool holds_all;    ///< every column of every record, and logs without points
  bool has_options;  ///< the script's options are asked for before it is written
  // Of a format that is only written there is neither.
  bool (*recognise)(const TextBeginning& beginning);
  ImportResult (*read)(LineSource& lines, DataSet& data, const ReadSettings& settings);
  WriteReport (*write)(TextOutput& out, const DataSet& data, const WriteSettings& settings);
};

[[nodiscard]] std::span<const Format> Formats();
[[nodiscard]] const Format& FormatOf(FormatId id);
/// The row of an ending in any case; null for another ending.
[[nodiscard]] const Format* FormatOfEnding(std::string_view ending);
/// The row of a text that begins so; null where no format knows it. path names the file, where it has a name.
[[nodiscard]] const Format* RecognizeFormat(std::string_view beginning, std::string_view path = {});
/// The save dialog's filter while a format is chosen.
[[nodiscard]] std::string DialogFilter(const Format& format);
/// The open dialog's filter: what can be read first, then a row for each format of it, and what DialogFilter has last.
[[nodiscard]] std::string OpenDialogFilter(const Format& chosen);

}  // namespace walrim
