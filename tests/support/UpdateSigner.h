#pragma once

#include <QByteArray>
#include <QTemporaryDir>

namespace testing_support {

/// Makes releases as the program's makers do, with a key of its own.
class UpdateSigner {
 public:
  UpdateSigner();

  [[nodiscard]] const QByteArray& publicKey() const { return key; }
  /// The signature's line, then the contents.
  [[nodiscard]] QByteArray feed(const QByteArray& json) const;
  /// `"size": …, "signature": "…"`
  [[nodiscard]] QByteArray packageEntry(const QByteArray& contents) const;
  [[nodiscard]] QByteArray signature(const QByteArray& contents) const;

 private:
  [[nodiscard]] QByteArray run(const QString& command, const QByteArray& contents = {}) const;

  const QTemporaryDir folder;
  const QByteArray key;
};

}  // namespace testing_support
