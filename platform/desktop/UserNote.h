#pragma once

#include <QString>

#include <functional>

namespace platform {

/// Shows a short note in the desktop's own way (org.freedesktop.Notifications), by the name and icon of the
/// program. `delivered` is called if the desktop has taken it, later and on the main thread; it must not need
/// anything that may be gone by then.
void tellUser(const QString& title, const QString& text, std::function<void()> delivered);

}  // namespace platform
