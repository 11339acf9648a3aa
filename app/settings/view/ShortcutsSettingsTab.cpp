#include "app/settings/view/ShortcutsSettingsTab.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/recorder/Recorder.h"
#include "app/look/LookColors.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/view/CommandRow.h"
#include "app/shell/ShortcutNames.h"
#include "platform/input/HotKeyService.h"
#include "platform/input/LayoutSwitch.h"
#include "platform/input/OwnCommand.h"

#include <QCheckBox>
#include <QPushButton>

#include <array>

namespace sorrel {
namespace {

using platform::HotKeyState;
using platform::HotKeyWay;

struct Slot {
  const char* titleKey;
  const KeyboardShortcuts::Name& (*name)();
};

constexpr std::array slots{
    Slot{"settings.shortcuts.normal", ShortcutNames::captureNormal},
    Slot{"settings.shortcuts.feature", ShortcutNames::captureFeature},
    Slot{"settings.shortcuts.clipboard", ShortcutNames::captureClipboard},
    Slot{"settings.shortcuts.openHistory", ShortcutNames::openHistory},
};

QString text(const char* key) {
  return localized(QString::fromLatin1(key));
}

/// The shortcuts of the slots that are so, as people read them.
template <typename Predicate>
QString described(Predicate isSo) {
  QStringList found;
  for (const Slot& slot : slots) {
    const auto shortcut = KeyboardShortcuts::getShortcut(slot.name());
    if (shortcut && isSo(slot.name(), *shortcut))
      found << shortcut->presentableDescription();
  }
  return found.join(QStringLiteral(", "));
}

QString filledIn(const char* key, const QString& shortcuts) {
  return shortcuts.isEmpty() ? QString() : text(key).arg(shortcuts);
}

bool asksForConsent(HotKeyWay way) {
  return way == HotKeyWay::Sway || way == HotKeyWay::Gnome;
}

QString noteOf(HotKeyWay way) {
  switch (way) {
    case HotKeyWay::Portal:
      return text("settings.shortcuts.portal.note");
    case HotKeyWay::Commands:
      return text("settings.shortcuts.commands.note");
    default:
      return text("settings.shortcuts.note");
  }
}

}  // namespace

ShortcutsSettingsTab::ShortcutsSettingsTab(QWidget* parent)
    : SettingsTab(parent),
      group(addGroup()),
      layoutNote(group->addCaption(FormCaption::Kind::Warning)),
      takenNote(group->addCaption(FormCaption::Kind::Warning)),
      note(group->addCaption()),
      wayGroup(addGroup()),
      appearance(platform::observeAppearance([this] { colorTitles(); })),
      layoutChange(platform::LayoutSwitch::current().observe([this] { refreshLayoutNote(); })),
      stateChange(platform::HotKeyService::current().observeState([this] { refresh(); })) {
  addRows();
  addWay();
  colorTitles();
}

void ShortcutsSettingsTab::addRows() {
  for (const Slot& slot : slots) {
    Row row{};
    row.recorder = new KeyboardShortcuts::Recorder(slot.name());
    row.recorder->setFont(fontOf(FormRow::text));
    row.recorderRow = group->addWide(row.recorder);
    row.given = new FormText({13, QFont::Normal, LookColors::secondaryLabel}, nullptr);
    row.givenRow = group->addRow(row.given);
    row.command = new CommandRow(nullptr);
    row.commandRow = group->addWide(row.command);
    rows.push_back(row);
  }
}

void ShortcutsSettingsTab::addWay() {
  consent = new QCheckBox;
  consentRow = wayGroup->addRow(consent);
  open = new QPushButton;
  openRow = wayGroup->addButtons({open});
  wayNote = wayGroup->addCaption();
  connect(consent, &QCheckBox::clicked, this,
          [](bool isOn) { platform::UserDefaults::standard().set(platform::hotKeysMayBeBound, isOn); });
  connect(open, &QPushButton::clicked, this, [] {
    // Where it has gone since, there is nothing to tell that the user wouldn't see.
    if (const auto settings = platform::keyboardSettings())
      (void)platform::launch(*settings, [] {});
  });
}

void ShortcutsSettingsTab::refresh() {
  const HotKeyState state = platform::HotKeyService::current().state();
  group->setTitle(text("settings.shortcuts.section"));
  refreshRows(state);
  note->setText(noteOf(state.way));
  takenNote->setText(filledIn("settings.shortcuts.sway.taken", described([&](const auto& name, const auto&) {
                                return state.taken.contains(name.rawValue());
                              })));
  refreshLayoutNote();
  refreshWay(state);
}

void ShortcutsSettingsTab::refreshRows(const HotKeyState& state) {
  const bool isGiven = state.way == HotKeyWay::Portal, isCommand = state.way == HotKeyWay::Commands;
  for (size_t i = 0; i < rows.size(); ++i) {
    const Row& row = rows[i];
    const KeyboardShortcuts::Name& name = slots[i].name();
    const QString title = text(slots[i].titleKey);
    row.recorder->setTitle(title);
    // The desktop is asked for shortcuts that there are: one that was emptied has to be recorded first.
    const bool isRecorded = !isCommand && (!isGiven || !name.shortcut());
    row.recorderRow->setVisible(isRecorded);
    const QString trigger = state.triggers.value(name.rawValue());
    row.given->setText(trigger.isEmpty() ? text("settings.shortcuts.portal.none") : trigger);
    row.givenRow->setLabel(title);
    row.givenRow->setVisible(isGiven && !isRecorded);
    row.command->setTexts(title, platform::ownCommand(name.purpose().option),
                          text("settings.shortcuts.commands.copy"));
    row.commandRow->setVisible(isCommand);
  }
}

void ShortcutsSettingsTab::refreshWay(const HotKeyState& state) {
  const bool isSway = state.way == HotKeyWay::Sway, isAsked = asksForConsent(state.way);
  const bool canOpen = state.way == HotKeyWay::Portal && platform::keyboardSettings().has_value();
  wayGroup->setVisible(isAsked || canOpen);
  consentRow->setVisible(isAsked);
  consentRow->setLabel(text(isSway ? "settings.shortcuts.sway.allow" : "settings.shortcuts.gnome.allow"));
  consent->setChecked(platform::UserDefaults::standard().value(platform::hotKeysMayBeBound));
  openRow->setVisible(canOpen);
  open->setText(text("settings.shortcuts.portal.open"));
  wayNote->setText(
      !isAsked ? QString() : text(isSway ? "settings.shortcuts.sway.note" : "settings.shortcuts.gnome.note"));
}

void ShortcutsSettingsTab::colorTitles() {
  QPalette colors;
  colors.setColor(QPalette::WindowText, FormRow::text.color.resolved());
  for (const Row& row : rows)
    row.recorder->setPalette(colors);
}

/// Names the shortcuts that never arrive because the keyboard's layout is switched by their modifiers.
void ShortcutsSettingsTab::refreshLayoutNote() {
  layoutNote->setText(
      filledIn("settings.shortcuts.layoutSwitch", described([](const auto&, const auto& shortcut) {
                 return platform::LayoutSwitch::current().takes(
                     platform::HotKeyModifiers::fromInt(static_cast<int>(shortcut.carbonModifiers())));
               })));
}

}  // namespace sorrel
