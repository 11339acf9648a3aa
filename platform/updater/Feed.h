#pragma once

#include "platform/base/Result.h"
#include "platform/updater/Version.h"

#include <QByteArray>
#include <QMap>
#include <QUrl>

#include <vector>

namespace platform {

/// What the program's makers publish: the versions that there are. docs/updates.md tells its form. Where it
/// was got and whether it is theirs isn't looked at here.
struct Feed {
  /// A Debian package. Counts only with its signature; who fetches it looks at the address.
  struct Package {
    QUrl address;
    qint64 size = 0;       // in bytes
    QByteArray signature;  // of the whole file by Ed25519, in base64

    bool operator==(const Package&) const = default;
  };
  struct Release {
    Version version;
    QUrl page;                        // for a browser
    QMap<QString, QString> notes;     // plain text by language, as "ko"
    QMap<QString, Package> packages;  // by processor, as QSysInfo::buildCpuArchitecture() names it

    /// In that language, or else in English, or else in any.
    [[nodiscard]] QString notesIn(const QString& language) const;
  };

  /// Grows with each feed that is published.
  qint64 serial = 0;
  std::vector<Release> releases;

  static constexpr qsizetype mostBytes = 1 << 20;
  static constexpr qsizetype mostReleases = 100;
  static constexpr qsizetype longestText = 4000;  // characters
  static constexpr qint64 largestPackage = 256 << 20;
};

/// Refuses as a whole what breaks the form in any place; members that it doesn't know are passed over.
[[nodiscard]] Result<Feed> parseFeed(const QByteArray& json);

}  // namespace platform
