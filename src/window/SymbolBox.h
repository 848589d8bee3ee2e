// The list of symbols, with their pictures and names, in which one types what one looks for.
#pragma once

#include <QComboBox>

#include "records/Symbols.h"

namespace walrim {

/// An entry reads "旗 / flag symbol / Flag"; what is typed may stand anywhere in it, in any case.
class SymbolBox : public QComboBox {
  Q_OBJECT

 public:
  /// The symbols of a type.
  SymbolBox(WaypointType type, QWidget* parent);

  /// Chooses the entry of a code, where there is one, and unfolds the list.
  void Show(int code);
  /// The code of what is chosen, or of the only entry that holds what was typed; what was typed for any other.
  [[nodiscard]] QString Choice() const;

 Q_SIGNALS:
  /// An entry of the list was chosen. Return is left to whoever opened the box.
  void Chosen();
};

}  // namespace walrim
