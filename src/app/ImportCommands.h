// The commands that read data into the data set, wherever they come from.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/DateCommands.h"
#include "app/Dialogs.h"
#include "app/ImportText.h"
#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "dialogs/ClipProAtlas.h"
#include "dialogs/GeoLink.h"
#include "formats/Format.h"
#include "formats/ImportResult.h"
#include "platform/Desktop.h"
#include "platform/Inet.h"

namespace walrim {

/// Everything goes behind what the data set holds.
class ImportCommands {
 public:
  /// All must outlive this object. Without dialogs points from maps are refused; without inet links are.
  ImportCommands(ProgramState& state, const Garmin& garmin, DateCommands& dates, Desktop& desktop, Dialogs* dialogs,
                 Inet* inet);

  /// Imports the file that the user chooses.
  Outcome ImportChosen();
  /// Imports the clipboard's text, or what the link in it leads to.
  Outcome Paste();
  /// The same for a text that was typed or dropped.
  Outcome ImportTyped(const std::string& text);

  /// Asks for a new waypoint, at a place where one is given.
  Outcome NewWaypoint(const std::optional<MapPlace>& place);

  /// Reads a file ("-": standard input).
  Outcome ImportFile(const std::string& path);
  /// The same with the status line telling what is read and then what came in.
  Outcome ImportFrom(const std::string& path);
  /// ImportFrom for files one after the other; goes on behind one that cannot be used. LastImport is the sum.
  Outcome ImportFiles(const std::vector<std::string>& paths);

  [[nodiscard]] const ImportResult& LastImport() const { return last_import_; }
  /// Ends the reading of a link.
  void Cancel();

 private:
  Outcome Read(ImportText text, const Format* format, std::string_view shown_name);
  [[nodiscard]] std::string ReportText(const ImportResult& result) const;
  void NoteDeed(const RecordCounts& held_before);
  Outcome ShowResult(Outcome outcome);
  Outcome Refuse(std::string_view message);
  Outcome ImportTextOrLink(const std::string& text, std::string_view link_status);
  Outcome ImportPlainText(std::string_view text);
  Outcome ImportFileLink(const std::string& link);
  Outcome FetchLink(const std::string& link);
  Outcome ImportPoint(std::string_view text);
  /// Lets the user complete what the dialog holds, and takes it in.
  Outcome AskForPoint();
  /// Takes a point in that was completed in the dialog.
  Outcome TakePoint(const ClipWaypoint& clip);

  ProgramState& state_;
  const Garmin& garmin_;
  DateCommands& dates_;
  Desktop& desktop_;
  Dialogs* dialogs_;
  Inet* inet_;
  ClipProAtlas clip_;
  ImportResult last_import_;
};

}  // namespace walrim
