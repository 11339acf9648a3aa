#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/recorder/Recorder.h"
#include "platform/base/MainMenu.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/Beep.h"
#include "platform/input/HotKeyService.h"
#include "platform/input/KeyboardLayout.h"
#include "platform/input/SymbolicHotKeys.h"
#include "tests/platform/input/X11Fixture.h"
#include "tests/support/Program.h"
#include "tests/support/ScratchHome.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>
#include <QVBoxLayout>

#include <linux/input-event-codes.h>

namespace KeyboardShortcuts {
namespace {

using namespace Qt::StringLiterals;
using platform::Environment;
using platform::ModifierFlag;
using testing_support::until;

/// A window with two recorders, the second of which is without a shortcut, and another control, on a real X
/// server with a window manager and the module's real services.
class RecorderTest : public ::testing::Test {
 protected:
  RecorderTest() {
    until("the window manager is there", [this] { return windowManager.output().contains("ready"); });
    Environment::provide(platform::HotKeyService::forDesktop());
    Environment::provide(platform::KeyboardLayout::forDesktop());
    Environment::provide(std::make_shared<const platform::Bell>(platform::Bell{[this] { ++beeps; }}));
    Environment::provide(
        std::make_shared<platform::SymbolicHotKeysReader>([this] { return takenByDesktop; }));
    log.emplace();  // the newest hears of all events
    name = Name(u"one"_s, standard);
    action = onKeyDown(name, [this] { ++captures; });
    status = platform::NotificationCenter::defaultCenter().addObserver(
        QString::fromLatin1(recorderActiveStatusDidChangeNotification),
        platform::NotificationCenter::Queue::PostingThread, [this](const platform::Notification& told) {
          statuses += told.userInfo.value(u"isActive"_s).toBool() ? u'+' : u'-';
        });

    auto* const rows = new QVBoxLayout(window.get());
    const auto change = [this](const std::optional<Shortcut>& shortcut) { changes << shortcut; };
    auto* const row = new Recorder(u"Capture"_s, name, change);
    auto* const second = new Recorder(u"Other"_s, Name(u"two"_s), change);
    button = new QPushButton(u"Else"_s);
    rows->addWidget(row);
    rows->addWidget(second);
    rows->addWidget(button);
    field = &row->field();
    emptyField = &second->field();
    window->setWindowTitle(u"Shortcuts"_s);
    show();
  }
  ~RecorderTest() override {
    action.end();
    window.reset();
    log->settle();
  }

  void show() {
    window->show();
    until("the window is in its place", [this] {
      const auto found = other.find(window->windowTitle());
      return found && found->area == window->geometry();
    });
    other.giveKeyboard(static_cast<quint32>(window->winId()));
    until("the window has the keyboard", [this] { return window->isActiveWindow(); });
    log->settle();
  }
  /// The window manager lets the click through when it has seen it itself.
  void click(const QPoint& point) {
    hand.moveTo(point.x(), point.y());
    hand.clickButton(1);
  }
  void click(const QWidget* widget) { click(widget->mapToGlobal(widget->rect().center())); }
  void record(RecorderCocoa* recorder) {
    click(recorder);
    until("it records", [&] { return recorder->isRecording(); });
    log->settle();
    EXPECT_TRUE(other.isKeyboardGrabbed());
    EXPECT_TRUE(isPaused());
  }
  void press(const std::vector<int>& keys) {
    for (const int key : keys)
      hand.pressKey(key);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
      hand.releaseKey(*key);
    log->settle();
  }
  /// Recording is over: no grab is left, and the hot keys work.
  void expectOver(const char* how) {
    SCOPED_TRACE(how);
    log->settle();
    EXPECT_FALSE(isPaused());
    EXPECT_FALSE(other.isKeyboardGrabbed());
    EXPECT_EQ(std::exchange(statuses, {}), u"+-"_s);
    captures = 0;
    const auto shortcut = getShortcut(name);
    press(shortcut == standard ? std::vector{KEY_LEFTALT, KEY_LEFTSHIFT, KEY_S} : recordedKeys);
    EXPECT_EQ(captures, 1);
  }
  /// The alert that is up; answered by the button with that text.
  void answer(const QString& text) {
    const QWidget* const alert = QApplication::activeModalWidget();
    ASSERT_TRUE(alert);
    // Which the window manager has to know, too: it then gives the keyboard on to another window.
    until("the alert has the keyboard",
          [&] { return alert->isActiveWindow() && other.activeWindow() == alert->winId(); });
    for (auto* const candidate : alert->findChildren<QPushButton*>())
      if (candidate->text() == text)
        candidate->click();
    until("the window has the keyboard again", [this] { return window->isActiveWindow(); });
    log->settle();
  }

