#pragma once

#include <QByteArrayView>

#include <array>
#include <optional>

namespace sorrel {

/// What the user can have the program do from wherever he is: by a hot key, from a terminal, or through the
/// desktop.
enum class Action { Capture, CaptureAndEdit, CaptureToClipboard, History, Settings, Quit };

struct ActionEntry {
  Action action;
  const char* name;     // for the desktop; an option of the command line with two dashes before it
  const char* helpKey;  // of the line that explains the option
};

inline constexpr std::array<ActionEntry, 6> allActions{{
    {Action::Capture, "capture", "commandLine.capture"},
    {Action::CaptureAndEdit, "capture-and-edit", "commandLine.captureAndEdit"},
    {Action::CaptureToClipboard, "capture-to-clipboard", "commandLine.captureToClipboard"},
    {Action::History, "history", "commandLine.history"},
    {Action::Settings, "settings", "commandLine.settings"},
    {Action::Quit, "quit", "commandLine.quit"},
}};

[[nodiscard]] std::optional<Action> actionNamed(QByteArrayView name);
[[nodiscard]] const char* nameOf(Action action);

}  // namespace sorrel
