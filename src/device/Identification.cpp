#include <algorithm>
#include <stdexcept>

#include "device/Garmin.h"
#include "device/PacketLink.h"
#include "text/Cp932.h"

namespace walrim {

namespace {

/// Both requests together.
constexpr std::chrono::seconds LongestIdentification{8};

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
  ProductInfo info = RequestProduct(port_name);
  if (!info.Description.empty()) ChooseProtocols(info.Description, session.protocols);
  // A silent receiver says nothing about the data that are held.
  if (info.ProductId > 0) {
    data_.CurrentWaypointType = WaypointTypeOfName(session.protocols.WaypointType).value_or(WaypointType::D104);
  }
  return info;
}

/// A receiver whose transfer was broken off may take the first request for a part of that.
ProductInfo Garmin::RequestProduct(std::string_view port_name) {
  session.report = {};
  if (!OpenForTransfer(port_name)) return {};
  const PortGuard guard(link_);
  link_.LimitExchanges(LongestIdentification);
  std::optional<NoAnswer> why;
  std::optional<Frame> product;
  try {
    product = AskProduct(why);
  } catch (const std::out_of_range&) {
    why.reset();
  }
  if (!product && (!why || why == NoAnswer::Silence || why == NoAnswer::Damage) && !link_.LineLost()) {
    link_.DrainInput();
    product = AskProduct(why);
  }
  session.report.refused = why == NoAnswer::Refusal;
  session.report.cancelled = why == NoAnswer::Cancel;
  if (why == NoAnswer::Silence) return {-1, -1.0F, std::string(SilentDescription)};
  if (!product) return {};
  // Some receivers tell more about themselves, some once their product data are acknowledged; the next exchange would
  // take it for its answer.
  if (session.checked_link) {
    link_.Acknowledge(Pid_Product_Data);
    link_.AcknowledgeInput();
  } else {
    link_.DrainInput();
  }
  return ReadProduct(*product);
}

std::optional<Frame> Garmin::AskProduct(std::optional<NoAnswer>& why) {
  why.reset();
  session.checked_link = session.link_choice == LinkChoice::Checked;
  PacketReply reply = ExchangePacket(Pid_Product_Rqst);
  const int ack = FindAckSlot(reply);
  if (ack >= 0) ReceiveBehindAck(reply, ack);
  if (reply.Count < 0) why = reply.why;
  if (reply.Count < 0 || ack < 0) return std::nullopt;
  const bool published = ReadAsPublished(reply);
  const Frame& frame = reply.Slot(FindAckSlot(reply) + 1);
  // Noise in front of a frame shifts its bytes: what then stands in the id's place means nothing.
  if (frame.bytes[0] != DLE || frame.Id() != Pid_Product_Data) return std::nullopt;
  if (session.link_choice == LinkChoice::Automatic) session.checked_link = published;
  link_.Note(session.checked_link ? "checked link" : "plain link");
  return frame;
}

bool Garmin::ReadAsPublished(PacketReply& reply) const {
  if (session.link_choice != LinkChoice::Automatic) return false;
  const auto published = link_.AnswerAsPublished();
  if (published) reply = *published;
  return published.has_value();
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
