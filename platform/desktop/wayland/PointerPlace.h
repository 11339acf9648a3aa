#pragma once

#include <QPoint>

#include <optional>

namespace platform {

/// Where the pointer is, in the toolkit's coordinates; absent where the compositor has no layers. It tells
/// only a surface that the pointer is on: so there is one for a moment, over each output, that nobody sees.
/// Waits for the compositor's answer.
[[nodiscard]] std::optional<QPoint> pointerPlace();

}  // namespace platform
