#include "app/editor/model/EditorModel.h"

#include "app/settings/SettingsKeys.h"
#include "platform/base/FilePath.h"
#include "platform/imaging/codecs/ImageDecoder.h"

#include <algorithm>
#include <cmath>

namespace sorrel {

std::unique_ptr<EditorModel> EditorModel::open(const QUrl& fileURL) {
  // Asked for before reading: a file that comes in between must not pass for the one that was read.
  const QByteArray path = platform::FilePath::of(fileURL);
  const auto identity = platform::InPlaceFile::identity(path);
  const auto file = platform::FilePath::openToRead(path);
  const auto decoded = platform::ImageDecoder::read(path);
  if (!identity || !file || !decoded || decoded->isNull())
    return nullptr;
  return std::unique_ptr<EditorModel>(new EditorModel(fileURL, file->size(), *identity, *decoded));
}

EditorModel::EditorModel(const QUrl& url, qint64 byteCount, const platform::FileIdentity& file,
                         const QImage& decoded)
    : fileURL(url), originalByteCount(byteCount), openedFile(file) {
  baseImage = decoded;
  imagePixelSize = decoded.size();
  displaySize = fitted(decoded.size());
  textWM = TextWatermark::initial(displaySize);
  const auto& defaults = platform::UserDefaults::standard();
  if (defaults.value(SettingsKeys::rememberWatermarkText))
    textWM.change(
        [&](TextWatermark& watermark) { watermark.text = defaults.value(SettingsKeys::lastWatermarkText); });
}

platform::Subscription EditorModel::observe(std::function<void()> observer) {
  return observers.add(std::move(observer));
}

QSizeF EditorModel::fitted(const QSize& pixels) {
  const double fit = std::min({1000.0 / pixels.width(), 640.0 / pixels.height(), 1.0});
  return {std::round(pixels.width() * fit), std::round(pixels.height() * fit)};
}

double EditorModel::outputScale() const {
  return imagePixelSize->width() / displaySize->width();
}

QPointF EditorModel::inOutput(const QPointF& point, double scale) const {
  return {scale * point.x(), imagePixelSize->height() - scale * point.y()};
}

QList<QPointF> EditorModel::inOutput(const QList<QPointF>& points, double scale) const {
  QList<QPointF> output;
  output.reserve(points.size());
  for (const QPointF& point : points)
    output.append(inOutput(point, scale));
  return output;
}

void EditorModel::undoLast() {
  if (undoStack->isEmpty())
    return;
  const EditAction last = undoStack->last();
  undoStack.change([](auto& entries) { entries.removeLast(); });
  switch (last) {
    case EditAction::pen:
      if (!strokes->isEmpty())
        strokes.change([](auto& committed) { committed.removeLast(); });
      break;
    case EditAction::blur:
      if (!blurRegions->isEmpty())
        blurRegions.change([](auto& regions) { regions.removeLast(); });
      break;
    case EditAction::crop:
      restoreCrop();
      break;
  }
}

void EditorModel::dropProcessed() {
  gaussianCache = {};
  mosaicCache = {};
}

void EditorModel::dropFilterCaches() {
  dropProcessed();
  baseCICache = {};
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
