#pragma once

#include "platform/base/MainQueue.h"
#include "platform/base/Subscription.h"

#include <QPixmap>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <functional>
#include <optional>
#include <random>
#include <vector>

class QPainter;

namespace sorrel {

class EditorModel;

/// A short shower over the picture, played at each new value of the document's `sorrelBurstID`: images shoot
/// up from the bottom edge, fall back, spin and fade. Decoration only: nothing of it is saved, and it heeds
/// the desktop's wish for no animations by not playing. It asks nothing of the queue while it rests.
///
/// Everything is in display space; times are seconds.
class SorrelBurst {
 public:
  /// One image of the shower, fixed when it begins.
  struct Particle {
    double x0Norm;   // where it starts, as a part of the picture's width
    double vySpeed;  // upwards, points a second
    double vx;
    double angle0;  // radians
    double omega;   // radians a second
    double delay;
    double size;  // side of the image
  };
  /// Where a particle is at a moment, and how it looks.
  struct ParticleView {
    QPointF center;
    double angle;
    double side;
    double opacity;

    /// Whatever its angle.
    [[nodiscard]] QRectF bounds() const;
  };

  static constexpr double duration = 2.4;
  static constexpr double longestDelay = 0.32;
  static constexpr double gravity = 600;  // downwards, points a second squared

  /// `repaint` hears of each part of the picture that has to be painted again.
  SorrelBurst(const EditorModel& model, std::function<void(const QRectF&)> repaint);

  [[nodiscard]] static std::vector<Particle> makeParticles(std::mt19937& random);
  /// Absent while the particle isn't on its way, and over a picture without a size.
  [[nodiscard]] static std::optional<ParticleView> particleView(const Particle& particle, double elapsed,
                                                                const QSizeF& size);

  /// On a painter of display space.
  void paint(QPainter& painter);

 private:
  void start();
  void step();
  void end();
  [[nodiscard]] std::vector<ParticleView> shown() const;
  /// The image for a painter of so many device pixels a point; null if there is none.
  [[nodiscard]] const QPixmap& picture(double scale);

  const EditorModel& model;
  const std::function<void(const QRectF&)> repaint;
  std::mt19937 random{std::random_device{}()};
  qint64 startedAt = 0;  // of the queue's clock
  std::vector<Particle> particles;
  std::vector<ParticleView> views;  // what is on the screen
  QPixmap drawn;
  platform::WorkItem starting;
  platform::WorkItem frames;
  platform::Subscription subscription;
};

}  // namespace sorrel
