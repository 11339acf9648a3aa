#pragma once

#include <QPoint>

#include <optional>

namespace platform {

/// Whether the compositor has the layers that pointerPlace() needs.
[[nodiscard]] bool canAskForPointerPlace();

/// Where the pointer is, in the toolkit's coordinates. The compositor tells only a surface that the pointer
/// is on: so there is one for a moment, over each output, that nobody sees. Waits for the answer, which comes
/// after the release of a button that is down; absent where none comes within a moment.
[[nodiscard]] std::optional<QPoint> pointerPlace();

}  // namespace platform
