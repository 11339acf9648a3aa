#include "platform/imaging/codecs/ImageFormat.h"

#include <array>
#include <string_view>
#include <utility>

namespace platform {
namespace {

using namespace std::string_view_literals;

/// The brands that announce pictures coded with HEVC.
constexpr std::array heicBrands{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv, "hevx"sv, "mif1"sv};

}  // namespace

std::optional<ImageFormat> imageFormatOf(std::span<const std::uint8_t> content) {
  const std::string_view text(reinterpret_cast<const char*>(content.data()), content.size());
  if (text.starts_with("\x89PNG\r\n\x1a\n"sv))
    return ImageFormat::Png;
  if (text.starts_with("\xff\xd8\xff"sv))
    return ImageFormat::Jpeg;
  if (text.starts_with("II*\0"sv) || text.starts_with("MM\0*"sv) || text.starts_with("II+\0"sv) ||
      text.starts_with("MM\0+"sv))
    return ImageFormat::Tiff;
  if (text.starts_with("GIF87a"sv) || text.starts_with("GIF89a"sv))
    return ImageFormat::Gif;
  if (text.starts_with("BM"sv))
    return ImageFormat::Bmp;
  if (text.size() < 12)
    return std::nullopt;
  if (text.starts_with("RIFF"sv) && text.substr(8, 4) == "WEBP"sv)
    return ImageFormat::WebP;
  if (text.substr(4, 4) == "ftyp"sv) {
    for (const std::string_view brand : heicBrands)
      if (text.substr(8, 4) == brand)
        return ImageFormat::Heic;
  }
  return std::nullopt;
}

ImageFileType imageFileTypeFor(QStringView path) {
  const QStringView name = path.mid(path.lastIndexOf(u'/') + 1);
  const qsizetype dot = name.lastIndexOf(u'.');
  if (dot < 0)
    return ImageFileType::Png;
  constexpr std::array<std::pair<QStringView, ImageFileType>, 6> types{{{u"jpg", ImageFileType::Jpeg},
                                                                        {u"jpeg", ImageFileType::Jpeg},
                                                                        {u"tiff", ImageFileType::Tiff},
                                                                        {u"tif", ImageFileType::Tiff},
                                                                        {u"gif", ImageFileType::Gif},
                                                                        {u"bmp", ImageFileType::Bmp}}};
  for (const auto& [extension, type] : types)
    if (name.mid(dot + 1).compare(extension, Qt::CaseInsensitive) == 0)
      return type;
  return ImageFileType::Png;
}

}  // namespace platform
