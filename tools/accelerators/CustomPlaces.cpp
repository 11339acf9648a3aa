#include "tools/accelerators/CustomPlaces.h"

#include <algorithm>

namespace {

constexpr std::string_view ownPrefix =
    "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/sorrel-";

bool contains(const std::vector<std::string>& all, const std::string& one) {
  return std::find(all.begin(), all.end(), one) != all.end();
}

}  // namespace

std::string ownPlace(std::string_view name) {
  return std::string(ownPrefix).append(name).append("/");
}

bool isOwnPlace(std::string_view place) {
  return place.starts_with(ownPrefix);
}

std::vector<std::string> withOwnPlaces(const std::vector<std::string>& places,
                                       const std::vector<std::string>& names) {
  std::vector<std::string> wanted;
  for (const std::string& name : names)
    wanted.push_back(ownPlace(name));
  std::vector<std::string> result;
  for (const std::string& place : places)
    if (!isOwnPlace(place) || (contains(wanted, place) && !contains(result, place)))
      result.push_back(place);
  for (const std::string& place : wanted)
    if (!contains(result, place))
      result.push_back(place);
  return result;
}
