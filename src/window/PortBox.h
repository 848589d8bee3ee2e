// The list of serial ports, with the demonstration receiver as its last entry.
#pragma once

#include <QComboBox>
#include <functional>
#include <string>
#include <vector>

#include "qt/PortList.h"

namespace walrim {

/// The name of the demonstration receiver's port.
inline constexpr const char* DemoPortName = "demo";

/// Entries have the port's name ("1" to "4", the device of a port without a number, "demo") as their data and say in
/// words what is behind it. What is connected is looked up whenever the list opens. A number without a port is not
/// offered; while it is the choice, a placeholder says so. The path of any other port can be typed.
class PortBox : public QComboBox {
 public:
  static constexpr const char* Name = "CommPort";
  using Ports = std::function<std::vector<NumberedPort>()>;

  explicit PortBox(Ports ports, QWidget* parent = nullptr);

  /// Looks up the ports anew; the entry that is chosen stays.
  void Refresh();
  /// The ports that were there the last time.
  [[nodiscard]] const std::vector<NumberedPort>& Known() const { return known_; }
  /// Chooses a port by its path, which becomes an entry.
  void ChoosePath(const QString& path);

  void showPopup() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Show(int index, const QString& text);
  void TakeTyped();
  void ShowWholeText();

  Ports ports_;
  std::vector<NumberedPort> known_;
  QString path_;  ///< the one that was typed last
};

/// The name by which a port of the list is opened.
[[nodiscard]] std::string PortName(const NumberedPort& port);

/// Whether a port's name is the path of its device.
[[nodiscard]] inline bool IsPortPath(const std::string& name) {
  return name.starts_with('/');
}

/// What the list says of a port: "1: /dev/ttyUSB0 (FT232R)"; nothing where there is none of the number.
[[nodiscard]] QString PortText(int number, const std::vector<NumberedPort>& ports);

}  // namespace walrim
