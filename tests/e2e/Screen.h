#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include <optional>
#include <vector>

struct xcb_connection_t;
struct xcb_screen_t;

namespace e2e {

/// A window that is on the screen now.
struct ScreenWindow {
  quint32 id = 0;
  /// What its title says; empty if it has none.
  QString title;
  /// The class and instance halves of WM_CLASS, with a blank between.
  QString className;
  /// Without the window manager's frame.
  QRect area;
};

/// One more client of an X screen, through which a test looks at it and puts pictures on it. All points and
/// areas are pixels from the screen's top left corner. What it has put there goes when this object goes.
class Screen {
 public:
  explicit Screen(const QString& display);
  ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  [[nodiscard]] QSize size() const;
  /// What is on the screen now, without the pointer.
  [[nodiscard]] QImage picture() const;
  /// The same, once it has stayed the same for a tenth of a second.
  [[nodiscard]] QImage settledPicture() const;

  /// All windows that can be seen, also those inside others, from bottom to top.
  [[nodiscard]] std::vector<ScreenWindow> windows() const;
  /// The topmost window whose class name or title contains `text`.
  [[nodiscard]] std::optional<ScreenWindow> find(const QString& text) const;
  /// Whether some client owns this selection, for example the tray's.
  [[nodiscard]] bool isSelectionOwned(const char* name) const;

  /// Makes `picture` the desktop's background, from the top left corner on.
  void paintRoot(const QImage& picture);
  /// Opens an ordinary window that shows `picture`, with its contents (not its frame) at `position`.
  quint32 openWindow(const QString& title, QPoint position, const QImage& picture);
  /// Splits the screen into monitors, the first being the primary one.
  void setMonitors(const std::vector<QRect>& monitors);

  /// Takes a key for this client alone, as another program's hot key. `modifiers` is an X modifier mask.
  /// False if another client has it.
  bool grabKey(int evdevCode, quint16 modifiers);
  void ungrabKey(int evdevCode, quint16 modifiers);
  /// Whether another client has this hot key.
  [[nodiscard]] bool isKeyGrabbed(int evdevCode, quint16 modifiers) const;
  /// Whether another client holds the keyboard or the pointer at this moment.
  [[nodiscard]] bool isInputGrabbed() const;
  /// The modifiers that are down or locked now, as an X modifier mask.
  [[nodiscard]] quint16 modifiers() const;
  /// The X keycodes of the keys that were pressed in windows of this object since the last call.
  [[nodiscard]] std::vector<int> takeKeyPresses();

 private:
  void collect(quint32 window, QPoint origin, std::vector<ScreenWindow>& found) const;
  [[nodiscard]] quint32 atom(const char* name) const;
  [[nodiscard]] QByteArray property(quint32 window, const char* name) const;
  quint32 pixmapOf(const QImage& picture);

  xcb_connection_t* connection;
  xcb_screen_t* screen = nullptr;
};

/// A picture in which every pixel is random, the same for the same seed: no shift, scaling or lost edge of a
/// copy goes unseen.
[[nodiscard]] QImage randomPicture(QSize size, unsigned seed);

}  // namespace e2e
