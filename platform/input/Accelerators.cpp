#include "platform/input/Accelerators.h"

#include "platform/input/KeyCodes.h"
#include "platform/system/Xcb.h"

#include <QHash>
#include <QString>

#include <xkbcommon/xkbcommon.h>

namespace platform {
namespace {

using namespace Qt::StringLiterals;
using Place = KeySymbols::Place;

/// A key and what is held with it, while its text is being read.
struct Chord {
  HotKeyModifiers modifiers;
  bool isOnKeypad = false;
};

/// Takes "<Control><Alt>" off the front of `rest`; false if it holds a modifier that no keyboard of today
/// has.
bool takeBracketed(QStringView& rest, Chord& chord) {
  static const QHash<QString, HotKeyModifier> names{
      {u"control"_s, HotKeyModifier::Control}, {u"ctrl"_s, HotKeyModifier::Control},
      {u"ctl"_s, HotKeyModifier::Control},     {u"primary"_s, HotKeyModifier::Control},
      {u"alt"_s, HotKeyModifier::Option},      {u"mod1"_s, HotKeyModifier::Option},
      {u"shift"_s, HotKeyModifier::Shift},     {u"shft"_s, HotKeyModifier::Shift},
      {u"super"_s, HotKeyModifier::Command},   {u"mod4"_s, HotKeyModifier::Command}};
  while (rest.startsWith(u'<')) {
    const qsizetype end = rest.indexOf(u'>');
    const auto found =
        end < 0 ? names.constEnd() : names.constFind(rest.sliced(1, end - 1).toString().toLower());
    if (found == names.constEnd())
      return false;
    chord.modifiers |= *found;
    rest = rest.sliced(end + 1);
  }
  return true;
}

/// Takes "Ctrl+Alt+" off the front of `rest`.
void takeJoined(QStringView& rest, Chord& chord) {
  static const QHash<QString, HotKeyModifiers> names{{u"ctrl"_s, HotKeyModifier::Control},
                                                     {u"alt"_s, HotKeyModifier::Option},
                                                     {u"shift"_s, HotKeyModifier::Shift},
                                                     {u"meta"_s, HotKeyModifier::Command},
                                                     {u"num"_s, {}}};
  for (qsizetype end = rest.indexOf(u'+'); end > 0; end = rest.indexOf(u'+')) {
    const auto found = names.constFind(rest.first(end).toString().toLower());
    if (found == names.constEnd())
      return;
    chord.modifiers |= *found;
    chord.isOnKeypad = chord.isOnKeypad || found->toInt() == 0;
    rest = rest.sliced(end + 1);
  }
}

/// X's symbol by the name that X gives it or the toolkit of KDE; NoSymbol if neither has such a name.
xkb_keysym_t symbolNamed(QStringView name, bool isOnKeypad) {
  static const QHash<QString, QByteArray> otherNames{{u"Esc"_s, "Escape"},
                                                     {u"Ins"_s, "Insert"},
                                                     {u"Del"_s, "Delete"},
                                                     {u"PgUp"_s, "Prior"},
                                                     {u"PgDown"_s, "Next"},
                                                     {u"Backspace"_s, "BackSpace"},
                                                     {u"Enter"_s, "KP_Enter"},
                                                     {u"Backtab"_s, "ISO_Left_Tab"},
                                                     {u"Space"_s, "space"},
                                                     {u"SysReq"_s, "Print"},
                                                     {u"ScrollLock"_s, "Scroll_Lock"},
                                                     {u"NumLock"_s, "Num_Lock"},
                                                     {u"CapsLock"_s, "Caps_Lock"},
                                                     {u"Volume Up"_s, "XF86AudioRaiseVolume"},
                                                     {u"Volume Down"_s, "XF86AudioLowerVolume"},
                                                     {u"Volume Mute"_s, "XF86AudioMute"}};
  static const QHash<QString, QByteArray> keypadNames{{u"+"_s, "KP_Add"},      {u"-"_s, "KP_Subtract"},
                                                      {u"*"_s, "KP_Multiply"}, {u"/"_s, "KP_Divide"},
                                                      {u"."_s, "KP_Decimal"},  {u"="_s, "KP_Equal"}};
  const QString text = name.toString();
  const bool isDigit = text.size() == 1 && text.at(0) >= u'0' && text.at(0) <= u'9';
  if (isOnKeypad && isDigit)
    return XKB_KEY_KP_0 + static_cast<xkb_keysym_t>(text.at(0).unicode() - u'0');
  if (isOnKeypad && keypadNames.contains(text))
    return xkb_keysym_from_name(keypadNames.value(text).constData(), XKB_KEYSYM_NO_FLAGS);
  if (const auto points = text.toUcs4(); points.size() == 1)
    return xkb_utf32_to_keysym(points.first());
  return xkb_keysym_from_name(otherNames.value(text, text.toUtf8()).constData(), XKB_KEYSYM_NO_FLAGS);
}

std::optional<Place> keyNamed(QStringView name, bool isOnKeypad, const KeySymbols& keyboard) {
  if (name == u"Above_Tab")
    return Place{KeyCode::backtick, {}};
  if (name.startsWith(u"0x")) {
    bool isNumber = false;
    const int keycode = name.toInt(&isNumber, 16);
    const auto code = isNumber ? keyCode(keycode - x11KeycodeOffset) : std::nullopt;
    return code ? std::optional(Place{*code, {}}) : std::nullopt;
  }
  return keyboard.place(symbolNamed(name, isOnKeypad));
}

}  // namespace

std::optional<SymbolicHotKey> parseAccelerator(QStringView text, const KeySymbols& keyboard) {
  Chord chord;
  if (!takeBracketed(text, chord))
    return std::nullopt;
  if (chord.modifiers == HotKeyModifiers())
    takeJoined(text, chord);
  const std::optional<Place> key = keyNamed(text, chord.isOnKeypad, keyboard);
  if (!key)
    return std::nullopt;
  return SymbolicHotKey{true, key->keyCode, (chord.modifiers | key->modifiers).toInt()};
}

}  // namespace platform
