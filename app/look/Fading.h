#pragma once

class QWidget;

namespace sorrel {

/// Shows a widget with all that is in it as translucent as that; 1 is as always, and costs nothing.
void setOpacity(QWidget& widget, double opacity);

}  // namespace sorrel
