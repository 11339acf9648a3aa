#pragma once

#include <QRect>

#include <vector>

class QWidget;

namespace platform {

// What WindowShape.h says, for windows that are surfaces of a Wayland compositor. Areas are in points. Each
// counts from the next picture of the window on at the latest.

[[nodiscard]] bool isSurface(const QWidget& window);
/// None: all clicks go to what lies beneath.
void setInputArea(const QWidget& window, const std::vector<QRect>& area);

[[nodiscard]] bool canBlurBehindSurfaces();
void blurBehindSurface(const QWidget& window, const std::vector<QRect>& area);

}  // namespace platform
