// Strokes, crops and watermarks in the flattened picture.

#include "tests/app/editor/model/DocumentFixture.h"

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

}  // namespace
