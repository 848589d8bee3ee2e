#include "device/Messages.h"

#include "text/Phrase.h"

namespace walrim::device_messages {

namespace {

std::string PortExplanation(const PortResult& result) {
  const std::string device = result.device.empty() ? Phrase("ポート") : result.device;
  switch (result.problem) {
    case PortProblem::None:
      return {};
    case PortProblem::Missing:
      return Phrase("%1がありません．", device);
    case PortProblem::InUse:
      return Phrase("%1は他のプログラムが使用中です．", device);
    case PortProblem::NotPermitted: {
      std::string text = Phrase("%1を開く権限がありません．", device);
      if (!result.group.empty()) {
        text += Phrase("グループ%1に加わってください： sudo usermod -aG %1 $USER", result.group);
      }
      return text;
    }
    case PortProblem::Other:
      return Phrase("%1を開けません：%2", device, result.detail);
  }
  return {};
}

}  // namespace

std::string PortNotOpened(std::string_view port_name, const PortResult& result) {
  return PortExplanation(result) + "\nSerial Port [ " + std::string(port_name) + " ] は既に使われています";
}

std::string ValueOutOfRange(std::string_view record) {
  return Phrase("%1の値が受信機の範囲を超えています．", record);
}

std::string CharacterNotSendable(std::string_view record, std::string_view character) {
  return Phrase("%1の文字「%2」は受信機に送れません．", record, character);
}

}  // namespace walrim::device_messages
