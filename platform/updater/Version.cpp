#include "platform/updater/Version.h"

#include <QRegularExpression>

namespace platform {
namespace {

constexpr qsizetype longest = 64;

bool isNumber(const QString& part) {
  return std::all_of(part.begin(), part.end(), [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
}

std::weak_ordering orderOf(int comparison) {
  return comparison <=> 0;
}

/// Numbers of any length: without leading zeros the longer one is the greater.
std::weak_ordering comparePart(const QString& left, const QString& right) {
  if (isNumber(left) != isNumber(right))
    return isNumber(left) ? std::weak_ordering::less : std::weak_ordering::greater;
  if (isNumber(left) && left.size() != right.size())
    return left.size() <=> right.size();
  return orderOf(left.compare(right));
}

}  // namespace

std::optional<Version> Version::parse(const QString& text) {
  static const QRegularExpression form(QStringLiteral(
      R"(\A((?:0|[1-9][0-9]{0,8})(?:\.(?:0|[1-9][0-9]{0,8})){0,3}))"
      R"((?:-((?:0|[1-9][0-9]*|[0-9]*[A-Za-z][0-9A-Za-z]*)(?:\.(?:0|[1-9][0-9]*|[0-9]*[A-Za-z][0-9A-Za-z]*))*))?\z)"));
  if (text.size() > longest)
    return {};
  const QRegularExpressionMatch match = form.match(text);
  if (!match.hasMatch())
    return {};
  Version version;
  const QStringList numbers = match.captured(1).split(u'.');
  std::transform(numbers.begin(), numbers.end(), version.numbers.begin(),
                 [](const QString& number) { return number.toInt(); });
  version.preRelease = match.captured(2).split(u'.', Qt::SkipEmptyParts);
  version.written = text;
  return version;
}

std::weak_ordering operator<=>(const Version& left, const Version& right) {
  if (const auto order = left.numbers <=> right.numbers; order != 0)
    return order;
  if (left.isPreRelease() != right.isPreRelease())
    return left.isPreRelease() ? std::weak_ordering::less : std::weak_ordering::greater;
  for (qsizetype i = 0; i < std::min(left.preRelease.size(), right.preRelease.size()); ++i)
    if (const auto order = comparePart(left.preRelease[i], right.preRelease[i]); order != 0)
      return order;
  return left.preRelease.size() <=> right.preRelease.size();
}

}  // namespace platform
