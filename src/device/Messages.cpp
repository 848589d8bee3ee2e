#include "device/Messages.h"

namespace walrim::device_messages {

namespace {

std::string PortExplanation(const PortResult& result) {
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

std::string PortNotOpened(std::string_view port_name, const PortResult& result) {
  return PortExplanation(result) + "\nSerial Port [ " + std::string(port_name) + " ] は既に使われています";
}

std::string ValueOutOfRange(std::string_view record) {
  return std::string(record) + "の値が受信機の範囲を超えています．";
}

std::string CharacterNotSendable(std::string_view record, std::string_view character) {
  return std::string(record) + "の文字「" + std::string(character) + "」は受信機に送れません．";
}

}  // namespace walrim::device_messages
