// Encoding against the toolkit's, decoding against the bare library.

#include "bench/Figures.h"
#include "bench/imaging/Pictures.h"
#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "platform/imaging/codecs/Thumbnail.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPainter>

#include <cstdlib>
#include <cstring>
#include <jpeglib.h>
#include <memory>
#include <png.h>

namespace {

using platform::ImageFileType;

QByteArray encoded(const QImage& picture, ImageFileType type) {
  const auto file = platform::ImageEncoder::encode(picture, type);
  if (!file)
    std::abort();
  return *file;
}

QByteArray savedByToolkit(const QImage& picture) {
  QByteArray file;
  QBuffer buffer(&file);
  buffer.open(QIODevice::WriteOnly);
  if (!picture.save(&buffer, "PNG"))
    std::abort();
  return file;
}

void decode(const QByteArray& file) {
  if (!platform::ImageDecoder::decode(file))
    std::abort();
}

void decodeBarePng(const QByteArray& file) {
  struct Rest {
    const char* bytes;
  } rest{file.constData()};
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_read_fn(png, &rest, [](png_structp reader, png_bytep to, std::size_t size) {
    auto& from = *static_cast<Rest*>(png_get_io_ptr(reader));
    std::copy_n(from.bytes, size, reinterpret_cast<char*>(to));
    from.bytes += size;
  });
  png_read_info(png, info);
  png_set_filler(png, 0xff, PNG_FILLER_AFTER);
  png_read_update_info(png, info);
  const std::size_t height = png_get_image_height(png, info);
  const std::size_t rowSize = png_get_rowbytes(png, info);
  const std::unique_ptr<png_byte[]> pixels(new png_byte[rowSize * height]);
  for (std::size_t y = 0; y < height; ++y)
    png_read_row(png, pixels.get() + y * rowSize, nullptr);
  png_read_end(png, nullptr);
  png_destroy_read_struct(&png, &info, nullptr);
}

void decodeBareJpeg(const QByteArray& file) {
  jpeg_decompress_struct jpeg{};
  jpeg_error_mgr errors{};
  jpeg.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&jpeg);
  jpeg_mem_src(&jpeg, reinterpret_cast<const unsigned char*>(file.constData()),
               static_cast<unsigned long>(file.size()));
  jpeg_read_header(&jpeg, TRUE);
  jpeg.out_color_space = JCS_EXT_RGBA;
  jpeg_start_decompress(&jpeg);
  const std::size_t rowSize = std::size_t{4} * jpeg.output_width;
  const std::unique_ptr<JSAMPLE[]> pixels(new JSAMPLE[rowSize * jpeg.output_height]);
  while (jpeg.output_scanline < jpeg.output_height) {
    JSAMPROW row = pixels.get() + jpeg.output_scanline * rowSize;
    jpeg_read_scanlines(&jpeg, &row, 1);
  }
  jpeg_finish_decompress(&jpeg);
  jpeg_destroy_decompress(&jpeg);
}

void addSizeFigure(bench::Figures& figures, const std::string& what, const QImage& picture, double size) {
  figures.add(bench::Amount{"PNG of " + what + ", size against QImage::save",
                            [picture] {
                              return static_cast<double>(encoded(picture, ImageFileType::Png).size()) /
                                     static_cast<double>(savedByToolkit(picture).size());
                            },
                            "x", size});
}

void addPngFigures(bench::Figures& figures, const std::string& what, const QImage& picture, double time) {
  const auto encode = [picture] { encoded(picture, ImageFileType::Png); };
  figures.add(bench::Ratio{"PNG of " + what + ", time against QImage::save", encode,
                           [picture] { savedByToolkit(picture); }, time});
  addSizeFigure(figures, what, picture, 1);
  const QByteArray png = encoded(picture, ImageFileType::Png);
  figures.add(bench::Ratio{"decoding that PNG, against the bare library", [png] { decode(png); },
                           [png] { decodeBarePng(png); }, 0.6});
  const QByteArray jpeg = encoded(picture, ImageFileType::Jpeg);
  figures.add(bench::Ratio{"decoding it as JPEG, against the bare library", [jpeg] { decode(jpeg); },
                           [jpeg] { decodeBareJpeg(jpeg); }, 1.15});
  const auto thumbnail = [](const QByteArray& file) {
    if (!platform::Thumbnail::decode(file, 320))
      std::abort();
  };
  figures.add(bench::Ratio{"thumbnail of that PNG, against the bare library", [=] { thumbnail(png); },
                           [png] { decodeBarePng(png); }, 1.75});
  figures.add(bench::Ratio{"thumbnail of that JPEG, against the bare library", [=] { thumbnail(jpeg); },
                           [jpeg] { decodeBareJpeg(jpeg); }, 0.75});
}

/// On every 16th row, as tables and lists have them.
QImage withFlatLines(QImage picture, const QColor& color) {
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  for (int y = 0; y < picture.height(); y += 16)
    painter.fillRect(0, y, picture.width(), 1, color);
  return picture;
}

QImage filled(QSize size, const QGradient& gradient) {
  QImage image(size, QImage::Format_RGBA8888_Premultiplied);
  QPainter(&image).fillRect(image.rect(), gradient);
  return image;
}

template <typename Gradient>
Gradient coloured(Gradient gradient) {
  gradient.setColorAt(0, QColor(40, 70, 200));
  gradient.setColorAt(1, QColor(220, 190, 50));
  return gradient;
}

QImage slope(QSize size, QPoint towards) {
  return filled(
      size, coloured(QLinearGradient({}, QPointF(size.width() * towards.x(), size.height() * towards.y()))));
}

QImage glow(QSize size) {
  return filled(size, coloured(QRadialGradient(QRectF({}, size).center(), size.width() / 2.0)));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  bench::Figures figures(argc, argv);
  for (const QSize size : {QSize(2880, 1800), QSize(5120, 2880)}) {
    const std::string pixels = std::to_string(size.width()) + "x" + std::to_string(size.height());
    addPngFigures(figures, "text, " + pixels, bench::textAndWindows(size), 0.08);
    addPngFigures(figures, "a photo, " + pixels, bench::photo(size), 0.025);
  }
  const QSize size(2880, 1800);
  const int grey = 200;
  addSizeFigure(figures, "a photo with flat lines",
                withFlatLines(bench::photo(size), QColor(grey, grey, grey)), 1);
  addSizeFigure(figures, "a photo with translucent lines",
                withFlatLines(bench::photo(size), QColor(255, 255, 255, grey)), 1);
  addSizeFigure(figures, "a slope to the right", slope(size, {1, 0}), 1.2);
  addSizeFigure(figures, "a slope to the corner", slope(size, {1, 1}), 1.2);
  addSizeFigure(figures, "a glow", glow(size), 1.2);
  return figures.run();
}
