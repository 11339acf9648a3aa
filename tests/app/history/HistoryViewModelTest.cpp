#include "app/capture/ClipboardService.h"
#include "tests/app/history/HistoryFixture.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMimeData>

using namespace sorrel;

namespace {

/// The desktop's browser: notes what it is asked to open.
class Pages : public QObject {
  Q_OBJECT
 public:
  Q_SLOT void open(const QUrl& url) { opened << url; }
  QList<QUrl> opened;
};

class HistoryViewModelTest : public HistoryFixture {
 protected:
  HistoryViewModelTest() {
    QDesktopServices::setUrlHandler(u"file"_s, &pages, "open");
    QGuiApplication::clipboard()->setText(u"before"_s);
    model = HistoryViewModel::create();
  }
  ~HistoryViewModelTest() override { QDesktopServices::unsetUrlHandler(u"file"_s); }

  void press() { model->handleQuillonButton({pathOf(u"a.png"_s).toUtf8()}); }
  [[nodiscard]] static bool hasCopied() { return QGuiApplication::clipboard()->mimeData()->hasUrls(); }
  [[nodiscard]] QString toast() const { return model->toast.get().value_or(QString()); }

  Pages pages;
};

TEST_F(HistoryViewModelTest, TheCompanionIsOfferedOnceAndOnlyWhereItIsMissing) {
  const QString promotion = localized(u"clipboard.quillon.promo"_s);
  const QString plain = localized(u"clipboard.copied.plain"_s);
  put(u"a.png"_s, 0);
  press();
  EXPECT_EQ(pages.opened, QList{ClipboardService::quillonPageURL()});
  EXPECT_TRUE(QFile::exists(pages.opened.front().toLocalFile())) << "a page of our own, not a dead address";
  EXPECT_EQ(toast(), promotion);
  EXPECT_FALSE(hasCopied());
  press();
  EXPECT_EQ(pages.opened.size(), 1);
  EXPECT_EQ(toast(), plain);
  EXPECT_TRUE(hasCopied());

  platform::UserDefaults::standard().remove(u"quillonPromptShown"_s);
  installCompanion();
  press();
  EXPECT_EQ(pages.opened.size(), 1);
  EXPECT_EQ(toast(), plain) << "it is there, but doesn't run";
  EXPECT_FALSE(platform::UserDefaults::standard().contains(u"quillonPromptShown"_s));
}

TEST_F(HistoryViewModelTest, EachToastStaysItsFullTime) {
  installCompanion();
  int changes = 0;
  const auto token = model->observe([&] { ++changes; });
  press();
  EXPECT_FALSE(toast().isEmpty());
  clock.advance(1000ms);
  press();
  clock.advance(1599ms);
  EXPECT_FALSE(toast().isEmpty()) << "the first one's end is not the second one's";
  clock.advance(1ms);
  EXPECT_TRUE(toast().isEmpty());
  EXPECT_EQ(changes, 3);
  press();
  model.reset();
  clock.advance(2000ms);  // a toast outlives nobody
}

TEST_F(HistoryViewModelTest, TheLockLastsAcrossLaunches) {
  EXPECT_FALSE(model->isLocked);
  for (const bool isLocked : {true, false}) {
    model->isLocked = isLocked;
    home.restart();
    EXPECT_EQ(HistoryViewModel::create()->isLocked, isLocked);
  }
}

}  // namespace

#include "HistoryViewModelTest.moc"
