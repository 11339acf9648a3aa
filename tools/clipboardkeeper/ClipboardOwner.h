#pragma once

namespace clipboardkeeper {

/// Owns the clipboard and gives its contents out. There is one kind for each kind of display.
class ClipboardOwner {
 public:
  virtual ~ClipboardOwner() = default;
  /// Answers other programs until one of them takes the clipboard and none still waits for what it has asked
  /// for; or until the display is gone.
  virtual void serve() = 0;
};

}  // namespace clipboardkeeper
