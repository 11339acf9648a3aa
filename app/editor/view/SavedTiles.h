#pragma once

#include <QImage>
#include <QRect>

#include <map>
#include <utility>

namespace sorrel {

/// A layer's pixels as they were, kept tile by tile: what a gesture has changed can be taken back, at a cost
/// that goes by how much of the layer it has touched.
class SavedTiles {
 public:
  /// To be called before the pixels of `part` are changed. What has been saved before stays as it is.
  void save(const QImage& layer, const QRect& part);
  /// Puts back the pixels of `part`, all of which must have been saved, or all that have been.
  void restore(QImage& layer, const QRect& part) const;
  QRect restoreAll(QImage& layer) const;

  void clear() { tiles.clear(); }
  [[nodiscard]] bool isEmpty() const { return tiles.empty(); }
  [[nodiscard]] qsizetype bytes() const;

 private:
  static constexpr int tileSize = 64;
  /// Calls `work(key, rectangle)` for each tile of the layer that meets the part.
  template <typename Work>
  static void forEachTile(const QRect& layer, const QRect& part, const Work& work);

  std::map<std::pair<int, int>, QImage> tiles;  // by column and row
};

}  // namespace sorrel
