#pragma once

#include <QByteArray>
#include <QStringList>

namespace platform {

/// The accelerators that an Xfce desktop keeps for itself, from the texts of its channel of keyboard
/// shortcuts: the system's file and the user's, whose entries stand above the system's. Each of the channel's
/// parts, commands and window manager, has default accelerators, and others of the user's own in place of
/// them all. Where a text is broken, what comes before counts.
[[nodiscard]] QStringList xfceAccelerators(const QByteArray& systemText, const QByteArray& userText);

}  // namespace platform
