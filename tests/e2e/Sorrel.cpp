#include "tests/e2e/Sorrel.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int altShift = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;

const QString storePath = u".config/Sorrel/defaults.json"_s;

QJsonObject readStore(const Desktop& desktop) {
  QFile file(desktop.home(storePath));
  return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

std::vector<ScreenWindow> windowsOf(Desktop& desktop) {
  std::vector<ScreenWindow> windows = desktop.screen().windows();
  std::erase_if(windows, [](const ScreenWindow& window) {
    return !window.className.contains(u"sorrel", Qt::CaseInsensitive);
  });
  return windows;
}

/// Whether there is something of the bottle's warm colours. Until then the program, too, may not know where
/// in the tray its icon is.
bool isIconDrawn(const QImage& picture) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (const QRgb pixel = picture.pixel(x, y); qRed(pixel) > qBlue(pixel) + 60)
        return true;
    }
  }
  return false;
}

}  // namespace

Sorrel::Sorrel(Desktop& home, const QString& path, const QStringList& arguments)
    : desktop(home), process(home.start(QStringList{path} + arguments)) {
  until("Sorrel's last hot key is there",
        [this] { return !process->isRunning() || desktop.screen().isKeyGrabbed(KEY_F, altShift); });
  if (!process->isRunning())
    throw std::runtime_error("Sorrel has ended at once: " + process->errors().toStdString());
}

QString Sorrel::built() {
  return qEnvironmentVariable("SORREL_PROGRAM", QStringLiteral(E2E_BUILD_DIR "/bin/sorrel"));
}

void Sorrel::store(Desktop& desktop, const QString& key, const QJsonValue& value) {
  QJsonObject values = readStore(desktop);
  values.insert(key, value);
  desktop.write(storePath, QJsonDocument(values).toJson());
}

QJsonValue Sorrel::stored(const Desktop& desktop, const QString& key) {
  return readStore(desktop).value(key);
}

QString Sorrel::putPicture(Desktop& desktop, const QString& name, const QImage& picture) {
  const QString path = desktop.write(u"Documents/Sorrel bottle/"_s + name, {});
  if (!picture.save(path, "PNG"))
    throw std::runtime_error("can't write " + path.toStdString());
  return path;
}

void Sorrel::pressHotKey(int evdevCode) {
  XTestInput& input = desktop.input();
  input.pressKey(KEY_LEFTALT);
  input.pressKey(KEY_LEFTSHIFT);
  input.tapKey(evdevCode);
  input.releaseKey(KEY_LEFTSHIFT);
  input.releaseKey(KEY_LEFTALT);
}

bool Sorrel::isSelecting() {
  return desktop.screen().find(u"screencapture"_s).has_value();
}

void Sorrel::beginCapture(int evdevCode) {
  pressHotKey(evdevCode);
  waitUntilSelecting();
}

void Sorrel::waitUntilSelecting() {
  until("the selection is there", [this] {
    return isSelecting() && desktop.screen().isKeyboardGrabbed() && desktop.screen().isPointerGrabbed();
  });
}

void Sorrel::drag(const QRect& area) {
  XTestInput& input = desktop.input();
  input.moveTo(area.left(), area.top());
  input.pressButton(1);
  input.moveTo(area.center().x(), area.center().y());
  input.moveTo(area.right(), area.bottom());
  input.releaseButton(1);
}

QString Sorrel::waitForCapture(const QStringList& before) {
  QStringList added;
  until("the capture is in the bottle", [&] {
    added = bottle();
    for (const QString& name : before)
      added.removeAll(name);
    // The tool writes under another, hidden name first.
    added.removeIf([](const QString& name) { return name.startsWith(u'.'); });
    return !added.isEmpty() && !isSelecting();
  });
  return bottlePath() + u'/' + added.first();
}

QString Sorrel::capture(const QRect& area) {
  const QStringList before = bottle();
  beginCapture(KEY_S);
  drag(area);
  return waitForCapture(before);
}

void Sorrel::cancel() {
  desktop.input().tapKey(KEY_ESC);
  until("the selection is gone", [this] { return !isSelecting(); });
}

QString Sorrel::bottlePath() const {
  const QString chosen = stored(desktop, u"storageDirectory"_s).toString();
  return chosen.isEmpty() ? desktop.home(u"Documents/Sorrel bottle"_s)
                          : QString(chosen).replace(u'~', desktop.home());
}

QStringList Sorrel::bottle() const {
  return QDir(bottlePath()).entryList({u"*.png*"_s}, QDir::Files | QDir::Hidden, QDir::Name);
}

QRect Sorrel::statusItem() {
  QRect area;
  until("the icon is in the tray", [&] {
    const std::optional<ScreenWindow> tray = desktop.screen().find(u"trayer"_s);
    for (const ScreenWindow& window : windowsOf(desktop)) {
      if (tray && tray->area.contains(window.area))
        area = window.area;
    }
    return !area.isNull() && isIconDrawn(desktop.screen().picture().copy(area));
  });
  return area;
}

QImage Sorrel::statusImage() {
  const QRect area = statusItem();
  return desktop.screen().settledPicture().copy(area);
}

QRect Sorrel::openMenu() {
  const QPoint icon = statusItem().center();
  desktop.input().moveTo(icon.x(), icon.y());
  desktop.input().clickButton(3);
  until("the menu is open", [this] { return isMenuOpen(); });
  return windowsOf(desktop).back().area;
}

bool Sorrel::isMenuOpen() {
  const std::vector<ScreenWindow> windows = windowsOf(desktop);
  // Higher than the icon in the tray, narrower than the history.
  return !windows.empty() && windows.back().area.height() > 60 && windows.back().area.width() < 400;
}

}  // namespace e2e
