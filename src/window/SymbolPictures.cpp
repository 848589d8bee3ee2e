#include "window/SymbolPictures.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QStringList>
#include <QVector>

#include "window/SymbolDrawings.h"

namespace walrim {

namespace {

constexpr double FieldWidth = 16;
constexpr double LineWidth = 1.1;
constexpr int IconSize = 16;

/// Of the fields between lines of a colour.
QColor ColourOf(SymbolColour colour, const QColor& ink) {
  switch (colour) {
    case SymbolColour::Amber:
      return {0xf2, 0xc1, 0x2e};
    case SymbolColour::Black:
      return {0x4a, 0x55, 0x5c};
    case SymbolColour::Blue:
      return {0x4a, 0x90, 0xd9};
    case SymbolColour::Brown:
      return {0xa8, 0x76, 0x4a};
    case SymbolColour::Green:
      return {0x3f, 0x9f, 0x63};
    case SymbolColour::Orange:
      return {0xe8, 0x8a, 0x3a};
    case SymbolColour::Red:
      return {0xd9, 0x4a, 0x38};
    case SymbolColour::Violet:
      return {0x9a, 0x6f, 0xc4};
    case SymbolColour::White:
      // Light lines would be lost in it.
      return ink.lightness() > 128 ? QColor(0x7d, 0x8a, 0x92) : QColor(0xf7, 0xf7, 0xf2);
  }
  return {};
}

/// A part of a drawing.
struct DrawnPart {
  QChar what;
  QVector<double> numbers;
};

QVector<DrawnPart> PartsOf(std::string_view drawing) {
  QVector<DrawnPart> parts;
  const QString text = QString::fromLatin1(drawing.data(), static_cast<qsizetype>(drawing.size()));
  for (const QString& word : text.split(QLatin1Char(' '))) {
    if (word.at(0).isLetter()) {
      parts.append({word.at(0), {}});
    } else {
      parts.last().numbers.append(word.toDouble());
    }
  }
  return parts;
}

QPolygonF PolygonOf(const QVector<double>& numbers) {
  QPolygonF polygon;
  for (qsizetype i = 0; i + 1 < numbers.size(); i += 2)
    polygon.append({numbers[i], numbers[i + 1]});
  return polygon;
}

void DrawPart(QPainter& painter, const DrawnPart& part) {
  if (part.what == 'L') {
    painter.drawPolyline(PolygonOf(part.numbers));
  } else if (part.what == 'O' || part.what == 'U' || part.what == 'D') {
    painter.drawEllipse(QPointF(part.numbers[0], part.numbers[1]), part.numbers[2], part.numbers[2]);
  } else {
    painter.drawPolygon(PolygonOf(part.numbers));
  }
}

}  // namespace

QPixmap DrawSymbol(const SymbolPicture& picture, int size, qreal ratio, const QPalette& palette) {
  QPixmap pixmap(QSize(size, size) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / FieldWidth, size / FieldWidth);
  const QColor ink = palette.color(QPalette::Text);
  painter.setPen(QPen(ink, LineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (const DrawnPart& part : PartsOf(DrawingOf(picture.shape))) {
    const bool inked = part.what == 'F' || part.what == 'D';
    const bool second = part.what == 'Q' || part.what == 'U';
    const SymbolColour colour = second ? picture.second.value_or(picture.colour) : picture.colour;
    painter.setBrush(inked ? ink : ColourOf(colour, ink));
    DrawPart(painter, part);
  }
  return pixmap;
}

QIcon SymbolIcon(WaypointType type, int code) {
  const SymbolPicture picture = SymbolPictureOf(type, code);
  const QPalette palette = QGuiApplication::palette();
  const qreal ratio = qGuiApp->devicePixelRatio();
  const QString key = QStringLiteral("symbol %1 %2 %3 %4 %5")
                          .arg(static_cast<int>(picture.shape))
                          .arg(static_cast<int>(picture.colour))
                          .arg(picture.second ? static_cast<int>(*picture.second) : -1)
                          .arg(palette.color(QPalette::Text).name())
                          .arg(ratio);
  QPixmap pixmap;
  if (!QPixmapCache::find(key, &pixmap)) {
    pixmap = DrawSymbol(picture, IconSize, ratio, palette);
    QPixmapCache::insert(key, pixmap);
  }
  return pixmap;
}

}  // namespace walrim
