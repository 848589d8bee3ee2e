#include <cstddef>

#include "formats/MpsWpt.h"
#include "formats/WptDates.h"

namespace walrim {

WptReader::WptReader(InternalData& data, int utc_offset_hours) : standard_(data, utc_offset_hours) {}

void WptReader::SetLineNumber(int number) {
  line_number_ = number;
  standard_.SetLineNumber(number);
}

void WptReader::ReadText(std::string_view text) {
  WptLineReader lines(text);
  for (WptLine line = lines.Read(); line.command != WptEnd; line = lines.Read()) {
    SetLineNumber(lines.LineNumber());
    StoreLine(line);
    lines.SkipLine();
  }
  Finish();
}

void WptReader::StoreLine(const WptLine& line) {
  if (line.overfull) NoteOverfull();
  if (line.command == "TP") {
    StoreTrackPoint(line);
  } else if (line.command == "WP") {
    StorePoint("WPT", line);
  } else if (line.command == "RP") {
    StorePoint("RTP", line);
  } else if (line.command == "RN") {
    StoreRouteHeader(line);
  } else if (line.command == "Datum") {
    datum_ = DatumOfField(line.fields[0]);
  } else if (line.command.empty()) {
    messages_.Add(line.fields[0]);
  }
}

void WptReader::Finish() {
  standard_.Finish();
}

ImportSummary WptReader::Summary() const {
  ImportSummary summary = standard_.Summary();
  summary.overfull += overfull_;
  if (overfull_ > 0) summary.first_overfull_line = first_overfull_line_;
  return summary;
}

void WptReader::NoteOverfull() {
  if (++overfull_ == 1) first_overfull_line_ = line_number_;
}

void WptReader::StorePoint(std::string_view tag, const WptLine& line) {
  const auto& [form, ident, lat, lon, date, time, comment] = line.fields;
  const std::array<std::string_view, 7> columns{tag, form, datum_, ident, lat, lon, comment};
  standard_.StoreLine(columns);
}

void WptReader::StoreRouteHeader(const WptLine& line) {
  const std::array<std::string_view, 4> columns{"RTH", line.fields[0], line.fields[1], "0"};
  standard_.StoreLine(columns);
}

void WptReader::StoreTrackHeader() {
  const std::array<std::string_view, 5> columns{"TRH", "0", "TRUE", "255", ""};
  standard_.StoreLine(columns);
  track_open_ = true;
}

void WptReader::StoreTrackPoint(const WptLine& line) {
  const auto& [form, lat, lon, date, time, flag, none] = line.fields;
  const bool begins = flag == "1";
  if (begins || !track_open_) StoreTrackHeader();
  const bool timeless = date == NoDate && time == NoTime;
  moment_ = timeless ? std::string() : StandardMoment(date, time);
  const std::array<std::string_view, 7> columns{"TRP", form, datum_, lat, lon, moment_, begins ? "TRUE" : "FALSE"};
  standard_.StoreLine(columns);
}

}  // namespace walrim
