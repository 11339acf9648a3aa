#include "app/shell/CommandLine.h"

#include "app/settings/LocalizationManager.h"

#include <vector>

namespace sorrel {
namespace {

const QString versionOption = QStringLiteral("--version");
const QString helpOption = QStringLiteral("--help");

std::optional<CommandLine> parseOption(const QString& argument) {
  using Kind = CommandLine::Kind;
  if (argument == versionOption)
    return CommandLine{Kind::Version, {}, {}};
  if (argument == helpOption)
    return CommandLine{Kind::Help, {}, {}};
  for (const ActionEntry& entry : allActions) {
    if (argument == optionOf(entry))
      return CommandLine{Kind::Act, entry.action, {}};
  }
  return std::nullopt;
}

CommandLine wrong(const QString& fault) {
  return {CommandLine::Kind::Wrong, {}, fault};
}

}  // namespace

CommandLine parseCommandLine(const QStringList& arguments) {
  CommandLine result;
  for (qsizetype at = 0; at < arguments.size(); ++at) {
    const QString& argument = arguments[at];
    if (argument == QStringLiteral("-session") && at + 1 < arguments.size()) {
      ++at;
      continue;
    }
    const std::optional<CommandLine> option = parseOption(argument);
    if (!option)
      return wrong(QStringLiteral("unknown argument \"%1\"").arg(argument));
    if (result.kind != CommandLine::Kind::Start)
      return wrong(QStringLiteral("only one option at a time, \"%1\" is one too many").arg(argument));
    result = *option;
  }
  return result;
}

QString optionOf(const ActionEntry& entry) {
  return QStringLiteral("--") + QString::fromLatin1(entry.name);
}

QString helpText() {
  std::vector<std::pair<QString, const char*>> rows;
  for (const ActionEntry& entry : allActions)
    rows.emplace_back(optionOf(entry), entry.helpKey);
  rows.emplace_back(versionOption, "commandLine.version");
  rows.emplace_back(helpOption, "commandLine.help");

  qsizetype width = 0;
  for (const auto& [option, key] : rows)
    width = std::max(width, option.size());
  QString text = localized(QStringLiteral("commandLine.usage")) + QStringLiteral("\n\n") +
                 localized(QStringLiteral("commandLine.about")) + QStringLiteral("\n\n");
  for (const auto& [option, key] : rows)
    text +=
        QStringLiteral("  ") + option.leftJustified(width + 2) + localized(QString::fromLatin1(key)) + u'\n';
  return text;
}

}  // namespace sorrel
