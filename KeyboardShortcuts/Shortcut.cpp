#include "KeyboardShortcuts/Shortcut.h"

#include "KeyboardShortcuts/Modifiers.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace KeyboardShortcuts {
namespace {

constexpr QLatin1String keyCodeEntry("carbonKeyCode");
constexpr QLatin1String modifiersEntry("carbonModifiers");

std::optional<qint64> integer(const QJsonValue& value) {
  const qint64 number = value.toInteger(0);
  // What isn't a whole number gives whatever it is asked to give.
  return number == value.toInteger(1) ? std::optional(number) : std::nullopt;
}

}  // namespace

Shortcut::Shortcut(qint64 carbonKeyCode, qint64 carbonModifiers)
    : code(carbonKeyCode), normalModifiers(carbon(modifierFlags(carbonModifiers))) {
}

Shortcut::Shortcut(Key key, platform::ModifierFlags modifiers) : Shortcut(key.rawValue, carbon(modifiers)) {
}

std::optional<Shortcut> Shortcut::forEvent(const platform::Event& event) {
  if (event.type != platform::EventType::KeyDown && event.type != platform::EventType::KeyUp)
    return std::nullopt;
  if (event.keyCode < 0)
    return std::nullopt;
  auto modifiers = event.modifierFlags;
  modifiers.setFlag(platform::ModifierFlag::Function, false);
  return Shortcut(Key(event.keyCode), modifiers);
}

QString Shortcut::encoded() const {
  const QJsonObject object{{keyCodeEntry, code}, {modifiersEntry, normalModifiers}};
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

std::optional<Shortcut> Shortcut::decode(const QString& text) {
  const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
  const std::optional<qint64> keyCode = integer(object.value(keyCodeEntry));
  const std::optional<qint64> modifiers = integer(object.value(modifiersEntry));
  return keyCode && modifiers ? std::optional(Shortcut(*keyCode, *modifiers)) : std::nullopt;
}

platform::ModifierFlags Shortcut::modifiers() const {
  return modifierFlags(normalModifiers);
}

}  // namespace KeyboardShortcuts
