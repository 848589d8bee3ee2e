#include "faults/Rows.h"

namespace walrim {

namespace {

constexpr std::array<std::string_view, 2> Models{"GPS 12", "eTrex"};

constexpr Phases EveryRecord = Phase::First | Phase::Middle | Phase::Last;
constexpr Phases Identification = Phase::Request | Phase::Product;
constexpr Phases BehindProduct = Set(Phase::Product) | Phase::Opening | Phase::Number | EveryRecord | Phase::Close |
                                 Phase::NewOpening | Phase::NewNumber | Phase::End;
constexpr Phases EveryAnswer = BehindProduct | Phase::Request;
constexpr Phases EveryPacket =
    Set(Phase::Request) | Phase::Opening | EveryRecord | Phase::Close | Phase::NewOpening | Phase::End;
constexpr Phases Always = Set(Phase::Throughout);

constexpr FaultForm Forms[] = {
    {"", Counts::Nothing, Always},
    {"silent", Counts::Nothing, Always},
    {"silent-after=N", Counts::FramesBefore, EveryAnswer},
    {"unplug-after=N", Counts::FramesBefore, BehindProduct},
    {"early-complete=N", Counts::RecordsBefore, EveryRecord, true},
    {"unknown-first", Counts::Nothing, Set(Phase::First), true},
    {"short-count=1", Counts::Nothing, Phase::Number | Phase::NewNumber},
    {"short-count=N", Counts::HalfOfRecords, Set(Phase::Number), true, true},
    {"short-count=1000", Counts::Nothing, Phase::Number | Phase::NewNumber},
    {"gap=200", Counts::Nothing, Always},
    {"gap=1400", Counts::Nothing, Always},
    {"gap=1600", Counts::Nothing, Always},
    {"dribble=40", Counts::Nothing, Always},
    {"dribble=200", Counts::Nothing, Always},
    {"dribble=1000", Counts::Nothing, Always},
    {"dribble=1600", Counts::Nothing, Always},
    {"garbage", Counts::Nothing, Always},
    {"garbage=N", Counts::Frame, EveryAnswer},
    {"overlong=N", Counts::Record, EveryRecord, true},
    {"burst=5", Counts::Nothing, Set(Phase::First), true},
    {"burst=6", Counts::Nothing, Set(Phase::First), true},
    {"bad-checksum=N", Counts::Record, EveryRecord, true},
    {"bad-ack=N", Counts::Packet, EveryPacket},
    {"nak", Counts::Nothing, Always},
    {"nak=N", Counts::Packet, EveryPacket},
    {"refuse=N", Counts::Packet, EveryPacket},
    {"pvt=1", Counts::Nothing, Always},
    {"pvt=4", Counts::Nothing, Always},
    {"short-ack", Counts::Nothing, Always},
    {"empty-ack", Counts::Nothing, Always},
    {"late-ack=1000", Counts::Nothing, Always},
    {"late-ack=1400", Counts::Nothing, Always},
    {"other-ack", Counts::Nothing, Always},
    {"other-ack=N", Counts::Packet, EveryPacket},
    {"two-acks=500", Counts::Nothing, Always},
    {"two-acks=1400", Counts::Nothing, Always},
    {"two-acks=3000", Counts::Nothing, Always},
    {"ack-once", Counts::Nothing, Always},
    {"repeat=1000", Counts::Nothing, Always},
    {"repeat=100", Counts::Nothing, Always},
    {"product-frames=4", Counts::Nothing, Always},
    {"product-frames=20", Counts::Nothing, Always},
    {"product-texts=1", Counts::Nothing, Always},
    {"product-texts=3", Counts::Nothing, Always},
};

/// What a receiver answers to a command.
Phases AnswersTo(Command command) {
  constexpr Phases both_ends = Identification | Phase::Opening | Phase::End;
  switch (command) {
    case Command::Info:
      return both_ends | Phase::Number;
    case Command::Download:
      return both_ends | Phase::Number | EveryRecord | Phase::Close;
    case Command::Upload:
      break;
  }
  return both_ends | EveryRecord | Phase::Close | Phase::NewOpening | Phase::NewNumber;
}

constexpr std::array AllPhases{Phase::Throughout, Phase::Request,    Phase::Product,   Phase::Opening,
                               Phase::Number,     Phase::First,      Phase::Middle,    Phase::Last,
                               Phase::Close,      Phase::NewOpening, Phase::NewNumber, Phase::End};

/// Whether a fault can hit what a command is answered at a phase. ACKs, which call for records, are not refused.
bool CanHit(const FaultForm& form, Command command, Phase phase) {
  const bool called_by_ack = command == Command::Download && (Set(phase) & (EveryRecord | Phase::Close)) != 0;
  if (form.counts == Counts::Packet && called_by_ack) return false;
  return phase == Phase::Throughout || (AnswersTo(command) & Set(phase)) != 0;
}

/// The kinds that a fault at a phase can be aimed at, one at a time; none: it is not aimed.
std::vector<std::optional<DataKind>> Targets(const Row& row) {
  const bool before_kinds = (Set(row.phase) & (Always | Identification)) != 0;
  if (before_kinds) return {std::nullopt};
  if (row.kind) return {row.kind};
  const bool of_records = row.fault->counts == Counts::Record || row.fault->counts == Counts::RecordsBefore;
  if (row.fault->counts == Counts::Nothing || (of_records && row.phase == Phase::First)) return {std::nullopt};
  return {AllDataKinds.begin(), AllDataKinds.end()};
}

void AppendRows(std::vector<Row>& rows, Row row) {
  for (const Phase phase : AllPhases) {
    if ((row.fault->phases & Set(phase)) == 0 || !CanHit(*row.fault, row.command, phase)) continue;
    row.phase = phase;
    for (const auto& target : Targets(row)) {
      row.struck = target;
      rows.push_back(row);
    }
  }
}

}  // namespace

std::span<const std::string_view> MatrixModels() {
  return Models;
}

bool HasLinksAndHeaders(std::string_view model) {
  return model == "eTrex";
}

bool AnnouncesProtocols(std::string_view model) {
  return model == "eTrex";
}

std::span<const FaultForm> MatrixFaults() {
  return Forms;
}

std::vector<Row> RowsOf(Command command, std::optional<DataKind> kind, std::string_view model, Link link) {
  std::vector<Row> rows;
  for (const FaultForm& form : Forms) {
    if (form.records_only && command != Command::Download) continue;
    if (form.single_kind_only && !kind) continue;
    AppendRows(rows, {command, kind, model, link, &form, Phase::Throughout, std::nullopt});
  }
  return rows;
}

std::vector<Row> AllRows(Link link) {
  std::vector<Row> all;
  const auto append = [&](Command command, std::optional<DataKind> kind) {
    for (const std::string_view model : Models) {
      const std::vector<Row> rows = RowsOf(command, kind, model, link);
      all.insert(all.end(), rows.begin(), rows.end());
    }
  };
  append(Command::Info, std::nullopt);
  for (const Command command : {Command::Download, Command::Upload}) {
    for (const DataKind kind : AllDataKinds)
      append(command, kind);
    append(command, std::nullopt);
  }
  return all;
}

std::vector<Row> RowsOverAllLinks() {
  std::vector<Row> all;
  for (const Link link : AllLinks) {
    const std::vector<Row> rows = AllRows(link);
    all.insert(all.end(), rows.begin(), rows.end());
  }
  return all;
}

bool Selected(const Row& row, DataKind kind) {
  return !row.kind || row.kind == kind;
}

bool KindFollows(const Row& row) {
  return !row.kind && row.struck && row.struck != DataKind::TrackLog;
}

Amounts MovedAmounts(const Row& row) {
  if (!row.struck) return AllLarge;
  Amounts amounts{Amount::Small, Amount::Small, Amount::Small};
  amounts[IndexOf(*row.struck)] = Amount::Large;
  return amounts;
}

std::vector<NamedRecord> MovedRecords(const Row& row, DataKind kind) {
  return RecordsOf(kind, MovedAmounts(row)[IndexOf(kind)], HasLinksAndHeaders(row.model));
}

int RecordNumber(Phase phase, int count) {
  if (phase == Phase::First) return 1;
  if (phase == Phase::Middle) return (count + 1) / 2;
  return phase == Phase::Last ? count : 0;
}

std::string_view CommandName(Command command) {
  constexpr std::array<std::string_view, 3> names{"info", "download", "upload"};
  return names[static_cast<std::size_t>(command)];
}

std::string_view LinkName(Link link) {
  constexpr std::array<std::string_view, AllLinks.size()> names{"plain", "checked", "automatic"};
  return names[static_cast<std::size_t>(link)];
}

std::string_view PhaseName(Phase phase) {
  constexpr std::array<std::string_view, AllPhases.size()> names{"throughout",
                                                                 "the first answer",
                                                                 "the product data",
                                                                 "a kind's first answer",
                                                                 "the number of records",
                                                                 "the first record",
                                                                 "a middle record",
                                                                 "the last record",
                                                                 "the end of the records",
                                                                 "the answer to the new number's question",
                                                                 "the new number",
                                                                 "the closing answer"};
  return names[static_cast<std::size_t>(phase)];
}

std::string RowName(const Row& row) {
  std::string name(CommandName(row.command));
  name += row.kind ? " of " + std::string(DataKindName(*row.kind)) : " of all";
  name.append(", ").append(row.model).append(", ").append(LinkName(row.link)).append(" link, ");
  name.append(row.fault->text.empty() ? "no fault" : row.fault->text).append(" at ").append(PhaseName(row.phase));
  if (row.struck) name.append(" of ").append(DataKindName(*row.struck));
  return name;
}

}  // namespace walrim
