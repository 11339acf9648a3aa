#pragma once

#include "app/capture/AppPaths.h"
#include "app/capture/Notifications.h"
#include "app/capture/Quillon.h"
#include "app/history/HistoryViewModel.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/MainQueue.h"
#include "platform/base/NotificationCenter.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// A home with a bottle, a clock in the test's hand, English texts.
class HistoryFixture : public testing::Test {
 protected:
  HistoryFixture() { sorrel::LocalizationManager::shared().setLanguage(sorrel::AppLanguage::en); }

  /// Puts a picture of one colour into the bottle, so many minutes old.
  void put(const QString& name, int minutesOld, const QColor& color = Qt::red) {
    QImage picture(60, 40, QImage::Format_RGB32);
    picture.fill(color);
    const QString path = pathOf(name);
    ASSERT_TRUE(picture.save(path, "PNG"));
    testing_support::setModified(path, platform::MainQueue::main().now().addSecs(-60 * minutesOld));
  }
  [[nodiscard]] static QString pathOf(const QString& name) {
    return sorrel::AppPaths::bottleDirectory().toLocalFile() + name;
  }
  void installCompanion() {
    home.write(
        u".local/share/applications/"_s + QString::fromLatin1(sorrel::Quillon::identifier) + u".desktop"_s,
        "[Desktop Entry]\n");
  }

  testing_support::ScratchHome home;
  platform::ManualClock clock{QDateTime(QDate(2026, 3, 14), QTime(12, 0), Qt::UTC)};
  std::shared_ptr<sorrel::HistoryViewModel> model;
};
