#pragma once

#include "app/editor/model/EditorModel.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/ScratchHome.h"

#include <QFile>
#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

/// Pictures and documents for the tests of the model, each in a home folder of its own.
class DocumentFixture : public testing::Test {
 protected:
  using EditorModel = sorrel::EditorModel;

  /// A document that was opened from a PNG file of these pixels.
  [[nodiscard]] std::unique_ptr<EditorModel> open(const QImage& picture,
                                                  const QString& name = QStringLiteral("picture.png")) const {
    const QString path = home.path(name);
    if (!picture.save(path, "png"))
      qFatal("cannot write a test's own picture");
    auto model = EditorModel::open(QUrl::fromLocalFile(path));
    if (!model)
      qFatal("cannot open a test's own picture");
    return model;
  }
  [[nodiscard]] std::unique_ptr<EditorModel> open(const QSize& size, const QColor& colour = Qt::black) const {
    return open(plain(size, colour));
  }

  [[nodiscard]] static QImage plain(const QSize& size, const QColor& colour) {
    QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
    picture.fill(colour);
    return picture;
  }
  /// Random opaque pixels: the least flat picture there is.
  [[nodiscard]] static QImage noise(const QSize& size) {
    QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
    std::mt19937 random(7);
    for (int y = 0; y < size.height(); ++y)
      std::generate_n(reinterpret_cast<quint32*>(picture.scanLine(y)), size.width(),
                      [&] { return quint32(random()) | 0xff000000; });
    return picture;
  }
  /// A different colour at each place.
  [[nodiscard]] static QImage map(const QSize& size) {
    QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
      for (int x = 0; x < size.width(); ++x)
        picture.setPixel(x, y, qRgb(x & 255, y & 255, (x >> 8) | ((y >> 8) << 4)));
    return picture;
  }

  /// The document as a save would write it. A crop to the whole flattens it.
  [[nodiscard]] static QImage flattened(EditorModel& model) {
    model.applyCrop({{0, 0}, model.displaySize.get()});
    QImage pixels = model.baseImage;
    model.undoLast();
    return pixels;
  }

  static void drawStroke(EditorModel& model, const QList<QPointF>& points) {
    model.begin(points.first());
    for (const QPointF& point : points.sliced(1))
      model.current.change([&](auto& stroke) { stroke->points.append(point); });
    model.commit();
  }
  static void blurStroke(EditorModel& model, const QList<QPointF>& points) {
    for (const QPointF& point : points)
      model.extendBlurBrush(point);
    model.commitBlur();
  }
  static void blurArea(EditorModel& model, const QRectF& area) {
    model.currentBlurRect = area;
    model.commitBlur();
  }

  const testing_support::ScratchHome home;
};

/// How much of a pixel, of 0 to 1, lies within `width / 2` of a polyline: counted at 16 by 16 places in it.
/// All in pixels, y down.
inline double coverage(const QList<QPointF>& line, double width, int x, int y) {
  const auto distance = [&](const QPointF& from) {
    double nearest = 1e9;
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
      const QPointF along = line[i + 1] - line[i];
      const double length = QPointF::dotProduct(along, along);
      const double at =
          length > 0 ? std::clamp(QPointF::dotProduct(from - line[i], along) / length, 0.0, 1.0) : 0.0;
      const QPointF off = from - line[i] - at * along;
      nearest = std::min(nearest, std::hypot(off.x(), off.y()));
    }
    return nearest;
  };
  const double middle = distance({x + 0.5, y + 0.5});
  if (std::abs(middle - width / 2) > 1)
    return middle < width / 2 ? 1 : 0;
  int inside = 0;
  for (int i = 0; i < 256; ++i)
    inside += distance({x + (i % 16 + 0.5) / 16, y + (i / 16 + 0.5) / 16}) <= width / 2;
  return inside / 256.0;
}

/// How much of a pixel lies in a rectangle.
inline double coverage(const QRectF& rectangle, int x, int y) {
  const QRectF common = rectangle.intersected(QRectF(x, y, 1, 1));
  return common.width() * common.height();
}

using Pixel = std::array<uchar, 4>;

inline Pixel pixelAt(const QImage& picture, int x, int y) {
  Pixel pixel;
  std::copy_n(picture.constScanLine(y) + 4 * x, 4, pixel.begin());
  return pixel;
}

/// Lays `above` over the picture wherever `covered` says that a pixel is covered, as far as it is.
template <typename Above, typename Covered>
void layOver(QImage& picture, Above above, Covered covered) {
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      const double share = covered(x, y);
      if (share == 0)
        continue;
      const Pixel pixel = above(x, y);
      uchar* const to = picture.scanLine(y) + 4 * x;
      for (size_t channel = 0; channel < 4; ++channel)
        to[channel] = uchar(std::lround(to[channel] + share * (pixel[channel] - to[channel])));
    }
}

/// The largest difference of a channel where `isCounted` holds; -1 for pictures of different sizes.
template <typename Counted>
int worstDifference(const QImage& left, const QImage& right, Counted isCounted) {
  if (left.size() != right.size())
    return -1;
  int worst = 0;
  for (int y = 0; y < left.height(); ++y)
    for (int x = 0; x < left.width(); ++x)
      if (isCounted(x, y))
        for (size_t channel = 0; channel < 4; ++channel)
          worst = std::max(worst, std::abs(pixelAt(left, x, y)[channel] - pixelAt(right, x, y)[channel]));
  return worst;
}
