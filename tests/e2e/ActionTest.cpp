// What the hot keys do is done for a terminal and for other programs, too.

#include "tests/e2e/Editor.h"
#include "tests/e2e/Panel.h"
#include "tests/e2e/Settings.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QStringList allActions{u"capture"_s, u"capture-and-edit"_s, u"capture-to-clipboard"_s,
                             u"history"_s, u"settings"_s,         u"quit"_s};
const QRect area(100, 120, 60, 40);

/// A call as the desktop makes it.
QStringList busCall(const QString& method, const QStringList& arguments) {
  return u"gdbus call --session --dest org.sorrel.Sorrel --object-path /org/sorrel/Sorrel --method"_s.split(
             u' ') +
         QStringList{u"org.freedesktop.Application."_s + method} + arguments;
}

QStringList busCallOf(const QString& action) {
  return busCall(u"ActivateAction"_s, {action, u"[]"_s, u"{}"_s});
}

/// Takes part as the user until the action has come to its end, and leaves nothing of it on the screen.
void expectItIsDone(const QString& action, Desktop& desktop, Sorrel& sorrel) {
  SCOPED_TRACE(action.toStdString());
  const QStringList before = sorrel.bottle();
  if (action.startsWith(u"capture"_s)) {
    sorrel.waitUntilSelecting();
    sorrel.drag(area);
  }
  Panel panel(desktop, sorrel);
  const Editor editor(desktop);
  Settings settings(desktop, sorrel);
  if (action == u"capture"_s) {
    sorrel.waitForCapture(before);
    until("the history is open", [&] { return panel.window().has_value(); });
    panel.close();
  } else if (action == u"capture-and-edit"_s) {
    sorrel.waitForCapture(before);
    (void)editor.waitUntilOpen();
    desktop.input().tapKey(KEY_ESC);
    editor.waitUntilClosed();
  } else if (action == u"capture-to-clipboard"_s) {
    until("the tool has ended", [&] { return childrenOf(sorrel.program().processId()).isEmpty(); });
    const QByteArray pasted = desktop.run(u"xclip -selection clipboard -t image/png -o"_s.split(u' '));
    EXPECT_EQ(QImage::fromData(pasted).size(), area.size());
    EXPECT_EQ(sorrel.bottle(), before);
  } else if (action == u"history"_s) {
    panel.waitUntilOpen();  // below the icon, also where both have just come
    panel.close();
  } else if (action == u"settings"_s) {
    settings.waitUntilOpen();
    settings.close();
  } else {
    EXPECT_EQ(sorrel.program().waitForEnd(), 0);
  }
}

TEST(Actions, ReachTheProgramThatRuns) {
  Desktop desktop;
  for (const bool isByBus : {false, true}) {
    Sorrel sorrel(desktop);
    if (isByBus)
      until("it is on the bus", [&] {
        return desktop.start(busCall(u"Open"_s, {u"[]"_s, u"{}"_s}))->waitForEnd() == 0;
      });
    for (const QString& action : allActions) {
      desktop.run(isByBus ? busCallOf(action) : QStringList{Sorrel::built(), u"--"_s + action});
      expectItIsDone(action, desktop, sorrel);
    }
  }
}

TEST(Actions, StartTheProgramWhereItDoesNotRun) {
  for (const QString& action : allActions) {
    Desktop desktop;
    if (action == u"quit"_s) {
      desktop.run({Sorrel::built(), u"--quit"_s});
      continue;
    }
    Sorrel sorrel(desktop, Sorrel::built(), {u"--"_s + action});
    expectItIsDone(action, desktop, sorrel);
    desktop.run({Sorrel::built(), u"--quit"_s});
    // At once: the one that is going hears no more, and the next takes its place.
    Sorrel next(desktop, Sorrel::built(), {u"--history"_s});
    expectItIsDone(u"history"_s, desktop, next);
  }
}

TEST(Actions, PicturesOpenOverTheBusAndTheRestIsLogged) {
  Desktop desktop;
  const QString picture = Sorrel::putPicture(desktop, u"a b.png"_s, randomPicture({300, 200}, 1));
  const QString text = desktop.write(u"notes.txt"_s, "no picture");
  Sorrel sorrel(desktop);
  const QString uris = QStringLiteral("['https://example.org/a.png', 'file://%1', 'file://%2']")
                           .arg(text, QString(picture).replace(u' ', u"%20"_s));
  until("it is called", [&] {
    return desktop.start(busCall(u"Open"_s, {uris, u"{}"_s}))->waitForEnd() == 0;
  });
  (void)Editor(desktop).waitUntilOpen();
  until("the rest is logged", [&] {
    const QByteArray said = sorrel.program().errors();
    return said.contains("https://example.org/a.png") && said.contains("notes.txt");
  });
}

TEST(Actions, ATerminalLearnsWhatWasWrongWithoutADisplay) {
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.remove(u"WAYLAND_DISPLAY"_s);
  environment.remove(u"DISPLAY"_s);
  const struct {
    QString option;
    int status;
    QByteArray output;
    QByteArray errors;
  } rows[] = {{u"--version"_s, 0, "Sorrel ", ""},
              {u"--help"_s, 0, "--capture-to-clipboard", ""},
              {u"--explode"_s, 64, "", "--explode"}};
  for (const auto& row : rows) {
    Program program({Sorrel::built(), row.option}, environment);
    EXPECT_EQ(program.waitForEnd(), row.status);
    const QByteArray output = program.output(), errors = program.errors();
    EXPECT_TRUE(output.contains(row.output) && output.isEmpty() == row.output.isEmpty()) << output.data();
    EXPECT_TRUE(errors.contains(row.errors) && errors.isEmpty() == row.errors.isEmpty() &&
                errors.count('\n') <= 1)
        << errors.data();
  }
}

}  // namespace
}  // namespace e2e
