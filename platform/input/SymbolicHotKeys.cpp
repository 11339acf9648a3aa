#include "platform/input/SymbolicHotKeys.h"

#include "platform/base/Environment.h"

namespace platform {

std::vector<SymbolicHotKey> copySymbolicHotKeys() {
  const auto reader = Environment::shared<SymbolicHotKeysReader>([] { return nullptr; });
  return reader ? (*reader)() : std::vector<SymbolicHotKey>();
}

}  // namespace platform
