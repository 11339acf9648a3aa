#include "app/settings/view/ShortcutsSettingsTab.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/recorder/Recorder.h"
#include "app/look/LookColors.h"
#include "app/settings/LocalizationManager.h"
#include "app/shell/ShortcutNames.h"
#include "platform/input/LayoutSwitch.h"

namespace sorrel {
namespace {

struct Row {
  const char* titleKey;
  const KeyboardShortcuts::Name& (*name)();
};

constexpr Row rows[] = {
    {"settings.shortcuts.normal", ShortcutNames::captureNormal},
    {"settings.shortcuts.feature", ShortcutNames::captureFeature},
    {"settings.shortcuts.clipboard", ShortcutNames::captureClipboard},
    {"settings.shortcuts.openHistory", ShortcutNames::openHistory},
};

}  // namespace

ShortcutsSettingsTab::ShortcutsSettingsTab(QWidget* parent)
    : SettingsTab(parent),
      group(addGroup()),
      layoutNote(group->addCaption(FormCaption::Kind::Warning)),
      note(group->addCaption()),
      appearance(platform::observeAppearance([this] { colorTitles(); })),
      layoutChange(platform::LayoutSwitch::current().observe([this] { refreshLayoutNote(); })) {
  for (const Row& row : rows) {
    recorders.push_back(new KeyboardShortcuts::Recorder(row.name()));
    recorders.back()->setFont(fontOf(FormRow::text));
    group->addWide(recorders.back());
  }
  colorTitles();
}

void ShortcutsSettingsTab::refresh() {
  group->setTitle(localized(QStringLiteral("settings.shortcuts.section")));
  for (size_t i = 0; i < recorders.size(); ++i)
    recorders[i]->setTitle(localized(QString::fromLatin1(rows[i].titleKey)));
  note->setText(localized(QStringLiteral("settings.shortcuts.note")));
  refreshLayoutNote();
}

void ShortcutsSettingsTab::colorTitles() {
  QPalette colors;
  colors.setColor(QPalette::WindowText, FormRow::text.color.resolved());
  for (auto* const recorder : recorders)
    recorder->setPalette(colors);
}

/// Names the shortcuts that never arrive because the keyboard's layout is switched by their modifiers.
void ShortcutsSettingsTab::refreshLayoutNote() {
  QStringList taken;
  for (const Row& row : rows) {
    const auto shortcut = KeyboardShortcuts::getShortcut(row.name());
    if (shortcut && platform::LayoutSwitch::current().takes(
                        platform::HotKeyModifiers::fromInt(static_cast<int>(shortcut->carbonModifiers()))))
      taken << shortcut->presentableDescription();
  }
  layoutNote->setText(taken.isEmpty() ? QString()
                                      : localized(QStringLiteral("settings.shortcuts.layoutSwitch"))
                                            .arg(taken.join(QStringLiteral(", "))));
}

}  // namespace sorrel
