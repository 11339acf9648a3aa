#include "app/history/HistoryPanelController.h"
#include "app/history/PanelGeometry.h"
#include "app/history/ThumbnailLoader.h"
#include "platform/desktop/FocusablePanel.h"
#include "tests/app/history/HistoryFixture.h"
#include "tests/support/Waiting.h"

#include <QApplication>
#include <QDir>
#include <QThread>

#include <malloc.h>

using namespace sorrel;

namespace {

class HistoryPanelTest : public HistoryFixture {
 protected:
  HistoryPanelTest() {
    model = HistoryViewModel::create();
    controller = std::make_unique<HistoryPanelController>(model, loader);
  }
  void loseKey() {
    QEvent lost(QEvent::WindowDeactivate);
    QApplication::sendEvent(controller->window(), &lost);
  }
  static void settle() {
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
  }

  ThumbnailLoader loader;
  std::unique_ptr<HistoryPanelController> controller;
};

TEST_F(HistoryPanelTest, TheLockDecidesWhenTheKeyboardIsLost) {
  put(u"a.png"_s, 0);
  controller->close();
  EXPECT_FALSE(controller->isVisible());
  controller->show(std::nullopt);
  EXPECT_TRUE(controller->isVisible());
  EXPECT_EQ(model->screenshots->size(), 1u) << "the list is fresh";
  loseKey();
  EXPECT_FALSE(controller->isVisible());

  model->isLocked = true;
  controller->show(std::nullopt);
  loseKey();
  EXPECT_TRUE(controller->isVisible());
  model->isLocked = false;
  EXPECT_TRUE(controller->isVisible()) << "the lock counts only when the keyboard goes";
  loseKey();
  EXPECT_FALSE(controller->isVisible());
}

TEST_F(HistoryPanelTest, ThumbnailsOfWhatTheListHasLostAreForgotten) {
  put(u"kept.png"_s, 0);
  put(u"lost.png"_s, 1);
  controller->show(std::nullopt);
  controller->close();
  const std::vector<Screenshot> before = model->screenshots;
  const auto isKept = [&](size_t row) { return loader.cached(before[row].url(), 320).has_value(); };
  std::vector<ThumbnailLoader::Request> requests;
  for (const Screenshot& shot : before)
    requests.push_back(loader.thumbnail(shot.url(), 320, [](const QImage&) {}));
  testing_support::until("the thumbnails are there", [&] {
    clock.advance(0ms);
    return isKept(0) && isKept(1);
  });

  // The file stays, so that it isn't its date that is missed.
  model->screenshots = {before.front()};
  model->screenshots = {before.front()};
  clock.advance(0ms);
  EXPECT_TRUE(isKept(0));
  EXPECT_FALSE(isKept(1));
}

TEST_F(HistoryPanelTest, AThousandOpeningsLeaveNothingBehind) {
  for (int i = 0; i < 12; ++i)
    put(u"%1.png"_s.arg(i), i);
  const auto threads = [] {
    return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
  };
  const auto openAndClose = [this](int times) {
    for (int i = 0; i < times; ++i) {
      controller->show(std::nullopt);
      QApplication::processEvents();
      clock.advance(20ms);
      controller->close();
      settle();
    }
    clock.advance(20s);
  };
  openAndClose(400);  // the toolkit's caches fill slowly
  const auto widgets = QApplication::allWidgets().size();
  const auto windows = QApplication::topLevelWindows().size();
  const int pending = clock.pending();
  const auto before = mallinfo2().uordblks;
  openAndClose(600);
  EXPECT_EQ(QApplication::allWidgets().size(), widgets);
  EXPECT_EQ(QApplication::topLevelWindows().size(), windows);
  EXPECT_EQ(clock.pending(), pending) << "no work waits for panels that are gone";
  EXPECT_LE(threads(), 2 + QThread::idealThreadCount());
  EXPECT_LT(mallinfo2().uordblks, before + 15'000) << "not even 25 bytes an opening";
}

}  // namespace
