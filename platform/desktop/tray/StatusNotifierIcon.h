#pragma once

#include "platform/desktop/tray/ExportedMenu.h"
#include "platform/desktop/tray/StatusNotifierTypes.h"
#include "platform/desktop/tray/TrayIcon.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>

namespace platform {

/// The icon in a StatusNotifier tray: an object of the interface org.kde.StatusNotifierItem on the session
/// bus, which the desktop's panel shows. All slots, properties and signals are the interface's own.
///
/// The panel shows the exported menu at a right click; one that shows no such menus asks for the program's
/// own. A tray forgets an icon when its connection to the bus goes, so each icon has one of its own. Where
/// the icon is the interface doesn't tell.
class StatusNotifierIcon : public QObject, public TrayIcon {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
  Q_PROPERTY(QString Category READ category CONSTANT)
  Q_PROPERTY(QString Id READ id CONSTANT)
  Q_PROPERTY(QString Title READ title CONSTANT)
  Q_PROPERTY(QString Status READ status CONSTANT)
  Q_PROPERTY(int WindowId READ windowId CONSTANT)
  Q_PROPERTY(QString IconName READ noIconName CONSTANT)
  Q_PROPERTY(QString IconThemePath READ noIconName CONSTANT)
  Q_PROPERTY(platform::StatusNotifier::Pixmaps IconPixmap READ iconPixmap)
  Q_PROPERTY(QString OverlayIconName READ noIconName CONSTANT)
  Q_PROPERTY(QString AttentionIconName READ noIconName CONSTANT)
  Q_PROPERTY(platform::StatusNotifier::ToolTip ToolTip READ toolTip)
  Q_PROPERTY(bool ItemIsMenu READ isMenu CONSTANT)
  Q_PROPERTY(QDBusObjectPath Menu READ menuPath CONSTANT)

 public:
  explicit StatusNotifierIcon(Handlers handlers);
  ~StatusNotifierIcon() override;

  void setImage(const Image& image) override;
  void setToolTip(const QString& text) override;
  void menuChanged() override { menu.update(); }

  [[nodiscard]] QString category() const { return QStringLiteral("ApplicationStatus"); }
  [[nodiscard]] QString id() const;
  [[nodiscard]] QString title() const;
  [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
  [[nodiscard]] int windowId() const { return 0; }
  [[nodiscard]] const StatusNotifier::Pixmaps& iconPixmap() const { return pixmaps; }
  [[nodiscard]] QString noIconName() const { return {}; }
  [[nodiscard]] StatusNotifier::ToolTip toolTip() const;
  [[nodiscard]] bool isMenu() const { return false; }
  [[nodiscard]] QDBusObjectPath menuPath() const;

 public Q_SLOTS:
  void Activate(int x, int y);
  void ContextMenu(int x, int y);
  /// Comes before a click that it belongs to.
  void ProvideXdgActivationToken(const QString& token);
  // A middle click and the wheel mean nothing here.
  void SecondaryActivate(int, int) {}
  void Scroll(int, const QString&) {}

 Q_SIGNALS:
  void NewTitle();
  void NewIcon();
  void NewAttentionIcon();
  void NewOverlayIcon();
  void NewToolTip();
  void NewStatus(const QString& status);

 private:
  void clicked(EventType type, const QPoint& told);

  const Handlers handlers;
  ExportedMenu menu;
  StatusNotifier::Pixmaps pixmaps;
  QString toolTipText;
  QDBusConnection bus;
};

}  // namespace platform
