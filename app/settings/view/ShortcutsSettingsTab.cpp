#include "app/settings/view/ShortcutsSettingsTab.h"

#include "app/settings/LocalizationManager.h"
#include "platform/input/LayoutSwitch.h"

namespace sorrel {

ShortcutsSettingsTab::ShortcutsSettingsTab(QWidget* parent)
    : SettingsTab(parent),
      group(addGroup()),
      layoutNote(group->addCaption(FormCaption::Kind::Warning)),
      note(group->addCaption()),
      layoutChange(platform::LayoutSwitch::current().observe([this] { refresh(); })) {
}

void ShortcutsSettingsTab::refresh() {
  group->setTitle(localized(QStringLiteral("settings.shortcuts.section")));
  note->setText(localized(QStringLiteral("settings.shortcuts.note")));
}

}  // namespace sorrel
