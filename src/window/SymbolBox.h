// The list of symbols, with their pictures and names, in which one types what one looks for.
#pragma once

#include <QComboBox>
#include <optional>

#include "records/Symbols.h"

namespace walrim {

/// What is typed may stand anywhere in a symbol's Japanese, English or GPX name, in any case. While nothing is typed
/// Home and End choose the first and the last one.
class SymbolBox : public QComboBox {
  Q_OBJECT

 public:
  explicit SymbolBox(QWidget* parent = nullptr);

  /// The symbols of a type; an entry reads "旗 / flag symbol / Flag".
  void OfferAll(WaypointType type);
  /// One of them, with a text of its own; the list shows its Japanese name behind that.
  void Offer(WaypointType type, int code, const QString& text);
  /// Chooses the entry of a code, where there is one, and unfolds the list.
  void Show(int code);
  /// The code of what is chosen, of the entry with a name as it was typed, or of the only one that holds what was
  /// typed.
  [[nodiscard]] std::optional<int> Code() const;
  /// That code as a text; what was typed where there is none.
  [[nodiscard]] QString Choice() const;

 Q_SIGNALS:
  /// An entry of the list was chosen. Return is left to whoever opened the box.
  void Chosen();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void SetUpCompleter();
};

}  // namespace walrim
