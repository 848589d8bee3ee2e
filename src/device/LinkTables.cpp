#include "device/LinkTables.h"

#include <optional>

namespace walrim {

namespace {

template <typename Table>
struct Row {
  int Table::*field;
  int first;                  ///< value under L001 or A010
  std::optional<int> second;  ///< value under L002 or A011, where it has one
};

constexpr Row<LinkPids> LinkRows[] = {
    {&LinkPids::Pid_Command_Data, 10, 11},
    {&LinkPids::Pid_Xfer_Cmplt, 12, 12},
    {&LinkPids::Pid_Date_Time_Data, 14, 20},
    {&LinkPids::Pid_Position_Data, 17, 24},
    {&LinkPids::Pid_Prx_Wpt_Data, 19, std::nullopt},
    {&LinkPids::Pid_Records, 27, 35},
    {&LinkPids::Pid_Rte_Hdr, 29, 37},
    {&LinkPids::Pid_Rte_Wpt_Data, 30, 39},
    {&LinkPids::Pid_Almanac_Data, 31, 4},
    {&LinkPids::Pid_Trk_Data, 34, std::nullopt},
    {&LinkPids::Pid_Wpt_Data, 35, 43},
    {&LinkPids::Pid_Pvt_Data, 51, std::nullopt},
    {&LinkPids::Pid_Rte_Link_Data, 98, std::nullopt},
    {&LinkPids::Pid_Trk_Hdr, 99, std::nullopt},
};

constexpr Row<DeviceCommands> CommandRows[] = {
    {&DeviceCommands::Cmnd_Abort_Transfer, 0, 0},
    {&DeviceCommands::Cmnd_Transfer_Alm, 1, 4},
    {&DeviceCommands::Cmnd_Transfer_Posn, 2, std::nullopt},
    {&DeviceCommands::Cmnd_Transfer_Prx, 3, std::nullopt},
    {&DeviceCommands::Cmnd_Transfer_Rte, 4, 8},
    {&DeviceCommands::Cmnd_Transfer_Time, 5, 20},
    {&DeviceCommands::Cmnd_Transfer_Trk, 6, std::nullopt},
    {&DeviceCommands::Cmnd_Transfer_Wpt, 7, 21},
    {&DeviceCommands::Cmnd_Turn_Off_Pwr, 8, 26},
    {&DeviceCommands::Cmnd_Start_Pvt_Data, 49, std::nullopt},
    {&DeviceCommands::Cmnd_Stop_Pvt_Data, 50, std::nullopt},
};

template <typename Table, std::size_t Count>
void SelectColumn(Table& table, const Row<Table> (&rows)[Count], bool second) {
  for (const Row<Table>& row : rows) {
    if (!second) {
      table.*row.field = row.first;
    } else if (row.second) {
      table.*row.field = *row.second;
    }
  }
}

}  // namespace

void LinkPids::Select(int link_protocol) {
  if (link_protocol == 1 || link_protocol == 2) SelectColumn(*this, LinkRows, link_protocol == 2);
}

void DeviceCommands::Select(int command_protocol) {
  if (command_protocol == 10 || command_protocol == 11) SelectColumn(*this, CommandRows, command_protocol == 11);
}

}  // namespace walrim
