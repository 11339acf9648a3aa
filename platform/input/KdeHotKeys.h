#pragma once

#include <QByteArray>
#include <QStringList>

namespace platform {

/// The accelerators that a KDE desktop keeps for itself, from the text of its file of global shortcuts. Lines
/// that aren't of its form are skipped.
[[nodiscard]] QStringList kdeAccelerators(const QByteArray& text);

}  // namespace platform
