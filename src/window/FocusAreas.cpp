#include "window/FocusAreas.h"

#include <algorithm>

namespace walrim {

QList<QWidget*> FocusAreas::FocusChain() const {
  QList<QWidget*> chain;
  for (QWidget* widget = window_.nextInFocusChain(); widget != &window_; widget = widget->nextInFocusChain()) {
    if (widget->window() == &window_ && widget->focusPolicy() != Qt::NoFocus) chain.append(widget);
  }
  return chain;
}

qsizetype FocusAreas::AreaOf(const QWidget* widget) const {
  const auto area = std::ranges::find_if(
      areas_, [widget](const QWidget* each) { return each == widget || each->isAncestorOf(widget); });
  return area - areas_.begin();
}

void FocusAreas::OrderTabs() {
  const QList<QWidget*> before = FocusChain();
  QList<QWidget*> chain = before;
  std::ranges::stable_sort(chain, {}, [this](const QWidget* widget) { return AreaOf(widget); });
  if (chain == before) return;
  for (qsizetype i = 1; i < chain.size(); ++i)
    QWidget::setTabOrder(chain[i - 1], chain[i]);
}

QWidget* FocusAreas::FirstOf(qsizetype area) const {
  const QList<QWidget*> chain = FocusChain();
  const auto first = std::ranges::find_if(chain, [&](const QWidget* widget) {
    return AreaOf(widget) == area && widget->isVisible() && widget->isEnabled() &&
           (widget->focusPolicy() & Qt::TabFocus) != 0;
  });
  return first == chain.end() ? nullptr : *first;
}

void FocusAreas::Move(bool forward) {
  OrderTabs();
  const qsizetype count = areas_.size();
  const qsizetype here = window_.focusWidget() != nullptr ? AreaOf(window_.focusWidget()) : count;
  for (qsizetype step = 1; step <= count; ++step) {
    const qsizetype from = here < count ? here : (forward ? count - 1 : 0);
    const qsizetype area = (from + (forward ? step : count - step)) % count;
    if (QWidget* first = FirstOf(area)) {
      first->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
      return;
    }
  }
}

}  // namespace walrim
