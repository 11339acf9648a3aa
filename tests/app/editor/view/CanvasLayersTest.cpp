// What the canvas shows, against everything painted anew.

#include "app/editor/view/CanvasLayers.h"
#include "platform/imaging/drawing/ScaledPart.h"
#include "tests/app/editor/model/DocumentFixture.h"

using namespace sorrel;

namespace {

/// The whole picture at the size at which it is shown, painted in one go.
QImage paintedAnew(EditorModel& model, const CanvasFit& place) {
  const QSize shown = place.shown();
  // The document's own copies serve where a layer holds the whole picture.
  const bool isReduced =
      CanvasView::of(shown, place.visible(), 1, {}).isWhole() && model.reduced(shown).size() == shown;
  const auto scaled = [&](const QImage& picture) {
    return platform::scaledPart(
        {picture, {0, 0}, picture.size()}, shown, QRect({0, 0}, shown),
        shown.width() >= 3 * picture.width() ? platform::Enlarging::Squares : platform::Enlarging::Smooth);
  };
  const auto filteredBase = [&](BlurStyle style) -> PlacedPicture {
    if (isReduced)
      return {model.processed(style, shown), {}};
    return {scaled(filtered(model.baseImage, style, model.blurIntensity, model.imagePixelSize->width())), {}};
  };
  const Placement placement{.scale = place.pixelsPerUnit(),
                            .origin = {},
                            .displaySize = model.displaySize,
                            .lowerEdge = double(shown.height())};
  platform::DrawingSurface surface(isReduced ? model.reduced(shown) : scaled(model.baseImage));
  QList<BlurRegion> regions = model.blurRegions;
  if (model.currentBlurStroke.get())
    regions.append({.kind = BlurRegion::Stroke{*model.currentBlurStroke.get(), model.blurBrushWidth},
                    .style = model.blurStyle});
  if (model.currentBlurRect.get())
    regions.append({.kind = *model.currentBlurRect.get(), .style = model.blurStyle});
  paintBlurRegions(surface, regions, {filteredBase(BlurStyle::gaussian), filteredBase(BlurStyle::mosaic)},
                   placement);
  QList<PenStroke> strokes = model.strokes;
  if (model.current.get())
    strokes.append(*model.current.get());
  QImage nothing(shown, QImage::Format_RGBA8888_Premultiplied);
  nothing.fill(Qt::transparent);
  platform::DrawingSurface ink(nothing);
  paintStrokes(ink, strokes, placement);
  surface.lay(ink.finish(), {0, 0});
  const QRect whole({0, 0}, shown);
  for (const PlacedPicture& mark : {logoPicture(model.document(), placement, whole),
                                    textPicture(model.textWM, model.fontFamily(), placement, whole)})
    surface.lay(mark.image, mark.topLeft);
  return surface.finish();
}

/// Where two pictures differ, and by how much at most; empty where they don't. The corner of a
/// rectangle may be rounded otherwise where a layer begins elsewhere.
std::string difference(const QImage& seen, const QImage& expected) {
  if (seen.size() != expected.size())
    return "another size";
  QRect where;
  for (int y = 0; y < seen.height(); ++y)
    for (int x = 0; x < seen.width(); ++x)
      if (pixelAt(seen, x, y) != pixelAt(expected, x, y))
        where |= QRect(x, y, 1, 1);
  const int worst = worstDifference(seen, expected, [](int, int) { return true; });
  if (worst <= 1)
    return {};
  return "from " + std::to_string(where.left()) + ", " + std::to_string(where.top()) + " to " +
         std::to_string(where.right()) + ", " + std::to_string(where.bottom()) + " by " +
         std::to_string(worst);
}

/// A canvas's screen, which gets new pixels only where it is told to.
class Screen {
 public:
  Screen(EditorModel& document, const CanvasFit& shown) : model(document), place(shown), layers(document) {
    layers.show(place);
    copyAll();
    listening = model.observeRepainting([this](EditorModel::Field field, const QRectF& rectangle) {
      const QRegion changed = layers.follow(field, rectangle);
      if (field == &model.baseImage)
        show(place.resized(place.area, place.ratio, model.displaySize, model.imagePixelSize));
      else
        stale |= changed;
    });
  }

  [[nodiscard]] const CanvasFit& fit() const { return place; }
  void show(const CanvasFit& next) {
    place = next;
    layers.show(place);
    copyAll();
  }
  [[nodiscard]] QImage pixels() {
    const PlacedPicture now = layers.picture();
    for (const QRect& part : std::exchange(stale, {}))
      copyPixels(screen, part.topLeft() - now.topLeft, now.image, part.translated(-now.topLeft));
    return screen.copy(place.visible().translated(-now.topLeft))
        .convertToFormat(QImage::Format_RGBA8888_Premultiplied);
  }

