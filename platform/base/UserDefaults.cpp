#include "platform/base/UserDefaults.h"

#include "platform/base/Locations.h"
#include "platform/base/Log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

namespace platform {
namespace {

std::unique_ptr<UserDefaults>& standardSlot() {
  static std::unique_ptr<UserDefaults> slot;
  return slot;
}

}  // namespace

UserDefaults& UserDefaults::standard() {
  auto& slot = standardSlot();
  if (!slot)
    slot = std::make_unique<UserDefaults>(Locations::configuration() + QStringLiteral("/defaults.json"));
  return *slot;
}

void UserDefaults::resetStandard() {
  standardSlot().reset();
}

UserDefaults::UserDefaults(const QString& path) : filePath(path) {
  read();
}

UserDefaults::~UserDefaults() = default;

void UserDefaults::read() {
  QFile file(filePath);
  if (!file.exists())
    return;
  QString problem;
  if (file.open(QIODevice::ReadOnly)) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    file.close();
    if (document.isObject()) {
      values = document.object();
      return;
    }
    problem = error.errorString();
  } else {
    problem = file.errorString();
  }
  setAside(problem);
}

void UserDefaults::setAside(const QString& problem) {
  QString aside;
  for (int number = 1; aside.isEmpty() || QFile::exists(aside); ++number)
    aside = QStringLiteral("%1.broken%2").arg(filePath).arg(number);
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
  return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

qint64 UserDefaults::integer(const QString& key) const {
  return object(key).toInteger(0);
}

bool UserDefaults::boolean(const QString& key) const {
  return object(key).toBool(false);
}

QStringList UserDefaults::keys() const {
  return values.keys();
}

void UserDefaults::write(const QString& key, const QJsonValue& value) {
  if (object(key) == value)
    return;
  if (value.isUndefined())
    values.remove(key);
  else
    values.insert(key, value);
  if (mayWrite)
    save();
  observers.tell(key);
}

void UserDefaults::save() const {
  QDir().mkpath(QFileInfo(filePath).path());
  QSaveFile file(filePath);  // writes beside the file, syncs, renames
  const QByteArray bytes = QJsonDocument(values).toJson();
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
    log(QStringLiteral("Sorrel settings: %1 can't be written: %2").arg(filePath, file.errorString()));
}

Subscription UserDefaults::observe(const QString& key, std::function<void()> observer) {
  return observers.add([key, observer = std::move(observer)](const QString& changed) {
    if (changed == key)
      observer();
  });
}

}  // namespace platform
