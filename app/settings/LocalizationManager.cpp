#include "app/settings/LocalizationManager.h"

#include "app/settings/SettingsKeys.h"
#include "platform/base/Environment.h"

#include <QFileInfo>

#include <algorithm>

namespace sorrel {
namespace {

using platform::Bundle;

AppLanguage storedLanguage() {
  const QString text = platform::UserDefaults::standard().value(SettingsKeys::appLanguage);
  const auto* const match = std::find_if(allAppLanguages.begin(), allAppLanguages.end(),
                                         [&](AppLanguage language) { return rawValue(language) == text; });
  return match == allAppLanguages.end() ? AppLanguage::system : *match;
}

std::shared_ptr<const Bundle> resolveBundle(AppLanguage language) {
  const auto main = Bundle::main();
  const QString code = language == AppLanguage::system
                           ? main->preferredLocalizations().value(0, QStringLiteral("en"))
                           : rawValue(language);
  const QString path = main->pathForResource(code, QStringLiteral("lproj"));
  const auto folder = path.isEmpty() ? nullptr : Bundle::withPath(path);
  return folder ? folder : main;
}

}  // namespace

QString rawValue(AppLanguage language) {
  switch (language) {
    case AppLanguage::ko:
      return QStringLiteral("ko");
    case AppLanguage::en:
      return QStringLiteral("en");
    case AppLanguage::system:
      break;
  }
  return QStringLiteral("system");
}

QString labelKey(AppLanguage language) {
  switch (language) {
    case AppLanguage::ko:
      return QStringLiteral("settings.language.korean");
    case AppLanguage::en:
      return QStringLiteral("settings.language.english");
    case AppLanguage::system:
      break;
  }
  return QStringLiteral("settings.language.system");
}

LocalizationManager& LocalizationManager::shared() {
  return *platform::Environment::shared<LocalizationManager>(
      [] { return std::shared_ptr<LocalizationManager>(new LocalizationManager); });
}

LocalizationManager::LocalizationManager()
    : chosen(storedLanguage()),
      table(resolveBundle(chosen)),
      storedLanguageChange(platform::UserDefaults::standard().observe(SettingsKeys::appLanguage, [this] {
        if (const AppLanguage stored = storedLanguage(); stored != chosen)
          take(stored);
      })) {
}

void LocalizationManager::setLanguage(AppLanguage language) {
  chosen = language;
  platform::UserDefaults::standard().set(SettingsKeys::appLanguage, rawValue(language));
  take(language);
}

void LocalizationManager::take(AppLanguage language) {
  chosen = language;
  table = resolveBundle(language);
  observers.tell();
}

platform::Subscription LocalizationManager::observe(std::function<void()> observer) {
  return observers.add(std::move(observer));
}

QString LocalizationManager::localization() const {
  const QFileInfo folder(table->resourcePath());
  return folder.suffix() == u"lproj" ? folder.completeBaseName() : table->preferredLocalizations().value(0);
}

QString localized(const QString& key) {
  return LocalizationManager::shared().bundle()->localizedString(key, key);
}

}  // namespace sorrel
