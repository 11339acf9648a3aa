#pragma once

/// What the parts of the program tell its coordinator, on the default NotificationCenter and from the main
/// thread.
namespace sorrel::Notifications {

inline constexpr char openSettings[] = "sorrelOpenSettings";
inline constexpr char screenshotsChanged[] = "sorrelScreenshotsChanged";
inline constexpr char editScreenshot[] = "sorrelEditScreenshot";  // its object is the file's QUrl
inline constexpr char retentionChanged[] = "sorrelRetentionChanged";
inline constexpr char storageLocationChanged[] = "sorrelStorageLocationChanged";
inline constexpr char closeHistoryPanel[] = "sorrelCloseHistoryPanel";
inline constexpr char checkForUpdates[] = "sorrelCheckForUpdates";

}  // namespace sorrel::Notifications
