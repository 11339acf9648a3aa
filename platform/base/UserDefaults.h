#pragma once

#include "platform/base/Subscription.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace platform {

/// The program's settings: typed values by key, kept in one JSON file.
///
/// Reading never fails: a key that is absent, or holds another type than the one asked for, reads as absent.
/// A file that can't be read or parsed is set aside beside itself (".broken" and a number are added to its
/// name) with a log line, and the store starts empty; where it can't be set aside it isn't touched. A write
/// is complete on the disk, or has left the old file as it was, when the call returns; a write that fails is
/// logged, and the value holds until the program ends. Main thread only.
class UserDefaults {
 public:
  /// The settings of this user's Sorrel, under the configuration folder; the file is read at the first use.
  static UserDefaults& standard();
  /// Forgets the standard settings, so that the next use reads them anew: for a test that has moved the home
  /// folder.
  static void resetStandard();

  explicit UserDefaults(const QString& filePath);
  ~UserDefaults();
  UserDefaults(const UserDefaults&) = delete;
  UserDefaults& operator=(const UserDefaults&) = delete;

  /// The value as stored; QJsonValue::Undefined where there is none.
  [[nodiscard]] QJsonValue object(const QString& key) const;
  [[nodiscard]] bool contains(const QString& key) const;
  [[nodiscard]] std::optional<QString> string(const QString& key) const;
  /// 0 where the key holds no whole number.
  [[nodiscard]] qint64 integer(const QString& key) const;
  /// false where the key holds no boolean.
  [[nodiscard]] bool boolean(const QString& key) const;
  [[nodiscard]] QStringList keys() const;

  void set(const QString& key, const QString& value) { write(key, QJsonValue(value)); }
  void set(const QString& key, qint64 value) { write(key, QJsonValue(value)); }
  void set(const QString& key, int value) { write(key, QJsonValue(value)); }
  void set(const QString& key, bool value) { write(key, QJsonValue(value)); }
  void remove(const QString& key) { write(key, QJsonValue(QJsonValue::Undefined)); }

  /// Calls `observer` after each change of the key's value.
  [[nodiscard]] Subscription observe(const QString& key, std::function<void()> observer);

 private:
  void read();
  void setAside(const QString& problem);
  void save() const;
  void write(const QString& key, const QJsonValue& value);

  const QString filePath;
  QJsonObject values;
  bool mayWrite = true;  // not over a file that couldn't be read
  Listeners<const QString&> observers;
};

}  // namespace platform
