#include "app/NameCommands.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/FileStore.h"
#include "app/Messages.h"
#include "preflight/Sending.h"
#include "records/Splice.h"
#include "text/Dates.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

bool IsAscii(std::string_view text) {
  return AsciiPrefix(text) == text.size();
}

NamePlace PlaceOf(const Waypoint& waypoint) {
  return {waypoint.lat_deg, waypoint.lon_deg};
}

/// The points of all routes in their order.
std::vector<const Waypoint*> PointsOf(const DataSet& data) {
  std::vector<const Waypoint*> points;
  for (const Route& route : data.Routes()) {
    for (const RoutePoint& point : route.points)
      points.push_back(&point.waypoint);
  }
  return points;
}

/// The records whose short names have long ones, with those.
template <typename Record, typename WaypointOf>
Splice<Record> LongNames(const NameBook& book, const std::vector<Record>& records, WaypointOf waypoint_of) {
  Splice<Record> splice;
  for (std::size_t at = 0; at < records.size(); ++at) {
    Record named = records[at];
    Waypoint& waypoint = waypoint_of(named);
    std::string long_name = book.LongOf(Bare(waypoint.ident), PlaceOf(waypoint));
    if (long_name.empty() || long_name == waypoint.ident) continue;
    waypoint.ident = std::move(long_name);
    splice.runs.push_back({at, 1, 1});
    splice.absent.push_back(std::move(named));
  }
  return splice;
}

}  // namespace

std::string NamesPath(const char* data_home, const char* home) {
  const auto is_path = [](const char* folder) { return folder != nullptr && folder[0] == '/'; };
  if (is_path(data_home)) return std::string(data_home) + "/walrim/names.tsv";
  return is_path(home) ? std::string(home) + "/.local/share/walrim/names.tsv" : std::string();
}

std::optional<std::string> NameCommands::TextOf(const std::string& path) {
  FileReader file(path);
  std::string text;
  for (std::string_view piece = file.Next(); !piece.empty(); piece = file.Next())
    text += piece;
  if (!file.Problem()) return text;
  desktop_.ShowMessage(messages::ReadProblem(path, file.Problem()->detail));
  return std::nullopt;
}

void NameCommands::Load() {
  if (std::exchange(loaded_, true) || path_.empty() || !FileExists(path_)) return;
  const auto text = TextOf(path_);
  // What cannot be read is not written over.
  if (!text) path_.clear();
  if (text && book_.Read(*text) > 0) state_.Told().Add(messages::NamesLeftOut(path_));
}

bool NameCommands::Write(const std::string& path) {
  FileWriter file(path);
  file.Add(book_.Text());
  const auto problem = file.Finish();
  if (problem) desktop_.ShowMessage(messages::WriteProblem(path, problem->detail));
  return !problem;
}

void NameCommands::Save() {
  if (path_.empty()) return;
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), error);
  changed_ = !Write(path_);
}

std::string NameCommands::ShortOf(std::string_view long_name) {
  Load();
  return book_.ShortOf(long_name);
}

void NameCommands::RememberOne(const Waypoint& held, const Waypoint& sent) {
  const std::string long_name = Bare(held.ident);
  std::string short_name = Bare(sent.ident);
  const NamePlace place = PlaceOf(held);
  if (IsAscii(long_name) || short_name.empty() || !IsAscii(short_name)) return;
  if (book_.LongOf(short_name, place) == long_name) return;
  std::string date = DateTimeText(clock_.LocalTime()).substr(0, 10);
  std::ranges::replace(date, '/', '-');
  book_.Remember({long_name, std::move(short_name), place, std::move(date)});
  changed_ = true;
}

void NameCommands::Remember(const DataSet& held, const DataSet& sent) {
  if (path_.empty()) return;
  Load();
  for (std::size_t i = 0; i < held.Waypoints().size() && i < sent.Waypoints().size(); ++i)
    RememberOne(held.Waypoints()[i], sent.Waypoints()[i]);
  // A route may have been sent in parts: what comes next at a point's place is the point.
  const std::vector<const Waypoint*> points = PointsOf(sent);
  auto next = points.begin();
  for (const Waypoint* point : PointsOf(held)) {
    const auto found =
        std::find_if(next, points.end(), [&](const Waypoint* other) { return PlaceOf(*other) == PlaceOf(*point); });
    if (found == points.end()) continue;
    RememberOne(*point, **found);
    next = found + 1;
  }
  if (changed_) Save();
}

bool NameCommands::FindLongNames() {
  if (path_.empty()) return false;
  Load();
  if (book_.Pairs().empty()) return false;
  const UndoStep step(state_, StepKind::Edit);
  DataSet& data = state_.Data();
  auto waypoints = LongNames(book_, data.Waypoints(), [](Waypoint& waypoint) -> Waypoint& { return waypoint; });
  std::size_t count = waypoints.runs.size();
  static_cast<void>(data.Edit(std::move(waypoints)));
  for (std::size_t r = 0; r < data.Routes().size(); ++r) {
    auto points =
        LongNames(book_, data.Routes()[r].points, [](RoutePoint& point) -> Waypoint& { return point.waypoint; });
    points.owner = r;
    count += points.runs.size();
    static_cast<void>(data.Edit(std::move(points)));
  }
  if (count == 0) return false;
  state_.Told().Add(messages::LongNamesFound(static_cast<int>(count)));
  desktop_.RecordsChanged();
  return true;
}

Outcome NameCommands::Export() {
  if (state_.Busy()) return Outcome::Busy;
  Load();
  const auto path = desktop_.SaveFileDialog(messages::NamesFilter);
  if (!path || (FileExists(*path) && !desktop_.AskOkCancel(messages::OverwriteQuestion(*path)))) {
    return Outcome::Refused;
  }
  return Write(*path) ? Outcome::Done : Outcome::Refused;
}

Outcome NameCommands::Import() {
  if (state_.Busy()) return Outcome::Busy;
  Load();
  const auto path = desktop_.OpenFileDialog(messages::NamesFilter);
  const auto text = path ? TextOf(*path) : std::nullopt;
  if (!text) return Outcome::Refused;
  NameBook other;
  if (other.Read(*text) > 0) desktop_.ShowMessage(messages::NamesLeftOut(*path));
  for (const NamePair& pair : other.Pairs())
    book_.Remember(pair);
  Save();
  desktop_.SetStatusCaption(messages::NamesImported(static_cast<int>(other.Pairs().size())));
  return Outcome::Done;
}

}  // namespace walrim
