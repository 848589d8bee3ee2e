#include "window/StallOffer.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

StallOffer::StallOffer(const Clock& clock, QWidget* parent)
    : QFrame(parent), cancel(MakeButton("StallCancel", "中止", "通信を中止します（Esc）")), clock_(clock) {
  setObjectName("StallOffer");
  setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
  auto* text = new QLabel(Translated(window_messages::Stalled));
  text->setWordWrap(true);
  auto* line = new QHBoxLayout(this);
  line->addWidget(text, 1);
  line->addWidget(cancel);
  hide();
}

void StallOffer::Moved() {
  runs_ = true;
  moved_at_ = clock_.Monotonic();
  hide();
}

void StallOffer::Ended() {
  runs_ = false;
  hide();
}

void StallOffer::Look() {
  if (runs_ && isHidden() && clock_.Monotonic() - moved_at_ >= Patience) show();
}

}  // namespace walrim
