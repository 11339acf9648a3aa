#pragma once

#include "platform/base/Bundle.h"
#include "platform/base/Published.h"

#include <QString>

#include <array>
#include <functional>
#include <memory>

namespace sorrel {

/// The interface languages that a user can choose, in the order of the picker.
enum class AppLanguage { system, ko, en };
inline constexpr std::array allAppLanguages = {AppLanguage::system, AppLanguage::ko, AppLanguage::en};

/// The text by which the settings store a language.
[[nodiscard]] QString rawValue(AppLanguage language);
/// The key of the language's name in the picker.
[[nodiscard]] QString labelKey(AppLanguage language);

/// The interface language of the program, which the user may choose apart from the desktop's, and the string
/// table that goes with it. Main thread only.
///
/// It follows the setting, whoever changes that. Whoever shows texts observes it and draws them anew; what is
/// built on demand needs no observer.
class LocalizationManager {
 public:
  static LocalizationManager& shared();

  LocalizationManager(const LocalizationManager&) = delete;
  LocalizationManager& operator=(const LocalizationManager&) = delete;

  [[nodiscard]] AppLanguage language() const { return chosen; }
  /// Stores the choice, finds its table and tells the observers, also where the choice is the present one.
  void setLanguage(AppLanguage language);
  /// The current source of texts, never null: the table of the chosen language, or the main bundle where that
  /// has no such table.
  [[nodiscard]] std::shared_ptr<const platform::Bundle> bundle() const { return table; }

  /// The language of these texts, as "ko"; empty where there are none.
  [[nodiscard]] QString localization() const;

  /// Calls `observer` after each change of the language.
  [[nodiscard]] platform::Subscription observe(std::function<void()> observer);

 private:
  LocalizationManager();
  void take(AppLanguage language);

  AppLanguage chosen;
  std::shared_ptr<const platform::Bundle> table;
  platform::Observers observers;
  const platform::Subscription storedLanguageChange;
};

/// The text of `key` in the interface language; a key without a text shows itself.
[[nodiscard]] QString localized(const QString& key);

}  // namespace sorrel
