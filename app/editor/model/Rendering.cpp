#include "app/editor/model/EditorModel.h"
#include "platform/base/Log.h"
#include "platform/base/UserDefaults.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "platform/imaging/codecs/ImageFormat.h"
#include "platform/imaging/codecs/InPlaceFile.h"
#include "platform/imaging/drawing/DrawingSurface.h"

#include <cmath>

namespace sorrel {

QImage EditorModel::renderBitmap() const {
  platform::DrawingSurface surface(baseImage);
  const double scale = outputScale();
  if (!std::isfinite(
          scale))  // so narrow a picture that its display width rounds to nothing: no place for layers
    return surface.finish();
  drawBlurRegions(surface, scale);
  drawStrokes(surface, scale);
  drawLogoWatermark(surface, scale);
  drawTextWatermark(surface, scale);
  return surface.finish();
}

bool EditorModel::save() const {
  using platform::UserDefaults;
  const QString path = fileURL.toLocalFile();
  const auto data = platform::ImageEncoder::encode(renderBitmap(), platform::imageFileTypeFor(path));
  if (!data)
    return false;
  QString failure;
  if (!platform::InPlaceFile::write(path, *data, &failure)) {
    platform::log(QStringLiteral("Sorrel editor save failed: ") + failure);
    return false;
  }
  if (UserDefaults::standard().boolean(QStringLiteral("rememberWatermarkText")))
    UserDefaults::standard().set(QStringLiteral("lastWatermarkText"), textWM->text);
  return true;
}

}  // namespace sorrel
