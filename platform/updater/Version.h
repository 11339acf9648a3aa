#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <compare>
#include <optional>

namespace platform {

/// The number of a version: "1.10.2", or "1.10.2-beta.3" for one that comes before it.
///
/// One to four whole numbers, which count from the left; one that isn't written is 0, so that "1.10" and
/// "1.10.0" are the same. What stands after a dash makes it a pre-release, and orders these by the rules of
/// Semantic Versioning 2.0.0, 11.4: part by part, numbers by value and before words, words by their
/// characters.
class Version {
 public:
  /// Absent where the text is anything else, be it by a blank, a leading zero or a number of ten digits.
  [[nodiscard]] static std::optional<Version> parse(const QString& text);

  [[nodiscard]] bool isPreRelease() const { return !preRelease.isEmpty(); }
  /// As it was written.
  [[nodiscard]] const QString& text() const { return written; }

  friend std::weak_ordering operator<=>(const Version& left, const Version& right);
  friend bool operator==(const Version& left, const Version& right) { return (left <=> right) == 0; }

 private:
  Version() = default;

  std::array<int, 4> numbers{};
  QStringList preRelease;
  QString written;
};

}  // namespace platform
