#include "platform/input/SymbolicHotKeys.h"

#include "platform/base/Environment.h"
#include "platform/input/Accelerators.h"
#include "platform/input/DesktopHotKeys.h"
#include "platform/input/HotKeyService.h"
#include "platform/input/LatinKeys.h"

#include <algorithm>

namespace platform {
namespace {

KeySymbols readSymbols() {
  const Keyboard keyboard = readKeyboard();
  return keyboard.keymap ? KeySymbols(keyboard.keymap.get()) : KeySymbols();
}

/// Each but once.
std::vector<SymbolicHotKey> readDesktop() {
  const HotKeyDesktop desktop = runningHotKeyDesktop();
  const auto accelerators = readAccelerators(desktop);
  std::vector<SymbolicHotKey> all = HotKeyService::current().takenByOthers();
  const KeySymbols keyboard = desktop == HotKeyDesktop::None ? KeySymbols() : readSymbols();
  for (const QString& accelerator : accelerators()) {
    const std::optional<SymbolicHotKey> hotKey = parseAccelerator(accelerator, keyboard);
    if (hotKey && std::ranges::find(all, *hotKey) == all.end())
      all.push_back(*hotKey);
  }
  return all;
}

}  // namespace

std::vector<SymbolicHotKey> copySymbolicHotKeys() {
  const auto reader = Environment::shared<SymbolicHotKeysReader>([] { return nullptr; });
  return reader ? (*reader)() : std::vector<SymbolicHotKey>();
}

std::shared_ptr<SymbolicHotKeysReader> symbolicHotKeysOfDesktop() {
  return std::make_shared<SymbolicHotKeysReader>(readDesktop);
}

}  // namespace platform
