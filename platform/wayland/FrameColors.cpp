#include "platform/wayland/FrameColors.h"

#include <QtGui/private/qguiapplication_p.h>

#include <utility>

namespace platform {

// Beside the toolkit's own way, which tells all widgets: they keep their colours.
FrameColors::FrameColors(const QPalette& colors)
    : before(std::exchange(QGuiApplicationPrivate::app_pal, const_cast<QPalette*>(&colors))) {
}

FrameColors::~FrameColors() {
  QGuiApplicationPrivate::app_pal = before;
}

}  // namespace platform
