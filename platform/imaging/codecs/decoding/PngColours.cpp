#include "platform/imaging/codecs/decoding/PngColours.h"

#include "platform/imaging/codecs/decoding/ColorProfile.h"

#include <algorithm>
#include <cmath>
#include <lcms2.h>
#include <memory>

namespace platform::decoding {
namespace {

using Primaries = std::array<PngColours::Point, 4>;

constexpr Primaries sRgb{{{0.3127, 0.3290}, {0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}}};

bool areAlike(const Primaries& one, const Primaries& other) {
  constexpr double little = 0.005;
  for (std::size_t i = 0; i < one.size(); ++i)
    for (std::size_t axis = 0; axis < 2; ++axis)
      if (std::abs(one[i][axis] - other[i][axis]) > little)
        return false;
  return true;
}

/// Points of the diagram's triangle, the three of a real area.
bool areSensible(const Primaries& primaries) {
  const auto& [white, red, green, blue] = primaries;
  const double area = (green[0] - red[0]) * (blue[1] - red[1]) - (blue[0] - red[0]) * (green[1] - red[1]);
  return std::ranges::all_of(
             primaries,
             [](const auto& point) { return point[0] >= 0 && point[1] > 0 && point[0] + point[1] <= 1; }) &&
         std::abs(area) > 0.01;
}

struct FreeCurve {
  void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};

}  // namespace

QByteArray profileOf(const PngColours& colours) {
  if (!(colours.gamma > 0.01 && colours.gamma < 10))
    return {};
  const bool hasPrimaries = areSensible(colours.xy);
  const bool isUsual = std::abs(colours.gamma * 2.2 - 1) < 0.05;
  if (isUsual && (!hasPrimaries || areAlike(colours.xy, sRgb)))
    return {};
  const auto& [white, red, green, blue] = hasPrimaries ? colours.xy : sRgb;
  const cmsCIExyY whitePoint{white[0], white[1], 1};
  const cmsCIExyYTRIPLE primaries{{red[0], red[1], 1}, {green[0], green[1], 1}, {blue[0], blue[1], 1}};
  const std::unique_ptr<cmsToneCurve, FreeCurve> curve(cmsBuildGamma(nullptr, 1 / colours.gamma));
  if (!curve)
    return {};
  cmsToneCurve* const curves[]{curve.get(), curve.get(), curve.get()};
  const ColorProfile profile(cmsCreateRGBProfile(&whitePoint, &primaries, curves));
  cmsUInt32Number size = 0;
  if (!profile || !cmsSaveProfileToMem(profile.get(), nullptr, &size))
    return {};
  QByteArray bytes(static_cast<qsizetype>(size), '\0');
  return cmsSaveProfileToMem(profile.get(), bytes.data(), &size) ? bytes : QByteArray();
}

}  // namespace platform::decoding
