#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace platform {

/// A question, or something to be told, that waits for the user's answer. Main thread only.
struct Alert {
  enum class Style { Informational, Warning };

  Style style = Style::Warning;
  /// Beside the texts; a warning's bears a mark. None where it is null.
  QIcon icon;
  /// What it is about, in one bold sentence.
  QString messageText;
  /// What else is to be known, in plain text; may be empty. Breaks anywhere if need be, as a path does.
  QString informativeText;
  /// Below the texts, as wide as these; may be null.
  std::unique_ptr<QWidget> accessoryView;
  /// It comes by itself, in the middle of something else: takes the keyboard from nobody and shuts no window.
  bool isUnasked = false;
  /// The answers, the suggested one first: the keyboard is there, and Return gives it. They stand in the
  /// order that the desktop's users know.
  QStringList buttons;

  /// Called once, when the alert is off the screen, with the index of the button; with nothing if the user
  /// pressed Escape or closed it.
  using Answered = std::function<void(std::optional<int> button)>;

  /// Shows it above `window`, which takes no input until the answer is there; without a window, all of the
  /// program's are shut so. Returns at once, with the alert's own window. If either window goes, so does the
  /// alert, and nobody is called.
  static QWidget* present(Alert alert, QWidget* window, Answered answered);
};

}  // namespace platform
