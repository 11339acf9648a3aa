// Uses the real program at random for a while, and sees whether what it holds stays level:
//
//   soak MINUTES SEED [ACTION]
//
// With ACTION, the beginning of an action's name, does nothing else, which tells whose memory grows.
// Prints a table of what it measured as it goes, and at the end what was done how often. Ends with status 1
// where the program ended, complained, kept a grab, or came to hold more and more.

#include "platform/base/Log.h"
#include "tests/e2e/Editor.h"
#include "tests/e2e/Settings.h"
#include "tests/support/Files.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <linux/input-event-codes.h>
#include <map>
#include <random>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

struct Figures {
  double minutes = 0;
  qint64 memory = 0;  // KiB
  qint64 descriptors = 0;
  qint64 threads = 0;
  qint64 children = 0;
};

qint64 statusLine(qint64 process, const QByteArray& name) {
  for (const QByteArray& line : contentsOf(u"/proc/%1/status"_s.arg(process)).split('\n'))
    if (line.startsWith(name + ':'))
      return line.mid(name.size() + 1).simplified().split(' ').first().toLongLong();
  return 0;
}

class Soak {
 public:
  Soak(unsigned seed, const QByteArray& only) : random(seed), editor(desktop), onlyAction(only) {
    Sorrel::store(desktop, u"autoDeleteDays"_s, 0);
    for (const auto* const name : {u"a.png", u"b.png", u"c.png"})
      Sorrel::putPicture(desktop, QString::fromUtf16(name), randomPicture({300, 200}, seed));
    desktop.screen().paintRoot(randomPicture(desktop.screen().size(), seed));
    program.emplace(desktop);
    panel.emplace(desktop, *program);
  }

