#include "app/editor/view/SorrelBurst.h"

#include "app/editor/model/EditorModel.h"
#include "platform/desktop/Image.h"
#include "platform/desktop/Motion.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sorrel {
namespace {

using platform::MainQueue;

constexpr int particleCount = 48;
constexpr int fastOneIn = 6;
constexpr double largestSize = 60;
constexpr auto frame = std::chrono::milliseconds(16);
constexpr double fadeIn = 0.12;
constexpr double fadeOut = 0.35;
/// Of the image in device pixels; where the picture is larger than life, it is stretched.
constexpr double largestDrawn = 360;

double opacityAt(double t, double life) {
  if (t < fadeIn)
    return t / fadeIn;
  return std::clamp((life - t) / fadeOut, 0.0, 1.0);
}

}  // namespace

QRectF SorrelBurst::ParticleView::bounds() const {
  const double reach = side * std::numbers::sqrt2 / 2 + 1;
  return {center.x() - reach, center.y() - reach, 2 * reach, 2 * reach};
}

SorrelBurst::SorrelBurst(const EditorModel& document, std::function<void(const QRectF&)> onRepaint)
    : model(document), repaint(std::move(onRepaint)) {
  // The new value is in place only after the news of it.
  const auto startSoon = [this] { starting = MainQueue::main().asyncAfter({}, [this] { start(); }); };
  subscription = model.sorrelBurstID.observe(startSoon);
  if (model.sorrelBurstID.get())
    startSoon();
}

std::vector<SorrelBurst::Particle> SorrelBurst::makeParticles(std::mt19937& random) {
  const auto within = [&](double low, double high) {
    return std::uniform_real_distribution(low, high)(random);
  };
  std::vector<Particle> made;
  for (int i = 0; i < particleCount; ++i)
    made.push_back({.x0Norm = within(0.08, 0.92),
                    .vySpeed = i % fastOneIn == 0 ? within(640, 780) : within(360, 560),
                    .vx = within(-70, 70),
                    .angle0 = within(0, 2 * std::numbers::pi),
                    .omega = within(-4, 4),
                    .delay = within(0, longestDelay),
                    .size = within(32, largestSize)});
  return made;
}

std::optional<SorrelBurst::ParticleView> SorrelBurst::particleView(const Particle& particle, double elapsed,
                                                                   const QSizeF& size) {
  const double t = elapsed - particle.delay;
  if (t < 0 || t > duration || size.isEmpty())
    return std::nullopt;
  return ParticleView{.center = {size.width() * particle.x0Norm + t * particle.vx,
                                 size.height() + gravity * t * t / 2 - t * particle.vySpeed},
                      .angle = particle.angle0 + t * particle.omega,
                      .side = particle.size,
                      .opacity = opacityAt(t, duration - particle.delay)};
}

void SorrelBurst::start() {
  if (!platform::isMotionWanted())
    return;
  end();
  startedAt = MainQueue::main().uptime();
  particles = makeParticles(random);
  frames = MainQueue::main().scheduleRepeating(frame, {}, [this] { step(); });
}

void SorrelBurst::step() {
  const auto before = std::exchange(views, shown());
  for (const auto* shownThen : {&before, &std::as_const(views)})
    for (const auto& view : *shownThen)
      repaint(view.bounds());
  if (static_cast<double>(MainQueue::main().uptime() - startedAt) / 1000 >= duration + longestDelay)
    end();
}

void SorrelBurst::end() {
  frames.cancel();
  particles.clear();
  for (const auto& view : std::exchange(views, {}))
    repaint(view.bounds());
  drawn = {};
}

std::vector<SorrelBurst::ParticleView> SorrelBurst::shown() const {
  const double elapsed = static_cast<double>(MainQueue::main().uptime() - startedAt) / 1000;
  std::vector<ParticleView> found;
  for (const auto& particle : particles)
    if (const auto view = particleView(particle, elapsed, model.displaySize); view && view->opacity > 0)
      found.push_back(*view);
  return found;
}

void SorrelBurst::paint(QPainter& painter) {
  if (views.empty())
    return;
  painter.save();
  const QTransform toPicture = painter.transform();
  const QRectF dirty = painter.clipBoundingRect();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QPixmap& image = picture(painter.deviceTransform().m11());
  for (const auto& view : views) {
    if (!dirty.isNull() && !dirty.intersects(view.bounds()))
      continue;
    painter.setTransform(toPicture);
    painter.translate(view.center);
    painter.rotate(view.angle * 180 / std::numbers::pi);
    painter.setOpacity(view.opacity);
    painter.drawPixmap(QRectF(-view.side / 2, -view.side / 2, view.side, view.side), image, image.rect());
  }
  painter.restore();
}

const QPixmap& SorrelBurst::picture(double scale) {
  const int side = qRound(std::min(largestSize * scale, largestDrawn));
  if (drawn.width() != side) {
    const auto image = platform::Image::named(QStringLiteral("SorrelBomb"));
    drawn = image ? image->icon.pixmap(QSize(side, side), 1) : QPixmap();
  }
  return drawn;
}

}  // namespace sorrel
