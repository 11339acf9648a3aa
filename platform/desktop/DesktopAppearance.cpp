#include "platform/desktop/DesktopAppearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QPalette>

namespace platform {
namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString settingsGroup = QStringLiteral("org.freedesktop.appearance");
const QString settingsKey = QStringLiteral("color-scheme");

std::optional<Appearance> preferenceFrom(QVariant value) {
  // The answer to a question is packed twice, what a signal announces once.
  while (value.metaType() == QMetaType::fromType<QDBusVariant>())
    value = value.value<QDBusVariant>().variant();
  switch (value.toUInt()) {
    case 1:
      return Appearance::Dark;
    case 2:
      return Appearance::Light;
    default:
      return std::nullopt;
  }
}

/// What is drawn on what, in greys with a little warmth. The shades of bevels follow from `window`.
struct Greys {
  QRgb window;
  QRgb field;
  QRgb stripe;
  QRgb button;
  QRgb tip;
  QRgb text;
  QRgb onAccent;
};

constexpr Greys lightGreys{0xf4f2ee, 0xffffff, 0xf8f7f4, 0xebe8e3, 0xfdfbf6, 0x24221e, 0xffffff};
constexpr Greys darkGreys{0x282623, 0x1e1d1b, 0x242220, 0x35332f, 0x3a3834, 0xece9e3, 0x14170f};

QPalette paletteFor(Appearance appearance, const Color& accent) {
  constexpr float placeholderOpacity = 0.5F;
  constexpr float disabledOpacity = 0.4F;
  const Greys& greys = appearance == Appearance::Dark ? darkGreys : lightGreys;
  const auto text = QColor(greys.text);
  const QColor mark = accent.resolved(appearance);
  const auto faint = [&](float opacity) {
    QColor color = text;
    color.setAlphaF(opacity);
    return color;
  };
  QPalette palette(QColor(greys.button), QColor(greys.window));
  palette.setColor(QPalette::Base, QColor(greys.field));
  palette.setColor(QPalette::AlternateBase, QColor(greys.stripe));
  palette.setColor(QPalette::ToolTipBase, QColor(greys.tip));
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, faint(disabledOpacity));
  }
  // Disabled words of a menu are drawn twice, the second time in this; it should not show.
  palette.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
  palette.setColor(QPalette::PlaceholderText, faint(placeholderOpacity));
  palette.setColor(QPalette::Link, mark);
  palette.setColor(QPalette::LinkVisited, mark);
  palette.setColor(QPalette::Highlight, mark);
  palette.setColor(QPalette::HighlightedText, QColor(greys.onAccent));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(greys.button));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, faint(disabledOpacity));
  return palette;
}

}  // namespace

DesktopAppearance::DesktopAppearance(const Color& accentColor) : accent(accentColor) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected())
    return;
  bus.connect(service, path, interface, QStringLiteral("SettingChanged"), {settingsGroup, settingsKey},
              QStringLiteral("ssv"), this, SLOT(settingChanged(QDBusMessage)));
  const auto* const arrival =
      new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForRegistration, this);
  connect(arrival, &QDBusServiceWatcher::serviceRegistered, this, &DesktopAppearance::ask);
  ask();
}

void DesktopAppearance::ask() {
  QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
  // Where nobody answers yet nobody is to be started: a bare session would get half a desktop with it.
  question.setAutoStartService(false);
  question << settingsGroup << settingsKey;
  const auto* const answer =
      new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    if (!finished->isError())
      prefer(preferenceFrom(finished->reply().arguments().value(0)));
  });
}

void DesktopAppearance::settingChanged(const QDBusMessage& message) {
  prefer(preferenceFrom(message.arguments().value(2)));
}

void DesktopAppearance::prefer(std::optional<Appearance> preference) {
  if (given && given == preference)
    return;
  if (given)
    QApplication::setPalette(QPalette());  // the toolkit's own, as it is by now
  given.reset();
  if (preference && currentAppearance() != *preference) {
    QApplication::setPalette(paletteFor(*preference, accent));
    given = preference;
  }
}

}  // namespace platform
