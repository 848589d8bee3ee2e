// The program: its rooms, put together for whoever runs it.
#pragma once

#include "app/DateCommands.h"
#include "app/DeleteCommands.h"
#include "app/DeviceCommands.h"
#include "app/Dialogs.h"
#include "app/DoctorCommands.h"
#include "app/EditCommands.h"
#include "app/ExportCommands.h"
#include "app/ExternalCommands.h"
#include "app/ImportCommands.h"
#include "app/NameCommands.h"
#include "app/ProgramState.h"
#include "app/RecordCommands.h"
#include "app/RecoveryCommands.h"
#include "app/TraceCommands.h"
#include "app/TraceMemory.h"
#include "app/UploadCommands.h"
#include "device/Garmin.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"
#include "platform/Inet.h"
#include "platform/PortFacts.h"
#include "platform/SerialPort.h"

namespace walrim {

class WalrimMain {
 public:
  /// All must outlive this object. Without dialogs scripts are written with the settings as they stand, and points
  /// from maps are refused; without inet links are; without facts nothing is known of ports besides their bytes.
  WalrimMain(SerialPort& port, const Clock& clock, EventLoop& event_loop, Desktop& desktop, Dialogs* dialogs = nullptr,
             Inet* inet = nullptr, const PortFacts* facts = nullptr);

  [[nodiscard]] ProgramState& State() { return state_; }
  /// The receiver's side of the line.
  [[nodiscard]] Garmin& Receiver() { return garmin_; }
  [[nodiscard]] DeviceCommands& Device() { return device_; }
  [[nodiscard]] NameCommands& Names() { return names_; }
  [[nodiscard]] UploadCommands& Uploads() { return uploads_; }
  [[nodiscard]] DoctorCommands& Doctor() { return doctor_; }
  [[nodiscard]] DateCommands& Dates() { return dates_; }
  [[nodiscard]] ImportCommands& Imports() { return imports_; }
  [[nodiscard]] ExportCommands& Exports() { return exports_; }
  [[nodiscard]] DeleteCommands& Deletes() { return deletes_; }
  [[nodiscard]] EditCommands& Edits() { return edits_; }
  [[nodiscard]] RecordCommands& Records() { return records_; }
  [[nodiscard]] ExternalCommands& External() { return external_; }
  [[nodiscard]] RecoveryCommands& Recovery() { return recovery_; }
  [[nodiscard]] TraceCommands& Traces() { return traces_; }

  /// Asks what runs to end: a transfer after its exchange, the reading of a link at once.
  void Cancel();

 private:
  ProgramState state_;
  TraceMemory trace_;
  Garmin garmin_;
  DeleteCommands deletes_;
  EditCommands edits_;
  RecordCommands records_;
  DateCommands dates_;
  ImportCommands imports_;
  ExportCommands exports_;
  NameCommands names_;
  DeviceCommands device_;
  UploadCommands uploads_;
  ExternalCommands external_;
  DoctorCommands doctor_;
  TraceCommands traces_;
  RecoveryCommands recovery_;
};

}  // namespace walrim
