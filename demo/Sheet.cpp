#include "demo/Sheet.h"

#include <QPainter>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace demo {

QImage sheetOf(const std::vector<QImage>& pictures, std::size_t columns) {
  std::vector<QRect> places;
  QPoint corner;
  QSize whole;
  int rowHeight = 0;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    if (i % columns == 0)
      corner = {0, corner.y() + std::exchange(rowHeight, 0)};
    places.emplace_back(corner, pictures[i].size());
    corner.rx() += pictures[i].width();
    rowHeight = std::max(rowHeight, pictures[i].height());
    whole = whole.expandedTo({corner.x(), corner.y() + rowHeight});
  }
  QImage sheet(whole, QImage::Format_RGB32);
  sheet.fill(Qt::white);
  QPainter painter(&sheet);
  for (std::size_t i = 0; i < pictures.size(); ++i)
    painter.drawImage(places[i].topLeft(), pictures[i]);
  return sheet;
}

void save(const QImage& picture, const QString& path) {
  constexpr int smallest = 0;
  if (!picture.save(path, "PNG", smallest))
    throw std::runtime_error("can't write " + path.toStdString());
}

}  // namespace demo
