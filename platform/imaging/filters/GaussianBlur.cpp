#include "platform/imaging/filters/GaussianBlur.h"

#include "platform/imaging/filters/GaussianPasses.h"

#include <utility>

namespace platform {
namespace {

bool isSigma(double sigma) {
  return sigma >= 0 && sigma <= maximumSigma;
}

}  // namespace

QImage gaussianBlur(QImage source, double sigma, const QRect& regionOfInterest, const Effort& effort) {
  const std::optional<QRect> region = regionToFilter(source, regionOfInterest);
  if (!region || !isSigma(sigma))
    return {};
  const Reduction reduction = reductionFor(sigma);
  if (reduction.factor == 1)
    return filtered(std::move(source), *region, Destination::FreshMemory,
                    [&](const SourceRows& from, const ResultRows& to) {
                      blurDirectly(from, sigma, *region, to, effort);
                    });
  return filtered(std::move(source), *region, Destination::SourceIfUnshared,
                  [&](const SourceRows& from, const ResultRows& to) {
                    blurReduced(from, reduction, *region, to, effort);
                  });
}

int gaussianReach(double sigma) {
  if (!isSigma(sigma))
    return 0;
  const Reduction reduction = reductionFor(sigma);
  if (reduction.factor == 1)
    return kernelRadius(sigma);
  // A pixel looks at nodes less than two away, those at all within the kernel, and the outermost of them at
  // pixels less than two nodes away.
  return (kernelRadius(reduction.nodeSigma) + 4) * reduction.factor;
}

}  // namespace platform
