// The program: every command, once, for whoever runs it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/Dialogs.h"
#include "app/FileFormat.h"
#include "app/ImportReport.h"
#include "app/OutputTypes.h"
#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "data/MpsOptions.h"
#include "device/Garmin.h"
#include "dialogs/ClipProAtlas.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"
#include "platform/Inet.h"
#include "platform/SerialPort.h"

namespace walrim {

inline constexpr std::string_view ProgramName = "Walrim";
/// The version of this build, numbers joined by ".".
[[nodiscard]] std::string_view ProgramVersion();
/// Program name, version and what it is.
[[nodiscard]] std::string WindowTitle();

/// Backgrounds of a kind's DataType label: a colour, and a system colour's number.
inline constexpr std::uint32_t NormalBackColor = 0x00FFFFFF;  ///< below the kind's limit: white
inline constexpr std::uint32_t FullBackColor = 0x8000000F;    ///< at the limit: the buttons' face

/// The question before a file is replaced, and the message that a file cannot be written.
[[nodiscard]] std::string OverwriteQuestion(std::string_view path);
[[nodiscard]] std::string WriteProblemText(std::string_view path, std::string_view detail);
/// Why AutoDelete deleted nothing behind an export or a copy.
inline constexpr std::string_view NotReadBackNotice =
    "書き出した内容を読み戻すと失われるものがあるため，内部データは削除しませんでした．";
/// The message that a kind can take no more.
[[nodiscard]] std::string CapacityMessage(DataKind kind);

/// How text is written to files.
enum class TextEncoding { ShiftJis, Utf8 };

/// The values of the window's controls, under the controls' names. They are the settings; nothing is kept elsewhere.
/// Arrays are indexed by DataKind.
struct Controls {
  std::array<bool, DataKindCount> DownCheck{};        ///< kinds to download
  std::array<bool, DataKindCount> DoCheck{};          ///< kinds to upload, export, copy or delete
  std::array<std::string, DataKindCount> GpsDataNum;  ///< records that the receiver reported; empty: not asked
  std::array<std::string, DataKindCount> GpsNum{"-", "-", "-"};  ///< records held; "-" none
  std::array<std::uint32_t, DataKindCount> DataTypeBackColor{NormalBackColor, NormalBackColor, NormalBackColor};
  std::string GpsInfo = "GPSInfo";
  bool CancelEnabled = false;

  std::string CommPort = "1";  ///< port number 1 to 4, or what else the serial port knows
  LinkChoice CheckedLink = LinkChoice::Automatic;
  std::string OutputTypeOption = "標準";
  std::string DegreeType = "D";
  std::string Datum = "WGS84";
  int UTCOffsetNum = 9;  ///< hours
  TextEncoding Encoding = TextEncoding::ShiftJis;
  bool WithHeader = false;
  bool AutoFileName = false;
  bool AutoDownload = false;
  bool AutoSave = false;
  bool AutoCopy = false;
  bool AutoDelete = false;
  bool AutoUpload = false;

  MpsOptions MpsOption;
};

// What a command from another program comes to.
inline constexpr std::int32_t CommandDone = 0;
inline constexpr std::int32_t CommandRefused = 1;     ///< a file that cannot be used, a kind there is not, Cancel
inline constexpr std::int32_t CommandNoReceiver = 3;  ///< the upload behind an import found no receiver, or lost it
inline constexpr std::int32_t CommandUnknown = -1;    ///< no such command
inline constexpr std::int32_t CommandBusy = -2;       ///< another command runs; nothing was done

/// How a command ended.
enum class Outcome {
  Done,
  Busy,        ///< another command runs; nothing was done
  Refused,     ///< nothing selected or held, a file that cannot be used, an answer No, a nonsensical receiver
  Cancelled,   ///< by Cancel
  NoReceiver,  ///< nobody, or nobody who speaks the protocol, answered
  LinkLost     ///< the receiver stopped answering
};

class WalrimMain {
 public:
  /// All must outlive this object. Without dialogs scripts are written with the settings as they stand, and points
  /// from maps are refused; without inet links are.
  WalrimMain(SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop, Dialogs* dialogs = nullptr,
             Inet* inet = nullptr);

