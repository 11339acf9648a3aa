#include "KeyboardShortcuts/SpecialKey.h"

#include "KeyboardShortcuts/Strings.h"

#include <array>

namespace KeyboardShortcuts {
namespace {

constexpr char16_t keycap = u'\u20E3';
constexpr char16_t firstFunctionKeyEquivalent = u'\uF704';

QHash<Key, SpecialKey> makeMapping() {
  QHash<Key, SpecialKey> mapping;
  const auto addSymbol = [&](Key key, const QString& symbol) { mapping.insert(key, {symbol, symbol}); };
  addSymbol(Key::return_, QStringLiteral("\u21A9"));
  addSymbol(Key::delete_, QStringLiteral("\u232B"));
  addSymbol(Key::deleteForward, QStringLiteral("\u2326"));
  addSymbol(Key::end, QStringLiteral("\u2198"));
  addSymbol(Key::escape, QStringLiteral("\u238B"));
  addSymbol(Key::help, QStringLiteral("?\u20DD"));
  addSymbol(Key::home, QStringLiteral("\u2196"));
  mapping.insert(Key::space, {QString(), QStringLiteral(" "), QStringLiteral("space_key")});
  addSymbol(Key::tab, QStringLiteral("\u21E5"));
  addSymbol(Key::pageUp, QStringLiteral("\u21DE"));
  addSymbol(Key::pageDown, QStringLiteral("\u21DF"));
  addSymbol(Key::upArrow, QStringLiteral("\u2191"));
  addSymbol(Key::rightArrow, QStringLiteral("\u2192"));
  addSymbol(Key::downArrow, QStringLiteral("\u2193"));
  addSymbol(Key::leftArrow, QStringLiteral("\u2190"));

  static constexpr std::array functionKeys{
      Key::f1,  Key::f2,  Key::f3,  Key::f4,  Key::f5,  Key::f6,  Key::f7,  Key::f8,  Key::f9,  Key::f10,
      Key::f11, Key::f12, Key::f13, Key::f14, Key::f15, Key::f16, Key::f17, Key::f18, Key::f19, Key::f20};
  for (size_t index = 0; index < functionKeys.size(); ++index)
    mapping.insert(functionKeys[index],
                   {QStringLiteral("F%1").arg(index + 1),
                    QString(QChar(static_cast<char16_t>(firstFunctionKeyEquivalent + index)))});

  const auto addKeypad = [&](Key key, char16_t face) {
    mapping.insert(key, {QString(QChar(face)) + QChar(keycap), std::nullopt});
  };
  static constexpr std::array digits{Key::keypad0, Key::keypad1, Key::keypad2, Key::keypad3, Key::keypad4,
                                     Key::keypad5, Key::keypad6, Key::keypad7, Key::keypad8, Key::keypad9};
  for (size_t digit = 0; digit < digits.size(); ++digit)
    addKeypad(digits[digit], static_cast<char16_t>(u'0' + digit));
  addKeypad(Key::keypadClear, u'\u2612');
  addKeypad(Key::keypadDecimal, u'.');
  addKeypad(Key::keypadDivide, u'/');
  addKeypad(Key::keypadEnter, u'\u21A9');
  addKeypad(Key::keypadEquals, u'=');
  addKeypad(Key::keypadMinus, u'-');
  addKeypad(Key::keypadMultiply, u'*');
  addKeypad(Key::keypadPlus, u'+');

  const auto addWord = [&](Key key, const QString& textKey) {
    mapping.insert(key, {QString(), std::nullopt, textKey});
  };
  addWord(Key::contextMenu, QStringLiteral("menu_key"));
  addWord(Key::printScreen, QStringLiteral("print_screen_key"));
  addWord(Key::scrollLock, QStringLiteral("scroll_lock_key"));
  addWord(Key::pause, QStringLiteral("pause_key"));
  return mapping;
}

}  // namespace

QString SpecialKey::presentableDescription() const {
  return symbol.isEmpty() ? localizedString(textKey) : symbol;
}

const QHash<Key, SpecialKey>& keyToSpecialKeyMapping() {
  static const QHash<Key, SpecialKey> mapping = makeMapping();
  return mapping;
}

}  // namespace KeyboardShortcuts
