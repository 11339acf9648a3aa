// accelerators gnome|cinnamon|mate
//
// Prints, a line each, the texts among the desktop's settings of hot keys: those of the window manager, the
// shell and the media keys, and those that the user has added. Most are accelerators ("<Super>l"), some
// aren't ("disabled"). A schema that isn't installed is passed over, and so is what this tool has added.
//
// accelerators gnome-can-add
//
// Ends with 0 where the desktop has custom hot keys.
//
// accelerators gnome-set [NAME TEXT COMMAND ACCELERATOR]...
//
// Makes these the program's own custom hot keys, and takes away those that it had else. Ends with 0 when they
// are written.

#include "tools/accelerators/CustomPlaces.h"
#include "tools/accelerators/GnomeCustomKeys.h"
#include "tools/accelerators/Settings.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <string_view>

namespace {

/// Hot keys that the user has added: a place of one schema for each.
struct CustomKeys {
  const char* schema;
  /// The setting that lists the places, whole or without the folder; without one, they are numbered.
  const char* listSchema;
  const char* listKey;
  const char* folder;
};

struct Desktop {
  std::string_view name;
  std::span<const char* const> schemas;
  CustomKeys custom;
};

constexpr std::array gnomeSchemas{
    "org.gnome.desktop.wm.keybindings",     "org.gnome.mutter.keybindings",
    "org.gnome.mutter.wayland.keybindings", "org.gnome.shell.keybindings",
    "org.gnome.metacity.keybindings",       "org.gnome.settings-daemon.plugins.media-keys"};
constexpr std::array cinnamonSchemas{
    "org.cinnamon.desktop.keybindings", "org.cinnamon.desktop.keybindings.wm",
    "org.cinnamon.desktop.keybindings.media-keys", "org.cinnamon.muffin.keybindings"};
constexpr std::array mateSchemas{"org.mate.Marco.global-keybindings", "org.mate.Marco.window-keybindings",
                                 "org.mate.SettingsDaemon.plugins.media-keys"};
constexpr std::array desktops{
    Desktop{"gnome",
            gnomeSchemas,
            {"org.gnome.settings-daemon.plugins.media-keys.custom-keybinding",
             "org.gnome.settings-daemon.plugins.media-keys", "custom-keybindings", ""}},
    Desktop{"cinnamon",
            cinnamonSchemas,
            {"org.cinnamon.desktop.keybindings.custom-keybinding", "org.cinnamon.desktop.keybindings",
             "custom-list", "/org/cinnamon/desktop/keybindings/custom-keybindings/"}},
    Desktop{"mate",
            mateSchemas,
            {"org.mate.control-center.keybinding", nullptr, nullptr, "/org/mate/desktop/keybindings/"}}};

constexpr int numberedPlaces = 32;

void print(const std::vector<std::string>& lines) {
  for (const std::string& line : lines)
    std::puts(line.c_str());
}

void printAll(const char* schemaName) {
  const Schema schema = findSchema(schemaName);
  if (!schema || !g_settings_schema_get_path(schema.get()))
    return;
  const Settings settings(g_settings_new_full(schema.get(), nullptr, nullptr));
  const Names keys(g_settings_schema_list_keys(schema.get()));
  for (gchar** key = keys.get(); *key; ++key)
    print(texts(settings.get(), *key));
}

std::vector<std::string> customPlaces(const CustomKeys& custom) {
  std::vector<std::string> places;
  if (!custom.listSchema) {
    for (int number = 0; number < numberedPlaces; ++number)
      places.push_back(custom.folder + ("custom" + std::to_string(number)) + '/');
    return places;
  }
  const Schema schema = findSchema(custom.listSchema);
  if (!schema || !g_settings_schema_has_key(schema.get(), custom.listKey))
    return {};
  const Settings settings(g_settings_new_full(schema.get(), nullptr, nullptr));
  for (const std::string& entry : texts(settings.get(), custom.listKey))
    places.push_back(entry.starts_with('/') ? entry : custom.folder + entry + '/');
  return places;
}

void printCustom(const CustomKeys& custom) {
  const Schema schema = findSchema(custom.schema);
  if (!schema || g_settings_schema_get_path(schema.get()) ||
      !g_settings_schema_has_key(schema.get(), "binding"))
    return;
  for (const std::string& place : customPlaces(custom)) {
    // Anything else would end this program.
    const bool isPath = place.size() > 1 && place.starts_with('/') && place.ends_with('/') &&
                        place.find("//") == std::string::npos;
    if (!isPath || isOwnPlace(place))
      continue;
    const Settings settings(g_settings_new_full(schema.get(), nullptr, place.c_str()));
    print(texts(settings.get(), "binding"));
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view wanted = argc >= 2 ? argv[1] : "";
  const std::span<const char* const> rest(argv + 2, static_cast<size_t>(std::max(argc - 2, 0)));
  if (wanted == "gnome-can-add" && rest.empty())
    return canAddGnomeKeys() ? 0 : 1;
  if (wanted == "gnome-set" && rest.size() % 4 == 0)
    return setGnomeKeys(rest) ? 0 : 1;
  for (const Desktop& desktop : desktops)
    if (desktop.name == wanted && rest.empty()) {
      for (const char* const schema : desktop.schemas)
        printAll(schema);
      printCustom(desktop.custom);
      return 0;
    }
  std::fputs("usage: accelerators gnome|cinnamon|mate|gnome-can-add|gnome-set [NAME TEXT COMMAND KEYS]...\n",
             stderr);
  return 2;
}
