#include "app/ExportCommands.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/FileStore.h"
#include "app/ImportText.h"
#include "app/Messages.h"
#include "app/ReadBack.h"
#include "app/SouthAndWest.h"
#include "records/Chosen.h"
#include "text/Cp932.h"
#include "text/Numbers.h"

namespace walrim {

namespace {

/// "yyyymmdd_hhnnss"
std::string StampOf(const CivilTime& time) {
  return PadNumber(time.year, 4) + PadNumber(time.month, 2) + PadNumber(time.day, 2) + "_" + PadNumber(time.hour, 2) +
         PadNumber(time.minute, 2) + PadNumber(time.second, 2);
}

/// The name of a file without folder and ending; empty for a standard stream.
std::string NameOf(const std::string& path) {
  return path == StandardStream ? std::string() : std::filesystem::path(path).stem().string();
}

/// Byte offset of the character with an index.
std::size_t OffsetOf(std::string_view utf8, std::size_t index) {
  std::size_t offset = 0;
  for (std::size_t seen = 0; offset < utf8.size(); ++offset) {
    const bool begins_character = (static_cast<unsigned char>(utf8[offset]) & 0xC0U) != 0x80U;
    if (begins_character && seen++ == index) break;
  }
  return offset;
}

/// Hands on lines in Shift-JIS. From the first character on that it lacks nothing is handed on.
class ShiftJisLines {
 public:
  void Add(const std::string& lines, const std::function<void(std::string_view)>& put) {
    if (!question_.empty()) return;
    UnencodableCharacter lacking;
    if (const auto bytes = EncodeCp932(lines, &lacking)) {
      lines_before_ += std::ranges::count(lines, '\n');
      put(*bytes);
    } else {
      question_ = messages::Utf8Question(RecordAt(lines, OffsetOf(lines, lacking.index)), lacking.utf8);
    }
  }
  [[nodiscard]] const std::string& Question() const { return question_; }

 private:
  [[nodiscard]] std::string RecordAt(std::string_view lines, std::size_t offset) const {
    const std::string_view before = lines.substr(0, offset);
    const std::size_t begin = before.rfind('\n') + 1;  // from the first line's beginning where there is none before
    const std::string_view line = lines.substr(begin, lines.find('\r', begin) - begin);
    return messages::RecordInLine(lines_before_ + std::ranges::count(before, '\n') + 1, line);
  }

