#include "platform/imaging/codecs/decoding/ColorConversion.h"

#include "platform/imaging/codecs/decoding/ColorProfile.h"

#include <array>
#include <cstdlib>

namespace platform::decoding {
namespace {

/// How the library finds its input in RGBA; 0 for colours that aren't pixels of ours.
cmsUInt32Number pixelsFor(cmsColorSpaceSignature space) {
  switch (space) {
    case cmsSigRgbData:
      return TYPE_RGBA_8;
    case cmsSigGrayData:  // the first of three equal channels
      return COLORSPACE_SH(PT_GRAY) | CHANNELS_SH(1) | EXTRA_SH(3) | BYTES_SH(1);
    default:
      return 0;
  }
}

}  // namespace

void ColorConversion::Release::operator()(void* held) const {
  cmsDeleteTransform(held);
}

std::optional<ColorConversion> ColorConversion::fromProfile(const QByteArray& profile) {
  if (profile.isEmpty())
    return std::nullopt;
  const ColorProfile from(
      cmsOpenProfileFromMem(profile.constData(), static_cast<cmsUInt32Number>(profile.size())));
  const ColorProfile to(cmsCreate_sRGBProfile());
  if (!from || !to)
    return std::nullopt;
  const cmsUInt32Number pixels = pixelsFor(cmsGetColorSpace(from.get()));
  if (pixels == 0)
    return std::nullopt;
  const bool hasAlpha = pixels == TYPE_RGBA_8;
  Transform made(cmsCreateTransform(from.get(), pixels, to.get(), TYPE_RGBA_8, INTENT_PERCEPTUAL,
                                    hasAlpha ? cmsFLAGS_COPY_ALPHA : 0));
  if (!made)
    return std::nullopt;
  ColorConversion conversion(std::move(made));
  return conversion.changesAnything() ? std::optional(std::move(conversion)) : std::nullopt;
}

void ColorConversion::convert(std::uint8_t* pixels, std::size_t count) const {
  cmsDoTransform(transform.get(), pixels, pixels, static_cast<cmsUInt32Number>(count));
}

bool ColorConversion::changesAnything() const {
  constexpr int steps = 9;
  std::array<std::uint8_t, std::size_t{4} * steps> row{};
  const auto level = [](int step) { return static_cast<std::uint8_t>(step * 255 / (steps - 1)); };
  for (int combination = 0; combination < steps * steps; ++combination) {
    for (std::size_t step = 0; step < steps; ++step) {
      row[4 * step] = level(static_cast<int>(step));
      row[4 * step + 1] = level(combination % steps);
      row[4 * step + 2] = level(combination / steps);
      row[4 * step + 3] = 255;
    }
    const auto before = row;
    convert(row.data(), steps);
    for (std::size_t i = 0; i < row.size(); ++i)
      if (std::abs(row[i] - before[i]) > 1)
        return true;
  }
  return false;
}

}  // namespace platform::decoding
