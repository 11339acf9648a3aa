#pragma once

#include <QSizeF>
#include <QUrl>

#include <memory>
#include <optional>

class QWidget;

namespace sorrel {

/// Owns the editor's window, of which there is at most one. To open a picture replaces whatever is open,
/// without asking; what wasn't saved is dropped. The window alone keeps the document. Main thread only.
class EditorWindowController {
 public:
  EditorWindowController();
  ~EditorWindowController();
  EditorWindowController(const EditorWindowController&) = delete;
  EditorWindowController& operator=(const EditorWindowController&) = delete;

  /// Shows the picture in a window in front of all others, with the keyboard in it. For one that can't be
  /// decoded a line goes to the log and nothing changes: false.
  bool open(const QUrl& url);

  /// The window that was opened last, also after the user has closed it; null once it has gone.
  [[nodiscard]] QWidget* window() const { return shown.get(); }

 private:
  void close();

  /// The window is often closed from within its own events.
  struct DeleteLater {
    void operator()(QWidget* window) const;
  };

  std::unique_ptr<QWidget, DeleteLater> shown;
};

/// What the window wants for its content: the picture, the bars beside and above it, and room around it; but
/// not more than nine tenths of either side of the screen's free part (absent where there is no screen). Only
/// the window's own minimum makes it larger.
[[nodiscard]] QSizeF editorContentSize(const QSizeF& displaySize, const std::optional<QSizeF>& visibleFrame);

}  // namespace sorrel
