#include "app/editor/view/SavedTiles.h"

#include "app/editor/view/CanvasView.h"

namespace sorrel {

template <typename Work>
void SavedTiles::forEachTile(const QRect& layer, const QRect& part, const Work& work) {
  const QRect wanted = layer & part;
  if (wanted.isEmpty())
    return;
  for (int row = wanted.top() / tileSize; row <= wanted.bottom() / tileSize; ++row)
    for (int column = wanted.left() / tileSize; column <= wanted.right() / tileSize; ++column)
      work(std::pair(column, row), QRect(column * tileSize, row * tileSize, tileSize, tileSize) & layer);
}

void SavedTiles::save(const QImage& layer, const QRect& part) {
  forEachTile(layer.rect(), part, [&](const auto& key, const QRect& rectangle) {
    if (auto& tile = tiles[key]; tile.isNull())
      tile = layer.copy(rectangle);
  });
}

void SavedTiles::restore(QImage& layer, const QRect& part) const {
  forEachTile(layer.rect(), part, [&](const auto& key, const QRect& rectangle) {
    if (const auto tile = tiles.find(key); tile != tiles.end()) {
      const QRect wanted = rectangle & part;
      copyPixels(layer, wanted.topLeft(), tile->second, wanted.translated(-rectangle.topLeft()));
    }
  });
}

QRect SavedTiles::restoreAll(QImage& layer) const {
  QRect restored;
  for (const auto& [key, tile] : tiles) {
    const QPoint corner(key.first * tileSize, key.second * tileSize);
    copyPixels(layer, corner, tile, tile.rect());
    restored |= QRect(corner, tile.size());
  }
  return restored;
}

qsizetype SavedTiles::bytes() const {
  return qsizetype(tiles.size()) * 4 * tileSize * tileSize;
}

}  // namespace sorrel
