#pragma once

#include "tests/support/PrivateSession.h"
#include "tests/support/WaylandInput.h"
#include "tests/support/WaylandOutput.h"

#include <QColor>
#include <QImage>
#include <QJsonDocument>
#include <QRect>

#include <functional>
#include <vector>

namespace testing_support {

/// A monitor of the session: so many pixels at this scale, its top left corner at `position` of the space in
/// which all outputs lie (which begins at 0, 0).
struct SwayOutput {
  QSize pixels{1280, 800};
  double scale = 1;
  QPoint position{};
  QColor background{0x66, 0x99, 0xcc};
};

struct SwayOptions {
  std::vector<SwayOutput> outputs{{}};
  XWayland xwayland = XWayland::Off;
  /// Further lines of the compositor's configuration.
  QByteArray configuration{};
  /// Without a name there is no keyboard, as on a tablet.
  QString keyboardLayout = QStringLiteral("us");
};

/// A Wayland session of a test's own: the compositor sway without a display, drawing by the processor, with
/// outputs as they are wished, a pointer and a keyboard. It is no root's program: see becomeOrdinaryUser().
class SwaySession : public PrivateSession {
 public:
  explicit SwaySession(const SwayOptions& options = {});
  ~SwaySession() override;

  [[nodiscard]] WaylandInput& input() { return *hand; }
  /// Moves the pointer to a point of the space in which all outputs lie.
  void moveTo(QPointF point) { hand->moveTo(point, space); }
  /// Presses the left button at the first, goes to the last by way of the middle, and lets go.
  void drag(QPointF from, QPointF to);

  /// What an output shows now, in its pixels and without the pointer.
  [[nodiscard]] QImage picture(size_t output = 0) const;
  /// The same, once it has stayed the same for a tenth of a second.
  [[nodiscard]] QImage settledPicture(size_t output = 0) const;
  /// Shows a picture of the output's pixels behind all windows, and waits until nothing else is there but
  /// bars.
  void setBackground(const QImage& picture, size_t output = 0);
  /// What bars leave of an output, in its pixels.
  [[nodiscard]] QRect freePart(size_t output = 0) const;

  /// Has the compositor do what a line of its configuration or a key of its would; throws if it refuses.
  void command(const QString& line) const;
  /// What it knows: "get_tree", "get_outputs", "get_inputs" or "get_seats".
  [[nodiscard]] QJsonDocument ask(const QString& question) const;
  /// The titles of all windows (not of layers).
  [[nodiscard]] QStringList windowTitles() const;

  [[nodiscard]] wl_display* display() const { return connection.get(); }
  /// Where the compositor takes its commands from, as programs find it in SWAYSOCK.
  [[nodiscard]] QString commandSocket() const { return home(QStringLiteral(".runtime/sway.sock")); }
  [[nodiscard]] Program& compositor() { return *sway; }

 private:
  void startSway(const SwayOptions& options);
  void connectTo(const SwayOptions& options);
  [[nodiscard]] QJsonDocument exchange(quint32 type, const QByteArray& text) const;

  QSize space;
  std::unique_ptr<Program> sway;
  std::unique_ptr<wl_display, void (*)(wl_display*)> connection;
  std::unique_ptr<platform::WaylandGlobals> globals;
  std::vector<std::unique_ptr<WaylandOutput>> outputs;
  std::unique_ptr<WaylandInput> hand;
};

/// A test program that root runs goes on as the user nobody, for good: neither sway nor its programs may be
/// root's. Called before anything else is done.
void becomeOrdinaryUser();

}  // namespace testing_support
