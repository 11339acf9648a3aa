#include "KeyboardShortcuts/Modifiers.h"
#include "KeyboardShortcuts/Shortcut.h"
#include "KeyboardShortcuts/SpecialKey.h"
#include "platform/input/KeyboardLayout.h"

#include <QTextBoundaryFinder>

#include <limits>

namespace KeyboardShortcuts {
namespace {

bool isOneCharacter(const QString& text) {
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  return !text.isEmpty() && finder.toNextBoundary() == text.size();
}

QString capitalized(const QString& character) {
  const QString upper = character.toUpper();  // may be longer: the German sharp s
  const bool isPair = upper.at(0).isHighSurrogate();
  const qsizetype first = isPair ? 2 : 1;
  return upper.left(first) + upper.mid(first).toLower();
}

}  // namespace

std::optional<QString> Shortcut::keyToCharacter() const {
  const auto* const layout = platform::KeyboardLayout::current();
  if (!layout || keyToSpecialKeyMapping().contains(key()))
    return std::nullopt;
  if (code < 0 || code > std::numeric_limits<quint16>::max())
    return std::nullopt;
  const auto translation = layout->translate(static_cast<quint16>(code));
  if (!translation || translation->status != 0 || !isOneCharacter(translation->text))
    return std::nullopt;
  return translation->text;
}

QString Shortcut::presentableDescription() const {
  const QString symbols = ks_symbolicRepresentation(modifiers());
  const auto special = keyToSpecialKeyMapping().constFind(key());
  if (special != keyToSpecialKeyMapping().constEnd())
    return symbols + special->presentableDescription();
  return symbols + capitalized(keyToCharacter().value_or(QString(QChar(QChar::ReplacementCharacter))));
}

std::optional<QString> Shortcut::nsMenuItemKeyEquivalent() const {
  const auto special = keyToSpecialKeyMapping().constFind(key());
  return special != keyToSpecialKeyMapping().constEnd() ? special->appKitMenuItemKeyEquivalent
                                                        : keyToCharacter();
}

}  // namespace KeyboardShortcuts
