// The commands that write the data set: to a file, to standard output, or to the clipboard.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/DeleteCommands.h"
#include "app/Dialogs.h"
#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "formats/Format.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"

namespace walrim {

class ImportText;

/// All write the checked records of the chosen kinds in the chosen format.
class ExportCommands {
 public:
  /// All must outlive this object. Without dialogs scripts are written with the settings as they stand.
  ExportCommands(ProgramState& state, DeleteCommands& deletes, const Clock& clock, EventLoop& event_loop,
                 Desktop& desktop, Dialogs* dialogs);

  /// To a file that the user chooses, or that date and time name; AutoDelete follows.
  Outcome Export();
  /// To the clipboard; AutoDelete follows.
  Outcome Copy();
  /// Before the program ends: asks whether what lies in no file as it is held shall be saved, and saves it in the way
  /// of Export, without AutoDelete. False where the user wants to go on, or where it was not saved.
  [[nodiscard]] bool MayEnd();
  // The same without AutoDelete.
  Outcome ExportSelected();
  Outcome CopySelected();

  /// To a path that is known already. Asks before it replaces a file.
  Outcome ExportTo(const std::string& path);
  Outcome ExportToStandardOutput();

 private:
  /// What one go at writing came to.
  struct Written {
    WriteReport report;
    bool nothing = false;
    std::string utf8_question;  ///< about the first character that the encoding lacks; empty where it has all
    TextEncoding reads_as;      ///< what the text in UTF-8 is taken for when it is read
  };
  using Put = std::function<void(std::string_view bytes)>;

  [[nodiscard]] bool SomethingToWrite();
  /// False where the user gives it up.
  [[nodiscard]] bool Prepare();
  [[nodiscard]] Written Write(TextEncoding encoding, bool with_progress, const std::string& path, const Put& put);
  /// What behind a go tells of it; false where there was nothing to write.
  [[nodiscard]] bool Told(const Written& written);
  Outcome WriteFile(const std::string& path);
  void NoteDeed(Deed::Kind kind, const std::string& path, const WriteReport& report);
  [[nodiscard]] std::optional<DataSet> ReadBack(ImportText text);
  /// Whether that is all that was to be written.
  [[nodiscard]] bool GivesBack(const std::optional<DataSet>& back);
  void LookAtWritten(const std::string& path);
  void ShowNotices();

  ProgramState& state_;
  DeleteCommands& deletes_;
  const Clock& clock_;
  EventLoop& event_loop_;
  Desktop& desktop_;
  Dialogs* dialogs_;
};

}  // namespace walrim
