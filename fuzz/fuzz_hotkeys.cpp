#include "platform/input/Accelerators.h"
#include "platform/input/KdeHotKeys.h"
#include "platform/input/KeyCodes.h"
#include "platform/input/XfceHotKeys.h"
#include "platform/input/XkbKeymap.h"

#include <QByteArray>

#include <cstdint>

namespace {

const platform::KeySymbols& keyboard() {
  static const platform::KeySymbols symbols = [] {
    const platform::XkbContext context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
    const xkb_rule_names names{"evdev", "pc105", "us,ru", "", ""};
    return platform::KeySymbols(
        platform::XkbKeymap(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS))
            .get());
  }();
  return symbols;
}

void parse(const QStringList& accelerators) {
  for (const QString& accelerator : accelerators)
    if (const auto hotKey = platform::parseAccelerator(accelerator, keyboard()))
      if (!platform::evdevCode(hotKey->keyCode) || (hotKey->modifiers & ~0x1B00))
        qFatal("no key with known modifiers");
}

}  // namespace

/// Whatever the settings of a desktop hold, reading them gives keys that there are. The first byte chooses
/// the reader, so that each has seeds of its own.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0)
    return 0;
  const QByteArray text(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size - 1));
  switch (*data) {
    case 'a':
      parse({QString::fromUtf8(text)});
      break;
    case 'k':
      parse(platform::kdeAccelerators(text));
      break;
    case 'x':
      parse(platform::xfceAccelerators(text.left(text.size() / 2), text.mid(text.size() / 2)));
      parse(platform::xfceAccelerators({}, text));
      break;
    default:
      break;
  }
  return 0;
}