 private:
  void copyAll() {
    screen = layers.picture().image.copy();
    stale = {};
  }

  EditorModel& model;
  CanvasFit place;
  CanvasLayers layers;
  QImage screen;
  QRegion stale;
  platform::Subscription listening;
};

class CanvasLayersTest : public DocumentFixture {
 protected:
  int below(int bound) { return int(random() % unsigned(bound)); }
  /// Also beside the picture, and between its pixels.
  QPointF place(const EditorModel& model) {
    return {(below(100) - 10) * model.displaySize->width() / 80.0,
            (below(100) - 10) * model.displaySize->height() / 80.0};
  }

  void edit(EditorModel& model) {
    switch (below(12)) {
      case 0:
        return model.begin(place(model));
      case 1:
      case 2:
        if (!model.current.get())
          model.begin(place(model));
        return model.current.change([&](auto& stroke) { stroke->points.append(place(model)); });
      case 3:
        return model.commit();
      case 4:
      case 5:
        if (!model.currentBlurRect.get())  // a gesture is of one kind
          model.extendBlurBrush(place(model));
        return;
      case 6:
        if (!model.currentBlurStroke.get())
          model.currentBlurRect = QRectF(place(model), place(model)).normalized();
        return;
      case 7:
        return model.commitBlur();
      case 8:
        return model.undoLast();
      case 9:
        return changeSetting(model);
      case 10:
        return changeMark(model);
      default:
        if (below(8) == 0)
          model.applyCrop(QRectF(place(model), place(model)).normalized() |
                          QRectF(10, 10, model.displaySize->width() / 2, model.displaySize->height() / 2));
    }
  }

  void changeSetting(EditorModel& model) {
    switch (below(4)) {
      case 0:
        model.blurStyle = below(2) ? BlurStyle::gaussian : BlurStyle::mosaic;
        return;
      case 1:
        model.blurIntensity = below(100) / 100.0;
        return;
      case 2:
        model.blurBrushWidth = 5.0 + below(30);
        return;
      default:
        model.lineWidth = 1.0 + below(20);
        model.colorHex = quint32(random());
    }
  }

  void changeMark(EditorModel& model) {
    if (below(3) == 0)
      return model.setLogo(plain({1 + below(20), 1 + below(20)}, QColor::fromHsv(below(360), 200, 200, 150)));
    if (below(3) == 0)
      return model.logoWM = std::nullopt, void();
    model.textWM.change([&](TextWatermark& text) {
      text.text = below(3) ? QString::number(below(100)) : QString();
      text.center = place(model);
    });
  }

  CanvasFit another(const CanvasFit& fit) {
    const QPointF anchor(below(int(fit.area.width())), below(int(fit.area.height())));
    switch (below(4)) {
      case 0:
        return fit.zoomedTo(1 + below(30) / 10.0, anchor);
      case 1:
        return fit.resized({90.0 + below(200), 80.0 + below(100)},
                           std::array{1.0, 1.25, 1.5, 2.0}[random() % 4], fit.displaySize,
                           fit.imagePixelSize);
      default:
        return fit.scrolledTo(fit.scrolled + QPointF(below(200) - 100, below(200) - 100));
    }
  }

  const unsigned seed = std::random_device{}();
  std::mt19937 random{seed};
};

TEST_F(CanvasLayersTest, randomGesturesLookAsIfPaintedAnew) {
  SCOPED_TRACE(seed);
  for (const QSize& size : {QSize(130, 90), QSize(2000, 120), QSize(64, 200)}) {
    QImage picture = noise(size);
    if (size.width() == 64)
      picture = plain(size, QColor(0, 200, 255, 90));  // one can see through it
    const auto model = open(picture);
    Screen screen(*model, CanvasFit().resized({180, 140}, 1, model->displaySize, model->imagePixelSize));
    for (int step = 0; step < 600; ++step) {
      edit(*model);
      if (below(8) == 0)
        screen.show(another(screen.fit()));
      if (below(5) != 0)
        continue;
      const QImage anew = paintedAnew(*model, screen.fit()).copy(screen.fit().visible());
      ASSERT_EQ(difference(screen.pixels(), anew), "")
          << size.width() << ", step " << step << ", zoom " << screen.fit().zoom << ", ratio "
          << screen.fit().ratio;
    }
  }
}

}  // namespace
