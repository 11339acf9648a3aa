#include "platform/base/Locations.h"
#include "platform/desktop/ColorSampler.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Screen.h"
#include "tests/support/Waiting.h"
#include "tests/support/XTestInput.h"
#include "tests/support/XvfbServer.h"

#include <QScopeGuard>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::LogCapture;

namespace {

class ColorSamplerTest : public testing::Test {
 protected:
  /// A handler that adds what it is given to `answers`.
  ColorSampler::Handler handler() {
    return [this](std::optional<quint32> color) { answers << color; };
  }

  using Answers = QList<std::optional<quint32>>;
  Answers answers;
  testing_support::ScratchHome home;
  ManualClock clock;
  QString launchError;
  struct Run {
    Task task;
    std::function<void(const TaskAnswer&)> end;
    std::weak_ptr<void> owner;
  };
  QList<Run> runs;
  const std::shared_ptr<TaskAsker> replaced =
      Environment::provide(std::make_shared<TaskAsker>([this](const Task& task, auto onAnswer) {
        const OwnedTask owned = std::make_shared<int>();
        runs << Run{task, onAnswer, owned};
        return launchError.isEmpty() ? Result<OwnedTask>(owned) : Error{launchError};
      }));
};

TEST_F(ColorSamplerTest, GivesTheColorThatTheToolNames) {
  ColorSampler sampler;
  sampler.show(handler());
  ASSERT_EQ(runs.size(), 1);
  EXPECT_EQ(runs[0].task.executable, Locations::systemTool(u"/usr/sbin/screencapture"_s));
  EXPECT_EQ(runs[0].task.arguments, QStringList({u"--pick-color"_s}));
  runs[0].end({true, "#0A80FF\n"});
  EXPECT_EQ(answers, Answers({0x0a80ff}));
  sampler.show(handler());
  runs[1].end({false, "#0A80FF\n"});
  EXPECT_EQ(answers, Answers({0x0a80ff, std::nullopt})) << "it can be shown again, and was cancelled";
}

TEST_F(ColorSamplerTest, TakesNothingElseForAColor) {
  EXPECT_EQ(sampledColor("#000000\n"), 0u);
  for (const QByteArray other : {"", "#0A80FF", "0A80FF\n", "#0A80F\n", "#0A80FG\n", "#0A80FF\n\n",
                                 "\n#0A80FF\n", "#0A80FF0\n", "# A80FF\n", "#+A80FF\n", "#0a80ff\n"})
    EXPECT_FALSE(sampledColor(other)) << other.constData();
}

TEST_F(ColorSamplerTest, OneIsOnTheScreenAtATime) {
  ColorSampler sampler;
  sampler.show(handler());
  sampler.show(handler());
  EXPECT_EQ(runs.size(), 1);
  EXPECT_TRUE(answers.isEmpty()) << "the answer comes in a turn of its own";
  clock.run();
  EXPECT_EQ(answers, Answers({std::nullopt}));
  runs[0].end({true, "#123456\n"});
  EXPECT_EQ(answers, Answers({std::nullopt, 0x123456}));
}

TEST_F(ColorSamplerTest, WithoutTheToolThereIsNoColor) {
  const LogCapture log;
  launchError = u"no such thing"_s;
  ColorSampler sampler;
  sampler.show(handler());
  EXPECT_EQ(log.logged, QStringList({u"Sorrel screencapture launch failed: no such thing"_s}));
  EXPECT_TRUE(answers.isEmpty());
  clock.run();
  EXPECT_EQ(answers, Answers({std::nullopt}));
}

TEST_F(ColorSamplerTest, TheToolGoesWithItsSampler) {
  auto sampler = std::make_unique<ColorSampler>();
  sampler->show(handler());
  sampler->show(handler());
  sampler.reset();
  EXPECT_TRUE(runs[0].owner.expired());
  clock.run();
  EXPECT_TRUE(answers.isEmpty());

  // Also when it goes in the handler.
  sampler = std::make_unique<ColorSampler>();
  sampler->show([&](auto) { sampler.reset(); });
  runs[1].end({true, "#123456\n"});
  EXPECT_FALSE(sampler);
  EXPECT_TRUE(runs[1].owner.expired());
}

TEST(ColorSampler, PicksFromTheRealScreen) {
  using namespace testing_support;
  XvfbServer server(600, 400);
  Screen screen(server.display());
  XTestInput hand(server.display());
  const QImage picture = randomPicture({600, 400}, 3);
  screen.paintRoot(picture);
  const auto restoring = qScopeGuard(
      [before = qgetenv("DISPLAY")] { before.isNull() ? qunsetenv("DISPLAY") : qputenv("DISPLAY", before); });
  qputenv("DISPLAY", QByteArray::fromStdString(server.display()));
  const auto isShown = [&] { return screen.find(u"screencapture"_s).has_value(); };

  auto sampler = std::make_unique<ColorSampler>();
  std::optional<quint32> picked;
  sampler->show([&](std::optional<quint32> color) { picked = color; });
  until("the magnifier is there", isShown);
  hand.moveTo(300, 200);
  hand.clickButton(1);
  until("the color is there", [&] { return picked.has_value(); });
  EXPECT_EQ(picked, picture.pixel(300, 200) & 0xffffff);

  sampler->show([](auto) { FAIL(); });
  until("the magnifier is there", isShown);
  sampler.reset();
  until("it has gone with its sampler", [&] { return !isShown() && !screen.isPointerGrabbed(); });
}

}  // namespace
