#include "window/ElidedLabel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace walrim {

ElidedLabel::ElidedLabel(const QString& object_name, Qt::TextElideMode mode, QWidget* parent)
    : QLabel(parent), mode_(mode) {
  setObjectName(object_name);
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::ShowText(const QString& text) {
  setText(text);
  setFocusPolicy(text.isEmpty() ? Qt::NoFocus : Qt::StrongFocus);
  setToolTip(text.toHtmlEscaped());
  before_hint_.reset();
}

void ElidedLabel::ShowHint(const QString& hint) {
  const QString before = before_hint_.value_or(text());
  ShowText(hint);
  before_hint_ = before;
}

void ElidedLabel::EndHint() {
  if (before_hint_) ShowText(QString(*before_hint_));
}

QRect ElidedLabel::TextArea() const {
  return contentsRect().adjusted(margin(), 0, -margin(), 0);
}

bool ElidedLabel::ShowsAll() const {
  return fontMetrics().horizontalAdvance(text()) <= TextArea().width();
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  drawFrame(&painter);
  const QRect area = TextArea();
  const QString shown = fontMetrics().elidedText(text(), mode_, area.width());
  style()->drawItemText(&painter, area, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft), palette(), isEnabled(),
                        shown, foregroundRole());
  if (!hasFocus()) return;
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

void ElidedLabel::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Copy)) return QLabel::keyPressEvent(event);
  QGuiApplication::clipboard()->setText(text());
}

}  // namespace walrim