  std::ptrdiff_t lines_before_ = 0;
  std::string question_;
};

}  // namespace

ExportCommands::ExportCommands(ProgramState& state, DeleteCommands& deletes, const Clock& clock, EventLoop& event_loop,
                               Desktop& desktop, Dialogs* dialogs)
    : state_(state), deletes_(deletes), clock_(clock), event_loop_(event_loop), desktop_(desktop), dialogs_(dialogs) {}

void ExportCommands::ShowNotices() {
  desktop_.SetStatusCaption(state_.Told().Joined());
}

bool ExportCommands::SomethingToWrite() {
  const bool loaded = state_.AnyLoaded();
  const bool chosen = AnyOf(state_.Settings().chosen_kinds);
  if (!loaded || !chosen) desktop_.ShowMessage(loaded ? messages::NothingChosen : messages::NothingDownloaded);
  return loaded && chosen;
}

// ---- Writing

bool ExportCommands::Prepare() {
  UserSettings& settings = state_.Settings();
  const Format& format = FormatOf(settings.format);
  if (format.notation.value_or(settings.notation) == AngleNotation::DMS) {
    const int positions = CountSouthAndWest(*ChosenData(state_.Data()), state_.WantedKinds());
    if (positions > 0) state_.Told().Add(messages::SouthAndWest(positions));
  }
  if (!format.has_options) return true;
  desktop_.SetStatusCaption(messages::Converting);
  return dialogs_ == nullptr || dialogs_->ShowScriptOptions(settings.script);
}

ExportCommands::Written ExportCommands::Write(TextEncoding encoding, bool with_progress, const std::string& path,
                                              const Put& put) {
  const UserSettings& chosen = state_.Settings();
  WriteSettings settings{state_.WantedKinds(),
                         chosen.notation,
                         chosen.datum,
                         chosen.utc_offset_hours,
                         chosen.with_header,
                         clock_.LocalTime(),
                         NameOf(path),
                         chosen.script,
                         {}};
  if (with_progress) {
    settings.progress = [this](DataKind kind, int number, int count) {
      desktop_.SetStatusCaption(messages::Exporting(kind, number, count));
      desktop_.SetProgress(number, count);
    };
  }
  ShiftJisLines shift_jis;
  EncodingDetector detector;
  TextOutput out([&](const std::string& lines) {
    detector.Add(lines);
    encoding == TextEncoding::ShiftJis ? shift_jis.Add(lines, put) : put(lines);
    event_loop_.Yield();
  });
  Written written{};
  written.report = FormatOf(chosen.format).write(out, *ChosenData(state_.Data()), settings);
  out.Flush();
  written.nothing = out.Empty();
  written.utf8_question = shift_jis.Question();
  written.reads_as = detector.Encoding();
  return written;
}

bool ExportCommands::Told(const Written& written) {
  desktop_.SetProgress(0, 0);
  if (written.report.broken_texts > 0) state_.Told().Add(messages::BrokenTexts(written.report.broken_texts));
  if (written.report.skipped > 0) state_.Told().Add(messages::SkippedRecords(written.report.skipped));
  if (written.report.off_globe > 0) state_.Told().Add(messages::PointsOffGlobe(written.report.off_globe));
  if (written.nothing) desktop_.ShowMessage(messages::NothingToSave);
  return !written.nothing;
}

Outcome ExportCommands::WriteFile(const std::string& path) {
  if (!Prepare()) return Outcome::Refused;
  FileWriter file(path);
  const Put put = [&file](std::string_view bytes) { file.Add(bytes); };
  const auto own_encoding = FormatOf(state_.Settings().format).encoding;
  const TextEncoding encoding = own_encoding.value_or(state_.Settings().encoding);
  const Written written = Write(encoding, true, path, put);
  if (!Told(written)) {
    if (path != StandardStream) desktop_.ShowMessage(messages::NothingWritten);
    return Outcome::Refused;
  }
  const bool asks = !written.utf8_question.empty();
  if (asks && !desktop_.AskYesNo(written.utf8_question)) return Outcome::Refused;
  // A UTF-8 text whose letters are pairs of half-width katakana in Shift-JIS has to say what it is.
  const bool is_utf8 = asks || encoding == TextEncoding::Utf8;
  const bool needs_mark = is_utf8 && !own_encoding && written.reads_as == TextEncoding::ShiftJis;
  if (asks || needs_mark) {
    file.StartOver();
    if (needs_mark) file.Add(Utf8Mark);
    static_cast<void>(Write(TextEncoding::Utf8, false, path, put));
  }
  if (const auto problem = file.Finish()) {
    desktop_.ShowMessage(messages::WriteProblem(path, problem->detail));
    return Outcome::Refused;
  }
  if (path != StandardStream) NoteDeed(Deed::Kind::Saved, path, written.report);
  return Outcome::Done;
}

void ExportCommands::NoteDeed(Deed::Kind kind, const std::string& path, const WriteReport& report) {
  Deed deed{kind, 0, path, {}, {}};
  for (const DataKind of : AllDataKinds) {
    if (state_.WantedKinds()[IndexOf(of)]) deed.records += ChosenCount(state_.Data(), of);
  }
  deed.records -= std::min(deed.records, static_cast<std::size_t>(report.skipped));
  state_.Done().Add(std::move(deed));
}

/// What was written, as it is read; nothing where it cannot be.
std::optional<DataSet> ExportCommands::ReadBack(ImportText text) {
  const UserSettings& settings = state_.Settings();
  const Format& format = FormatOf(settings.format);
  if (format.read == nullptr) return std::nullopt;
  LineSource lines = text.Lines();
  DataSet back;
  static_cast<void>(format.read(lines, back, {settings.utc_offset_hours}));
  return text.Problem() ? std::nullopt : std::optional(std::move(back));
}

bool ExportCommands::GivesBack(const std::optional<DataSet>& back) {
  const Format& format = FormatOf(state_.Settings().format);
  return back && ReadsBack(*ChosenData(state_.Data()), *back, state_.WantedKinds(), format);
}

// ---- To a file

Outcome ExportCommands::Export() {
  const Outcome outcome = ExportSelected();
  if (outcome == Outcome::Done) deletes_.DeleteHandled(messages::NotReadBack);
  return outcome;
}

Outcome ExportCommands::ExportSelected() {
  if (state_.Busy()) return Outcome::Busy;
  if (!SomethingToWrite()) return Outcome::Refused;
  const BusyGuard guard(state_);
  state_.Told().Clear();
  const Format& format = FormatOf(state_.Settings().format);
  std::optional<std::string> path;
  if (state_.Settings().auto_file_name) {
    std::error_code error;
    const std::string name = StampOf(clock_.LocalTime()) + "." + std::string(format.ending);
    path = (std::filesystem::current_path(error) / name).string();
  } else {
    path = desktop_.SaveFileDialog(DialogFilter(format));
  }
  const Outcome outcome = path ? ExportTo(*path) : Outcome::Refused;
  ShowNotices();
  return outcome;
}

Outcome ExportCommands::ExportTo(const std::string& path) {
  desktop_.SetStatusCaption(messages::ExportTo(path));
  Outcome outcome = Outcome::Refused;
  if (!FileExists(path) || desktop_.AskOkCancel(messages::OverwriteQuestion(path))) outcome = WriteFile(path);
  if (outcome == Outcome::Done) LookAtWritten(path);
  if (outcome == Outcome::Done) desktop_.FileUsed(path);
  desktop_.SetStatusCaption("");
  return outcome;
}

/// A kind is saved where all of it lies in a file that holds every column.
void ExportCommands::LookAtWritten(const std::string& path) {
  if (!state_.Settings().auto_delete && !state_.KeepsSteps()) return;
  const std::optional<DataSet> back = ReadBack(ImportText::OfFile(path));
  state_.SetSomethingLost(!GivesBack(back));
  const Format& format = FormatOf(state_.Settings().format);
  if (!back || !format.holds_all) return;
  for (const DataKind kind : AllDataKinds) {
    DataKinds only{};
    only[IndexOf(kind)] = state_.WantedKinds()[IndexOf(kind)] && AllChosen(state_.Data(), kind);
    if (AnyOf(only) && ReadsBack(state_.Data(), *back, only, format)) state_.SetSaved(kind);
  }
}

Outcome ExportCommands::ExportToStandardOutput() {
  const Outcome outcome = WriteFile(std::string(StandardStream));
  desktop_.SetStatusCaption("");
  return outcome;
}

bool ExportCommands::MayEnd() {
  while (AnyOf(state_.UnsavedKinds())) {
    const DataKinds unsaved = state_.UnsavedKinds();
    const Answer answer = desktop_.AskThree(messages::UnsavedQuestion(unsaved), messages::SaveAnswers);
    if (answer != Answer::First) return answer == Answer::Second;
    const DataKinds chosen = std::exchange(state_.Settings().chosen_kinds, unsaved);
    const Outcome outcome = ExportSelected();
    state_.Settings().chosen_kinds = chosen;
    if (outcome != Outcome::Done) return false;
    // What was written may be less than what is held: then that is asked again.
  }
  const DataKinds& dropped = state_.DroppedKinds();
  return !AnyOf(dropped) || desktop_.AskOkCancel(messages::DroppedQuestion(dropped));
}

// ---- To the clipboard

Outcome ExportCommands::Copy() {
  const Outcome outcome = CopySelected();
  if (outcome == Outcome::Done) deletes_.DeleteHandled(messages::NotReadBack);
  return outcome;
}

Outcome ExportCommands::CopySelected() {
  if (state_.Busy()) return Outcome::Busy;
  if (!SomethingToWrite()) return Outcome::Refused;
  const BusyGuard guard(state_);
  state_.Told().Clear();
  std::string text;
  const bool wanted = Prepare();
  Written written;
  if (wanted) written = Write(TextEncoding::Utf8, true, {}, [&text](std::string_view lines) { text += lines; });
  const bool something = wanted && Told(written);
  ShowNotices();
  if (!something) {
    if (wanted) desktop_.ShowMessage(messages::NothingWritten);
    return Outcome::Refused;
  }
  desktop_.SetClipboardText(text);
  NoteDeed(Deed::Kind::Copied, {}, written.report);
  state_.SetSomethingLost(state_.Settings().auto_delete && !GivesBack(ReadBack(ImportText::OfUtf8(std::move(text)))));
  return Outcome::Done;
}

}  // namespace walrim
