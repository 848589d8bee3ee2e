#include "formats/ImportResult.h"

namespace walrim {
namespace {

void AddTo(LineCount& count, const LineCount& more) {
  if (count.count == 0) {
    count.first_line = more.first_line;
    count.first_why = more.first_why;
  }
  count.count += more.count;
}

}  // namespace

void LineCount::Add(int line, std::string_view why) {
  if (++count > 1) return;
  first_line = line;
  first_why = why;
}

void MessageList::Add(std::string_view message) {
  if (kept.size() < MostKept) kept.emplace_back(message);
  ++count;
}

bool ImportResult::Received(DataKind kind) const {
  if (stored[IndexOf(kind)] > 0) return true;
  return (kind == DataKind::Route && route_points > 0) || (kind == DataKind::TrackLog && track_points > 0);
}

void ImportResult::Add(const ImportResult& other) {
  for (const DataKind kind : AllDataKinds)
    stored[IndexOf(kind)] += other.stored[IndexOf(kind)];
  route_points += other.route_points;
  track_points += other.track_points;
  AddTo(skipped, other.skipped);
  AddTo(overfull, other.overfull);
  AddTo(unread_time, other.unread_time);
  AddTo(statements, other.statements);
  for (const std::string& message : other.messages.kept)
    messages.Add(message);
  messages.count += other.messages.count - static_cast<int>(other.messages.kept.size());
}

}  // namespace walrim
