#pragma once

#include <QString>

#include <memory>
#include <optional>

namespace platform {

/// What the keys print. It is asked anew at each call, so that a change of the layout shows at once.
class KeyboardLayout {
 public:
  struct Translation {
    /// 0, or why the key has no text.
    int status = 0;
    /// What the key prints without modifiers; a dead key prints its accent on its own. May be empty.
    QString text;
  };

  virtual ~KeyboardLayout() = default;

  /// The text of a virtual key code in the user's layout, or, if that has no Latin letters, in the first of
  /// his layouts that does. nullopt if there is no layout to ask.
  [[nodiscard]] virtual std::optional<Translation> translate(quint16 keyCode) const = 0;

  /// The layout in use; nullptr where the environment has none.
  static const KeyboardLayout* current();
  /// The layout of the display that the application is connected to; nullptr if it has none that could be
  /// asked. Needs a QGuiApplication, which must outlive the layout.
  static std::shared_ptr<const KeyboardLayout> forDesktop();
};

}  // namespace platform