  Controls controls;
  [[nodiscard]] InternalData& Data() { return data_; }
  [[nodiscard]] Garmin& Device() { return garmin_; }
  [[nodiscard]] bool Busy() const { return busy_; }
  [[nodiscard]] bool DataSetLoaded(DataKind kind) const { return loaded_[IndexOf(kind)]; }
  [[nodiscard]] bool CapacityWarned(DataKind kind) const { return capacity_warned_[IndexOf(kind)]; }
  [[nodiscard]] const ProductInfo& DeviceInfo() const { return device_info_; }
  /// The receiver's description, or why there is none; empty where the port could not be used.
  [[nodiscard]] std::string IdentityText() const;
  /// What the commands had to tell beyond messages since the last call: damaged records and the like.
  [[nodiscard]] std::vector<std::string> TakeNotices();
  /// Whether damaged records came in the last command on the receiver; a checked link has none.
  [[nodiscard]] bool DamagedRecordsCame() const { return damaged_records_came_; }

  // ---- Commands on the receiver

  Outcome Get_GpsInfo_Click();
  Outcome GpsDownLoad_Click();
  Outcome GpsUpLoad_Click();
  /// Asks the running transfer to end after its exchange, and the command to go no further.
  void Cancel_Click();

  // ---- Commands on the data set

  /// Empties the kinds of DoCheck.
  Outcome Delete_Click();
  Outcome FileExport_Click();
  Outcome Copy_Click();
  Outcome FileImport_Click();
  /// Imports the clipboard's text, or what the link in it leads to.
  Outcome Paste_Click();
  /// The same for a text that was typed.
  Outcome ImportTyped(const std::string& text);
  /// Imports what was dropped: files one after the other, or, without any, a text. With AutoUpload what came in is then
  /// uploaded.
  Outcome TakeDrop(const std::vector<std::string>& paths, const std::string& text);

  /// Writes the kinds of DoCheck: to base_name, "." and the output type's extension, or, with an empty base_name, to
  /// what the save dialog returns.
  Outcome ExportRoutine(const std::string& base_name);
  /// The same to a path that is known already.
  Outcome ExportTo(const std::string& path);
  /// The kinds of DoCheck as text in the output type; empty where they hold nothing (then a message was shown), nothing
  /// when the user gave it up or it failed with a message.
  [[nodiscard]] std::optional<std::string> BuildText();
  /// Bytes of an output text in the chosen encoding. Where Shift-JIS lacks a character, asks whether UTF-8 is to be
  /// used instead; nothing when the answer is No.
  [[nodiscard]] std::optional<std::string> EncodeText(const std::string& text);

  /// Reads a file ("-": standard input) into the data set, behind what it holds.
  Outcome ImportFile(const std::string& path);
  /// The same with the status line telling what is read and then what came in.
  Outcome ImportFrom(const std::string& path);
  /// ImportFrom for files one after the other; goes on behind one that cannot be used. LastImport is the sum.
  Outcome ImportFiles(const std::vector<std::string>& paths);
  /// Uploads the kinds that the last import brought.
  Outcome UploadImported();
  [[nodiscard]] const ImportResult& LastImport() const { return last_import_; }
  /// Takes a point in that was completed in the clip dialog. Returns its slot, or AddRejected, with a message, when
  /// there is no room.
  int RetClip(const ClipWaypoint& clip);

  // ---- For other programs

  /// "Delete" "ALL"; "GetFile" and a path ("cancel" does nothing), which with AutoUpload is uploaded; "SetDoCheck", a
  /// kind's number and a value (a number, or TRUE). Words in any case. Returns one of the results above.
  [[nodiscard]] std::int32_t WalrimCmd(const std::string& command, const std::string& argument1,
                                       const std::string& argument2);

  /// Sets a kind's GpsNum and runs the capacity watch.
  void SetGpsNum(DataKind kind, const std::string& text);

