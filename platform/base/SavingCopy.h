#pragma once

#include "platform/base/InPlaceFile.h"
#include "platform/system/Descriptor.h"

#include <QString>

#include <vector>

namespace platform {

/// What is about to be written over a file, complete on the disk before the writing begins: a file of its own
/// in the folder "saving" of the program's state folder. It is locked for as long as this object lives, so
/// that what another instance is just writing can be told from what a run has left behind.
class SavingCopy {
 public:
  struct Target {
    QByteArray path;
    FileIdentity identity;
  };

  static Result<SavingCopy> make(const Target& target, const QByteArray& data);
  /// Those that runs which have ended left behind, oldest first.
  [[nodiscard]] static std::vector<SavingCopy> left();

  [[nodiscard]] const Target& target() const { return about; }
  [[nodiscard]] const QByteArray& data() const { return bytes; }

  void remove();
  /// The same for all that earlier writes to the path have left: they are out of date.
  static void removeAllOf(const QByteArray& path);
  /// Makes a file of the data alone, in the folder "kept" beside it, and removes the copy. Returns that
  /// file's path.
  Result<QString> keep();

 private:
  SavingCopy(QByteArray path, Descriptor file, Target target, QByteArray data)
      : ownPath(std::move(path)), locked(std::move(file)), about(std::move(target)), bytes(std::move(data)) {}
  [[nodiscard]] static std::optional<SavingCopy> read(const QByteArray& path);

  QByteArray ownPath;
  Descriptor locked;
  Target about;
  QByteArray bytes;
};

}  // namespace platform
