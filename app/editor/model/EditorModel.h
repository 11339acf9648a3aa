#pragma once

#include "app/editor/model/Document.h"
#include "app/editor/model/Repainting.h"
#include "platform/base/InPlaceFile.h"
#include "platform/base/Published.h"

#include <QImage>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QUrl>

#include <array>
#include <future>
#include <memory>
#include <optional>

namespace sorrel {

/// The editor's document: one opened picture, all that the user has laid on it, the tools' settings and the
/// undo history. Views read and change it; it alone writes the file, and only in save(). It knows no widget.
/// Main thread only.
///
/// There are two spaces, both with their origin at the top left, y down. All stored geometry and all widths
/// are in display space, `displaySize` large. The pixels are `imagePixelSize` large. One factor, of the two
/// widths, leads from one space to the other for both axes.
///
/// Tools' settings, changes of the watermarks and the choice of a tool can't be undone; committed strokes and
/// regions and crops can. There is no redo.
class EditorModel {
 public:
  enum class Tool { pen, blur, watermark, crop };
  static constexpr std::array allTools = {Tool::pen, Tool::blur, Tool::watermark, Tool::crop};
  using EditAction = sorrel::EditAction;

  /// Null if the file can't be decoded.
  [[nodiscard]] static std::unique_ptr<EditorModel> open(const QUrl& fileURL);
  /// The same without waiting: the picture is decoded on a thread of its own, and until awaitPicture() the
  /// document is one without a picture, to which views may be made. Null if the file can't be read.
  [[nodiscard]] static std::unique_ptr<EditorModel> beginOpening(const QUrl& fileURL);
  /// Takes in the picture, once. False if the file can't be decoded.
  [[nodiscard]] bool awaitPicture();
  EditorModel(const EditorModel&) = delete;
  EditorModel& operator=(const EditorModel&) = delete;

  using Field = platform::Observers::Field;

  /// Calls `observer` before each change of a field below; the second with the field, such as
  /// `&model->strokes`.
  [[nodiscard]] platform::Subscription observe(std::function<void()> observer);
  [[nodiscard]] platform::Subscription observe(std::function<void(Field)> observer);
  /// Calls `observer` after each change that can be seen in the picture, with the field and what has to be
  /// painted again, in display space: the bounds of what was or is drawn there. A soft edge may reach a pixel
  /// farther. The text's changes of font aren't among them: that is a setting.
  [[nodiscard]] platform::Subscription observeRepainting(std::function<void(Field, const QRectF&)> observer);

 private:
  template <typename Value>
  using Published = platform::Published<Value>;
  platform::Observers observers;

 public:
  template <typename Value>
  using Own = platform::PublishedBy<EditorModel, Value>;

  Own<QImage> baseImage{observers, {}, [this] { dropDerived(); }};  // premultiplied RGBA in sRGB
  Own<QSize> imagePixelSize{observers};
  Own<QSizeF> displaySize{observers};
  const QUrl fileURL;
  const qint64 originalByteCount;  // of the file when it was opened
  Published<Tool> tool{observers, Tool::pen};
  Own<std::optional<QUuid>> sorrelBurstID{observers};  // a new value plays one burst
  Own<QList<EditAction>> undoStack{observers};
  Own<QList<PenStroke>> strokes{observers};
  Published<std::optional<PenStroke>> current{observers, {}, [this] { repaintStroke(); }};  // under way
  Published<quint32> colorHex{observers, 0xE5484D};
  Published<double> lineWidth{observers, 5.0};
  Published<TextWatermark> textWM{observers, {}, [this] { repaintText(); }};
  Published<std::optional<LogoWatermark>> logoWM{observers, {}, [this] { repaintLogo(); }};
  Published<bool> isEditingText{observers, false};
  Published<BlurStyle> blurStyle{observers, BlurStyle::gaussian, [this] { repaintBlurGesture(&blurStyle); }};
  Published<BlurApply> blurApply{observers, BlurApply::brush};
  Published<double> blurBrushWidth{observers, 34.0, [this] { repaintBlurGesture(&blurBrushWidth); }};
  Published<double> blurIntensity{observers, 0.5, [this] { intensityChanged(); }};  // 0 to 1, of all regions
  Own<QList<BlurRegion>> blurRegions{observers};
  // The gesture under way.
  Own<std::optional<QList<QPointF>>> currentBlurStroke{
      observers, {}, [this] { repaintBlurGesture(&currentBlurStroke); }};
  Published<std::optional<QRectF>> currentBlurRect{
      observers, {}, [this] { repaintBlurGesture(&currentBlurRect); }};

