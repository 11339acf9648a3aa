#pragma once

#include "platform/base/FileWatch.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Result.h"
#include "platform/base/Subscription.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace platform {

/// The name of a setting, and what it is where nothing is stored. An absent text is empty.
template <typename Value>
struct SettingsKey {
  const char* name;
  Value fallback{};
};
template <>
struct SettingsKey<QString> {
  const char* name;
};

/// The program's settings: values by key, kept in one JSON file, which the user may edit while the program
/// runs.
///
/// Reading never fails. A value of another type than the one asked for is read as well as it can be:
/// - as a whole number: of a number its whole part, of true 1, of a text the digits that it begins with
///   ("7 days" is 7), of anything else 0;
/// - as a boolean: a number is true unless it is 0, a text if it begins with a digit other than 0 or with one
///   of "YyTt", blanks, a sign and zeros before that aside;
/// - as a text: a number is its digits; anything else is absent.
///
/// A write changes its own key alone, in the file as it is on the disk then. It is complete on the disk, or
/// has left the old file as it was, when the call returns; one that fails is logged, and the value holds
/// until the program ends.
///
/// A file that can't be read or parsed at the start is set aside beside itself (".broken" and a number are
/// added to its name) with a log line, and the store starts empty; where it can't be set aside it isn't
/// touched. While the program runs, such a file, or none, may be an editor's that is still at it: it gets two
/// seconds, in which writes wait. After that the values from before hold and the file stays as it is, until a
/// write needs its place. Main thread only.
class UserDefaults {
 public:
  /// The settings of this user's Sorrel, under the configuration folder; the file is read at the first use.
  static UserDefaults& standard();

  explicit UserDefaults(const QString& filePath);
  ~UserDefaults();
  UserDefaults(const UserDefaults&) = delete;
  UserDefaults& operator=(const UserDefaults&) = delete;

  /// From now on takes what others write into the file, as soon as they have done so. Makes its folder.
  void watch();

  /// The value as stored; QJsonValue::Undefined where there is none.
  [[nodiscard]] QJsonValue object(const QString& key) const;
  [[nodiscard]] bool contains(const QString& key) const;
  [[nodiscard]] std::optional<QString> string(const QString& key) const;
  /// 0 where there is none.
  [[nodiscard]] qint64 integer(const QString& key) const;
  /// false where there is none.
  [[nodiscard]] bool boolean(const QString& key) const;
  [[nodiscard]] QStringList keys() const;
  /// Whether the file couldn't be read at some time in this run: the user may have chosen otherwise than the
  /// values here say. Who does what can't easily be undone asks this first.
  [[nodiscard]] bool isInDoubt() const;

  void set(const QString& key, const QString& value) { write(key, QJsonValue(value)); }
  void set(const QString& key, qint64 value) { write(key, QJsonValue(value)); }
  void set(const QString& key, int value) { write(key, QJsonValue(value)); }
  void set(const QString& key, bool value) { write(key, QJsonValue(value)); }
  void remove(const QString& key) { write(key, QJsonValue(QJsonValue::Undefined)); }

  /// Calls `observer` after each change of the key's value, whoever made it.
  [[nodiscard]] Subscription observe(const QString& key, std::function<void()> observer);
  /// The same for all keys: the observer is told which. An empty key says that isInDoubt() may have changed.
  [[nodiscard]] Subscription observe(std::function<void(const QString& key)> observer);

  [[nodiscard]] QString value(const SettingsKey<QString>& key) const;
  [[nodiscard]] qint64 value(const SettingsKey<qint64>& key) const;
  [[nodiscard]] bool value(const SettingsKey<bool>& key) const;
  template <typename Value>
  void set(const SettingsKey<Value>& key, const Value& value) {
    set(nameOf(key), value);
  }
  template <typename Value>
  void remove(const SettingsKey<Value>& key) {
    remove(nameOf(key));
  }
  template <typename Value>
  [[nodiscard]] bool contains(const SettingsKey<Value>& key) const {
    return contains(nameOf(key));
  }
  template <typename Value>
  [[nodiscard]] Subscription observe(const SettingsKey<Value>& key, std::function<void()> observer) {
    return observe(nameOf(key), std::move(observer));
  }

 private:
  /// What the file holds; nothing where there is no file.
  using Contents = Result<std::optional<QJsonObject>>;

  template <typename Value>
  static QString nameOf(const SettingsKey<Value>& key) {
    return QString::fromLatin1(key.name);
  }

  [[nodiscard]] Contents read() const;
  void setAside(const QString& problem);
  void write(const QString& key, const QJsonValue& value);
  /// Brings the unsaved values to the file, if that can be done now.
  void flush();
  [[nodiscard]] bool save(const QJsonObject& all);
  void fileChanged();
  void waitForTheRest();
  void stopWaiting();
  /// Makes these the values, but for those that aren't saved yet, and tells the observers.
  void take(QJsonObject all);

  const QString filePath;
  QJsonObject values;
  QMap<QString, QJsonValue> unsaved;
  bool mayWrite = true;       // not over a file that couldn't be read
  bool isUnreadable = false;  // the file, also after waiting for the rest of it
  bool wasSetAside = false;
  WorkItem waiting;
  std::optional<FileWatch> fileWatch;
  Listeners<const QString&> observers;
};

}  // namespace platform