 private:
  /// What a kind's transfer means for the rest of the command.
  struct KindEnd {
    bool go_on = true;
    Outcome outcome = Outcome::Done;
  };

  ProductInfo IdentifyDevice();
  void SetCancelEnabled(bool enabled);
  Outcome AskCounts();
  void AskCount(DataKind kind, Outcome& outcome);
  bool TellRefusal();
  Outcome DownloadSelected();
  KindEnd DownloadKind(DataKind kind);
  Outcome UploadSelected();
  KindEnd UploadKind(DataKind kind);
  KindEnd EndWithoutRecords();
  [[nodiscard]] Outcome OutcomeWithoutReceiver() const;
  void RunAutoSaveAndCopy();
  void NoteReport(DataKind kind);
  void ShowNotices();
  /// Takes away what an earlier command has told.
  void ClearStatus();
  void EmptyKind(DataKind kind);
  /// Empties the kinds of DoCheck; the status line has then what it had before.
  Outcome DeleteSelected();
  template <typename Transfer>
  std::int32_t RunTransfer(Transfer transfer, bool& failed);

  void GpsNum_Change(DataKind kind);
  Outcome ExportSelected();
  Outcome CopySelected();
  void DeleteHandled(std::string_view lost);
  [[nodiscard]] bool GivesBack(const std::string& text);
  void NoteCutTexts(DataKind kind);
  [[nodiscard]] bool SomethingToWrite();
  Outcome WriteText(const std::string& path, const std::optional<std::string>& text);
  [[nodiscard]] std::array<bool, DataKindCount> WantedKinds() const;
  [[nodiscard]] TextSettings OutputSettings() const;
  [[nodiscard]] StandardWriter::Progress ExportProgress();
  [[nodiscard]] std::string BuildStandard();
  [[nodiscard]] std::string BuildWptPlus(std::string_view output_type);
  [[nodiscard]] std::optional<std::string> BuildScript();
  [[nodiscard]] bool PassThroughFile(const std::string& path, std::string& text);
  [[nodiscard]] std::optional<std::string> BuildInType();
  void NoteCommas(int lines, std::string_view what);
  void NoteSouthAndWest(std::string_view output_type);
  void NoteMessages(const MessageList& messages);
  [[nodiscard]] bool AnyLoaded() const;
  [[nodiscard]] bool AnyChecked(const std::array<bool, DataKindCount>& checks) const;
  [[nodiscard]] std::int32_t DeleteAll();
  [[nodiscard]] std::int32_t SetDoCheck(const std::string& kind_number, const std::string& value);
  [[nodiscard]] Outcome GetFile(const std::string& path);
  Outcome EndImport(Outcome outcome);
  Outcome ReadFileIn(const std::string& path, const std::string& shown_name);
  void ReadTextIn(const std::string& text, FileFormat format);
  Outcome ImportText(const std::string& text, std::string_view link_status);
  Outcome ImportFileLink(const std::string& link);
  Outcome FetchLink(const std::string& link);
  Outcome ReadThroughFile(const std::string& name, const std::string& bytes, const std::string& shown_name);
  Outcome ImportPlainText(const std::string& text);
  Outcome ImportPoint(const std::string& text);
  void ShowCounters(const ImportSummary& summary);

  const Clock& clock_;
  EventLoop& event_loop_;
  Desktop& desktop_;
  Dialogs* dialogs_;
  Inet* inet_;
  ClipProAtlas clip_;
  InternalData data_;
  Garmin garmin_;
  ProductInfo device_info_;
  ImportResult last_import_;
  std::vector<std::string> notices_;
  std::array<bool, DataKindCount> loaded_{};
  std::array<bool, DataKindCount> capacity_warned_{};
  bool damaged_records_came_ = false;
  /// What the last command wrote or sent is less than what is held: AutoDelete deletes nothing.
  bool something_lost_ = false;
  bool busy_ = false;
  bool cancel_requested_ = false;
};

}  // namespace walrim
