#pragma once

#include "app/editor/model/BlurRegion.h"
#include "app/editor/model/PenStroke.h"
#include "app/editor/model/Watermarks.h"
#include "platform/base/InPlaceFile.h"
#include "platform/base/Published.h"

#include <QImage>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QUrl>

#include <array>
#include <memory>
#include <optional>

namespace platform {
class DrawingSurface;
}

namespace sorrel {

/// The editor's document: one opened picture, all that the user has laid on it, the tools' settings and the
/// undo history. Views read and change it; it alone writes the file, and only in save(). It knows no widget.
/// Main thread only.
///
/// There are two spaces. All stored geometry and all widths are in display space: `displaySize` large, origin
/// at the top left, y down. The pixels are `imagePixelSize` large, and what is drawn into them counts y from
/// the bottom. One factor, of the two widths, leads from one space to the other for both axes.
///
/// Tools' settings, changes of the watermarks and the choice of a tool can't be undone; committed strokes and
/// regions and crops can. There is no redo.
class EditorModel {
 public:
  enum class Tool { pen, blur, watermark, crop };
  static constexpr std::array allTools = {Tool::pen, Tool::blur, Tool::watermark, Tool::crop};
  /// What kind of edit happened; what it changed lies in the layers and snapshots.
  enum class EditAction { pen, blur, crop };

  /// Null if the file can't be decoded.
  [[nodiscard]] static std::unique_ptr<EditorModel> open(const QUrl& fileURL);
  EditorModel(const EditorModel&) = delete;
  EditorModel& operator=(const EditorModel&) = delete;

  /// Calls `observer` before each change of a field below.
  [[nodiscard]] platform::Subscription observe(std::function<void()> observer);

 private:
  template <typename Value>
  using Published = platform::Published<Value>;
  platform::Observers observers;

 public:
  template <typename Value>
  using Own = platform::PublishedBy<EditorModel, Value>;

  Own<QImage> baseImage{observers};  // premultiplied RGBA in sRGB
  Own<QSize> imagePixelSize{observers};
  Own<QSizeF> displaySize{observers};
  const QUrl fileURL;
  const qint64 originalByteCount;  // of the file when it was opened
  Published<Tool> tool{observers, Tool::pen};
  Own<std::optional<QUuid>> sorrelBurstID{observers};  // a new value plays one burst
  Own<QList<EditAction>> undoStack{observers};
  Own<QList<PenStroke>> strokes{observers};
  Published<std::optional<PenStroke>> current{observers};  // the stroke under way
  Published<quint32> colorHex{observers, 0xE5484D};
  Published<double> lineWidth{observers, 5.0};
  Published<TextWatermark> textWM{observers};
  Published<std::optional<LogoWatermark>> logoWM{observers};
  Published<bool> isEditingText{observers, false};
  Published<BlurStyle> blurStyle{observers, BlurStyle::gaussian};
  Published<BlurApply> blurApply{observers, BlurApply::brush};
  Published<double> blurBrushWidth{observers, 34.0};
  Published<double> blurIntensity{observers, 0.5, [this] { dropProcessed(); }};  // 0 to 1, of all regions
  Own<QList<BlurRegion>> blurRegions{observers};
  Own<std::optional<QList<QPointF>>> currentBlurStroke{observers};  // the gesture under way
  Published<std::optional<QRectF>> currentBlurRect{observers};

  /// Starts a stroke with the present colour and width. Its further points are appended to `current`.
  void begin(const QPointF& point);
  /// Ends the stroke under way; one of a single point leaves no trace.
  void commit();

  void extendBlurBrush(const QPointF& point);
  /// Ends the gesture under way; a single point or a rectangle of at most 4 points either way leaves no
  /// trace.
  void commitBlur();
  /// The whole base image under the style's filter, to be stretched over the display; kept until the
  /// intensity or the base image changes. Null if there is none.
  [[nodiscard]] QImage processed(BlurStyle style);

  /// Takes the last undoable edit back.
  void undoLast();

  /// Flattens the document and keeps only what lies in the rectangle. One that leaves at most 8 points either
  /// way changes nothing.
  void applyCrop(const QRectF& rectangle);

  /// Replaces any logo by this one, at the default place, size and opacity.
  void setLogo(const QImage& image);
  /// In display points; (0, 0) without a logo.
  [[nodiscard]] QSizeF logoDisplaySize() const;
  /// To be called with each change of the watermark's text.
  void maybeTriggerBurst(const QString& text);

  /// Writes the flattened document over the file, encoded as the file's name says; beside it, with a log
  /// line, if another file has taken the name since it was opened. False, and a log line if it was the
  /// writing that failed, if that can't be done.
  [[nodiscard]] bool save() const;

 private:
  /// The document as it was before a crop. Its pictures and lists share their memory with the model's.
  struct CropSnapshot {
    QImage baseImage;
    QSize imagePixelSize;
    QSizeF displaySize;
    QList<PenStroke> strokes;
    QList<BlurRegion> blurRegions;
    TextWatermark textWM;
    std::optional<LogoWatermark> logoWM;
    QList<EditAction> undoStack;
  };

  EditorModel(const QUrl& fileURL, qint64 byteCount, const platform::FileIdentity& file,
              const QImage& decoded);

  /// The largest size of this shape, of whole points, within 1000 by 640, and never larger than the pixels.
  [[nodiscard]] static QSizeF fitted(const QSize& pixels);
  /// Pixels for one display point.
  [[nodiscard]] double outputScale() const;
  [[nodiscard]] QPointF inOutput(const QPointF& point, double scale) const;
  [[nodiscard]] QList<QPointF> inOutput(const QList<QPointF>& points, double scale) const;

  void restoreCrop();
  void dropProcessed();
  void dropFilterCaches();
  [[nodiscard]] QImage displayInput();
  /// `input` under the style's filter, whose strength follows `width`, the width that it stands for; only the
  /// `part` of it, if one is given.
  [[nodiscard]] QImage makeProcessed(BlurStyle style, const QImage& input, double width,
                                     const QRect& part = {}) const;
  [[nodiscard]] QImage renderBitmap() const;
  void drawBlurRegions(platform::DrawingSurface& surface, double scale) const;
  void drawStrokes(platform::DrawingSurface& surface, double scale) const;
  void drawLogoWatermark(platform::DrawingSurface& surface, double scale) const;
  void drawTextWatermark(platform::DrawingSurface& surface, double scale) const;

  const platform::FileIdentity openedFile;
  QImage gaussianCache;
  QImage mosaicCache;
  QImage baseCICache;  // the base image at display size: the input of processed()
  QList<CropSnapshot> cropSnapshots;
};

/// The tool's name in texts and settings.
[[nodiscard]] QString rawValue(EditorModel::Tool tool);

}  // namespace sorrel
