#include "platform/base/Bundle.h"

#include "platform/base/Environment.h"

#include <QFileInfo>
#include <QLocale>
#include <QTranslator>

namespace platform {
std::shared_ptr<const Bundle> Bundle::main() {
  return Environment::shared<const Bundle>([] {
    return std::make_shared<const Bundle>(QStringLiteral(":/sorrel"), QLocale::system().uiLanguages());
  });
}

std::shared_ptr<const Bundle> Bundle::withPath(const QString& path) {
  return QFileInfo(path).isDir() ? std::make_shared<const Bundle>(path, main()->languages) : nullptr;
}

Bundle::Bundle(const QString& path, const QStringList& languages) : root(path), languages(languages) {
}

Bundle::~Bundle() = default;

bool Bundle::hasLanguage(const QString& name) const {
  return !pathForResource(name, QStringLiteral("lproj")).isEmpty();
}

QStringList Bundle::preferredLocalizations() const {
  QStringList found;
  for (const QString& language : languages) {
    const QString general = language.section(u'-', 0, 0);
    const QString name = hasLanguage(language) ? language : general;
    if (hasLanguage(name) && !found.contains(name))
      found << name;
  }
  const QString lastResort = QStringLiteral("en");
  if (found.isEmpty() && hasLanguage(lastResort))
    found << lastResort;
  return found;
}

QString Bundle::pathForResource(const QString& name, const QString& type) const {
  const QString path = root + u'/' + name + u'.' + type;
  return QFileInfo::exists(path) ? path : QString();
}

QString Bundle::localizedString(const QString& key, const QString& value) const {
  if (!table) {
    table = std::make_unique<QTranslator>();
    const QString fileName = QStringLiteral("/Localizable.qm");
    QString folder = root;
    if (!QFileInfo::exists(folder + fileName))
      folder += u'/' + preferredLocalizations().value(0) + QStringLiteral(".lproj");
    // A table that is missing or broken is an empty one: each key then gives its fall-back.
    [[maybe_unused]] const bool isLoaded = table->load(folder + fileName);
  }
  const QString text = table->translate("", key.toUtf8().constData());
  return text.isEmpty() ? value : text;
}

}  // namespace platform
