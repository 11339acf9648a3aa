#pragma once

#include <gio/gio.h>
#include <memory>
#include <string>
#include <vector>

template <auto release>
struct Release {
  template <typename Type>
  void operator()(Type* object) const {
    release(object);
  }
};
using Schema = std::unique_ptr<GSettingsSchema, Release<g_settings_schema_unref>>;
using Settings = std::unique_ptr<GSettings, Release<g_object_unref>>;
using Value = std::unique_ptr<GVariant, Release<g_variant_unref>>;
using Names = std::unique_ptr<gchar*, Release<g_strfreev>>;

/// Null where it isn't installed.
[[nodiscard]] Schema findSchema(const char* name);

/// The texts under one key; none where it holds something else.
[[nodiscard]] std::vector<std::string> texts(GSettings* settings, const char* key);
