#include "app/ImportReport.h"

namespace walrim {

namespace {

std::string AtLine(int line) {
  return "（最初は" + std::to_string(line) + "行目";
}

std::string WithPoints(int points) {
  return points > 0 ? "（" + std::to_string(points) + "点）" : "";
}

}  // namespace

namespace {

/// Adds a count, and where it was zero before takes over where the first of them stands.
void AddCount(int& count, int& first_line, int more, int more_first_line) {
  if (count == 0) first_line = more_first_line;
  count += more;
}

}  // namespace

void ImportResult::Add(const ImportResult& other) {
  const ImportSummary& more = other.summary;
  for (std::size_t k = 0; k < DataKindCount; ++k)
    summary.stored[k] += more.stored[k];
  summary.route_points += more.route_points;
  summary.track_points += more.track_points;
  if (summary.skipped == 0) summary.first_skipped_why = more.first_skipped_why;
  AddCount(summary.skipped, summary.first_skipped_line, more.skipped, more.first_skipped_line);
  AddCount(summary.overfull, summary.first_overfull_line, more.overfull, more.first_overfull_line);
  AddCount(summary.unread_times, summary.first_unread_time_line, more.unread_times, more.first_unread_time_line);
  if (skipped_statements == 0) first_skipped_statement_why = other.first_skipped_statement_why;
  skipped_statements += other.skipped_statements;
  for (const std::string& message : other.messages.kept)
    messages.Add(message);
  messages.count += other.messages.count - static_cast<int>(other.messages.kept.size());
}

std::string ImportCountsText(const ImportSummary& summary) {
  const auto count = [&](DataKind kind) {
    return std::string(DataKindName(kind)) + " " + std::to_string(summary.stored[IndexOf(kind)]);
  };
  return "取り込み：" + count(DataKind::Waypoint) + "，" + count(DataKind::Route) + WithPoints(summary.route_points) +
         "，" + count(DataKind::TrackLog) + WithPoints(summary.track_points) + "．";
}

std::vector<std::string> ImportComplaints(const ImportResult& result) {
  const ImportSummary& summary = result.summary;
  std::vector<std::string> complaints = result.messages.kept;
  const int more = result.messages.count - static_cast<int>(result.messages.kept.size());
  if (more > 0) complaints.push_back("ほかに" + std::to_string(more) + "行，分からない命令があります．");
  if (result.skipped_statements > 0) {
    complaints.push_back(std::to_string(result.skipped_statements) + "個の文を読み飛ばしました（最初の理由：" +
                         result.first_skipped_statement_why + "）．");
  }
  if (summary.skipped > 0) {
    complaints.push_back(std::to_string(summary.skipped) + "行を読み飛ばしました" + AtLine(summary.first_skipped_line) +
                         "：" + summary.first_skipped_why + "）．");
  }
  if (summary.overfull > 0) {
    complaints.push_back(std::to_string(summary.overfull) + "行で列が多すぎます" + AtLine(summary.first_overfull_line) +
                         "）．文字列の中のコンマで切れている可能性があります．");
  }
  if (summary.unread_times > 0) {
    complaints.push_back(std::to_string(summary.unread_times) + "点の日時が読めません" +
                         AtLine(summary.first_unread_time_line) + "）．時刻なしとして取り込みました．");
  }
  return complaints;
}

std::string ImportReport(const ImportResult& result) {
  std::string text = ImportCountsText(result.summary);
  for (const std::string& complaint : ImportComplaints(result)) {
    if (!text.ends_with("．")) text += ' ';
    text += complaint;
  }
  return text;
}

}  // namespace walrim
