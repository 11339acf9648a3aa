#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace testing_support {

/// What is in a file. These throw std::runtime_error, which fails the test, where it can't be done.
[[nodiscard]] QByteArray contentsOf(const QString& path);
/// Writes a file, making the folders above it.
void writeFile(const QString& path, const QByteArray& contents);
/// Dates an existing file.
void setModified(const QString& path, const QDateTime& time);

}  // namespace testing_support
