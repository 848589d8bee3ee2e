// WPT+ text between the data set and its lines.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "formats/WptLine.h"
#include "text/Dates.h"

namespace walrim {

struct WptSettings {
  /// "WPT+", or "MPS" for a text that a script is made of: its positions are in "DMS" whatever text says.
  std::string output_type = "WPT+";
  TextSettings text;
  CivilTime now;  ///< the moment that waypoints and route points are stamped with
};

/// Writes the lines of a data set.
class WptWriter {
 public:
  using Progress = StandardWriter::Progress;

  WptWriter(InternalData& data, WptSettings settings);

  /// The line of a record, without line end. tag is the standard file's: "WPT", "RTH", "RTP", "TRH" or "TRP"; record
  /// and point are as StandardWriter's. A track header gives the empty text, as does an unknown tag.
  [[nodiscard]] std::string FormatLine(std::string_view tag, int record, int point = 0);

  /// Appends all lines of a kind, each with CR LF; the Datum line before the first line of an empty text. Counts, and
  /// log 0, are as StandardWriter::AppendKind takes them. Without lines nothing is appended.
  void AppendKind(std::string& out, DataKind kind, const Progress& progress = {});

 private:
  void AppendRecord(std::string& out, std::string_view tag, int record, int point);
  void AppendPoint(std::string& out, std::string_view command, const NamedPoint& point);
  void AppendTrackPoint(std::string& out, const TrackPointEntry& entry);
  void AppendPosition(std::string& out, double lat_deg, double lon_deg) const;
  void AppendLine(std::string& out, std::string_view tag, int record, int point = 0);
  void AppendWaypoints(std::string& out, const Progress& progress);
  void AppendRoutes(std::string& out, const Progress& progress);
  void AppendTracks(std::string& out, const Progress& progress);

  InternalData& data_;
  WptSettings settings_;
  std::string stamp_;
  std::string moment_;  ///< date and time fields of now
};

/// The whole text of the wanted kinds; empty where they hold nothing.
[[nodiscard]] std::string BuildWptText(InternalData& data, const std::array<bool, DataKindCount>& wanted,
                                       const WptSettings& settings, const WptWriter::Progress& progress = {});

/// Reads WPT+ lines into a data set, by way of the standard lines that say the same.
/// A route begins at each RN line, a log at the first TP line and at each whose flag is "1". Positions before any Datum
/// line are on WGS84; those on a datum that is not known are skipped.
class WptReader {
 public:
  WptReader(InternalData& data, int utc_offset_hours);

  /// Stores one line. "eof" and Datum lines store nothing; the message of an unknown command is kept.
  void StoreLine(const WptLine& line);
  /// Closes the input: the route and the log filled last get their counts.
  void Finish();
  /// Reads a whole text; calls Finish.
  void ReadText(std::string_view text);

  [[nodiscard]] ImportSummary Summary() const;
  /// What was said about unknown commands, one message a line.
  [[nodiscard]] const MessageList& Messages() const { return messages_; }
  /// Number of the line that StoreLine is given next, from 1; ReadText counts by itself.
  void SetLineNumber(int number);

 private:
  void StorePoint(std::string_view tag, const WptLine& line);
  void StoreRouteHeader(const WptLine& line);
  void StoreTrackHeader();
  void StoreTrackPoint(const WptLine& line);
  void NoteOverfull();

  StandardReader standard_;
  MessageList messages_;
  std::string datum_ = "WGS84";
  bool track_open_ = false;
  int line_number_ = 0;
  int overfull_ = 0;
  int first_overfull_line_ = 0;
  std::string moment_;
};

}  // namespace walrim
