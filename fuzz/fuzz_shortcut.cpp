#include "KeyboardShortcuts/Shortcut.h"

#include <QByteArray>

#include <cstdint>

namespace {

void storeAgain(const QByteArray& text) {
  using KeyboardShortcuts::Shortcut;
  const std::optional<Shortcut> shortcut = Shortcut::decode(QString::fromUtf8(text));
  if (shortcut && Shortcut::decode(shortcut->encoded()) != shortcut)
    qFatal("not the same after being stored again");
}

}  // namespace

/// Whatever text the settings hold for a shortcut either is none or survives being stored again. The parser
/// is the toolkit's and tells the fuzzer nothing, so the bytes are tried inside the right object too.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  storeAgain(bytes);
  const qsizetype half = bytes.size() / 2;
  storeAgain("{\"carbonKeyCode\":" + bytes.left(half) + ",\"carbonModifiers\":" + bytes.mid(half) + '}');
  return 0;
}
