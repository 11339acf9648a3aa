#include "app/editor/model/EditorModel.h"
#include "app/settings/SettingsKeys.h"
#include "platform/base/FilePath.h"
#include "platform/base/InPlaceFile.h"
#include "platform/base/Log.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "platform/imaging/codecs/ImageFormat.h"
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
  namespace FilePath = platform::FilePath;
  const QByteArray path = FilePath::of(fileURL);
  const auto fileType = platform::imageFileTypeFor(FilePath::text(path));
  const auto data = platform::ImageEncoder::encode(renderBitmap(), fileType);
  if (!data)
    return false;
  const auto written = platform::InPlaceFile::write(path, *data, openedFile);
  if (!written) {
    platform::log(QStringLiteral("Sorrel editor save failed: ") + written.error().reason);
    return false;
  }
  if (*written != path)
    platform::log(QStringLiteral("Sorrel editor: another file is now called %1; saved as %2")
                      .arg(FilePath::text(path), FilePath::text(FilePath::name(*written))));
  if (auto& defaults = platform::UserDefaults::standard();
      defaults.value(SettingsKeys::rememberWatermarkText))
    defaults.set(SettingsKeys::lastWatermarkText, textWM->text);
  return true;
}

}  // namespace sorrel
