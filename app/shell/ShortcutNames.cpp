#include "app/shell/ShortcutNames.h"

#include "app/settings/LocalizationManager.h"
#include "platform/base/Environment.h"

namespace sorrel::ShortcutNames {
namespace {

using namespace KeyboardShortcuts;

Name declare(const char* rawValue, const Key& key, const char* labelKey) {
  using platform::ModifierFlag;
  return Name(QString::fromLatin1(rawValue), Shortcut(key, ModifierFlag::Option | ModifierFlag::Shift),
              localized(QString::fromLatin1(labelKey)));
}

struct Names {
  Name captureNormal = declare("captureNormal", Key::s, "settings.shortcuts.normal");
  Name captureFeature = declare("captureFeature", Key::d, "settings.shortcuts.feature");
  Name captureClipboard = declare("captureClipboard", Key::a, "settings.shortcuts.clipboard");
  Name openHistory = declare("openHistory", Key::f, "settings.shortcuts.openHistory");
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
