#pragma once

#include "platform/base/UserDefaults.h"

/// The program's settings, all of them, with what they are where nothing is stored. The shortcuts' own are
/// the module's, and the updater's are the updater's.
namespace sorrel::SettingsKeys {

using platform::SettingsKey;

/// The folder that receives screenshots, with a leading tilde perhaps; empty: the default one.
inline constexpr SettingsKey<QString> storageDirectory{"storageDirectory"};
/// After how many days screenshots go to the Trash; below 1: never.
inline constexpr SettingsKey<qint64> autoDeleteDays{"autoDeleteDays", 30};

/// Whether the history panel stays open when it loses the keyboard.
inline constexpr SettingsKey<bool> historyPanelLocked{"historyPanelLocked", false};
/// Whether the companion's page has been shown; never taken back.
inline constexpr SettingsKey<bool> quillonPromptShown{"quillonPromptShown", false};

/// Whether the user has been told that the desktop has no tray.
inline constexpr SettingsKey<bool> trayAbsenceTold{"trayAbsenceTold", false};

/// Whether a new document begins with the watermark's text of the last one that was saved.
inline constexpr SettingsKey<bool> rememberWatermarkText{"rememberWatermarkText", false};
inline constexpr SettingsKey<QString> lastWatermarkText{"lastWatermarkText"};
/// Empty: the bold system font.
inline constexpr SettingsKey<QString> watermarkFontFamily{"watermarkFontFamily"};

/// An AppLanguage's raw value; anything else counts as the system's language.
inline constexpr SettingsKey<QString> appLanguage{"appLanguage"};

}  // namespace sorrel::SettingsKeys
