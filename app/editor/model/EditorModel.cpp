#include "app/editor/model/EditorModel.h"

#include "app/editor/model/Painting.h"
#include "app/settings/SettingsKeys.h"
#include "platform/base/FilePath.h"
#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/drawing/ScaledPart.h"

#include <QtEndian>

namespace sorrel {
namespace {

/// Null for no pixels.
QImage reduced(const QImage& picture, const QSize& size) {
  if (size.width() >= 0.999 * picture.width())
    return picture;
  return platform::scaledPart({picture, {}, picture.size()}, size, QRect({0, 0}, size),
                              platform::Enlarging::Smooth);
}

/// Of a picture in 8-bit premultiplied RGBA.
bool isOpaquePicture(const QImage& picture) {
  const int width = picture.width();
  for (int y = 0; y < picture.height(); ++y) {
    const auto* const row = reinterpret_cast<const quint32*>(picture.constScanLine(y));
    quint32 all = ~0U;
    for (int x = 0; x < width; ++x)
      all &= row[x];
    if (qFromLittleEndian(all) >> 24 != 255)
      return false;
  }
  return true;
}

}  // namespace

std::unique_ptr<EditorModel> EditorModel::open(const QUrl& fileURL) {
  std::unique_ptr<EditorModel> model = beginOpening(fileURL);
  return model && model->awaitPicture() ? std::move(model) : nullptr;
}

std::unique_ptr<EditorModel> EditorModel::beginOpening(const QUrl& fileURL) {
  // Asked for before reading: a file that comes in between must not pass for the one that was read.
  const QByteArray path = platform::FilePath::of(fileURL);
  const auto identity = platform::InPlaceFile::identity(path);
  const auto file = platform::FilePath::openToRead(path);
  if (!identity || !file)
    return nullptr;
  return std::unique_ptr<EditorModel>(new EditorModel(fileURL, file->size(), *identity));
}

EditorModel::EditorModel(const QUrl& url, qint64 byteCount, const platform::FileIdentity& file)
    : fileURL(url),
      originalByteCount(byteCount),
      openedFile(file),
      decoding(std::async(
          [](const QByteArray& path) {
            const QImage picture = platform::ImageDecoder::read(path).value_or(QImage());
            return Decoded{picture, isOpaquePicture(picture)};
          },
          platform::FilePath::of(url))) {
  const auto& defaults = platform::UserDefaults::standard();
  if (defaults.value(SettingsKeys::rememberWatermarkText))
    textWM.change(
        [&](TextWatermark& watermark) { watermark.text = defaults.value(SettingsKeys::lastWatermarkText); });
}

bool EditorModel::awaitPicture() {
  const Decoded decoded = decoding.get();
  if (decoded.picture.isNull())
    return false;
  Document opened = document();
  opened.baseImage = decoded.picture;
  opened.imagePixelSize = decoded.picture.size();
  opened.displaySize = Document::fitted(decoded.picture.size());
  opened.textWM.center = TextWatermark::initial(opened.displaySize).center;
  become(opened);
  opaque = decoded.isOpaque;
  return true;
}

platform::Subscription EditorModel::observe(std::function<void()> observer) {
  return observers.add(std::move(observer));
}

platform::Subscription EditorModel::observe(std::function<void(Field)> observer) {
  return observers.add(std::move(observer));
}

platform::Subscription EditorModel::observeRepainting(std::function<void(Field, const QRectF&)> observer) {
  return repainting.add(std::move(observer));
}

void EditorModel::tellRepainting(Field field, const QRectF& rectangle) const {
  if (!rectangle.isEmpty())
    repainting.tell(field, rectangle);
}

bool EditorModel::isOpaque() const {
  if (!opaque)
    opaque = isOpaquePicture(baseImage);
  return *opaque;
}

Document EditorModel::document() const {
  return {baseImage, imagePixelSize, displaySize, strokes, blurRegions, textWM, logoWM, undoStack};
}

QString EditorModel::fontFamily() const {
  return platform::UserDefaults::standard().value(SettingsKeys::watermarkFontFamily);
}

/// Within a thousandth the base image itself serves: scaling would only soften it.
QImage EditorModel::processed(BlurStyle style) {
  const QSize size = displaySize->toSize();
  if (atDisplaySize.size != size)
    atDisplaySize = {size, sorrel::reduced(baseImage, size), {}, {}};
  QImage& kept = atDisplaySize.filtered.at(size_t(style));
  if (kept.isNull())
    kept = filtered(atDisplaySize.base, style, blurIntensity, displaySize->width());
  return kept;
}

EditorModel::ReducedPicture& EditorModel::reducedTo(const QSize& shown) {
  const QSize size = shown.boundedTo(imagePixelSize);
  if (asShown.size != size)
    asShown = {size, sorrel::reduced(baseImage, size), {}, {}};
  else if (asShown.reducing.valid())
    asShown.base = asShown.reducing.get();
  return asShown;
}

void EditorModel::beginReducing(const QSize& shown) {
  const QSize size = shown.boundedTo(imagePixelSize);
  if (asShown.size != size)
    asShown = {size, {}, {}, std::async(std::launch::async, sorrel::reduced, baseImage.get(), size)};
}

QImage EditorModel::reduced(const QSize& shown) {
  return reducedTo(shown).base;
}

QImage EditorModel::processed(BlurStyle style, const QSize& shown) {
  ReducedPicture& picture = reducedTo(shown);
  QImage& kept = picture.filtered.at(size_t(style));
  if (kept.isNull())
    kept = filteredCopy(picture.base, style, blurIntensity, imagePixelSize->width());
  return kept;
}

void EditorModel::dropProcessed() {
  atDisplaySize.filtered = {};
  asShown.filtered = {};
}

void EditorModel::dropDerived() {
  atDisplaySize = {};
  asShown = {};
  opaque.reset();
}

QString rawValue(EditorModel::Tool tool) {
  switch (tool) {
    case EditorModel::Tool::pen:
      return QStringLiteral("pen");
    case EditorModel::Tool::blur:
      return QStringLiteral("blur");
    case EditorModel::Tool::watermark:
      return QStringLiteral("watermark");
    case EditorModel::Tool::crop:
      break;
  }
  return QStringLiteral("crop");
}

}  // namespace sorrel
