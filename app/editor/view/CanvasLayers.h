#pragma once

#include "app/editor/view/CanvasFit.h"
#include "app/editor/view/InkLayer.h"
#include "app/editor/view/MarkLayer.h"
#include "app/editor/view/UnderLayer.h"

#include <QImage>
#include <QRegion>

#include <array>

class QPainter;

namespace sorrel {

/// The part of the document that a canvas shows, in pixels that are ready for the screen: layers, painted by
/// what paints the file, and what they are together. After a change only what it touches is painted, whatever
/// else there is.
///
/// Places are device pixels of the shown picture, from its own corner.
class CanvasLayers {
 public:
  enum class Marks { within, apart };

  explicit CanvasLayers(EditorModel& document);

  /// What is to be ready from now on.
  void show(const CanvasFit& place);
  /// A field of the document has changed what is seen in a rectangle of display space. Returns where the
  /// pixels will be others.
  [[nodiscard]] QRegion follow(const void* field, const QRectF& rectangle);
  /// The text has another font.
  [[nodiscard]] QRegion followText();
  /// Perhaps the text has begun to be edited, in its own place, or is no longer.
  [[nodiscard]] QRegion followEditing();

  /// Until told otherwise the watermarks are being moved.
  void carryMarks() { isCarrying = true; }
  [[nodiscard]] bool isCarryingMarks() const { return isCarrying; }
  /// They rest. Returns where the pixels will be others.
  [[nodiscard]] QRegion settleMarks();

  /// All together, up to date, in the screen's format, and where it lies in the picture; without the marks if
  /// those are to be shown apart.
  [[nodiscard]] PlacedPicture picture(Marks where = Marks::within);
  /// Paints a part of the picture, whose corner lies at the painter's origin.
  void paint(QPainter& painter, const QRect& part, Marks where);
  /// The logo and the text as of the last picture(), to be laid over it.
  [[nodiscard]] std::array<PlacedPicture, 2> marks() const;
  [[nodiscard]] const CanvasView& shownView() const { return view; }

 private:
  [[nodiscard]] QRegion inPicture(const QRegion& ofLayer) const {
    return ofLayer.translated(view.area.topLeft());
  }
  /// Returns it in the picture.
  [[nodiscard]] QRegion willChange(const QRegion& part);
  void prepare(Marks where);
  [[nodiscard]] bool isUnderAlone() const;
  [[nodiscard]] QImage inScreenFormat(QImage pixels);
  void composeStale(const QRect& part);
  void compose(const QRect& part);
  void showMarks();
  [[nodiscard]] const QImage& shownLogo(const LogoWatermark& now, double scale);
  void place(Marks where);

  EditorModel& model;
  CanvasView view;
  UnderLayer under;
  InkLayer ink;
  MarkLayer logo;
  MarkLayer text;
  struct TextLook {
    TextWatermark watermark;
    QString fontFamily;
    bool operator==(const TextLook&) const = default;
  };
  TextLook textLook;
  LogoWatermark logoLook;
  /// The logo's image as it is shown, kept wherever it is moved.
  struct ReducedLogo {
    qint64 of = 0;
    double size = 0;
    QImage pixels;
  };
  ReducedLogo reducedLogo;
  Marks marksAre = Marks::within;
  QImage together;  // null until something lies on the base image
  // What has to be painted before the next look, in the layers' pixels.
  QRegion staleUnder;
  QRegion stale;
  bool isLogoStale = true;
  bool isTextStale = true;
  bool isTextHidden = false;
  bool isCarrying = false;
};

}  // namespace sorrel
