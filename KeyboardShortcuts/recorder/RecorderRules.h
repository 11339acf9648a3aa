#pragma once

#include "KeyboardShortcuts/Conflicts.h"
#include "platform/base/Event.h"

#include <QRectF>
#include <QString>

#include <optional>

/// What a recorder makes of the user's keys and clicks: decisions alone, nothing is done here.
namespace KeyboardShortcuts {

/// What a key is for when it is pressed alone, wherever the user's layout has it.
enum class KeyMeaning { Other, Tab, Escape, Delete };

struct RecorderEvent {
  platform::Event event;
  KeyMeaning meaning = KeyMeaning::Other;  // of a key event
  QPointF location;                        // of a mouse event, in points of the screen
};

struct RecorderContext {
  /// Of the field, in points of the screen.
  QRectF bounds;
  /// The program's own menu, if it has one.
  const platform::Menu* mainMenu = nullptr;
  Surroundings surroundings;
};

enum class RecorderAction {
  PassOn,      // the event isn't the recorder's
  EndAndPass,  // recording ends, and the event goes to whom it is meant for
  Drop,        // in this case and in all that follow nobody else hears of the event
  End,
  Clear,
  Beep,
  RefuseForMenu,     // with the item's title
  RefuseDisallowed,  // the system would never report the shortcut
  AskWhetherToForce,
  Save,
};

struct RecorderDecision {
  RecorderAction action = RecorderAction::PassOn;
  /// What was pressed, for AskWhetherToForce and Save.
  std::optional<Shortcut> shortcut;
  QString menuItemTitle;

  bool operator==(const RecorderDecision&) const = default;
};

/// What the desktop keeps for itself is asked for only if nothing else decides.
[[nodiscard]] RecorderDecision decide(const RecorderEvent& event, const RecorderContext& context);

}  // namespace KeyboardShortcuts
