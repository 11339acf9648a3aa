// Draws an SVG as a square PNG, for those who mustn't wait for the SVG library: rasterize SVG SIZE PNG
//
// An image at or above its own size is drawn at the largest whole multiple of it that fits, in the middle, so
// that edges which lie on the pixels of the original lie on pixels here too. Below that it is scaled to fit.

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 4) {
    std::fputs("usage: rasterize SVG SIZE PNG\n", stderr);
    return 64;
  }
  QSvgRenderer drawing(arguments[1]);
  const int size = arguments[2].toInt();
  const int own = drawing.defaultSize().width();
  if (!drawing.isValid() || own != drawing.defaultSize().height() || size < 1) {
    std::fprintf(stderr, "%s is no square drawing\n", qPrintable(arguments[1]));
    return 1;
  }
  const int side = size < own ? size : size / own * own;
  const int margin = (size - side) / 2;
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  drawing.render(&painter, QRectF(margin, margin, side, side));
  painter.end();
  if (!image.save(arguments[3], "PNG")) {
    std::fprintf(stderr, "%s can't be written\n", qPrintable(arguments[3]));
    return 1;
  }
  return 0;
}
