// Packet ids of the link protocol L001, and commands of the command protocol A010.
#pragma once

namespace walrim {

namespace PacketId {
inline constexpr int Ack = 6;
inline constexpr int CommandData = 10;
inline constexpr int XferCmplt = 12;
inline constexpr int DateTimeData = 14;
inline constexpr int PositionData = 17;
inline constexpr int Nak = 21;
inline constexpr int Records = 27;
inline constexpr int RteHdr = 29;
inline constexpr int RteWptData = 30;
inline constexpr int TrkData = 34;
inline constexpr int WptData = 35;
inline constexpr int PvtData = 51;
inline constexpr int RteLinkData = 98;
inline constexpr int TrkHdr = 99;
inline constexpr int ExtProductData = 248;
inline constexpr int ProtocolArray = 253;
inline constexpr int ProductRqst = 254;
inline constexpr int ProductData = 255;
}  // namespace PacketId

namespace DeviceCommand {
inline constexpr int AbortTransfer = 0;
inline constexpr int TransferRte = 4;
inline constexpr int TransferTime = 5;
inline constexpr int TransferTrk = 6;
inline constexpr int TransferWpt = 7;
}  // namespace DeviceCommand

}  // namespace walrim
