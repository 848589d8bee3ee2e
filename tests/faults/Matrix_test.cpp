// Every row of the fault matrix against the program, in virtual time.
#include <gtest/gtest.h>
#include <map>
#include <optional>

#include "faults/Bench.h"
#include "faults/RowRun.h"

namespace walrim {
namespace {

struct Group {
  Command command = Command::Info;
  std::optional<DataKind> kind;
  std::string_view model;
  Link link = Link::Plain;
};

std::string GroupName(const ::testing::TestParamInfo<Group>& info) {
  const Group& group = info.param;
  std::string name(CommandName(group.command));
  name.append(group.kind ? DataKindName(*group.kind) : "All").append("_").append(group.model);
  name.append("_").append(LinkName(group.link));
  std::erase(name, ' ');
  return name;
}

void PrintTo(const Group& group, std::ostream* out) {
  *out << CommandName(group.command) << " " << group.model;
}

std::vector<Group> Groups() {
  std::vector<Group> groups;
  for (const Link link : AllLinks) {
    for (const std::string_view model : MatrixModels()) {
      groups.push_back({Command::Info, std::nullopt, model, link});
      for (const Command command : {Command::Download, Command::Upload}) {
        for (const DataKind kind : AllDataKinds)
          groups.push_back({command, kind, model, link});
        groups.push_back({command, std::nullopt, model, link});
      }
    }
  }
  return groups;
}

class FaultMatrix : public ::testing::TestWithParam<Group> {};

TEST_P(FaultMatrix, EveryRowEndsAsItIsWrittenDown) {
  const Group& group = GetParam();
  const std::vector<Row> rows = RowsOf(group.command, group.kind, group.model, group.link);
  std::map<std::optional<DataKind>, std::vector<ExchangeOnLine>> clean_runs;
  std::optional<Bench> bench(group.link);
  for (const Row& row : rows) {
    if (!clean_runs.contains(row.struck)) clean_runs[row.struck] = CleanRun(row);
    const std::string fault = FaultText(row, clean_runs[row.struck]);
    SCOPED_TRACE(RowName(row) + ": --fault " + fault);
    RowRun(row, fault, *bench).Check();
    // What one row has left behind is no other row's failure.
    if (HasFailure()) bench.emplace(group.link);
  }
}

INSTANTIATE_TEST_SUITE_P(Commands, FaultMatrix, ::testing::ValuesIn(Groups()), GroupName);

}  // namespace
}  // namespace walrim
