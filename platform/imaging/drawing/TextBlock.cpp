#include "platform/imaging/drawing/TextBlock.h"

#include "platform/imaging/drawing/SmoothImage.h"
#include "platform/imaging/drawing/TextLines.h"
#include "platform/imaging/filters/GaussianBlur.h"

#include <QGlyphRun>
#include <QHash>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace platform {
namespace {

constexpr int layoutSize = TextLines::fontSize;
/// The pixel size at which glyphs that are pictures are taken from their font: fonts hold them at about this.
constexpr int pictureSize = 128;

}  // namespace

/// In units of which `layoutSize` are one font size. The text's lines were laid out one by one; all that is
/// left of them are the glyphs.
struct TextBlock::Layout {
  struct Picture {
    QImage image;
    QRectF place;
  };
  /// The glyphs of one font and line: most have outlines, some (emoji) are pictures.
  struct Run {
    QPainterPath outlines;
    std::vector<Picture> pictures;
  };
  std::vector<Run> runs;
  QSizeF size;
  QRectF ink;  // what the glyphs cover

  Layout(const QString& text, const TextStyle& style);
  /// Taking an outline from its font costs far more than moving it.
  using Outlines = QHash<std::pair<QRawFont, quint32>, QPainterPath>;
  void addRun(const QGlyphRun& glyphs, const QPointF& origin, Outlines& known);
  void addPicture(Run& run, QRawFont font, quint32 glyph, const QPointF& place);
  void paint(QPainter& painter, const QColor& colour) const;
};

TextBlock::Layout::Layout(const QString& text, const TextStyle& style) {
  const QFont font = TextLines::font(style);
  std::vector<std::unique_ptr<QTextLayout>> layouts;
  std::vector<QTextLayout*> lines;
  const QStringList texts = TextLines::split(text);
  for (const QString& line : texts) {
    layouts.push_back(std::make_unique<QTextLayout>(line, font));
    lines.push_back(layouts.back().get());
    TextLines::layOut(*lines.back());
  }
  size = TextLines::arrange(lines, style);
  Outlines known;
  for (const QTextLayout* const layout : lines) {
    const QList<QGlyphRun> glyphRuns = layout->lineAt(0).glyphRuns();
    for (const QGlyphRun& glyphs : glyphRuns)
      addRun(glyphs, layout->position(), known);
  }
}

void TextBlock::Layout::addRun(const QGlyphRun& glyphs, const QPointF& origin, Outlines& known) {
  Run run;
  run.outlines.setFillRule(Qt::WindingFill);
  const QRawFont font = glyphs.rawFont();
  const bool hasPictures = !font.fontTable("CBLC").isEmpty();  // where such a font lists its bitmaps
  const QList<quint32> indexes = glyphs.glyphIndexes();
  const QList<QPointF> positions = glyphs.positions();
  for (qsizetype at = 0; at < indexes.size(); ++at) {
    const QPointF place = positions[at] + origin;
    if (hasPictures) {
      addPicture(run, font, indexes[at], place);
      continue;
    }
    auto outline = known.constFind({font, indexes[at]});
    if (outline == known.cend())
      outline = known.insert({font, indexes[at]}, font.pathForGlyph(indexes[at]));
    run.outlines.addPath(outline->translated(place));
  }
  ink |= run.outlines.boundingRect();
  runs.push_back(std::move(run));
}

void TextBlock::Layout::addPicture(Run& run, QRawFont font, quint32 glyph, const QPointF& place) {
  font.setPixelSize(pictureSize);
  const QImage image = font.alphaMapForGlyph(glyph, QRawFont::PixelAntialiasing);
  if (image.isNull())
    return;  // a blank
  constexpr double enlarged = double(layoutSize) / pictureSize;
  const QRectF box = font.boundingRect(glyph);
  run.pictures.push_back({image, {place + box.topLeft() * enlarged, box.size() * enlarged}});
  ink |= run.pictures.back().place;
}

void TextBlock::Layout::paint(QPainter& painter, const QColor& colour) const {
  painter.setRenderHint(QPainter::Antialiasing);
  for (const Run& run : runs) {
    painter.fillPath(run.outlines, colour);
    painter.setOpacity(colour.alphaF());
    for (const Picture& picture : run.pictures)
      drawSmoothly(painter, picture.image, picture.place);
    painter.setOpacity(1);
  }
}

TextBlock::TextBlock(const QString& text, const TextStyle& look) : style(look) {
  if (style.fontSize > 0)
    layout = std::make_unique<Layout>(text, style);
}

TextBlock::~TextBlock() = default;
TextBlock::TextBlock(TextBlock&&) noexcept = default;
TextBlock& TextBlock::operator=(TextBlock&&) noexcept = default;

QSizeF TextBlock::size() const {
  return layout ? layout->size * (style.fontSize / layoutSize) : QSizeF(0, 0);
}

QRectF TextBlock::inkRect() const {
  if (!layout)
    return {};
  const double scale = style.fontSize / layoutSize;
  const QRectF ink(layout->ink.topLeft() * scale, layout->ink.size() * scale);
  if (!style.shadow)
    return ink;
  constexpr double sigmas = 7;  // as far as a gaussian reaches at any zoom
  const double reach = sigmas * style.shadow->blurRadius / 2;
  return ink | ink.translated(style.shadow->offset).adjusted(-reach, -reach, reach, reach);
}

void TextBlock::draw(QPainter& painter, const QPointF& topLeft) const {
  if (!layout)
    return;
  painter.save();
  painter.translate(topLeft);
  painter.scale(style.fontSize / layoutSize, style.fontSize / layoutSize);
  if (style.shadow)
    drawShadow(painter);
  layout->paint(painter, style.colour);
  painter.restore();
}

/// Works in the device's own pixels, and only on those that can be seen.
void TextBlock::drawShadow(QPainter& painter) const {
  const QTransform toDevice = painter.deviceTransform();
  const double pixelsPerUnit = toDevice.m11() * layoutSize / style.fontSize;
  const double sigma = std::min(style.shadow->blurRadius / 2 * pixelsPerUnit, maximumSigma);
  const QPointF offset = style.shadow->offset * pixelsPerUnit;
  const int reach = gaussianReach(sigma);
  const QPaintDevice& device = *painter.paintEngine()->paintDevice();
  const QMarginsF margins(reach, reach, reach, reach);
  const QRect area = toDevice.mapRect(layout->ink)
                         .translated(offset)
                         .marginsAdded(margins)
                         .intersected(QRectF(0, 0, device.width(), device.height()).marginsAdded(margins))
                         .toAlignedRect();
  QImage shadow(area.size(), QImage::Format_RGBA8888_Premultiplied);
  if (shadow.isNull())
    return;
  shadow.fill(Qt::transparent);
  QPainter onto(&shadow);
  onto.setTransform(toDevice * QTransform::fromTranslate(offset.x() - area.x(), offset.y() - area.y()));
  layout->paint(onto, style.colour);
  onto.resetTransform();
  onto.setCompositionMode(QPainter::CompositionMode_SourceIn);
  onto.fillRect(shadow.rect(), style.shadow->colour);
  onto.end();

  painter.save();
  painter.setWorldTransform(toDevice.inverted(), true);
  painter.drawImage(area.topLeft(), gaussianBlur(std::move(shadow), sigma));
  painter.restore();
}

}  // namespace platform
