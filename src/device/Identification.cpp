#include <algorithm>

#include "device/Garmin.h"
#include "device/PacketLink.h"
#include "text/Cp932.h"

namespace walrim {

namespace {

constexpr std::string_view SilentDescription = "電源が入っていないか，接続されていません．";

/// The text that starts at offset start, without its zero byte; start moves behind that.
/// Throws std::out_of_range when the buffer ends first.
std::string TakeZeroText(const ByteBuffer& data, std::size_t& start) {
  std::size_t end = start;
  while (data[end] != 0)
    ++end;
  const std::string text = DecodeCp932(SubBuffer(data, start, end - start).View());
  start = end + 1;
  return text;
}

/// What the user can do about a port that cannot be opened.
std::string ExplainPort(const PortResult& result) {
  const std::string device = result.device.empty() ? "ポート" : result.device;
  switch (result.problem) {
    case PortProblem::None:
      return {};
    case PortProblem::Missing:
      return device + "がありません．";
    case PortProblem::InUse:
      return device + "は他のプログラムが使用中です．";
    case PortProblem::NotPermitted: {
      std::string text = device + "を開く権限がありません．";
      if (!result.group.empty()) {
        text += "グループ" + result.group + "に加わってください： sudo usermod -aG " + result.group + " $USER";
      }
      return text;
    }
    case PortProblem::Other:
      return device + "を開けません：" + result.detail;
  }
  return {};
}

}  // namespace

void Garmin::SetDefaultProtocols() {
  session.link_pids.Select(1);
  session.device_commands.Select(10);
  session.protocols.LinkProtocol = "L001";
  session.protocols.CommandProtocol = "A010";
}

void Garmin::ShowPortProblem(std::string_view port_name) {
  const std::string message = "Serial Port [ " + std::string(port_name) + " ] は既に使われています";
  desktop_.ShowMessage(message + "\n" + ExplainPort(link_.LastPortResult()));
}

ProductInfo Garmin::ConnectDevice(std::string_view port_name) {
  if (!link_.ProbePort(port_name)) {
    ShowPortProblem(port_name);
    return {};
  }
  SetDefaultProtocols();
  session.checked_link = session.link_choice == LinkChoice::Checked;
  ProductInfo info = RequestProduct(port_name);
  if (!info.Description.empty()) ChooseProtocols(info.Description, session.protocols);
  // A silent receiver says nothing about the data that are held.
  if (info.ProductId > 0) {
    data_.CurrentWaypointType = WaypointTypeOfName(session.protocols.WaypointType).value_or(WaypointType::D104);
  }
  return info;
}

ProductInfo Garmin::RequestProduct(std::string_view port_name) {
  const ProductInfo silent{-1, -1.0F, std::string(SilentDescription)};
  if (!OpenForTransfer(port_name)) return {};
  const PortGuard guard(link_);
  PacketReply reply = ExchangePacket(Pid_Product_Rqst);
  if (reply.Count < 0) return silent;
  if (FindAckSlot(reply) < 0) return {};
  ReceiveBehindAck(reply, FindAckSlot(reply));
  if (reply.Count < 0) return silent;
  ChooseLink(reply);
  const Frame& frame = reply.Slot(FindAckSlot(reply) + 1);
  // Noise in front of a frame shifts its bytes: what then stands in the id's place means nothing.
  const bool is_product = frame.bytes[0] == DLE && frame.Id() == Pid_Product_Data;
  // Some receivers tell more about themselves, some once their product data are acknowledged; the next exchange would
  // take it for its answer.
  if (is_product && session.checked_link) {
    link_.Acknowledge(Pid_Product_Data);
    link_.AcknowledgeInput();
  } else {
    link_.DrainInput();
  }
  return is_product ? ReadProduct(frame) : ProductInfo{};
}

void Garmin::ChooseLink(PacketReply& reply) {
  if (session.link_choice == LinkChoice::Automatic) {
    if (auto published = link_.AnswerAsPublished()) {
      session.checked_link = true;
      reply = *published;
    }
  }
  link_.Note(session.checked_link ? "checked link" : "plain link");
}

ProductInfo Garmin::ReadProduct(const Frame& frame) {
  const ByteBuffer data = PacketData(frame);
  ProductInfo info;
  info.ProductId = IntegerFromBytes(data);
  info.SoftwareVersion = static_cast<float>(IntegerFromBytes(SubBuffer(data, 2, 2))) / 100.0F;
  std::size_t offset = 4;
  const std::string first = TakeZeroText(data, offset);
  const std::string second = TakeZeroText(data, offset);
  info.Description = first + " " + second;
  return info;
}

}  // namespace walrim
