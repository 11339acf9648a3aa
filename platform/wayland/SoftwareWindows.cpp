#include "platform/wayland/SoftwareWindows.h"

#include "platform/wayland/WaylandConnection.h"

#include <QLoggingCategory>
#include <QOpenGLContext>

#include <algorithm>

namespace platform {
namespace {

// The name of one of the toolkit's plugins, asked for where the compositor's hint is to be ignored.
constexpr auto pluginVariable = "QT_WAYLAND_CLIENT_BUFFER_INTEGRATION";
constexpr auto ignoreVariable = "QT_WAYLAND_DISABLE_HW_INTEGRATION";

bool compositorDrawsFrames() {
  return std::ranges::any_of(waylandGlobals()->all(), [](const WaylandGlobals::Global& global) {
    return global.interface == "zxdg_decoration_manager_v1";
  });
}

}  // namespace

SoftwareWindows::SoftwareWindows()
    : isChosen(!qEnvironmentVariableIsSet(pluginVariable) && !qEnvironmentVariableIsSet(ignoreVariable)) {
  if (!isChosen)
    return;
  qputenv(pluginVariable, "none");
  qputenv(ignoreVariable, "1");
}

SoftwareWindows::~SoftwareWindows() {
  if (!isChosen)
    return;
  if (waylandDisplay() && compositorDrawsFrames()) {
    QLoggingCategory::setFilterRules(
        QStringLiteral("qt.qpa.wayland.warning=false"));  // there is no such plugin
    QOpenGLContext::supportsThreadedOpenGL();  // the plugin is looked for once, when it is first needed
    QLoggingCategory::setFilterRules({});
  }
  qunsetenv(pluginVariable);
  qunsetenv(ignoreVariable);
}

}  // namespace platform
