#include "app/shell/Actions.h"

#include <algorithm>

namespace sorrel {

std::optional<Action> actionNamed(QByteArrayView name) {
  const auto* const match = std::find_if(allActions.begin(), allActions.end(),
                                         [&](const ActionEntry& entry) { return name == entry.name; });
  return match == allActions.end() ? std::nullopt : std::optional(match->action);
}

const char* nameOf(Action action) {
  return std::find_if(allActions.begin(), allActions.end(),
                      [&](const ActionEntry& entry) { return entry.action == action; })
      ->name;
}

}  // namespace sorrel
