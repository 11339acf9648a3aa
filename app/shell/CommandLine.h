#pragma once

#include "app/shell/Actions.h"

#include <QStringList>

namespace sorrel {

/// What the program was started for.
struct CommandLine {
  enum class Kind { Start, Act, Version, Help, Wrong };

  Kind kind = Kind::Start;
  std::optional<Action> action;  // with Act
  QString fault;                 // with Wrong: a line for standard error, in English as the log is

  bool operator==(const CommandLine&) const = default;
};

/// `arguments` without the program's own name. Takes one option, beside what a session manager adds when it
/// starts again what was running ("-session ID").
[[nodiscard]] CommandLine parseCommandLine(const QStringList& arguments);

/// The option of an action, as the user writes it.
[[nodiscard]] QString optionOf(const ActionEntry& entry);

/// The lines that explain all options, in the interface language.
[[nodiscard]] QString helpText();

}  // namespace sorrel
