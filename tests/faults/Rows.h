// The rows of the fault matrix: every command, against every fault, at every phase where the fault can strike.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "faults/Contents.h"
#include "records/DataKind.h"

namespace walrim {

enum class Command { Info, Download, Upload };
/// How the program reads the line; automatic: as the identification says.
enum class Link { Plain, Checked, Automatic };
inline constexpr std::array AllLinks{Link::Plain, Link::Checked, Link::Automatic};

/// What goes wrong, named by the receiver's answer (or record) that it hits.
enum class Phase {
  Throughout,  ///< whatever the receiver sends
  Request,     ///< the ACK of the product request
  Product,     ///< the product data
  Opening,     ///< the ACK of a kind's first packet
  Number,      ///< the number of records that the receiver holds
  First,       ///< the first record, or its ACK
  Middle,      ///< the middle record, or its ACK
  Last,        ///< the last record, or its ACK
  Close,       ///< what ends the records, or its ACK
  NewOpening,  ///< after an upload: the ACK of the question for the new number
  NewNumber,   ///< after an upload: the new number
  End,         ///< the ACK of the closing abort command
};

/// What the N of a fault counts.
/// Each packet that calls for an answer has its ACK.
enum class Counts { Nothing, FramesBefore, Frame, Packet, RecordsBefore, Record, HalfOfRecords };

/// Sets of phases.
using Phases = unsigned;
[[nodiscard]] constexpr Phases Set(Phase phase) {
  return 1U << static_cast<unsigned>(phase);
}
[[nodiscard]] constexpr Phases operator|(Phase left, Phase right) {
  return Set(left) | Set(right);
}
[[nodiscard]] constexpr Phases operator|(Phases left, Phase right) {
  return left | Set(right);
}

/// A fault as it stands on the receiver's command line, N left open.
struct FaultForm {
  std::string_view text;  ///< "gap=200", "silent-after=N"
  Counts counts = Counts::Nothing;
  Phases phases = 0;              ///< where it can strike
  bool records_only = false;      ///< strikes where the receiver sends records
  bool single_kind_only = false;  ///< where the N of one kind would be too much for the others
};

struct Row {
  Command command = Command::Info;
  std::optional<DataKind> kind;  ///< none: all kinds
  std::string_view model;
  Link link = Link::Plain;
  const FaultForm* fault = nullptr;
  Phase phase = Phase::Throughout;
  std::optional<DataKind> struck;  ///< whose transfer is hit; none: that of every kind, or no transfer yet
};

/// The models of the matrix: one of plain routes and track logs, one with route links and track headers.
[[nodiscard]] std::span<const std::string_view> MatrixModels();
[[nodiscard]] bool HasLinksAndHeaders(std::string_view model);
/// Whether it sends the list of its protocols once its product data are acknowledged.
[[nodiscard]] bool AnnouncesProtocols(std::string_view model);

[[nodiscard]] std::span<const FaultForm> MatrixFaults();
/// All rows of one command on one model over one link.
[[nodiscard]] std::vector<Row> RowsOf(Command command, std::optional<DataKind> kind, std::string_view model, Link link);
/// All rows over one link, and over every link.
[[nodiscard]] std::vector<Row> AllRows(Link link);
[[nodiscard]] std::vector<Row> RowsOverAllLinks();

[[nodiscard]] bool Selected(const Row& row, DataKind kind);
/// Whether another kind is to follow the one that is hit.
[[nodiscard]] bool KindFollows(const Row& row);
/// What is moved: of the kind that is hit much, of the others little, so that a late record of the one is none of
/// the others.
[[nodiscard]] Amounts MovedAmounts(const Row& row);
/// The records that are moved of a kind.
[[nodiscard]] std::vector<NamedRecord> MovedRecords(const Row& row, DataKind kind);
/// Number of the record, from 1, that a phase stands for among count; 0 for a phase that is none.
[[nodiscard]] int RecordNumber(Phase phase, int count);

[[nodiscard]] std::string_view CommandName(Command command);
/// "plain", "checked", "automatic".
[[nodiscard]] std::string_view LinkName(Link link);
[[nodiscard]] std::string_view PhaseName(Phase phase);
/// The row in words, for whoever reads of its failure.
[[nodiscard]] std::string RowName(const Row& row);

}  // namespace walrim
