#pragma once

#include <QPixmap>
#include <QPoint>

class QUrl;
class QWidget;

namespace sorrel {

/// What hangs at the pointer while a thumbnail is dragged: the picture with round corners, 70 % opaque.
[[nodiscard]] QPixmap dragPicture(const QPixmap& picture);

/// Lets the user drag a file out to other programs, once the events at hand are done. `picture` may be null;
/// `grabbedAt` is the place in it that the pointer holds; `from` what the user drags it out of.
void dragFile(const QUrl& file, const QPixmap& picture, const QPoint& grabbedAt, const QWidget& from);

}  // namespace sorrel
