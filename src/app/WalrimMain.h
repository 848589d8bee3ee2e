// The program: every command, once, for whoever runs it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/OutputTypes.h"
#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "device/Garmin.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"
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
};

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
  /// All must outlive this object.
  WalrimMain(SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop);

  Controls controls;
  [[nodiscard]] InternalData& Data() { return data_; }
  [[nodiscard]] Garmin& Device() { return garmin_; }
  [[nodiscard]] bool Busy() const { return busy_; }
  [[nodiscard]] bool DataSetLoaded(DataKind kind) const { return loaded_[IndexOf(kind)]; }
  [[nodiscard]] bool CapacityWarned(DataKind kind) const { return capacity_warned_[IndexOf(kind)]; }
  [[nodiscard]] const ProductInfo& DeviceInfo() const { return device_info_; }
  /// What the commands had to tell beyond messages since the last call: damaged records and the like.
  [[nodiscard]] std::vector<std::string> TakeNotices();

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

  /// Writes the kinds of DoCheck: to base_name, "." and the output type's extension, or, with an empty base_name, to
  /// what the save dialog returns.
  Outcome ExportRoutine(const std::string& base_name);
  /// The same to a path that is known already.
  Outcome ExportTo(const std::string& path);
  /// The kinds of DoCheck as text in the output type; empty where they hold nothing (then a message was shown).
  [[nodiscard]] std::string BuildText();
  /// Bytes of an output text in the chosen encoding. Where Shift-JIS lacks a character, asks whether UTF-8 is to be
  /// used instead; nothing when the answer is No.
  [[nodiscard]] std::optional<std::string> EncodeText(const std::string& text);

  /// Reads a file ("-": standard input) into the data set, behind what it holds.
  Outcome ImportFile(const std::string& path);
  [[nodiscard]] const ImportSummary& LastImport() const { return last_import_; }

  /// Sets a kind's GpsNum and runs the capacity watch.
  void SetGpsNum(DataKind kind, const std::string& text);

 private:
  /// What a kind's transfer means for the rest of the command.
  struct KindEnd {
    bool go_on = true;
    Outcome outcome = Outcome::Done;
  };

  ProductInfo IdentifyDevice();
  void AskCount(DataKind kind, Outcome& outcome);
  Outcome DownloadSelected();
  KindEnd DownloadKind(DataKind kind);
  Outcome UploadSelected();
  KindEnd UploadKind(DataKind kind);
  KindEnd EndWithoutRecords();
  [[nodiscard]] Outcome OutcomeWithoutReceiver() const;
  void RunAutoSaveAndCopy();
  void NoteReport(DataKind kind);
  void ShowNotices();
  void EmptyKind(DataKind kind);
  template <typename Transfer>
  std::int32_t RunTransfer(Transfer transfer, bool& failed);

  void GpsNum_Change(DataKind kind);
  [[nodiscard]] bool SomethingToWrite();
  Outcome WriteText(const std::string& path, const std::string& text);
  void AppendStandardText(std::string& text);
  [[nodiscard]] bool AnyLoaded() const;
  [[nodiscard]] bool AnyChecked(const std::array<bool, DataKindCount>& checks) const;
  void ShowCounters(const ImportSummary& summary);

  const Clock& clock_;
  EventLoop& event_loop_;
  Desktop& desktop_;
  InternalData data_;
  Garmin garmin_;
  ProductInfo device_info_;
  ImportSummary last_import_;
  std::vector<std::string> notices_;
  std::array<bool, DataKindCount> loaded_{};
  std::array<bool, DataKindCount> capacity_warned_{};
  bool busy_ = false;
  bool cancel_requested_ = false;
};

}  // namespace walrim
