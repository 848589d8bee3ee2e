// The list of serial ports, with the demonstration receiver as its last entry.
#pragma once

#include <QComboBox>
#include <functional>
#include <vector>

#include "qt/PortList.h"

namespace walrim {

/// The name of the demonstration receiver's port.
inline constexpr const char* DemoPortName = "demo";

/// Entries have the port's name ("1" to "4", the device of a port without a number, "demo") as their data and say in
/// words what is behind it. What is connected is looked up whenever the list opens.
class PortBox : public QComboBox {
 public:
  using Ports = std::function<std::vector<NumberedPort>()>;

  explicit PortBox(Ports ports, QWidget* parent = nullptr);

  /// Looks up the ports anew; the entry that is chosen stays.
  void Refresh();
  /// The ports that were there the last time.
  [[nodiscard]] const std::vector<NumberedPort>& Known() const { return known_; }

  void showPopup() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  Ports ports_;
  std::vector<NumberedPort> known_;
};

/// The name by which a port of the list is opened.
[[nodiscard]] std::string PortName(const NumberedPort& port);

/// What the list says of a port: "1: /dev/ttyUSB0 (FT232R)", "2: （ポートなし）".
[[nodiscard]] QString PortText(int number, const std::vector<NumberedPort>& ports);

}  // namespace walrim