  const testing_support::ScratchHome home;
  const Shortcut standard{Key::s, ModifierFlag::Option | ModifierFlag::Shift};
  const Shortcut recorded{Key::p, ModifierFlag::Control | ModifierFlag::Option};
  const std::vector<int> recordedKeys{KEY_LEFTCTRL, KEY_LEFTALT, KEY_P};
  std::vector<platform::SymbolicHotKey> takenByDesktop;
  Name name;
  platform::Subscription action, status;
  int beeps = 0;
  int captures = 0;
  QString statuses;
  QList<std::optional<Shortcut>> changes;
  testing_support::Program windowManager{
      u"openbox --sm-disable --startup"_s.split(u' ') + QStringList{u"echo ready"_s},
      QProcessEnvironment::systemEnvironment()};
  std::optional<testing_support::EventLog> log;
  testing_support::XTestInput hand{testing_support::privateDisplay()};
  testing_support::Screen other{testing_support::privateDisplay()};
  std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
  QPushButton* button = nullptr;
  RecorderCocoa* field = nullptr;
  RecorderCocoa* emptyField = nullptr;
};

TEST_F(RecorderTest, RecordsWhatIsPressedThoughTheProgramAndOthersWaitForIt) {
  EXPECT_FALSE(field->hasFocus() || emptyField->hasFocus()) << "nothing records by itself";
  record(emptyField);
  press({KEY_LEFTALT, KEY_F4});
  EXPECT_EQ(emptyField->text(), u"\u2325F4"_s) << "which would close the window";
  EXPECT_TRUE(window->isVisible());
  button->setShortcut(Qt::CTRL | Qt::ALT | Qt::Key_P);
  int clicks = 0;
  QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
  record(emptyField);
  press({KEY_LEFTALT, KEY_LEFTSHIFT, KEY_S});
  EXPECT_EQ(changes.last(), std::optional(standard)) << "its own hot key, which does nothing now";
  EXPECT_EQ(captures, 0);
  record(field);
  press(recordedKeys);
  EXPECT_EQ(changes.last(), std::optional(recorded));
  EXPECT_EQ(getShortcut(name), recorded);
  EXPECT_EQ(field->text(), u"\u2303\u2325P"_s);
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(statuses, u"+-+-+-"_s);
}

TEST_F(RecorderTest, EveryWayOutFreesTheKeyboardAndTheHotKeys) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Escape", [this] { press({KEY_ESC}); }},
      {"a click elsewhere in the window", [this] { click(window->mapToGlobal(QPoint(3, 3))); }},
      {"a click on what takes no focus, as a desktop's bar",
       [this] {
         other.openWindow(u"Bar"_s, {10, 10}, QImage(50, 20, QImage::Format_RGB32),
                          testing_support::WindowKind::Menu);
         click(QPoint(20, 20));
       }},
      {"the field goes", [this] { field->hide(); }},
      {"the window goes",
       [this] {
         window->hide();
         until("it hasn't the keyboard", [] { return !QGuiApplication::focusWindow(); });
       }},
      {"another window of the program",
       [this] {
         QWidget second;
         second.show();
         second.activateWindow();
         until("it has the keyboard", [&] { return second.isActiveWindow(); });
       }},
      {"another program",
       [this] {
         const auto foreign = other.openWindow(u"Other"_s, {400, 300}, QImage(50, 50, QImage::Format_RGB32));
         other.giveKeyboard(foreign);
         until("it has the keyboard", [this] { return !window->isActiveWindow(); });
         EXPECT_FALSE(field->isRecording());
         other.closeWindow(foreign);
       }},
      {"it is recorded", [this] { press(recordedKeys); }},
  };
  int presses = 0;
  const platform::PointerButtons others([&](platform::PointerButtons::Change) { ++presses; });
  for (const auto& [how, leave] : ways) {
    record(field);
    leave();
    until(how, [this] { return !field->isRecording(); });
    expectOver(how);
    field->show();
    show();
    EXPECT_FALSE(field->isRecording()) << how << ": it doesn't begin by itself";
  }
  EXPECT_EQ(changes, QList({std::optional(recorded)}));
  presses = 0;
  record(field);
  EXPECT_GT(presses, 0) << "who else hears of clicks still does";
  delete field;
  expectOver("the field is destroyed");
  record(emptyField);
  window.reset();
  expectOver("the window is destroyed");
}

TEST_F(RecorderTest, TabGoesThroughTheFieldsAndOn) {
  button->setFocus();
  press({KEY_TAB});
  EXPECT_TRUE(field->isRecording());
  press({KEY_LEFTSHIFT, KEY_TAB});
  EXPECT_EQ(beeps, 1);
  press({KEY_TAB});
  EXPECT_FALSE(field->isRecording());
  EXPECT_TRUE(emptyField->isRecording());
  press({KEY_TAB});
  EXPECT_TRUE(button->hasFocus());
  EXPECT_FALSE(other.isKeyboardGrabbed());
  record(field);
  press({KEY_ESC});
  press({KEY_TAB});
  EXPECT_TRUE(field->isRecording()) << "the keyboard goes on from where it was";
}

