#pragma once

#include <QImage>
#include <QStringList>

namespace testing_support {

/// Colours, slopes and noise, the same for the same seed; where it `hasAlpha`, from clear to opaque. In
/// `QImage::Format_RGBA8888_Premultiplied`.
enum class SampleKind { Opaque, HasAlpha };
[[nodiscard]] QImage sample(QSize size, SampleKind kind, unsigned seed = 1);

/// Runs ImageMagick's convert on `input` and returns what it writes to standard output; fails the test if it
/// reports an error. The arguments name input and output, for example {"png:-", "-flip", "gif:-"}.
[[nodiscard]] QByteArray convert(const QStringList& arguments, const QByteArray& input);
/// A file of the sample, in what `format` names to ImageMagick.
[[nodiscard]] QByteArray makeFile(const QImage& picture, const QStringList& options, const QString& format);
/// What ImageMagick sees in a file of that format, after `options`.
[[nodiscard]] QImage readByOther(const QByteArray& file, const QString& format,
                                 const QStringList& options = {});

/// The largest difference of any channel of any pixel; 256 if the sizes differ.
[[nodiscard]] int largestDifference(const QImage& left, const QImage& right);
/// The root of the mean square of all channels' differences.
[[nodiscard]] double meanDifference(const QImage& left, const QImage& right);

}  // namespace testing_support
