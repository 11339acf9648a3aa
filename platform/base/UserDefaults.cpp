#include "platform/base/UserDefaults.h"

#include "platform/base/Environment.h"
#include "platform/base/Locations.h"
#include "platform/base/Log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

#include <cmath>
#include <limits>

namespace platform {
namespace {

using namespace std::chrono_literals;

/// How long an editor may take to write a file in pieces, or to put another in its place.
constexpr auto editorsTime = 2s;

using Integers = std::numeric_limits<qint64>;

void put(QJsonObject& values, const QString& key, const QJsonValue& value) {
  if (value.isUndefined())
    values.remove(key);
  else
    values.insert(key, value);
}

qint64 integerOf(const QJsonValue& number) {
  if (const qint64 exact = number.toInteger(0); exact == number.toInteger(1))
    return exact;
  const double value = std::trunc(number.toDouble());
  if (value <= static_cast<double>(Integers::min()))
    return Integers::min();
  return value >= static_cast<double>(Integers::max()) ? Integers::max() : static_cast<qint64>(value);
}

/// The number that a text begins with, if it does; the nearest that there is where it is too large.
qint64 leadingInteger(QStringView text) {
  text = text.trimmed();
  const bool isNegative = text.startsWith(u'-');
  if (isNegative || text.startsWith(u'+'))
    text = text.sliced(1);
  qint64 value = 0;
  for (const QChar character : text) {
    if (character < u'0' || character > u'9')
      break;
    const int digit = character.unicode() - u'0';
    if (value > (Integers::max() - digit) / 10)
      return isNegative ? Integers::min() : Integers::max();
    value = value * 10 + digit;
  }
  return isNegative ? -value : value;
}

bool beginsLikeTrue(QStringView text) {
  text = text.trimmed();
  if (text.startsWith(u'-') || text.startsWith(u'+'))
    text = text.sliced(1);
  while (text.startsWith(u'0'))
    text = text.sliced(1);
  return !text.isEmpty() && QStringView(u"YyTt123456789").contains(text.front());
}

}  // namespace

UserDefaults& UserDefaults::standard() {
  return *Environment::shared<UserDefaults>([] {
    return std::make_shared<UserDefaults>(Locations::configuration() + QStringLiteral("/defaults.json"));
  });
}

UserDefaults::UserDefaults(const QString& path) : filePath(path) {
  const Contents contents = read();
  if (!contents)
    setAside(contents.error().reason);
  else if (*contents)
    values = **contents;
}

UserDefaults::~UserDefaults() = default;

void UserDefaults::watch() {
  QDir().mkpath(QFileInfo(filePath).path());
  if (!fileWatch)
    fileWatch.emplace(filePath, [this] { fileChanged(); });
}

UserDefaults::Contents UserDefaults::read() const {
  QFile file(filePath);
  if (!file.exists())
    return std::optional<QJsonObject>();
  if (!file.open(QIODevice::ReadOnly))
    return Error{file.errorString()};
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
  if (error.error != QJsonParseError::NoError)
    return Error{error.errorString()};
  if (!document.isObject())
    return Error{QStringLiteral("it holds a list, not values by name")};
  return std::optional(document.object());
}

void UserDefaults::setAside(const QString& problem) {
  QString aside;
  for (int number = 1; aside.isEmpty() || QFile::exists(aside); ++number)
    aside = QStringLiteral("%1.broken%2").arg(filePath).arg(number);
  wasSetAside = true;
  mayWrite = QFile::rename(filePath, aside);
  log(QStringLiteral("Sorrel settings: %1 can't be read (%2); %3")
          .arg(filePath, problem,
               mayWrite
                   ? QStringLiteral("set aside as %1").arg(QFileInfo(aside).fileName())
                   : QStringLiteral("it can't be set aside either, so changes last until the end only")));
}

QJsonValue UserDefaults::object(const QString& key) const {
  const auto entry = values.constFind(key);
  return entry == values.constEnd() ? QJsonValue(QJsonValue::Undefined) : *entry;
}

bool UserDefaults::contains(const QString& key) const {
  return values.contains(key);
}

std::optional<QString> UserDefaults::string(const QString& key) const {
  const QJsonValue value = object(key);
  if (value.isDouble())
    return value.toVariant().toString();
  return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

qint64 UserDefaults::integer(const QString& key) const {
  const QJsonValue value = object(key);
  if (value.isString())
    return leadingInteger(value.toString());
  return value.isBool() ? qint64(value.toBool()) : integerOf(value);
}

bool UserDefaults::boolean(const QString& key) const {
  const QJsonValue value = object(key);
  if (value.isString())
    return beginsLikeTrue(value.toString());
  return value.toBool() || value.toDouble() != 0;
}

QStringList UserDefaults::keys() const {
  return values.keys();
}

bool UserDefaults::isInDoubt() const {
  return wasSetAside || isUnreadable || waiting.isPending();
}

QString UserDefaults::value(const SettingsKey<QString>& key) const {
  return string(nameOf(key)).value_or(QString());
}

qint64 UserDefaults::value(const SettingsKey<qint64>& key) const {
  return contains(key) ? integer(nameOf(key)) : key.fallback;
}

bool UserDefaults::value(const SettingsKey<bool>& key) const {
  return contains(key) ? boolean(nameOf(key)) : key.fallback;
}

void UserDefaults::write(const QString& key, const QJsonValue& value) {
  if (object(key) == value)
    return;
  put(values, key, value);
  unsaved.insert(key, value);
  flush();
  observers.tell(key);
}

void UserDefaults::flush() {
  if (!mayWrite || unsaved.isEmpty())
    return;
  const Contents contents = read();
  if (!contents && !isUnreadable) {
    waitForTheRest();
    return;
  }
  if (!contents)
    setAside(contents.error().reason);
  if (!mayWrite)
    return;
  isUnreadable = false;
  QJsonObject all = contents && *contents ? **contents : values;
  for (auto entry = unsaved.cbegin(); entry != unsaved.cend(); ++entry)
    put(all, entry.key(), entry.value());
  if (save(all))
    unsaved.clear();
  take(all);
}

bool UserDefaults::save(const QJsonObject& all) {
  QDir().mkpath(QFileInfo(filePath).path());
  if (fileWatch)
    fileWatch->arm();
  QSaveFile file(filePath);  // writes beside the file, syncs, renames
  const QByteArray bytes = QJsonDocument(all).toJson();
  if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
    return true;
  log(QStringLiteral("Sorrel settings: %1 can't be written: %2").arg(filePath, file.errorString()));
  return false;
}

void UserDefaults::fileChanged() {
  const bool wasInDoubt = isInDoubt();
  isUnreadable = false;
  const Contents contents = read();
  waiting.cancel();
  if (!contents || !*contents) {
    waitForTheRest();
    return;
  }
  mayWrite = true;  // whoever could put it right, if it couldn't be set aside
  take(**contents);
  flush();
  if (isInDoubt() != wasInDoubt)
    observers.tell(QString());
}

void UserDefaults::waitForTheRest() {
  if (!waiting.isPending())
    waiting = MainQueue::main().asyncAfter(editorsTime, [this] { stopWaiting(); });
}

void UserDefaults::stopWaiting() {
  const Contents contents = read();
  if (contents) {
    take(contents->value_or(QJsonObject()));
  } else {
    isUnreadable = true;
    log(QStringLiteral("Sorrel settings: %1 can't be read (%2); what it held before is still in force")
            .arg(filePath, contents.error().reason));
  }
  flush();
  observers.tell(QString());
}

void UserDefaults::take(QJsonObject all) {
  for (auto entry = unsaved.cbegin(); entry != unsaved.cend(); ++entry)
    put(all, entry.key(), entry.value());
  const QJsonObject before = std::exchange(values, all);
  QStringList changed;
  for (auto entry = before.begin(); entry != before.end(); ++entry)
    if (all.value(entry.key()) != entry.value())
      changed << entry.key();
  for (auto entry = all.begin(); entry != all.end(); ++entry)
    if (!before.contains(entry.key()))
      changed << entry.key();
  for (const QString& key : changed)
    observers.tell(key);
}

Subscription UserDefaults::observe(const QString& key, std::function<void()> observer) {
  return observers.add([key, observer = std::move(observer)](const QString& changed) {
    if (changed == key)
      observer();
  });
}

Subscription UserDefaults::observe(std::function<void(const QString&)> observer) {
  return observers.add(std::move(observer));
}

}  // namespace platform