  bool run(double minutes) {
    std::printf(
        "| Minutes | Memory, MiB | Descriptors | Threads | Children |\n| ---: | ---: | ---: | ---: | ---: "
        "|\n");
    QElapsedTimer since;
    since.start();
    const auto elapsed = [&] { return static_cast<double>(since.elapsed()) / 60'000; };
    double due = 0;
    while (elapsed() < minutes && program->program().isRunning()) {
      doSomething();
      if (elapsed() >= due) {
        measure(elapsed());
        due = elapsed() + std::max(0.5, minutes / 60);
      }
    }
    return report();
  }

 private:
  int any(int from, int to) { return std::uniform_int_distribution(from, to)(random); }
  bool maybe(int percent) { return any(1, 100) <= percent; }
  QPoint anyPoint(const QRect& within) {
    return {any(within.left(), within.right()), any(within.top(), within.bottom())};
  }
  QRect anyArea() {
    const QSize size(any(20, 500), any(20, 400));
    return {anyPoint({QPoint(), desktop.screen().size() - size}), size};
  }

  void doSomething() {
    struct Action {
      const char* name;
      int weight;
      void (Soak::*act)();
    };
    static constexpr Action actions[] = {
        {"capture to the bottle", 6, &Soak::captureToBottle},
        {"capture and edit", 5, &Soak::captureAndEdit},
        {"capture to the clipboard", 4, &Soak::captureToClipboard},
        {"cancelled capture", 3, &Soak::cancelCapture},
        {"history", 6, &Soak::useHistory},
        {"edit from the history", 4, &Soak::editFromHistory},
        {"settings", 3, &Soak::useSettings},
        {"other language", 1, &Soak::changeLanguage},
        {"other tray", 1, &Soak::changeTray},
        {"compositing manager", 1, &Soak::changeCompositing},
        {"anything on the keyboard", 3, &Soak::typeAnything},
    };
    std::vector<int> weights;
    for (const Action& action : actions)
      weights.push_back(QByteArray(action.name).startsWith(onlyAction) ? action.weight : 0);
    const Action& action =
        actions[std::discrete_distribution<size_t>(weights.begin(), weights.end())(random)];
    try {
      (this->*action.act)();
      ++done[action.name];
    } catch (const std::exception& error) {
      ++missed[QByteArray(action.name) + ": " + error.what()];
    }
    comeToRest();
  }

  /// No window of the program, no selection, a bottle that doesn't grow without end.
  void comeToRest() {
    for (int turn = 0; turn < 20 && program->program().isRunning(); ++turn) {
      const auto left = desktop.screen().find(u"sorrel"_s);
      if (!program->isSelecting() && !panel->window() && !editor.window() &&
          (!left || left->area.width() < 60))
        break;
      desktop.input().tapKey(KEY_ESC);
      if (turn > 4 && left)
        desktop.screen().askToClose(left->id);
      (void)desktop.screen().settledPicture();
    }
    constexpr qsizetype most = 30;
    const QStringList bottle = program->bottle();
    for (qsizetype index = 0; index < bottle.size() - most; ++index)
      QFile::remove(program->bottlePath() + u'/' + bottle[index]);
  }

  void captureToBottle() {
    program->capture(anyArea());
    until("the history is open", [this] { return panel->window().has_value(); });
  }

  void captureAndEdit() {
    const QStringList before = program->bottle();
    program->beginCapture(KEY_D);
    program->drag(anyArea());
    program->waitForCapture(before);
    edit();
  }

  void captureToClipboard() {
    program->beginCapture(KEY_A);
    program->drag(anyArea());
    until("the selection is over", [this] { return !program->isSelecting(); });
  }

  void cancelCapture() {
    program->beginCapture(std::array{KEY_S, KEY_D, KEY_A}[static_cast<size_t>(any(0, 2))]);
    program->cancel();
  }

  /// With whatever tray there is.
  void openHistory() {
    program->pressHotKey(KEY_F);
    until("the history is open", [this] { return panel->window().has_value(); });
    (void)desktop.screen().settledPicture();
  }

  void useHistory() {
    openHistory();
    for (int turn = any(2, 12); turn > 0; --turn) {
      constexpr std::array keys{KEY_RIGHT, KEY_DOWN, KEY_LEFT,     KEY_UP,
                                KEY_HOME,  KEY_END,  KEY_PAGEDOWN, KEY_TAB};
      if (maybe(10))
        desktop.input().tapKey(KEY_DELETE);
      else if (maybe(20))
        panel->moveTo(anyPoint(panel->window().value_or(Panel::Window{0, {0, 0, 9, 9}}).frame));
      else if (maybe(10))
        editor.command(KEY_C);
      else
        desktop.input().tapKey(keys[static_cast<size_t>(any(0, keys.size() - 1))]);
    }
    (void)desktop.screen().settledPicture();
  }

  void editFromHistory() {
    if (program->bottle().isEmpty())
      return;
    openHistory();
    desktop.input().tapKey(KEY_RIGHT);
    desktop.input().tapKey(KEY_ENTER);
    edit();
  }

  void edit() {
    const QRect window = editor.waitUntilOpen().area;
    for (int turn = any(1, 8); turn > 0; --turn) {
      const auto tool = static_cast<Editor::Tool>(any(0, 3));
      editor.click(editor.toolButton(tool));
      std::vector<QPoint> way;
      for (int point = any(2, 10); point > 0; --point)
        way.push_back(anyPoint(window.adjusted(80, 80, -80, -80)));
      editor.drag(way);
      if (maybe(30))
        editor.command(KEY_Z);
      if (maybe(20))
        editor.command(maybe(50) ? KEY_EQUAL : KEY_0);
    }
    if (maybe(50))
      editor.click(editor.saveButton());
    else
      desktop.input().tapKey(KEY_ESC);
  }

  void useSettings() {
    openHistory();
    Settings settings(desktop, *program);
    settings.openByKeys();
    for (int turn = any(1, 5); turn > 0; --turn)
      settings.pressWithControl(KEY_TAB);
    (void)desktop.screen().settledPicture();
    settings.close();
  }

  void changeLanguage() { Sorrel::store(desktop, u"appLanguage"_s, maybe(50) ? u"ko"_s : u"en"_s); }

  void changeTray() {
    constexpr std::array trays{Tray::XEmbedAtTop, Tray::XEmbedAtBottom, Tray::StatusNotifier, Tray::None};
    desktop.changeTray(trays[static_cast<size_t>(any(0, trays.size() - 1))]);
  }

  void changeCompositing() {
    if (std::exchange(isComposited, !isComposited))
      desktop.stopCompositor();
    else
      desktop.startCompositor();
  }

  /// Into whatever window of the program is open.
  void typeAnything() {
    if (maybe(50))
      openHistory();
    else if (!program->bottle().isEmpty())
      editFromHistory();
    for (int turn = any(10, 60); turn > 0; --turn) {
      const int key = any(KEY_1, KEY_SLASH);
      if (key == KEY_LEFTCTRL || key == KEY_LEFTSHIFT)
        continue;
      if (maybe(20))
        editor.command(key == KEY_Q || key == KEY_ENTER ? KEY_Z : key);
      else
        desktop.input().tapKey(key);
    }
  }

  void measure(double minutes) {
    try {
      until("no tool of the program is left", [this] { return childrenOf(process()).isEmpty(); });
    } catch (const std::exception&) {
      // counted below
    }
    grabs += desktop.screen().isKeyboardGrabbed() || desktop.screen().isPointerGrabbed();
    const Figures now{minutes, statusLine(process(), "VmRSS"),
                      QDir(u"/proc/%1/fd"_s.arg(process()))
                          .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
                          .size(),
                      statusLine(process(), "Threads"), childrenOf(process()).size()};
    figures.push_back(now);
    std::printf("| %.1f | %.1f | %lld | %lld | %lld |\n", now.minutes, static_cast<double>(now.memory) / 1024,
                now.descriptors, now.threads, now.children);
    std::fflush(stdout);
  }

  /// Whether a figure is higher in the last quarter than in the third by more than so many parts of it: the
  /// first half is for what fills once, as fonts do. The lowest counts, since a window may just have closed.
  [[nodiscard]] bool grows(qint64 Figures::*figure, double tolerance) const {
    const size_t quarter = figures.size() / 4;
    if (quarter == 0)
      return false;
    const auto lowest = [&](auto from, auto to) {
      const auto less = [&](const Figures& one, const Figures& other) { return one.*figure < other.*figure; };
      return static_cast<double>((*std::min_element(from, to, less)).*figure);
    };
    const auto last = figures.end() - static_cast<std::ptrdiff_t>(quarter);
    return lowest(last, figures.end()) >
           lowest(last - static_cast<std::ptrdiff_t>(quarter), last) * (1 + tolerance);
  }

  bool report() {
    std::vector<const char*> faults;
    const QByteArray said = program->program().errors();
    if (!program->program().isRunning())
      faults.push_back("the program has ended");
    if (said.contains("Sanitizer") || said.contains("runtime error"))
      faults.push_back("a sanitizer found something");
    if (grabs > 0)
      faults.push_back("the keyboard or the pointer was held at rest");
    constexpr double littleMemory = 0.03;
    if (grows(&Figures::memory, littleMemory))
      faults.push_back("memory grows");
    if (grows(&Figures::descriptors, 0))
      faults.push_back("descriptors grow");
    if (grows(&Figures::threads, 0))
      faults.push_back("threads grow");
    if (grows(&Figures::children, 0))
      faults.push_back("tools are left behind");
    std::printf("\n| Action | Times |\n| --- | ---: |\n");
    for (const auto& [name, times] : done)
      std::printf("| %s | %d |\n", name.constData(), times);
    for (const auto& [what, times] : missed)
      std::printf("\nCame to nothing %d times: %s\n", times, what.constData());
    std::printf("\nThe program said:\n%s\n", said.constData());
    for (const char* const fault : faults)
      std::printf("FAULT: %s\n", fault);
    return faults.empty();
  }

  [[nodiscard]] qint64 process() { return program->program().processId(); }

  std::mt19937 random;
  Desktop desktop;
  Editor editor;
  QByteArray onlyAction;
  std::optional<Sorrel> program;
  std::optional<Panel> panel;
  bool isComposited = false;
  std::map<QByteArray, int> done;
  std::map<QByteArray, int> missed;
  std::vector<Figures> figures;
  int grabs = 0;
};

}  // namespace
}  // namespace e2e

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList words = QCoreApplication::arguments();
  if (words.size() < 3 || words.size() > 4) {
    platform::printLine(u"soak MINUTES SEED [ACTION]"_s);
    return 64;
  }
  return e2e::Soak(words[2].toUInt(), words.value(3).toUtf8()).run(words[1].toDouble()) ? 0 : 1;
}
