#include "tools/accelerators/Settings.h"

Schema findSchema(const char* name) {
  GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
  return Schema(source ? g_settings_schema_source_lookup(source, name, TRUE) : nullptr);
}

/// The texts under one key; none where it holds something else.
std::vector<std::string> texts(GSettings* settings, const char* key) {
  const Value value(g_settings_get_value(settings, key));
  if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING))
    return {g_variant_get_string(value.get(), nullptr)};
  std::vector<std::string> found;
  if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY)) {
    GVariantIter entries;
    g_variant_iter_init(&entries, value.get());
    for (const gchar* entry = nullptr; g_variant_iter_next(&entries, "&s", &entry);)
      found.emplace_back(entry);
  }
  return found;
}
