#include "platform/input/SymbolicHotKeys.h"

namespace platform {
namespace {

SymbolicHotKeysReader& currentReader() {
  static SymbolicHotKeysReader reader;
  return reader;
}

}  // namespace

std::optional<QVariant> copySymbolicHotKeys() {
  return currentReader() ? currentReader()() : QVariant(QVariantList());
}

void setSymbolicHotKeysReader(SymbolicHotKeysReader reader) {
  currentReader() = std::move(reader);
}

}  // namespace platform