TEST_F(RecorderTest, ClearsByKeyAndByButtonAndGoesOnRecording) {
  auto* const cross = field->findChild<QAbstractButton*>();
  record(field);
  press({KEY_BACKSPACE});
  press({KEY_DELETE});
  EXPECT_EQ(changes, QList({std::optional<Shortcut>()})) << "there is nothing left for the second";
  EXPECT_FALSE(getShortcut(name));
  EXPECT_FALSE(cross->isVisible());
  EXPECT_TRUE(field->isRecording());
  press({KEY_LEFTALT, KEY_LEFTSHIFT, KEY_S});
  EXPECT_TRUE(cross->isVisible());
  click(cross);
  until("it is empty", [this] { return !getShortcut(name); });
  EXPECT_TRUE(field->isRecording());
  name.setShortcut(recorded);
  EXPECT_EQ(field->text(), u"\u2303\u2325P"_s) << "changed elsewhere";
}

TEST_F(RecorderTest, BeepsAtWhatNoShortcutCanHaveAndSaysNothingToModifiersAndRepeats) {
  record(field);
  press({KEY_LEFTCTRL});
  press({KEY_NUMLOCK});
  press({KEY_NUMLOCK});
  EXPECT_EQ(beeps, 0);
  hand.pressKey(KEY_A);
  until("the server repeats the key", [this] { return log->presses(KEY_A) >= 3; });
  hand.releaseKey(KEY_A);
  log->settle();
  EXPECT_EQ(beeps, 1);
  press({KEY_LEFTCTRL, KEY_CALC});
  EXPECT_EQ(beeps, 2);
  testing_support::setLayout(u"us,de"_s, u"grp:alt_shift_toggle"_s);
  log->settle();
  press({KEY_LEFTALT, KEY_LEFTSHIFT});
  EXPECT_EQ(beeps, 2) << "which now switches to the second layout";
  press({KEY_RIGHTALT, KEY_LEFTCTRL, KEY_Q});
  EXPECT_EQ(beeps, 3) << "AltGr can't be had";
  testing_support::setLayout(u"us"_s);
  EXPECT_TRUE(field->isRecording());
  EXPECT_TRUE(changes.isEmpty());
}

TEST_F(RecorderTest, AKeyThatIsStillDownWhenItIsRecordedDoesNothingYet) {
  record(field);
  hand.pressKey(KEY_F9);
  until("the server repeats the key", [this] { return log->presses(KEY_F9) >= 3; });
  EXPECT_EQ(getShortcut(name), Shortcut(Key::f9, {}));
  EXPECT_EQ(captures, 0);
  hand.releaseKey(KEY_F9);
  press({KEY_F9});
  EXPECT_EQ(captures, 1);
}

TEST_F(RecorderTest, WhatTheDesktopKeepsIsForcedOrLeft) {
  takenByDesktop = {{true, recorded.carbonKeyCode(), recorded.carbonModifiers()}};
  record(field);
  press(recordedKeys);
  EXPECT_FALSE(isPaused()) << "while the alert is up";
  EXPECT_FALSE(other.isKeyboardGrabbed());
  answer(u"OK"_s);
  EXPECT_EQ(getShortcut(name), standard);
  EXPECT_TRUE(field->isRecording());
  press(recordedKeys);
  answer(u"Use Anyway"_s);
  EXPECT_EQ(getShortcut(name), recorded);
  statuses = u"+-"_s;
  expectOver("forced");
}

TEST_F(RecorderTest, WhatTheProgramsMenuHasIsRefused) {
  auto menu = std::make_shared<platform::Menu>();
  platform::MenuItem& item = menu->items.emplace_back();
  item.title = u"Print 100%1"_s;
  item.keyEquivalent = u"p"_s;
  item.keyEquivalentModifierMask = ModifierFlag::Control | ModifierFlag::Option;
  Environment::provide(std::make_shared<platform::MainMenu>([&] { return menu; }));
  record(field);
  press(recordedKeys);
  ASSERT_TRUE(QApplication::activeModalWidget());
  EXPECT_TRUE(QApplication::activeModalWidget()->accessibleName().contains(item.title));
  answer(u"OK"_s);
  EXPECT_TRUE(field->isRecording());
  EXPECT_EQ(getShortcut(name), standard);
}

TEST_F(RecorderTest, RecordsWithoutTheKeyboardsWhole) {
  ASSERT_TRUE(other.grabKeyboard());
  click(field);
  until("it records", [this] { return field->isRecording(); });
  other.ungrabKeyboard();
  press(recordedKeys);
  EXPECT_EQ(getShortcut(name), recorded);
}

}  // namespace
}  // namespace KeyboardShortcuts
