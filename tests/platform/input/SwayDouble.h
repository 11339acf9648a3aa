#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace testing_support {

/// sway's socket, served by the test's own event loop: it keeps what is bound, and answers as sway does.
class SwayDouble {
 public:
  SwayDouble();
  ~SwayDouble();

  [[nodiscard]] QByteArray socketPath() const { return path; }
  /// By keys, as "Mod1+Shift+39" and "--release Mod1+Shift+39": what each does.
  QMap<QString, QString> bindings;
  QByteArray configuration;

  void sendEvent(quint32 type, const QByteArray& text);
  /// sway reads its configuration again, and forgets all that it was told at run time.
  void reload();
  void press(const QString& keys);
  void sendJunk(const QByteArray& bytes);
  void hangUp();

 private:
  void accept();
  void read();
  void answer(quint32 type, const QByteArray& text);
  void send(quint32 type, const QByteArray& text);
  void run(const QString& command);

  QTemporaryDir folder;
  const QByteArray path;
  int listening = -1, connected = -1;
  std::unique_ptr<QSocketNotifier> arrival, reading;
  QByteArray received;
};

}  // namespace testing_support
