#pragma once

#include "tests/e2e/Desktop.h"

#include <QJsonValue>

namespace e2e {

/// The real program, running on a desktop, and what its user does with it.
class Sorrel {
 public:
  /// Starts it, and waits until its hot keys are there. `program` is the built one unless said otherwise.
  explicit Sorrel(Desktop& desktop, const QString& program = built(), const QStringList& arguments = {});

  /// The program in the build tree, beside its capture tool; or another, which SORREL_PROGRAM names.
  [[nodiscard]] static QString built();
  /// Puts a value into the store of a user whose Sorrel isn't running.
  static void store(Desktop& desktop, const QString& key, const QJsonValue& value);
  /// The value that the store holds; undefined if none.
  [[nodiscard]] static QJsonValue stored(const Desktop& desktop, const QString& key);

  /// Puts a picture into the bottle, as an earlier run would have; its path.
  static QString putPicture(Desktop& desktop, const QString& name, const QImage& picture);

  [[nodiscard]] Program& program() { return *process; }

  /// Presses a key together with Alt and Shift, by its position, and lets go.
  void pressHotKey(int evdevCode);
  [[nodiscard]] bool isSelecting();
  /// Presses the hot key of a capture and waits until the screen can be selected from.
  void beginCapture(int evdevCode);
  void waitUntilSelecting();
  /// Drags over an area, its edges included.
  void drag(const QRect& area);
  /// Waits until there is a picture in the bottle that isn't among `before`, and the selection is gone; the
  /// new picture's path.
  QString waitForCapture(const QStringList& before);
  /// A whole capture to a file with Alt, Shift and S; the new picture's path.
  QString capture(const QRect& area);
  /// Cancels a selection, and waits until it is gone.
  void cancel();

  /// The absolute path of the folder that the captures go to.
  [[nodiscard]] QString bottlePath() const;
  /// The names of the pictures in it, the unfinished ones too.
  [[nodiscard]] QStringList bottle() const;

  /// Where the icon is in an XEmbed tray, once it has been drawn there.
  [[nodiscard]] QRect statusItem();
  /// What the icon looks like in the tray.
  [[nodiscard]] QImage statusImage();
  /// Opens the menu with the right button and returns its place.
  QRect openMenu();
  [[nodiscard]] bool isMenuOpen();

 private:
  Desktop& desktop;
  std::unique_ptr<Program> process;
};

}  // namespace e2e
