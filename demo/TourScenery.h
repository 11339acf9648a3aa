#pragma once

#include <QImage>

/// What is on the desktop of the tour: drawn here, so that it is ours and the same on every machine.
namespace demo::scenery {

/// Hills in the evening, below a pale sky.
[[nodiscard]] QImage wallpaper(QSize size);
/// The contents of a window with a page of text and a small chart.
[[nodiscard]] QImage notes(QSize size);
/// The contents of a window that shows a lake between mountains.
[[nodiscard]] QImage photograph(QSize size);

}  // namespace demo::scenery
