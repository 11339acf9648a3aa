#include "platform/desktop/tray/ExportedMenu.h"

namespace platform {
namespace {

using StatusNotifier::MenuRow;
using StatusNotifier::RowProperties;

/// Modifiers and the key, as the interface writes a shortcut; Command is Control on this desktop.
QVariant shortcutOf(const MenuItem& item) {
  QStringList keys;
  if (item.keyEquivalentModifierMask & ModifierFlag::Command)
    keys << QStringLiteral("Control");
  if (item.keyEquivalentModifierMask & ModifierFlag::Option)
    keys << QStringLiteral("Alt");
  if (item.keyEquivalentModifierMask & ModifierFlag::Shift)
    keys << QStringLiteral("Shift");
  keys << item.keyEquivalent.toUpper();
  return QVariant::fromValue(QList<QStringList>{keys});
}

/// What differs from the interface's defaults.
QVariantMap propertiesOf(const MenuItem& item) {
  if (item.isSeparator)
    return {{QStringLiteral("type"), QStringLiteral("separator")}};
  QVariantMap properties;
  // A title is text to be shown, not a place for the interface's mnemonic mark.
  properties[QStringLiteral("label")] = QString(item.title).replace(u'_', QStringLiteral("__"));
  if (!item.isEnabled)
    properties[QStringLiteral("enabled")] = false;
  if (!item.keyEquivalent.isEmpty())
    properties[QStringLiteral("shortcut")] = shortcutOf(item);
  if (item.submenu)
    properties[QStringLiteral("children-display")] = QStringLiteral("submenu");
  return properties;
}

}  // namespace

ExportedMenu::ExportedMenu(Provider menuProvider) : provider(std::move(menuProvider)) {
  StatusNotifier::registerTypes();
  update();
}

void ExportedMenu::update() {
  menu = provider();
  rows.clear();
  collect(*menu, 0);
  QList<QVariantMap> now;
  for (const Row& row : rows)
    now << platform::propertiesOf(*row.item);
  if (std::exchange(told, now) == now)
    return;
  ++revision;
  Q_EMIT LayoutUpdated(revision, 0);
}

void ExportedMenu::collect(const Menu& part, int parent) {
  for (const MenuItem& item : part.items) {
    rows.push_back({&item, parent});
    if (item.submenu)
      collect(*item.submenu, static_cast<int>(rows.size()));
  }
}

QVariantMap ExportedMenu::propertiesOf(int id, const QStringList& names) const {
  QVariantMap properties =
      isRow(id) ? told[id - 1] : QVariantMap{{QStringLiteral("children-display"), QStringLiteral("submenu")}};
  if (!names.isEmpty())
    properties.removeIf([&](const auto& property) { return !names.contains(property.key()); });
  return properties;
}

MenuRow ExportedMenu::layoutOf(int id, int depth, const QStringList& names) const {
  MenuRow row{id, propertiesOf(id, names), {}};
  for (int child = 1; depth != 0 && child <= static_cast<int>(rows.size()); ++child)
    if (rows[static_cast<size_t>(child - 1)].parent == id)
      row.children << layoutOf(child, depth - 1, names);
  return row;
}

uint ExportedMenu::GetLayout(int parent, int depth, const QStringList& names, MenuRow& layout) {
  layout = layoutOf(parent, depth, names);
  return revision;
}

QList<RowProperties> ExportedMenu::GetGroupProperties(const QList<int>& ids, const QStringList& names) const {
  QList<RowProperties> properties;
  for (int id = 0; id <= static_cast<int>(rows.size()); ++id)
    if (ids.isEmpty() || ids.contains(id))
      properties << RowProperties{id, propertiesOf(id, names)};
  return properties;
}

QDBusVariant ExportedMenu::GetProperty(int id, const QString& name) const {
  return QDBusVariant(propertiesOf(id, {name}).value(name, QString()));
}

void ExportedMenu::Event(int id, const QString& event, const QDBusVariant&, uint) {
  if (event != u"clicked" || !isRow(id))
    return;
  const std::shared_ptr<const Menu> kept = menu;  // the action may have the menu made anew
  const MenuItem& item = *rows[static_cast<size_t>(id - 1)].item;
  if (item.isEnabled && item.action)
    item.action();
}

QList<int> ExportedMenu::EventGroup(const QList<StatusNotifier::RowEvent>& events) {
  QList<int> unknown;
  for (const StatusNotifier::RowEvent& each : events) {
    if (each.id == 0 || isRow(each.id))
      Event(each.id, each.event, each.data, each.time);
    else
      unknown << each.id;
  }
  return unknown;
}

bool ExportedMenu::AboutToShow(int id) {
  const uint before = revision;
  if (id == 0)
    update();
  return revision != before;
}

QList<int> ExportedMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) {
  QList<int> changed;
  for (const int id : ids) {
    if (id != 0 && !isRow(id))
      unknown << id;
    else if (AboutToShow(id))
      changed << id;
  }
  return changed;
}

}  // namespace platform
