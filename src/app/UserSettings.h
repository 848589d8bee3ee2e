// What the user has chosen.
#pragma once

#include <cstdint>
#include <string>

#include "device/Garmin.h"
#include "formats/Format.h"
#include "geo/AngleNotation.h"
#include "geo/Datum.h"
#include "records/DataKind.h"
#include "text/TextEncoding.h"

namespace walrim {

/// What is done about dates that are 1024 weeks behind.
enum class DateFixing : std::uint8_t {
  ByHand,  ///< told, and repaired by a command of its own
  Never,   ///< told; the receiver's clock is not asked
  Ask,
  Auto,
  ByNumber  ///< every log begins as many roll-overs behind as the user says
};

/// The values of the window's input controls, or of the terminal's options. They are the settings; nothing is kept
/// elsewhere.
struct UserSettings {
  DataKinds download_kinds{};
  DataKinds chosen_kinds{};  ///< kinds to upload, export, copy or delete

  std::string port = "1";  ///< port number 1 to 4, or what else the serial port knows
  LinkChoice link = LinkChoice::Automatic;
  FormatId format = FormatId::Standard;  ///< of what is exported and copied
  AngleNotation notation = AngleNotation::D;
  Datum datum = Datum::Wgs84;
  int utc_offset_hours = 9;
  TextEncoding encoding = TextEncoding::ShiftJis;  ///< of written files
  DateFixing date_fixing = DateFixing::ByHand;
  int roll_overs = 0;  ///< of DateFixing::ByNumber
  bool with_header = false;
  bool auto_file_name = false;
  bool auto_download = false;
  bool auto_save = false;
  bool auto_copy = false;
  bool auto_delete = false;
  bool auto_upload = false;

  ScriptOptions script;
};

}  // namespace walrim
