#pragma once

#include <QImage>

namespace bench {

/// Pictures to measure with, the same on every run, in `QImage::Format_RGBA8888_Premultiplied` and opaque.

/// A desktop: a plain background, windows with shadows, lines of text in several sizes and colours. Needs a
/// QGuiApplication for the fonts.
[[nodiscard]] QImage textAndWindows(QSize size);
/// What a camera gives: soft shapes at every scale, and noise in each pixel.
[[nodiscard]] QImage photo(QSize size);

}  // namespace bench
