#include "text/CommandMessage.h"

#include <utility>

#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::size_t NumberBytes = 4;
constexpr char CallMark = 1;
constexpr char ResultMark = 2;
constexpr char BusyMark = 3;

std::string NumberText(std::uint32_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8)
    bytes += static_cast<char>(static_cast<unsigned char>(number >> shift));
  return bytes;
}

/// Takes a number off the front; nothing where the bytes end before.
std::optional<std::uint32_t> TakeNumber(std::string_view& bytes) {
  if (bytes.size() < NumberBytes) return std::nullopt;
  std::uint32_t number = 0;
  for (std::size_t i = NumberBytes; i-- > 0;)
    number = number << 8U | static_cast<unsigned char>(bytes[i]);
  bytes.remove_prefix(NumberBytes);
  return number;
}

std::string Message(const std::string& body) {
  return NumberText(static_cast<std::uint32_t>(body.size())) + body;
}

bool MayBeSent(std::string_view text) {
  return IsValidUtf8(text) && text.find('\0') == std::string_view::npos;
}

/// Takes the body out of a message. Complete means that the body has come and nothing behind it.
MessageState TakeBody(std::string_view& bytes) {
  const auto size = TakeNumber(bytes);
  if (!size) return MessageState::Incomplete;
  if (*size == 0 || *size > MostCommandBytes || bytes.size() > *size) return MessageState::Broken;
  return bytes.size() < *size ? MessageState::Incomplete : MessageState::Complete;
}

bool TakeText(std::string_view& body, std::string& text) {
  const auto size = TakeNumber(body);
  if (!size || *size > body.size() || !MayBeSent(body.substr(0, *size))) return false;
  text = body.substr(0, *size);
  body.remove_prefix(*size);
  return true;
}

bool ReadCall(std::string_view body, CommandCall& call) {
  return Take(body, CallMark) && TakeText(body, call.word) && TakeText(body, call.arg1) && TakeText(body, call.arg2) &&
         body.empty();
}

bool ReadReply(std::string_view body, CommandReply& reply) {
  if (Take(body, BusyMark)) return body.empty();
  if (!Take(body, ResultMark)) return false;
  if (const auto result = TakeNumber(body)) reply.result = static_cast<std::int32_t>(*result);
  return reply.result && body.empty();
}

}  // namespace

std::optional<std::string> EncodeCall(const CommandCall& call) {
  std::string body(1, CallMark);
  for (const std::string* text : {&call.word, &call.arg1, &call.arg2}) {
    if (text->size() > MostCommandBytes || !MayBeSent(*text)) return std::nullopt;
    body += NumberText(static_cast<std::uint32_t>(text->size())) + *text;
  }
  if (body.size() > MostCommandBytes) return std::nullopt;
  return Message(body);
}

std::string EncodeReply(const CommandReply& reply) {
  if (!reply.result) return Message(std::string(1, BusyMark));
  return Message(ResultMark + NumberText(static_cast<std::uint32_t>(*reply.result)));
}

MessageState DecodeCall(std::string_view bytes, CommandCall& call) {
  const MessageState state = TakeBody(bytes);
  if (state != MessageState::Complete) return state;
  CommandCall read;
  if (!ReadCall(bytes, read)) return MessageState::Broken;
  call = std::move(read);
  return state;
}

MessageState DecodeReply(std::string_view bytes, CommandReply& reply) {
  const MessageState state = TakeBody(bytes);
  if (state != MessageState::Complete) return state;
  CommandReply read;
  if (!ReadReply(bytes, read)) return MessageState::Broken;
  reply = read;
  return state;
}

}  // namespace walrim
