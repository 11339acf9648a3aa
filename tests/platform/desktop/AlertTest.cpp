#include "platform/desktop/Alert.h"
#include "platform/desktop/OpenPanel.h"
#include "tests/support/ScratchHome.h"

#include <QApplication>
#include <QFileDialog>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;

namespace {

class AlertTest : public testing::Test {
 protected:
  QDialog* present(QWidget* above, const QString& information = {}) {
    Alert alert;
    alert.messageText = u"Use this folder?"_s;
    alert.informativeText = information;
    alert.buttons = QStringList{u"Use & keep"_s, u"Cancel"_s};
    Alert::present(std::move(alert), above, [this](std::optional<int> button) { answers << button; });
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
  }
  static QPushButton* button(const QDialog* dialog, const QString& title) {
    for (auto* candidate : dialog->findChildren<QPushButton*>())
      if (candidate->text() == title)
        return candidate;
    return nullptr;
  }

  std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
  QList<std::optional<int>> answers;
};

TEST_F(AlertTest, TellsTheAnswerOnceItIsOffTheScreen) {
  window->show();
  using Gesture = std::function<void(QDialog*)>;
  const std::pair<Gesture, std::optional<int>> cases[] = {
      {[](QDialog* dialog) { button(dialog, u"Use && keep"_s)->click(); }, 0},
      {[](QDialog* dialog) { button(dialog, u"Cancel"_s)->click(); }, 1},
      {[](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); }, 0},
      {[](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); }, std::nullopt},
      {[](QDialog* dialog) { dialog->close(); }, std::nullopt},
  };
  for (QWidget* const above : {window.get(), static_cast<QWidget*>(nullptr)}) {
    for (const auto& [gesture, answer] : cases) {
      QDialog* const dialog = present(above);
      ASSERT_TRUE(dialog) << "the window takes input meanwhile";
      EXPECT_TRUE(answers.isEmpty());
      gesture(dialog);
      EXPECT_EQ(std::exchange(answers, {}), QList({answer}));
      EXPECT_FALSE(QApplication::activeModalWidget());
    }
  }
  present(window.get());
  window.reset();
  EXPECT_TRUE(answers.isEmpty());
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(AlertTest, StaysAsWideAsItIsWhateverThePath) {
  const QSize narrow = present(nullptr, u"/home"_s)->sizeHint();
  QApplication::activeModalWidget()->close();
  const QSize tall = present(nullptr, u"/home/"_s + QString(200, u'm'))->sizeHint();
  EXPECT_EQ(tall.width(), narrow.width());
  EXPECT_GT(tall.height(), narrow.height());
  QApplication::activeModalWidget()->close();
}

TEST_F(AlertTest, AFolderIsChosenInTheToolkitsChooserWhereTheDesktopHasNone) {
  const testing_support::ScratchHome home;
  home.write(u"pictures/one.png"_s);
  QList<QList<QUrl>> choices;
  OpenPanel panel;
  panel.choice = OpenPanel::Choice::Folder;
  panel.prompt = u"Use"_s;
  for (const bool isConfirmed : {true, false}) {
    OpenPanelPresenter::shared().present(panel, *window,
                                         [&](const QList<QUrl>& chosen) { choices << chosen; });
    auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->labelText(QFileDialog::Accept), u"Use"_s);
    dialog->setDirectory(home.path());
    dialog->selectFile(home.path(u"pictures"_s));
    QTest::keyClick(dialog, isConfirmed ? Qt::Key_Return : Qt::Key_Escape);
  }
  EXPECT_EQ(choices, QList<QList<QUrl>>({{QUrl::fromLocalFile(home.path(u"pictures"_s))}, {}}));

  panel.choice = OpenPanel::Choice::Files;
  panel.contentTypes = QStringList{u"image/*"_s};
  panel.contentsTitle = u"Pictures"_s;
  OpenPanelPresenter::shared().present(panel, *window, [](const auto&) {});
  const QString filter = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())->nameFilters().first();
  EXPECT_TRUE(filter.startsWith(u"Pictures (*"_s) && filter.contains(u" *.png "_s) &&
              filter.contains(u" *.PNG "_s) && !filter.contains(u"*.txt"_s))
      << qPrintable(filter);
}

}  // namespace
