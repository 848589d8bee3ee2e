// The fault matrix itself: that it is whole, and that its phases stand where its clean runs have them.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <tuple>

#include "faults/Bench.h"
#include "faults/Endings.h"
#include "faults/Table.h"
#include "receiver/ReceiverFaults.h"
#include "support/Processes.h"

namespace walrim {
namespace {

std::string KindOfFault(std::string_view text) {
  return std::string(text.substr(0, text.find_first_of("=[")));
}

TEST(FaultMatrixRows, EveryRowFallsUnderOneRuleAndEveryRuleHasRows) {
  std::set<std::size_t> used;
  for (const Row& row : RowsOverAllLinks()) {
    const std::vector<std::size_t> rules = RulesOf(row);
    EXPECT_EQ(rules.size(), 1U) << RowName(row);
    used.insert(rules.begin(), rules.end());
  }
  for (std::size_t i = 0; i < RuleCount(); ++i)
    EXPECT_TRUE(used.contains(i)) << "rule " << i;
}

TEST(FaultMatrixRows, EveryFaultOfTheReceiverIsThere) {
  // What a receiver holds otherwise has its own tests, in Contents_test.cpp.
  std::set<std::string> there{"links-between", "two-segments"};
  for (const Row& row : RowsOverAllLinks())
    there.insert(KindOfFault(row.fault->text));
  for (const std::string& form : FaultForms())
    EXPECT_TRUE(there.contains(KindOfFault(form))) << form;
}

TEST(FaultMatrixRows, NoRowStandsThereTwice) {
  std::set<std::string> names;
  for (const Row& row : RowsOverAllLinks())
    EXPECT_TRUE(names.insert(RowName(row)).second) << RowName(row);
  EXPECT_GT(names.size(), 300U);
  RecordProperty("rows", static_cast<int>(names.size()));
}

/// Packets of the link, as both ends number them.
constexpr int Ack = 6;
constexpr int Complete = 12;
constexpr int Number = 27;
constexpr int Product = 255;

int ExpectedAnswer(const Row& row) {
  const bool download = row.command == Command::Download;
  switch (row.phase) {
    case Phase::Product:
      return Product;
    case Phase::Number:
    case Phase::NewNumber:
      return Number;
    case Phase::Close:
      return download ? Complete : Ack;
    case Phase::First:
    case Phase::Middle:
    case Phase::Last: {
      if (!download) return Ack;
      const std::vector<NamedRecord> records = MovedRecords(row, *row.struck);
      const int number = RecordNumber(row.phase, static_cast<int>(records.size()));
      return records.at(static_cast<std::size_t>(number) - 1).id;
    }
    default:
      return Ack;
  }
}

TEST(FaultMatrixRows, PhasesStandWhereTheCleanRunHasThem) {
  using Key = std::tuple<Command, std::optional<DataKind>, std::string_view, Link, std::optional<DataKind>>;
  std::map<Key, std::vector<ExchangeOnLine>> runs;
  for (const Row& row : RowsOverAllLinks()) {
    if (row.fault->text != "garbage=N") continue;
    auto& run = runs[{row.command, row.kind, row.model, row.link, row.struck}];
    if (run.empty()) run = CleanRun(row);
    EXPECT_EQ(PlaceOf(row, run).answer_id, ExpectedAnswer(row)) << RowName(row);
  }
}

/// The product request; over the checked link the ACKs of its answer and of the list of protocols; then a kind's
/// opening, its records and what ends them, the new number's question, the abort.
std::size_t ExchangesOf(const Row& row) {
  std::size_t exchanges = 1;
  if (row.link != Link::Plain) exchanges += AnnouncesProtocols(row.model) ? 2U : 1U;
  for (const DataKind kind : AllDataKinds) {
    if (!Selected(row, kind)) continue;
    const std::size_t records = MovedRecords(row, kind).size();
    exchanges += row.command == Command::Info ? 2 : records + (row.command == Command::Download ? 3 : 4);
  }
  return exchanges;
}

TEST(FaultMatrixRows, CleanRunsAreAsLongAsTheirRecords) {
  for (const Row& row : RowsOverAllLinks()) {
    if (!row.fault->text.empty()) continue;
    EXPECT_EQ(CleanRun(row).size(), ExchangesOf(row)) << RowName(row);
  }
}

TEST(FaultMatrixRows, TheDocumentIsWhatTheRowsSay) {
  EXPECT_EQ(FileContents(std::string(WALRIM_SOURCE_DIR) + "/docs/reliability.md"), ReliabilityDocument())
      << "make it again with docs/make-reliability";
}

}  // namespace
}  // namespace walrim
