#pragma once

#include <QStringView>

#include <cstdint>
#include <optional>
#include <span>

namespace platform {

/// What a file's content can be.
enum class ImageFormat { Png, Jpeg, Tiff, Gif, Bmp, WebP, Heic };

/// Told from the first bytes; absent for anything that isn't one of them.
[[nodiscard]] std::optional<ImageFormat> imageFormatOf(std::span<const std::uint8_t> content);

/// What can be written.
enum class ImageFileType { Png, Jpeg, Tiff, Gif, Bmp };

/// By the extension of the file's name, case-blind: "jpg" and "jpeg", "tiff" and "tif", "gif", "bmp"; PNG for
/// any other and for none.
[[nodiscard]] ImageFileType imageFileTypeFor(QStringView path);

}  // namespace platform
