#include "app/settings/WatermarkPresets.h"
#include "app/settings/view/FontPicker.h"
#include "tests/app/settings/view/SettingsFixture.h"

#include <QFile>
#include <QImage>
#include <QScrollArea>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::OpenPanel;
using platform::UserDefaults;

namespace {

class WatermarkTabTest : public SettingsFixture {};

TEST_F(WatermarkTabTest, LogosAreAddedSeveralAtOnceAndRemoved) {
  QImage picture(4, 4, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(home.path(u"one.png"_s)) && picture.save(home.path(u"two.png"_s)));
  open(watermark);
  EXPECT_TRUE(text().contains(u"No logos yet"_s));
  openPanel->answer = {QUrl::fromLocalFile(home.path(u"one.png"_s)),
                       QUrl::fromLocalFile(home.path(u"gone.png"_s)),
                       QUrl::fromLocalFile(home.path(u"two.png"_s))};
  control(u"Add Logos…"_s)->click();
  EXPECT_EQ(openPanel->asked.choice, OpenPanel::Choice::Files);
  EXPECT_EQ(WatermarkPresets::all().size(), 2);
  EXPECT_EQ(log.logged.size(), 1);
  EXPECT_FALSE(text().contains(u"No logos yet"_s));
  for (int left = 1; left >= 0; --left) {
    control<QAbstractButton>(u"Delete this logo"_s)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(WatermarkPresets::all().size(), left);
  }
  EXPECT_TRUE(text().contains(u"No logos yet"_s));
  EXPECT_TRUE(QFile::exists(home.path(u"one.png"_s))) << "the copy alone went";
}

TEST_F(WatermarkTabTest, EveryLogoCanBeReached) {
  QImage picture(8, 8, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(home.path(u"logo.png"_s)));
  for (int i = 0; i < 50; ++i)
    ASSERT_TRUE(WatermarkPresets::add(QUrl::fromLocalFile(home.path(u"logo.png"_s))));
  open(watermark);
  QApplication::processEvents();
  auto* const form = view->findChild<QScrollArea*>();
  auto* const addLogo = control(u"Add Logos…"_s);
  form->ensureWidgetVisible(addLogo);
  EXPECT_EQ(addLogo->visibleRegion(), QRegion(addLogo->rect()));
  for (const auto* logo : view->findChildren<QAbstractButton*>())
    EXPECT_TRUE(logo->accessibleName() != u"Delete this logo"_s ||
                form->widget()->rect().contains(QRect(logo->mapTo(form->widget(), QPoint()), logo->size())));
}

TEST_F(WatermarkTabTest, AFontIsChosenAmongTheInstalledAndGivenUp) {
  open(watermark);
  auto* const font = dynamic_cast<FontPicker*>(control<QComboBox>(u"Font"_s));
  ASSERT_TRUE(font && font->count() > 1);
  EXPECT_EQ(font->currentText(), u"System font, bold"_s);
  choose(font, 1);
  const auto stored = [] { return UserDefaults::standard().value(SettingsKeys::watermarkFontFamily); };
  EXPECT_EQ(stored(), font->itemText(1));
  clock.run();
  control(u"Use System Font"_s)->click();
  EXPECT_EQ(stored(), QString());
  clock.run();
  EXPECT_EQ(font->currentIndex(), 0);
  store(SettingsKeys::watermarkFontFamily, u"Not Installed"_s);
  EXPECT_EQ(font->currentIndex(), -1);
  EXPECT_EQ(font->placeholderText(), u"Not Installed"_s);
}

}  // namespace
