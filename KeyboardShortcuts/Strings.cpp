#include "KeyboardShortcuts/Strings.h"

#include "platform/base/Bundle.h"

#include <QCoreApplication>

namespace KeyboardShortcuts {
namespace {

/// The module's folder among the program's resources, or else beside the program.
const platform::Bundle& module() {
  static const auto bundle = [] {
    const QString name = QStringLiteral("KeyboardShortcuts_KeyboardShortcuts.bundle");
    for (const QString& parent :
         {platform::Bundle::main()->resourcePath(), QCoreApplication::applicationDirPath()})
      if (auto found = platform::Bundle::withPath(parent + u'/' + name))
        return found;
    qFatal("unable to find bundle named %s", qPrintable(name));
  }();
  return *bundle;
}

}  // namespace

QString localizedString(const QString& key) {
  return module().localizedString(key, QString());
}

}  // namespace KeyboardShortcuts
