#include "app/editor/view/SorrelBurst.h"
#include "platform/base/MainQueue.h"
#include "tests/app/editor/model/DocumentFixture.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QRegion>

using namespace sorrel;
using namespace std::chrono_literals;
using platform::ManualClock;

namespace {

class BurstTest : public DocumentFixture {
 protected:
  void trigger() { model->maybeTriggerBurst(QStringLiteral("sorrel")); }
  /// The shower as it stands, on nothing.
  [[nodiscard]] QImage painted() {
    QImage image(400, 300, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    burst.paint(painter);
    return image;
  }
  [[nodiscard]] bool isShown() {
    const QImage image = painted();
    return image != plain(image.size(), Qt::transparent).convertToFormat(image.format());
  }

  ManualClock clock;
  const std::unique_ptr<EditorModel> model = open(QSize(400, 300));
  QRegion repainted;
  SorrelBurst burst{*model, [this](const QRectF& part) { repainted |= part.toAlignedRect(); }};
};

TEST_F(BurstTest, ParticlesRiseFallAndFade) {
  const SorrelBurst::Particle late{
      .x0Norm = 0.5, .vySpeed = 360, .vx = 10, .angle0 = 1, .omega = 2, .delay = 0.32, .size = 40};
  const auto at = [&](double t) { return SorrelBurst::particleView(late, late.delay + t, QSizeF(400, 300)); };
  EXPECT_FALSE(at(-0.01));
  EXPECT_EQ(at(0)->center, QPointF(200, 300)) << "on the bottom edge";
  EXPECT_NEAR(at(0.06)->opacity, 0.5, 1e-9);
  const auto top = at(0.6);
  EXPECT_NEAR(top->center.y(), 300 - 108, 1e-9);
  EXPECT_NEAR(top->center.x(), 206, 1e-9);
  EXPECT_NEAR(top->angle, 2.2, 1e-9);
  EXPECT_EQ(at(1.72)->opacity, 1) << "not yet fading: its life is 2.08";
  EXPECT_NEAR(at(1.905)->opacity, 0.5, 1e-9);
  EXPECT_EQ(at(2.1)->opacity, 0);
  EXPECT_FALSE(at(2.41));
  EXPECT_FALSE(SorrelBurst::particleView(late, 1, QSizeF(0, 300)));
}

TEST_F(BurstTest, EachShowerIsDrawnAnewWithinItsRanges) {
  std::mt19937 random(3);
  const auto particles = SorrelBurst::makeParticles(random);
  ASSERT_EQ(particles.size(), 48U);
  for (std::size_t i = 0; i < particles.size(); ++i) {
    const auto& one = particles[i];
    EXPECT_EQ(one.vySpeed >= 640, i % 6 == 0) << i;
    EXPECT_TRUE(one.vySpeed >= 360 && one.vySpeed <= 780 && one.x0Norm >= 0.08 && one.x0Norm <= 0.92 &&
                std::abs(one.vx) <= 70 && std::abs(one.omega) <= 4 && one.delay >= 0 && one.delay <= 0.32 &&
                one.size >= 32 && one.size <= 60);
  }
  EXPECT_NE(SorrelBurst::makeParticles(random)[0].vx, particles[0].vx);
}

TEST_F(BurstTest, ANewTriggerStartsItFromTheBeginningAndItsEndLeavesNoWork) {
  clock.advance(1s);
  EXPECT_FALSE(isShown());
  trigger();
  clock.advance(1s);
  EXPECT_TRUE(isShown());
  trigger();
  clock.advance(50ms);
  clock.advance(1500ms);
  EXPECT_TRUE(isShown()) << "2.5 s after the first trigger, 1.5 after the second";
  clock.advance(2s);
  EXPECT_FALSE(isShown());
  EXPECT_EQ(clock.pending(), 0);
}

TEST_F(BurstTest, ItTellsOfEveryPixelThatChanges) {
  trigger();
  QImage before = painted();
  int changes = 0;
  for (int frame = 0; frame < 180; ++frame) {
    repainted = {};
    clock.advance(16ms);
    const QImage after = painted();
    for (int y = 0; y < after.height(); ++y)
      for (int x = 0; x < after.width(); ++x)
        if (after.pixel(x, y) != before.pixel(x, y)) {
          ++changes;
          ASSERT_TRUE(repainted.contains(QPoint(x, y))) << frame << ": " << x << ", " << y;
        }
    before = after;
  }
  EXPECT_GT(changes, 10000);
}

TEST_F(BurstTest, NothingMovesWhereNoMotionIsWanted) {
  struct Still : QProxyStyle {
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
      return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }
  };
  QApplication::setStyle(new Still);
  trigger();
  clock.advance(500ms);
  EXPECT_FALSE(isShown());
  EXPECT_EQ(clock.pending(), 0);
  QApplication::setStyle(new QProxyStyle);
}

}  // namespace
