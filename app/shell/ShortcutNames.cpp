#include "app/shell/ShortcutNames.h"

#include "app/settings/LocalizationManager.h"
#include "platform/base/Environment.h"

namespace sorrel::ShortcutNames {
namespace {

using namespace KeyboardShortcuts;

Name declare(const char* rawValue, const Key& key, const char* labelKey, const char* option) {
  using platform::ModifierFlag;
  return Name(QString::fromLatin1(rawValue), Shortcut(key, ModifierFlag::Option | ModifierFlag::Shift),
              {localized(QString::fromLatin1(labelKey)), QString::fromLatin1(option)});
}

struct Names {
  Name captureNormal = declare("captureNormal", Key::s, "settings.shortcuts.normal", "--capture");
  Name captureFeature = declare("captureFeature", Key::d, "settings.shortcuts.feature", "--capture-and-edit");
  Name captureClipboard =
      declare("captureClipboard", Key::a, "settings.shortcuts.clipboard", "--capture-to-clipboard");
  Name openHistory = declare("openHistory", Key::f, "settings.shortcuts.openHistory", "--history");
};

const Names& all() {
  return *platform::Environment::shared<const Names>([] { return std::make_shared<const Names>(); });
}

}  // namespace

const Name& captureNormal() {
  return all().captureNormal;
}

const Name& captureFeature() {
  return all().captureFeature;
}

const Name& captureClipboard() {
  return all().captureClipboard;
}

const Name& openHistory() {
  return all().openHistory;
}

}  // namespace sorrel::ShortcutNames
