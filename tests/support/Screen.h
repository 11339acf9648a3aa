#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

struct xcb_connection_t;
struct xcb_screen_t;

namespace testing_support {

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

/// A window manager frames neither a menu nor a bar. The latter reserves its height at the screen's upper
/// edge.
enum class WindowKind { Ordinary, Menu, Bar };

/// One more program on an X screen, through which a test looks at the screen, puts pictures on it and gets in
/// the way. All points and areas are pixels from the screen's top left corner, all modifiers X modifier
/// masks. What it has put on the screen or taken goes when this object goes.
class Screen {
 public:
  explicit Screen(const std::string& display);
  ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  [[nodiscard]] QSize size() const;
  /// What is on the screen now, without the pointer.
  [[nodiscard]] QImage picture() const;
  /// The same, once it has stayed the same for a tenth of a second.
  [[nodiscard]] QImage settledPicture() const;
  /// The same after a gesture that shows on the screen.
  [[nodiscard]] QImage settledPictureAfter(const std::function<void()>& gesture) const;

  /// All windows that can be seen, also those inside others, from bottom to top.
  [[nodiscard]] std::vector<ScreenWindow> windows() const;
  /// The topmost window whose class name or title contains `text`.
  [[nodiscard]] std::optional<ScreenWindow> find(const QString& text) const;
  /// Whether some program owns this selection, for example the tray's.
  [[nodiscard]] bool isSelectionOwned(const char* name) const;
  void takeSelection(const char* name);
  /// Whether one that was taken so is still this program's.
  [[nodiscard]] bool holdsSelection(const char* name) const;

  /// The window that gets the keys; 0 if none.
  [[nodiscard]] quint32 keyboardWindow() const;
  void giveKeyboard(quint32 window);
  /// The one that the window manager takes for the one in use; 0 if none.
  [[nodiscard]] quint32 activeWindow() const;
  /// Makes `picture` the desktop's background, from the top left corner on.
  void paintRoot(const QImage& picture);
  /// Opens a window that shows `picture`, with its contents (not its frame) at `position`, and waits until it
  /// is there.
  quint32 openWindow(const QString& title, QPoint position, const QImage& picture,
                     WindowKind kind = WindowKind::Ordinary);
  void closeWindow(quint32 window);
  /// Has the window manager ask a program to close its window, as a click on the frame's cross does.
  void askToClose(quint32 window);
  void setProperty(quint32 window, const char* name, const char* type, const std::vector<quint32>& values);
  /// Whether the window has a property, or a list of names in one has this name in it.
  [[nodiscard]] bool hasProperty(quint32 window, const char* name) const;
  [[nodiscard]] bool isListed(quint32 window, const char* list, const char* name) const;
  /// The desktop itself, the window that holds all others.
  [[nodiscard]] quint32 root() const;
  /// The window with the frame that a window manager has put around it.
  [[nodiscard]] QRect frameOf(quint32 window) const;
  /// Splits the screen into monitors, the first being the primary one.
  void setMonitors(const std::vector<QRect>& monitors);

  /// Takes a key for this program alone, as its hot key. False if another program has it.
  bool grabKey(int evdevCode, int modifiers);
  /// Whether another program has this hot key.
  [[nodiscard]] bool isKeyGrabbed(int evdevCode, int modifiers) const;
  /// False if another program holds the keyboard.
  bool grabKeyboard();
  void ungrabKeyboard();
  /// Whether another program holds the keyboard, or the pointer, at this moment.
  [[nodiscard]] bool isKeyboardGrabbed() const;
  [[nodiscard]] bool isPointerGrabbed() const;
  /// The modifiers that are down or locked now.
  [[nodiscard]] int modifiers() const;
  /// Makes one of the keyboard's layouts the current one.
  void lockGroup(int group);
  /// Exchanges two rows of the modifier map (0 is Shift, 3 is Mod1).
  void exchangeModifiers(size_t one, size_t other);
  /// The X keycodes of the keys that were pressed in windows of this object since the last call.
  [[nodiscard]] std::vector<int> takeKeyPresses();

 private:
  void collect(quint32 window, QPoint origin, std::vector<ScreenWindow>& found) const;
  [[nodiscard]] quint32 atom(const char* name) const;
  [[nodiscard]] QByteArray property(quint32 window, const char* name) const;
  quint32 pixmapOf(const QImage& picture);
  void roundTrip() const;

  const std::string display;
  xcb_connection_t* connection;
  xcb_screen_t* screen = nullptr;
};

/// A picture in which every pixel is random, the same for the same seed: no shift, scaling or lost edge of a
/// copy goes unseen.
[[nodiscard]] QImage randomPicture(QSize size, unsigned seed);

}  // namespace testing_support