  /// All of it that can be painted or taken back, as it is now. Keep it no longer than it takes to paint: the
  /// next stroke would have to copy the list of all.
  [[nodiscard]] Document document() const;

  /// Whether nothing can be seen through the base image.
  [[nodiscard]] bool isOpaque() const;

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
  /// The same at the resolution at which the picture is shown, or its own if that is lower, with the mosaic's
  /// cells where the file has them; kept until the intensity, the base image or the resolution changes.
  [[nodiscard]] QImage processed(BlurStyle style, const QSize& shown);

  /// The base image as it is shown at that size, or itself if it is no larger; kept as long.
  [[nodiscard]] QImage reduced(const QSize& shown);
  /// Begins to make it, on a thread of its own; whoever asks for it waits for that.
  void beginReducing(const QSize& shown);
  /// Gives back what is kept of the size at which the picture was last shown as a whole.
  void dropReduced() { asShown = {}; }

  /// Takes the last undoable edit back.
  void undoLast();

  /// Flattens the document and keeps only what lies in the rectangle. One that leaves at most 8 points either
  /// way changes nothing.
  void applyCrop(const QRectF& rectangle);

  /// Replaces any logo by this one, at the default place, size and opacity.
  void setLogo(const QImage& image);
  /// In display points; (0, 0) without a logo.
  [[nodiscard]] QSizeF logoDisplaySize() const;
  /// Where the logo lies in display space, and the block of the text, in the font of the settings; null where
  /// none is shown.
  [[nodiscard]] QRectF logoRect() const;
  [[nodiscard]] QRectF textRect() const;
  /// Of the text; empty for the bold system font.
  [[nodiscard]] QString fontFamily() const;
  /// To be called with each change of the watermark's text.
  void maybeTriggerBurst(const QString& text);

  /// Writes the flattened document over the file, encoded as the file's name says; beside it, with a log
  /// line, if another file has taken the name since it was opened. False, and a log line if it was the
  /// writing that failed, if that can't be done.
  [[nodiscard]] bool save() const;

 private:
  using CropSnapshot = Document;

  EditorModel(const QUrl& fileURL, qint64 byteCount, const platform::FileIdentity& file);

  /// The base image at a lower resolution, and under each style's filter.
  struct ReducedPicture {
    QSize size;
    QImage base;
    std::array<QImage, 2> filtered;
    std::future<QImage> reducing;  // becomes the base
  };

  void restoreCrop();
  void become(const Document& next);
  template <typename Layer>
  void takeLast(Own<QList<Layer>>& layers);
  [[nodiscard]] QImage renderBitmap() const;
  [[nodiscard]] const platform::TextBlock& textBlock() const;

  void tellRepainting(Field field, const QRectF& rectangle) const;
  void repaintStroke();
  void repaintBlurGesture(Field field);
  void repaintText();
  void repaintLogo();

  void intensityChanged();
  ReducedPicture& reducedTo(const QSize& shown);
  void dropProcessed();
  void dropDerived();

  struct LaidOutText {
    QString text;
    platform::TextStyle style;
    platform::TextBlock block;
  };

  const platform::FileIdentity openedFile;
  struct Decoded {
    QImage picture;  // null if it can't be decoded
    bool isOpaque;
  };
  std::future<Decoded> decoding;
  mutable std::optional<bool> opaque;  // absent until somebody asks
  platform::Listeners<Field, const QRectF&> repainting;
  LineRepainting shownStroke;
  QUuid shownStrokeId;
  LineRepainting shownBlurStroke;
  QRectF shownBlurRect;
  QRectF shownText;
  QRectF shownLogo;
  mutable std::optional<LaidOutText> laidOut;
  ReducedPicture atDisplaySize;
  ReducedPicture asShown;
  QList<CropSnapshot> cropSnapshots;
};

/// The tool's name in texts and settings.
[[nodiscard]] QString rawValue(EditorModel::Tool tool);

}  // namespace sorrel
