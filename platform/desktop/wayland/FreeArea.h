#pragma once

#include <QSize>

#include <optional>

class QScreen;

namespace platform {

/// How much of an output its bars leave to windows; absent where the compositor has no layers, and so tells
/// nobody. Where the bars stand it never tells. Waits for the compositor's answer.
[[nodiscard]] std::optional<QSize> freeSizeOf(const QScreen& screen);

/// The output that the user works on, as the compositor sees it; nullptr where it has no layers. Waits for
/// its answer, and takes longer than that: a picture of no color is shown there for it.
[[nodiscard]] QScreen* screenInUse();

}  // namespace platform
