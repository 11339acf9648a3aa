#include "app/settings/LocalizationManager.h"
#include "app/shell/UpdateAlert.h"
#include "tests/support/ScratchHome.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QPushButton>
#include <QTextEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::UpdateProblem;
using platform::UpdateReport;

namespace {

/// Stands for the desktop, which opens what the buttons name.
class Opener : public QObject {
  Q_OBJECT

 public:
  Opener() {
    for (const char* scheme : {"https", "file"})
      QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "open");
  }
  ~Opener() override {
    for (const char* scheme : {"https", "file"})
      QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
  }
  QList<QUrl> opened;

 public Q_SLOTS:
  void open(const QUrl& url) { opened << url; }
};

class UpdateAlertTest : public testing::Test {
 protected:
  UpdateAlertTest() { LocalizationManager::shared().setLanguage(AppLanguage::en); }

  static QDialog* shown() {
    QDialog* found = nullptr;
    for (QWidget* const window : QApplication::topLevelWidgets())
      if (auto* const dialog = qobject_cast<QDialog*>(window); dialog && dialog->isVisible()) {
        EXPECT_FALSE(found) << "one alert at a time";
        found = dialog;
      }
    return found;
  }
  static QStringList buttons() {
    QStringList titles;
    for (const auto* button : shown()->findChildren<QPushButton*>())
      titles << button->text();
    return titles;
  }
  static void press(const QString& title) {
    for (auto* const button : shown()->findChildren<QPushButton*>())
      if (button->text() == title)
        return button->click();
    FAIL() << qPrintable(title);
  }
  static platform::Feed::Release release() {
    return {*platform::Version::parse(u"1.10"_s),
            QUrl(u"https://example.org/1.10"_s),
            {{u"en"_s, u"Faster."_s}, {u"ko"_s, u"빨라짐"_s}},
            {}};
  }

  testing_support::ScratchHome home;
  Opener opener;
  UpdateAlert alert{*platform::Version::parse(u"1.9"_s)};
};

TEST_F(UpdateAlertTest, NewsLeadToTheirPageAndTheirPackage) {
  alert.present({UpdateReport::Newer{release(), {}, {}}, true});
  EXPECT_EQ(shown()->accessibleName(), u"Sorrel 1.10 is available"_s);
  EXPECT_EQ(shown()->findChild<QTextEdit*>()->toPlainText(), u"Faster."_s);
  EXPECT_EQ(buttons(), QStringList({u"Open Page"_s, u"Later"_s}));
  press(u"Open Page"_s);
  EXPECT_EQ(std::exchange(opener.opened, {}), QList<QUrl>({QUrl(u"https://example.org/1.10"_s)}));

  LocalizationManager::shared().setLanguage(AppLanguage::ko);
  alert.present({UpdateReport::Newer{release(), u"/cache/s.deb"_s, {}}, true});
  EXPECT_EQ(shown()->findChild<QTextEdit*>()->toPlainText(), u"빨라짐"_s);
  press(u"설치…"_s);
  EXPECT_EQ(std::exchange(opener.opened, {}), QList<QUrl>({QUrl::fromLocalFile(u"/cache/s.deb"_s)}));
  alert.present({UpdateReport::Newer{release(), u"/cache/s.deb"_s, {}}, true});
  press(u"나중에"_s);
  EXPECT_TRUE(opener.opened.isEmpty());
}

TEST_F(UpdateAlertTest, NewsThatComeByThemselvesShutNoWindow) {
  alert.present({UpdateReport::Newer{release(), {}, {}}, false});
  EXPECT_TRUE(shown() && !QApplication::activeModalWidget());
  EXPECT_TRUE(shown()->testAttribute(Qt::WA_ShowWithoutActivating));
  alert.present({UpdateReport::UpToDate{}, true});
  EXPECT_EQ(QApplication::activeModalWidget(), shown()) << "in the place of the one before";
  EXPECT_EQ(shown()->accessibleName(), u"Sorrel is up to date"_s);
}

TEST_F(UpdateAlertTest, EachProblemHasItsOwnReason) {
  for (const AppLanguage language : {AppLanguage::en, AppLanguage::ko}) {
    LocalizationManager::shared().setLanguage(language);
    QStringList reasons;
    for (int problem = int(UpdateProblem::Unreachable); problem <= int(UpdateProblem::Broken); ++problem) {
      alert.present({static_cast<UpdateProblem>(problem), true});
      const QString reason = shown()->accessibleDescription();
      EXPECT_FALSE(reason.startsWith(u"updates."_s) || reasons.contains(reason)) << qPrintable(reason);
      reasons << reason;
    }
  }
}

}  // namespace

#include "UpdateAlertTest.moc"
