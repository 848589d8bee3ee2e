// Packet ids and command numbers of the link and command protocols, under their published names.
#pragma once

namespace walrim {

/// Packet ids that no link protocol changes.
inline constexpr int Pid_Ack_Byte = 6;
inline constexpr int Pid_Nak_Byte = 21;
inline constexpr int Pid_Ext_Product_Data = 248;
inline constexpr int Pid_Protocol_Array = 253;
inline constexpr int Pid_Product_Rqst = 254;
inline constexpr int Pid_Product_Data = 255;

/// Packet ids of the link protocol in use. 0: not set.
struct LinkPids {
  int Pid_Command_Data = 0;
  int Pid_Xfer_Cmplt = 0;
  int Pid_Date_Time_Data = 0;
  int Pid_Position_Data = 0;
  int Pid_Prx_Wpt_Data = 0;
  int Pid_Records = 0;
  int Pid_Rte_Hdr = 0;
  int Pid_Rte_Wpt_Data = 0;
  int Pid_Almanac_Data = 0;
  int Pid_Trk_Data = 0;
  int Pid_Wpt_Data = 0;
  int Pid_Pvt_Data = 0;
  int Pid_Rte_Link_Data = 0;
  int Pid_Trk_Hdr = 0;

  /// Fills the ids of link protocol 1 (L001) or 2 (L002). Ids that L002 lacks are left as they were, and so is
  /// everything for any other number.
  void Select(int link_protocol);
};

/// Command numbers of the command protocol in use.
struct DeviceCommands {
  int Cmnd_Abort_Transfer = 0;
  int Cmnd_Transfer_Alm = 0;
  int Cmnd_Transfer_Posn = 0;
  int Cmnd_Transfer_Prx = 0;
  int Cmnd_Transfer_Rte = 0;
  int Cmnd_Transfer_Time = 0;
  int Cmnd_Transfer_Trk = 0;
  int Cmnd_Transfer_Wpt = 0;
  int Cmnd_Turn_Off_Pwr = 0;
  int Cmnd_Start_Pvt_Data = 0;
  int Cmnd_Stop_Pvt_Data = 0;

  /// Fills the numbers of command protocol 10 (A010) or 11 (A011), as LinkPids::Select does.
  void Select(int command_protocol);
};

}  // namespace walrim
