#pragma once

#include <QByteArray>

namespace platform {

/// Whether the compositor has what that takes.
[[nodiscard]] bool canAskForOwnActivation();

/// An activation token of the compositor's for a window of this program, which has no window in use that
/// could ask for one: a layer that nobody sees has the keyboard for a moment, and asks. Empty where the
/// compositor gives none. Waits for the compositor's answers.
[[nodiscard]] QByteArray ownActivationToken();

}  // namespace platform
