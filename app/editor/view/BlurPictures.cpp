#include "app/editor/view/BlurPictures.h"

#include "app/editor/model/EditorModel.h"

#include <utility>

namespace sorrel {
namespace {

/// From here on one wants to see the picture's pixels.
constexpr double squaresFrom = 3;

}  // namespace

void BlurPictures::show(const CanvasView& next) {
  view = next;
  kept = {};
  if (!view.isWhole())
    model.dropReduced();
}

bool BlurPictures::isModelsOwn() const {
  return view.isWhole() && model.reduced(view.shown).size() == view.shown;
}

QImage BlurPictures::scaled(const platform::PicturePart& picture, const QRect& part) const {
  const bool isClose = view.shown.width() >= squaresFrom * picture.whole.width();
  return platform::scaledPart(picture, view.shown, part.translated(view.area.topLeft()),
                              isClose ? platform::Enlarging::Squares : platform::Enlarging::Smooth);
}

QImage BlurPictures::base() const {
  if (isModelsOwn())
    return model.reduced(view.shown);
  return scaled({model.baseImage, {}, model.imagePixelSize}, view.layerRect());
}

void BlurPictures::paintBase(QImage& layer, const QRect& part) const {
  if (isModelsOwn())
    return copyPixels(layer, part.topLeft(), model.reduced(view.shown), part);
  copyPixels(layer, part.topLeft(), scaled({model.baseImage, {}, model.imagePixelSize}, part),
             QRect({0, 0}, part.size()));
}

PlacedPicture BlurPictures::filtered(BlurStyle style, const QRegion& part) {
  if (isModelsOwn())
    return {model.processed(style, view.shown), {0, 0}};
  if (std::exchange(keptIntensity, model.blurIntensity) != model.blurIntensity)
    kept = {};
  if (const auto& all = kept.at(size_t(style)))
    return *all;
  const QRect bounds = part.boundingRect();
  const QRect source =
      platform::sourceOfScaledPart(model.imagePixelSize, view.shown, bounds.translated(view.area.topLeft()));
  const platform::PicturePart picture{
      sorrel::filtered(model.baseImage, style, model.blurIntensity, model.imagePixelSize->width(), source),
      source.topLeft(), model.imagePixelSize};
  QImage pixels = newLayer(bounds.size());
  for (const QRect& rectangle : part)
    copyPixels(pixels, rectangle.topLeft() - bounds.topLeft(), scaled(picture, rectangle),
               QRect({0, 0}, rectangle.size()));
  return {pixels, bounds.topLeft()};
}

PlacedPicture BlurPictures::filtered(BlurStyle style) {
  auto& all = kept.at(size_t(style));
  const PlacedPicture picture = filtered(style, view.layerRect());
  if (!isModelsOwn())
    all = picture;
  return picture;
}

}  // namespace sorrel
