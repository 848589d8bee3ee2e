// The pictures of symbols, and how they are drawn.
#include "window/SymbolPictures.h"

#include <QApplication>
#include <gtest/gtest.h>
#include <set>

#include "window/SymbolDrawings.h"

namespace walrim {
namespace {

constexpr int Size = 32;

QImage Drawn(const SymbolPicture& picture, const QColor& text = Qt::black) {
  QPalette palette;
  palette.setColor(QPalette::Text, text);
  return DrawSymbol(picture, Size, 1, palette).toImage();
}

QImage DrawnSymbol(int code) {
  return Drawn(SymbolPictureOf(WaypointType::D108, code));
}

int OpaquePixels(const QImage& image) {
  int opaque = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      opaque += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
  }
  return opaque;
}

TEST(SymbolPictures, EverySymbolShowsSomethingOnATransparentGround) {
  for (const NamedCode& symbol : SymbolNames(WaypointType::D108)) {
    const QImage image = DrawnSymbol(symbol.code);
    EXPECT_GT(OpaquePixels(image), 10) << symbol.name;
    EXPECT_LT(OpaquePixels(image), Size * Size * 9 / 10) << symbol.name;
  }
}

TEST(SymbolPictures, SymbolsOfOtherShapesOrColoursLookDifferent) {
  std::set<QByteArray> looks;
  for (const NamedCode& symbol : SymbolNames(WaypointType::D108)) {
    const QImage image = DrawnSymbol(symbol.code);
    looks.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
  }
  // The two that show nothing are one picture, and so are the two white buoys.
  EXPECT_EQ(looks.size(), SymbolNames(WaypointType::D108).size() - 2);
}

TEST(SymbolPictures, TheLowerHalfMayHaveAColourOfItsOwn) {
  const SymbolPicture buoy{SymbolShape::Buoy, SymbolColour::Green, SymbolColour::Red};
  const QImage image = Drawn(buoy);
  const QColor upper = image.pixelColor(Size / 2, Size * 5 / 16);
  const QColor lower = image.pixelColor(Size / 2, Size * 9 / 16);
  EXPECT_GT(upper.green(), upper.red());
  EXPECT_GT(lower.red(), lower.green());
}

TEST(SymbolPictures, LinesHaveTheColourOfText) {
  const SymbolPicture square{SymbolShape::Square, SymbolColour::White, {}};
  EXPECT_LT(Drawn(square).pixelColor(Size / 2, Size * 3 / 16).lightness(), 100);
  EXPECT_GT(Drawn(square, Qt::white).pixelColor(Size / 2, Size * 3 / 16).lightness(), 200);
  // White would be lost between light lines.
  EXPECT_LT(Drawn(square, Qt::white).pixelColor(Size / 2, Size / 2).lightness(), 160);
}

TEST(SymbolPictures, EveryShapeOfASymbolHasADrawing) {
  for (const NamedCode& symbol : SymbolNames(WaypointType::D108))
    EXPECT_FALSE(DrawingOf(SymbolPictureOf(WaypointType::D108, symbol.code).shape).empty()) << symbol.name;
}

}  // namespace
}  // namespace walrim
