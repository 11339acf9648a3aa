#include "app/shell/ShortcutNames.h"

namespace sorrel::ShortcutNames {
namespace {

using namespace KeyboardShortcuts;

Name declare(const char* rawValue, const Key& key) {
  using platform::ModifierFlag;
  return Name(QString::fromLatin1(rawValue), Shortcut(key, ModifierFlag::Option | ModifierFlag::Shift));
}

}  // namespace

const Name& captureNormal() {
  static const Name name = declare("captureNormal", Key::s);
  return name;
}

const Name& captureFeature() {
  static const Name name = declare("captureFeature", Key::d);
  return name;
}

const Name& captureClipboard() {
  static const Name name = declare("captureClipboard", Key::a);
  return name;
}

const Name& openHistory() {
  static const Name name = declare("openHistory", Key::f);
  return name;
}

}  // namespace sorrel::ShortcutNames
