#include "app/editor/model/EditorModel.h"
#include "app/editor/model/Painting.h"
#include "app/settings/SettingsKeys.h"
#include "platform/base/FilePath.h"
#include "platform/base/InPlaceFile.h"
#include "platform/base/Log.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "platform/imaging/codecs/ImageFormat.h"

namespace sorrel {

QImage EditorModel::renderBitmap() const {
  return flattened(document(), blurIntensity, fontFamily());
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
