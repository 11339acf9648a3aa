#include "tools/accelerators/GnomeCustomKeys.h"

#include "tools/accelerators/CustomPlaces.h"
#include "tools/accelerators/Settings.h"

#include <algorithm>

namespace {

constexpr const char* listSchemaName = "org.gnome.settings-daemon.plugins.media-keys";
constexpr const char* listKey = "custom-keybindings";
constexpr const char* keySchemaName = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
constexpr const char* keyFields[] = {"name", "command", "binding"};
constexpr size_t entrySize = 4;

struct Schemas {
  Schema list = findSchema(listSchemaName);
  Schema key = findSchema(keySchemaName);

  [[nodiscard]] bool areThere() const {
    return list && key && g_settings_schema_has_key(list.get(), listKey) &&
           std::all_of(std::begin(keyFields), std::end(keyFields),
                       [this](const char* field) { return g_settings_schema_has_key(key.get(), field); });
  }
};

/// Writes only what differs: the desktop takes each writing as news.
bool set(GSettings* settings, const char* key, const char* text) {
  const std::vector<std::string> present = texts(settings, key);
  return (present.size() == 1 && present.front() == text) || g_settings_set_string(settings, key, text);
}

bool setList(GSettings* settings, const std::vector<std::string>& places) {
  if (texts(settings, listKey) == places)
    return true;
  std::vector<const char*> pointers;
  for (const std::string& place : places)
    pointers.push_back(place.c_str());
  pointers.push_back(nullptr);
  return g_settings_set_strv(settings, listKey, pointers.data());
}

}  // namespace

bool canAddGnomeKeys() {
  return Schemas().areThere();
}

bool setGnomeKeys(std::span<const char* const> entries) {
  const Schemas schemas;
  if (!schemas.areThere())
    return false;
  const auto keyAt = [&](const std::string& place) {
    return Settings(g_settings_new_full(schemas.key.get(), nullptr, place.c_str()));
  };
  bool isWritten = true;
  std::vector<std::string> names;
  // A key stands whole in its place before the list says that it is there, and goes from the list first.
  for (; !entries.empty(); entries = entries.subspan(entrySize)) {
    names.emplace_back(entries[0]);
    const Settings key = keyAt(ownPlace(entries[0]));
    isWritten = set(key.get(), "name", entries[1]) && set(key.get(), "command", entries[2]) &&
                set(key.get(), "binding", entries[3]) && isWritten;
  }
  const Settings list(g_settings_new_full(schemas.list.get(), nullptr, nullptr));
  const std::vector<std::string> before = texts(list.get(), listKey);
  const std::vector<std::string> after = withOwnPlaces(before, names);
  isWritten = setList(list.get(), after) && isWritten;
  for (const std::string& place : before)
    if (place.ends_with('/') && std::find(after.begin(), after.end(), place) == after.end())
      for (const char* const field : keyFields)
        g_settings_reset(keyAt(place).get(), field);
  g_settings_sync();
  return isWritten;
}
