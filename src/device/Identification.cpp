#include "device/Identification.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <vector>

#include "device/Messages.h"
#include "text/Cp932.h"

namespace walrim {

namespace {

/// Both requests together.
constexpr std::chrono::seconds LongestIdentification{8};

/// What is not there of a receiver's buffer reads as zero bytes.
constexpr std::size_t BufferSize = 256;

/// The text that data begin with, taken off with its zero byte. Throws std::out_of_range where there is none.
std::string TakeZeroText(std::span<const std::uint8_t>& data) {
  const auto size = static_cast<std::size_t>(std::ranges::find(data, 0) - data.begin());
  if (size == data.size()) throw std::out_of_range("a text without its end");
  const std::string text = DecodeCp932(data.first(size));
  data = data.subspan(size + 1);
  return text;
}

/// Where the choice of the link is automatic: reads the answer as it was published. False where it is not so.
bool ReadAsPublished(const DeviceSession& session, PacketReply& reply) {
  if (session.Choice() != LinkChoice::Automatic) return false;
  const auto published = session.Link().AnswerAsPublished();
  if (published) reply = *published;
  return published.has_value();
}

/// The product data that answer a request for them. Nothing where there are none; why then holds the reason, or
/// nothing for an answer that makes no sense.
std::optional<Frame> AskProduct(DeviceSession& session, std::optional<NoAnswer>& why) {
  why.reset();
  session.UseCheckedLink(session.Choice() == LinkChoice::Checked);
  PacketReply reply = session.Exchange(PacketId::ProductRqst, 0, ExpectedAnswer::AckAndAnswer);
  const int ack = FindAckSlot(reply);
  if (ack >= 0) session.ReceiveBehindAck(reply, ack);
  if (reply.count < 0) why = reply.why;
  if (reply.count < 0 || ack < 0) return std::nullopt;
  const bool published = ReadAsPublished(session, reply);
  const Frame& frame = reply.Slot(FindAckSlot(reply) + 1);
  // Noise in front of a frame shifts its bytes: what then stands in the id's place means nothing.
  if (frame.bytes[0] != DLE || frame.Id() != PacketId::ProductData) return std::nullopt;
  if (session.Choice() == LinkChoice::Automatic) session.UseCheckedLink(published);
  session.Link().Note(session.CheckedLinkInUse() ? "checked link" : "plain link");
  return frame;
}

/// A receiver whose transfer was broken off may take the first request for a part of that.
std::optional<Frame> AskProductTwice(DeviceSession& session, std::optional<NoAnswer>& why) {
  std::optional<Frame> product;
  try {
    product = AskProduct(session, why);
  } catch (const std::out_of_range&) {
    why.reset();
  }
  const bool worth_asking = !why || why == NoAnswer::Silence || why == NoAnswer::Damage;
  if (product || !worth_asking || session.Link().LineLost()) return product;
  session.Link().DrainInput();
  return AskProduct(session, why);
}

/// Some receivers tell more about themselves, some once their product data are acknowledged; the next exchange would
/// take it for its answer.
void TakeWhatFollows(DeviceSession& session) {
  if (session.CheckedLinkInUse()) {
    session.Link().Acknowledge(PacketId::ProductData);
    session.Link().AcknowledgeInput();
  } else {
    session.Link().DrainInput();
  }
}

}  // namespace

ProductInfo ReadProduct(std::span<const std::uint8_t> received) {
  std::vector<std::uint8_t> buffer(received.begin(), received.end());
  buffer.resize(BufferSize);
  std::span<const std::uint8_t> data = buffer;
  ProductInfo info;
  info.product_id = NumberOf(data);
  data = data.subspan(4);  // with the version of its software
  const std::string first = TakeZeroText(data);
  info.description = first + " " + TakeZeroText(data);
  return info;
}

ProductInfo RequestProduct(DeviceSession& session, std::string_view port_name) {
  if (!session.OpenPort(port_name)) return {};
  const PortGuard guard(session.Link());
  session.Link().LimitExchanges(LongestIdentification);
  std::optional<NoAnswer> why;
  const std::optional<Frame> product = AskProductTwice(session, why);
  session.Report().refused = why == NoAnswer::Refusal;
  session.Report().cancelled = why == NoAnswer::Cancel;
  if (why == NoAnswer::Silence) return {-1, std::string(device_messages::SilentReceiver)};
  if (!product) return {};
  TakeWhatFollows(session);
  return ReadProduct(PacketData(*product));
}

}  // namespace walrim
