#include "platform/desktop/Pasteboard.h"

#include "platform/base/Locations.h"
#include "platform/base/MainQueue.h"
#include "platform/system/ClipboardKeeper.h"
#include "platform/system/Descriptor.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/x11/X11Connection.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>

#include <wlr-data-control-unstable-v1.h>

namespace platform::Pasteboard {
namespace {

// With a display that is busy; it answers within a few milliseconds as a rule.
constexpr std::chrono::seconds patience{2};

struct Form {
  QString type;
  QByteArray bytes;
};

void addForms(const PasteboardImage& image, std::vector<Form>& forms) {
  forms.push_back({QStringLiteral("image/png"), image.png});
}

void addForms(const QUrl& url, std::vector<Form>& forms) {
  const QByteArray address = url.toEncoded();
  forms.push_back({QStringLiteral("text/uri-list"), address + "\r\n"});
  forms.push_back({QStringLiteral("x-special/gnome-copied-files"), "copy\n" + address});
}

void addForms(const QString& text, std::vector<Form>& forms) {
  for (const auto* const type : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain"})
    forms.push_back({QString::fromLatin1(type), text.toUtf8()});
  if (QString::fromLatin1(text.toLatin1()) == text)
    forms.push_back({QStringLiteral("STRING"), text.toLatin1()});  // of programs that know no other
}

bool giveToKeeper(const std::vector<Form>& forms) {
  std::vector<std::string> targets;
  for (const Form& form : forms)
    targets.push_back(form.type.toStdString());
  std::vector<ClipboardForm> given;
  for (size_t i = 0; i < forms.size(); ++i)
    given.push_back({targets[i], bytesOf({forms[i].bytes.constData(), size_t(forms[i].bytes.size())})});
  const QString keeper = Locations::ownTool(QStringLiteral("clipboardkeeper"));
  return leaveOnClipboard(QFile::encodeName(keeper).toStdString(), given, patience);
}

void giveToToolkit(const std::vector<Form>& forms) {
  auto contents = std::make_unique<QMimeData>();
  for (const Form& form : forms)
    contents->setData(form.type, form.bytes);
  QGuiApplication::clipboard()->setMimeData(contents.release());
}

/// Whether this program alone, and only while it has the keyboard, may fill the clipboard.
bool isGivenByFocusAlone() {
  const WaylandGlobals* const compositor = waylandGlobals();
  return compositor && compositor->version(zwlr_data_control_manager_v1_interface) == 0 &&
         QGuiApplication::focusWindow();
}

WorkItem& waitingClear() {
  static WorkItem item;
  return item;
}

}  // namespace

void clearContents() {
  waitingClear().cancel();
  waitingClear() = MainQueue::main().asyncAfter({}, [] { QGuiApplication::clipboard()->clear(); });
}

bool writeObjects(const std::vector<PasteboardObject>& objects) {
  waitingClear().cancel();
  std::vector<Form> forms;
  for (const PasteboardObject& object : objects)
    std::visit([&](const auto& value) { addForms(value, forms); }, object);
  const bool hasDisplay = x11Connection() || waylandDisplay();
  if (hasDisplay && giveToKeeper(forms))
    return true;
  if (hasDisplay && !isGivenByFocusAlone())
    return false;
  giveToToolkit(forms);
  return true;
}

}  // namespace platform::Pasteboard
