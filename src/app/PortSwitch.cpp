#include "app/PortSwitch.h"

#include <utility>

namespace walrim {

PortSwitch::PortSwitch(SerialPort& first, SerialPort& second, IsSecond is_second)
    : first_(first), second_(second), is_second_(std::move(is_second)), chosen_(&first) {}

PortResult PortSwitch::Open(std::string_view comm_port, int baud) {
  if (chosen_->PortOpen()) chosen_->Close();
  chosen_ = is_second_(comm_port) ? &second_ : &first_;
  return chosen_->Open(comm_port, baud);
}

}  // namespace walrim
