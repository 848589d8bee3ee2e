// What is offered while a transfer stands still.
#pragma once

#include <QFrame>
#include <chrono>

#include "platform/Clock.h"

class QPushButton;

namespace walrim {

/// A line with a button, shown once nothing has moved for so long, and gone when something does. The button does
/// nothing by itself.
class StallOffer : public QFrame {
 public:
  static constexpr std::chrono::seconds Patience{30};

  /// clock must outlive the offer.
  explicit StallOffer(const Clock& clock, QWidget* parent = nullptr);

  QPushButton* const cancel;

  /// A transfer begins, or something in it moved.
  void Moved();
  void Ended();
  /// To be called often while a transfer runs.
  void Look();

 private:
  const Clock& clock_;
  bool runs_ = false;
  std::chrono::nanoseconds moved_at_{};
};

}  // namespace walrim
