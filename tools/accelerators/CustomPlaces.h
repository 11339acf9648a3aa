#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The place among GNOME's settings of the custom hot key that this program has under a name.
[[nodiscard]] std::string ownPlace(std::string_view name);
[[nodiscard]] bool isOwnPlace(std::string_view place);

/// The list of places with this program's own replaced by those of `names`. All others stay as they are and
/// where they are; one of ours that is there already keeps its place, and new ones follow at the end.
[[nodiscard]] std::vector<std::string> withOwnPlaces(const std::vector<std::string>& places,
                                                     const std::vector<std::string>& names);
