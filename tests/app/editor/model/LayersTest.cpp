// Strokes, crops and watermarks in the flattened picture.

#include "tests/app/editor/model/DocumentFixture.h"

#include <QPainter>

using namespace sorrel;

namespace {

class LayersTest : public DocumentFixture {
 protected:
  /// Where the picture isn't black.
  [[nodiscard]] static QRect inked(const QImage& picture) {
    QRect box;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (qRed(picture.pixel(x, y)) > 8)
          box |= QRect(x, y, 1, 1);
    return box;
  }
};

TEST_F(LayersTest, aStrokeKeepsTheColourAndWidthOfItsBeginning) {
  const auto model = open({400, 300});
  model->commit();
  model->begin({1, 1});
  model->commit();
  EXPECT_TRUE(model->strokes->isEmpty() && model->undoStack->isEmpty()) << "a click leaves no dot";
  model->begin({1, 1});
  model->colorHex = 0xFF00FF00;
  model->lineWidth = 9;
  model->current.change([](auto& stroke) { stroke->points.append({500, -40}); });
  EXPECT_EQ(flattened(*model), model->baseImage.get()) << "a stroke under way isn't drawn";
  model->commit();
  EXPECT_FALSE(model->current.get());
  drawStroke(*model, {{5, 5}, {5, 5}});
  ASSERT_EQ(model->strokes->size(), 2);
  EXPECT_EQ(model->strokes->at(0).points, (QList<QPointF>{{1, 1}, {500, -40}}));
  EXPECT_EQ(model->strokes->at(0).colorHex, 0xE5484Du);
  EXPECT_EQ(model->strokes->at(0).width, 5);
  EXPECT_EQ(model->strokes->at(1).width, 9);
  EXPECT_NE(model->strokes->at(0).id, model->strokes->at(1).id);
  EXPECT_EQ(flattened(*model).pixel(4, 5), qRgb(0, 255, 0)) << "the high byte means nothing";
}

TEST_F(LayersTest, coloursLeadToHexAndBack) {
  for (const quint32 hex : {0x000000U, 0xE5484DU, 0x0180FEU, 0xFFFFFFU})
    EXPECT_EQ(hexRGB(colorFromHex(hex)), hex);
  EXPECT_EQ(colorFromHex(0xAB123456), QColor(0x12, 0x34, 0x56));
  EXPECT_EQ(hexRGB(QColor::fromHslF(0, 1, 0.5F, 0.3F)), 0xFF0000U);
  EXPECT_EQ(hexRGB(QColor()), std::nullopt);
}

TEST_F(LayersTest, aCropKeepsWholePixels) {
  const QImage picture = map({2880, 1800});  // 2.88 pixels for a display point
  const auto model = open(picture);
  const struct {
    QRectF display;
    QRect pixels;
  } cases[] = {
      {{10.1, 20, 100, 50}, {29, 57, 289, 145}},  // 29.088 to 317.088, 57.6 to 201.6
      {{0, 0, 500, 625}, {0, 0, 1440, 1800}},
      {{-50, -50, 100, 1000}, {0, 0, 144, 1800}},  // cut back to the picture
      {{990, 600, 500, 500}, {2851, 1728, 29, 72}},
      {{100, 100, 8.5, 100}, {288, 288, 25, 288}},
      {{600, 300, -100, -100}, {1440, 576, 288, 288}},  // dragged up and to the left
  };
  for (const auto& [display, pixels] : cases) {
    model->applyCrop(display);
    EXPECT_EQ(model->imagePixelSize.get(), pixels.size()) << display.x();
    EXPECT_EQ(model->baseImage.get(), picture.copy(pixels)) << display.x();
    EXPECT_EQ(model->textWM->center.x(), model->displaySize->width() * 0.5);
    model->undoLast();
  }
  model->applyCrop({0, 0, 500, 625});
  EXPECT_EQ(model->displaySize.get(), QSizeF(512, 640));
  model->undoLast();
  const double nan = std::nan("");
  for (const QRectF& refused : {QRectF(0, 0, 8, 100), QRectF(0, 0, 100, 8), QRectF(1000, 0, 50, 50),
                                QRectF(-50, -50, 58, 300), QRectF(), QRectF(nan, nan, nan, nan)})
    model->applyCrop(refused);
  EXPECT_TRUE(model->undoStack->isEmpty());
}

TEST_F(LayersTest, aCropBurnsTheLayersIn) {
  const auto model = open({600, 400});
  model->setLogo(plain({10, 10}, Qt::white));
  model->textWM.change([](auto& text) { text.text = QStringLiteral("text"), text.scale = 2; });
  drawStroke(*model, {{10, 10}, {500, 300}});
  const QImage whole = flattened(*model);
  model->tool = EditorModel::Tool::crop;
  model->applyCrop({100, 50, 400, 350});
  EXPECT_EQ(model->baseImage.get(), whole.copy(100, 50, 400, 350));
  EXPECT_EQ(flattened(*model), model->baseImage.get());
  EXPECT_FALSE(model->logoWM.get());
  EXPECT_EQ(model->textWM.get(), TextWatermark::initial({400, 350}));
  EXPECT_EQ(model->tool.get(), EditorModel::Tool::crop);
}

TEST_F(LayersTest, aLogoFillsItsRectangle) {
  const auto model = open({2880, 1800});
  EXPECT_EQ(model->logoDisplaySize(), QSizeF(0, 0));
  model->setLogo(QImage());
  EXPECT_EQ(model->logoDisplaySize(), QSizeF(0, 0));
  EXPECT_EQ(flattened(*model), model->baseImage.get());

  model->setLogo(plain({200, 100}, Qt::white));
  EXPECT_EQ(model->logoDisplaySize(), QSizeF(250, 125));
  EXPECT_EQ(model->logoRect(), QRectF(375, 312.5, 250, 125));
  const QRect first(1080, 900, 720, 360);
  QImage drawn = flattened(*model);
  EXPECT_EQ(inked(drawn), first);
  for (const QPoint& corner : {first.topLeft(), first.center(), first.bottomRight()})
    EXPECT_NEAR(qRed(drawn.pixel(corner)), 0.85 * 255, 1);

  model->logoWM.change([](auto& logo) { logo->scale = 2, logo->center = {0, 0}, logo->opacity = 1; });
  drawn = flattened(*model);
  EXPECT_EQ(inked(drawn), QRect(0, 0, 720, 360));
  EXPECT_EQ(drawn.pixel(719, 359), qRgb(255, 255, 255));

  model->setLogo(plain({100, 300}, Qt::white));
  EXPECT_EQ(model->logoWM.get(), (LogoWatermark{plain({100, 300}, Qt::white), {500, 375}, 1.0, 0.85}));
}

TEST_F(LayersTest, aLogoIsUprightAndShrunkWithAllItsPixels) {
  QImage stripes(2000, 1000, QImage::Format_RGBA8888_Premultiplied);  // white above, fine stripes below
  for (int y = 0; y < 1000; ++y)
    for (int x = 0; x < 2000; ++x)
      stripes.setPixel(x, y, y < 500 || x % 8 == 0 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
  const auto model = open({1000, 600});
  model->setLogo(stripes);
  model->logoWM.change([](auto& logo) { logo->opacity = 1; });
  const QImage drawn = flattened(*model);
  const QPoint top(500 - 60, 360 - 30);
  EXPECT_EQ(drawn.pixel(top), qRgb(255, 255, 255));
  for (int x = 0; x < 120; ++x)
    EXPECT_NEAR(qRed(drawn.pixel(top + QPoint(x, 60))), 255 / 8.0, 3) << "an eighth of each pixel is white";
}

TEST_F(LayersTest, aTextStandsAroundItsCentreAtEverySize) {
  const auto model = open({2880, 1800});
  const auto boxWith = [&](const auto& edit) {
    model->textWM = TextWatermark::initial(model->displaySize);
    model->textWM.change([](auto& text) { text.text = QStringLiteral("HHHH"); });
    model->textWM.change(edit);
    return QRectF(inked(flattened(*model)));
  };
  const QRectF plainBox = boxWith([](auto&) {});
  EXPECT_NEAR(plainBox.center().x(), 1440, 2);
  EXPECT_NEAR(plainBox.center().y(), 0.85 * 1800, 8);
  EXPECT_EQ(model->textRect().center(), model->textWM->center);
  EXPECT_TRUE(QRectF(2.88 * model->textRect().topLeft(), 2.88 * model->textRect().size()).contains(plainBox));
  const QRectF moved = boxWith([](auto& text) { text.center -= QPointF(100, 250); });
  EXPECT_EQ(moved, plainBox.translated(-288, -720));
  const QRectF doubled = boxWith([](auto& text) { text.scale = 2; });
  EXPECT_NEAR(doubled.width(), 2 * plainBox.width(), 2);
  EXPECT_NEAR(doubled.height(), 2 * plainBox.height(), 2);
  // Three gaps of 3 points between the letters, doubled with the text; the one behind the last shifts it
  // left.
  const QRectF tracked = boxWith([](auto& text) { text.scale = 2, text.tracking = 3; });
  EXPECT_NEAR(tracked.width(), doubled.width() + 3 * 6 * 2.88, 2);
  EXPECT_NEAR(tracked.center().x(), 1440 - 3 * 2.88, 2);
  const QRectF spaced =
      boxWith([](auto& text) { text.text += QStringLiteral("\nHHHH"), text.lineSpacing = 50; });
  const QRectF unspaced = boxWith([](auto& text) { text.text += QStringLiteral("\nHHHH"); });
  EXPECT_NEAR(spaced.height(), unspaced.height() + 50 * 2.88, 2);
  EXPECT_NEAR(spaced.center().y(), unspaced.center().y(), 2);
  EXPECT_TRUE(boxWith([](auto& text) { text.text = QStringLiteral(" \n\t\u2003\n"); }).isNull());
  EXPECT_TRUE(model->textRect().isNull());
}

/// The mean structural similarity of two pictures' brightness, over squares of 8 by 8 pixels.
double similarity(const QImage& left, const QImage& right) {
  double sum = 0;
  int squares = 0;
  for (int top = 0; top + 8 <= left.height(); top += 8)
    for (int from = 0; from + 8 <= left.width(); from += 8, ++squares) {
      double a = 0, b = 0, aa = 0, bb = 0, ab = 0;
      for (int i = 0; i < 64; ++i) {
        const double l = qGray(left.pixel(from + i % 8, top + i / 8));
        const double r = qGray(right.pixel(from + i % 8, top + i / 8));
        a += l / 64, b += r / 64, aa += l * l / 64, bb += r * r / 64, ab += l * r / 64;
      }
      const double c1 = 0.0001 * 255 * 255;
      const double c2 = 0.0009 * 255 * 255;
      sum += (2 * a * b + c1) * (2 * (ab - a * b) + c2) /
             ((a * a + b * b + c1) * (aa - a * a + bb - b * b + c2));
    }
  return sum / squares;
}

TEST_F(LayersTest, looksTheSameAtDisplaySizeAndAtPixelSize) {
  QImage large(2880, 1800, QImage::Format_RGBA8888_Premultiplied);
  QPainter painter(&large);
  painter.fillRect(large.rect(), QColor(0x30, 0x58, 0x76));
  for (int i = 0; i < 400; ++i)
    painter.fillRect(QRect((i * 379) % 2880, (i * 211) % 1800, 20 + i % 90, 10 + i % 50),
                     QColor::fromHsv(i % 360, 90, 255 - i % 200));
  painter.end();
  const QImage small = large.scaled(1000, 625, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);

  const auto edited = [this](const QImage& picture, const QString& name) {
    const auto model = open(picture, name);
    drawStroke(*model, {{50, 60}, {300, 200}, {80, 220}});
    blurArea(*model, {400, 50, 220.5, 130.3});
    blurStroke(*model, {{700, 100}, {900, 240}, {710, 250}});
    model->blurStyle = BlurStyle::mosaic;
    blurArea(*model, {100, 300, 250, 180});
    blurStroke(*model, {{520, 300}, {640, 420}});
    model->setLogo(map({300, 200}));
    model->textWM.change(
        [](auto& text) { text.text = QStringLiteral("소렐 Sorrel\nשלום"), text.tracking = 2; });
    return flattened(*model);
  };
  const QImage reduced = edited(large, QStringLiteral("large.png"))
                             .scaled(1000, 625, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  const QImage shown = edited(small, QStringLiteral("small.png"));
  std::printf("similarity %f, without the layers %f\n", similarity(shown, reduced),
              similarity(small, reduced));
  EXPECT_GT(similarity(shown, reduced), 0.97);
  EXPECT_LT(similarity(small, reduced), 0.93) << "the layers do count";
}

}  // namespace
