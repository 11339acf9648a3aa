#include "platform/desktop/tray/StatusNotifierIcon.h"

#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/wayland/PointerPlace.h"
#include "platform/wayland/WaylandConnection.h"

#include <QCursor>
#include <QDBusMessage>
#include <QGuiApplication>

namespace platform {
namespace {

constexpr int iconsReach = 64;
const QString itemPath = QStringLiteral("/StatusNotifierItem");

QDBusConnection ownConnection() {
  static int count = 0;
  return QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                       QStringLiteral("status item %1").arg(++count));
}

ModifierFlags modifiersNow() {
  const Qt::KeyboardModifiers held = QGuiApplication::queryKeyboardModifiers();
  ModifierFlags flags;
  flags.setFlag(ModifierFlag::Shift, held.testFlag(Qt::ShiftModifier));
  flags.setFlag(ModifierFlag::Control, held.testFlag(Qt::ControlModifier));
  flags.setFlag(ModifierFlag::Option, held.testFlag(Qt::AltModifier));
  flags.setFlag(ModifierFlag::Command, held.testFlag(Qt::MetaModifier));
  return flags;
}

/// Where a click was, on X11. Trays disagree on what they tell: some nothing, some count in device pixels,
/// some in their own. So if the pointer is about there it is the pointer's place; a key's place is what is
/// told.
QPoint placeOfX11Click(const QPoint& told) {
  const QPoint pointer = QCursor::pos();
  const QPoint scaled = fromDevicePixels(QRect(told, QSize(1, 1))).topLeft().toPoint();
  const auto isAtPointer = [&](const QPoint& place) {
    return (place - pointer).manhattanLength() <= iconsReach;
  };
  const bool isTold = !told.isNull() && QGuiApplication::screenAt(scaled);
  return !isTold || isAtPointer(told) || isAtPointer(scaled) ? pointer : scaled;
}

/// On Wayland there is the tray's word. But some trays count from the icon's own corner, and some tell
/// nothing: what sounds like a corner of the screen may be anywhere, and the pointer is asked for.
std::optional<QPoint> placeOfClick(const QPoint& told) {
  if (!waylandDisplay())
    return placeOfX11Click(told);
  if (told.x() < iconsReach && told.y() < iconsReach && canAskForPointerPlace())
    return pointerPlace();
  return !told.isNull() && QGuiApplication::screenAt(told) ? std::optional(told) : std::nullopt;
}

}  // namespace

StatusNotifierIcon::StatusNotifierIcon(Handlers all)
    : handlers(std::move(all)), menu(handlers.menu), bus(ownConnection()) {
  StatusNotifier::registerTypes();
  const auto everything = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                          QDBusConnection::ExportAllProperties;
  bus.registerObject(itemPath, this, everything);
  bus.registerObject(menuPath().path(), &menu, everything);
  QDBusMessage registration = QDBusMessage::createMethodCall(
      StatusNotifier::watcherName, StatusNotifier::watcherPath, StatusNotifier::watcherName,
      QStringLiteral("RegisterStatusNotifierItem"));
  registration.setAutoStartService(false);
  registration << bus.baseService();
  bus.send(registration);
}

StatusNotifierIcon::~StatusNotifierIcon() {
  QDBusConnection::disconnectFromBus(bus.name());
}

QString StatusNotifierIcon::id() const {
  return QCoreApplication::applicationName().toLower();
}

QString StatusNotifierIcon::title() const {
  return QGuiApplication::applicationDisplayName();
}

QDBusObjectPath StatusNotifierIcon::menuPath() const {
  return QDBusObjectPath(itemPath + QStringLiteral("/Menu"));
}

StatusNotifier::ToolTip StatusNotifierIcon::toolTip() const {
  return {{}, {}, toolTipText, {}};
}

void StatusNotifierIcon::setImage(const Image& image) {
  pixmaps = StatusNotifier::pixmapsOf(image.icon);
  Q_EMIT NewIcon();
}

void StatusNotifierIcon::setToolTip(const QString& text) {
  if (std::exchange(toolTipText, text) != text)
    Q_EMIT NewToolTip();
}

void StatusNotifierIcon::Activate(int x, int y) {
  clicked(EventType::LeftMouseUp, {x, y});
}

void StatusNotifierIcon::ProvideXdgActivationToken(const QString& token) {
  ActivationToken::keep(token.toUtf8());
}

void StatusNotifierIcon::ContextMenu(int x, int y) {
  clicked(EventType::RightMouseUp, {x, y});
}

void StatusNotifierIcon::clicked(EventType type, const QPoint& told) {
  handlers.clicked({type, 0, modifiersNow()}, placeOfClick(told));
}

}  // namespace platform
