#pragma once

#include "app/editor/model/Painting.h"

#include <functional>

namespace sorrel {

/// A watermark's picture on the canvas, kept while nothing but its place changes. While it is moved its
/// pixels are carried along by whole pixels, which costs nothing however large they are; at rest it is
/// painted just where it lies.
class MarkLayer {
 public:
  /// Of what is seen in a part of the layer.
  using Paint = std::function<PlacedPicture(const QRect& part)>;

  /// It looks otherwise from now on.
  void forget() { isKnown = false; }
  /// The picture of a mark whose middle lies at that place of a layer of that size.
  const PlacedPicture& show(const QPointF& center, const QRect& layer, bool isCarried, const Paint& paint);
  [[nodiscard]] const PlacedPicture& picture() const { return shown; }
  [[nodiscard]] QRect area() const { return {shown.topLeft, shown.image.size()}; }

 private:
  [[nodiscard]] bool carry(const QPointF& center, const QRect& layer);

  bool isKnown = false;
  PlacedPicture painted;
  QPointF paintedAt;
  QRect paintedPart;
  PlacedPicture shown;
};

}  // namespace sorrel
