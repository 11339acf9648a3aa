#include "platform/input/wayland/SwayBindings.h"

#include "platform/base/Locations.h"
#include "platform/input/KeyCodes.h"
#include "platform/system/Xcb.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <optional>
#include <xkbcommon/xkbcommon.h>

namespace platform {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 longestFile = 1 << 20;
constexpr int deepestInclude = 8;

std::optional<HotKeyModifiers> modifierNamed(const QString& name) {
  static const QHash<QString, HotKeyModifiers> names{
      {u"shift"_s, HotKeyModifier::Shift},   {u"control"_s, HotKeyModifier::Control},
      {u"ctrl"_s, HotKeyModifier::Control},  {u"mod1"_s, HotKeyModifier::Option},
      {u"alt"_s, HotKeyModifier::Option},    {u"mod4"_s, HotKeyModifier::Command},
      {u"super"_s, HotKeyModifier::Command}, {u"logo"_s, HotKeyModifier::Command}};
  const auto found = names.constFind(name.toLower());
  return found == names.constEnd() ? std::nullopt : std::optional(*found);
}

/// Goes over a configuration's lines and keeps the bindings of the default mode.
class Reader {
 public:
  Reader(const KeySymbols& keyboard, const SwayIncludes& includes) : keyboard(keyboard), includes(includes) {}

  void read(const QByteArray& configuration, int depth);

  std::vector<SymbolicHotKey> found;

 private:
  void readLine(const QString& line, int depth);
  void readBinding(const QString& command, QStringList words);
  [[nodiscard]] std::optional<SymbolicHotKey> parse(const QString& keys, bool isByCode) const;
  [[nodiscard]] QString withVariables(QString text) const;

  const KeySymbols& keyboard;
  const SwayIncludes& includes;
  QHash<QString, QString> variables;
  QStringList blocks;  // what opened each that is open: "bindsym", "mode"
};

void Reader::read(const QByteArray& configuration, int depth) {
  const QStringList outer = std::exchange(blocks, {});
  QString text = QString::fromUtf8(configuration);
  text.replace(u"\\\n"_s, QString());
  for (const QString& line : text.split(u'\n'))
    readLine(line.trimmed(), depth);
  blocks = outer;
}

void Reader::readLine(const QString& line, int depth) {
  if (line.isEmpty() || line.startsWith(u'#'))
    return;
  if (line.startsWith(u'}')) {
    if (!blocks.isEmpty())
      blocks.removeLast();
    return;
  }
  static const QRegularExpression blanks(u"\\s+"_s);
  QStringList words = line.split(blanks, Qt::SkipEmptyParts);
  const QString command = words.takeFirst();
  if (line.endsWith(u'{')) {
    blocks << command;
    return;
  }
  if (!blocks.isEmpty()) {
    if (blocks.size() == 1 && blocks.constLast().startsWith(u"bind"))
      readBinding(blocks.constLast(), QStringList{command} + words);
    return;
  }
  if (command == u"set" && words.size() > 1)
    variables.insert(words.constFirst(), withVariables(words.sliced(1).join(u' ')));
  else if (command == u"include" && depth < deepestInclude)
    for (const QByteArray& other : includes(withVariables(words.join(u' '))))
      read(other, depth + 1);
  else if (command == u"bindsym" || command == u"bindcode")
    readBinding(command, words);
}

void Reader::readBinding(const QString& command, QStringList words) {
  while (!words.isEmpty() && words.constFirst().startsWith(u"--"))
    words.removeFirst();
  const auto hotKey =
      words.isEmpty() ? std::nullopt : parse(withVariables(words.constFirst()), command == u"bindcode");
  if (hotKey && std::ranges::find(found, *hotKey) == found.end())
    found.push_back(*hotKey);
}

std::optional<SymbolicHotKey> Reader::parse(const QString& keys, bool isByCode) const {
  HotKeyModifiers modifiers;
  std::optional<int> code;
  for (const QString& part : keys.split(u'+')) {
    if (const auto modifier = modifierNamed(part)) {
      modifiers |= *modifier;
      continue;
    }
    if (code)
      return std::nullopt;  // several keys at once
    if (isByCode) {
      code = keyCode(part.toInt() - x11KeycodeOffset);
    } else if (const auto place = keyboard.place(
                   xkb_keysym_from_name(part.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE))) {
      code = place->keyCode;
      modifiers |= place->modifiers;
    }
    if (!code)
      return std::nullopt;
  }
  return code ? std::optional(SymbolicHotKey{true, *code, modifiers.toInt()}) : std::nullopt;
}

/// The longest name that fits goes first, as sway has it: "$mod" must not break "$mode".
QString Reader::withVariables(QString text) const {
  if (!text.contains(u'$'))
    return text;
  QStringList names = variables.keys();
  std::ranges::sort(names, std::ranges::greater(), &QString::size);
  for (const QString& name : names)
    text.replace(name, variables.value(name));
  return text;
}

}  // namespace

std::vector<SymbolicHotKey> swayBindings(const QByteArray& configuration, const KeySymbols& keyboard,
                                         const SwayIncludes& includes) {
  Reader reader(keyboard, includes);
  reader.read(configuration, 0);
  return std::move(reader.found);
}

SwayIncludes swayIncludesOf(const QString& configurationPath) {
  return [folder = QFileInfo(configurationPath).path()](const QString& pattern) {
    std::vector<QByteArray> texts;
    const QFileInfo wanted(QDir(folder).absoluteFilePath(Locations::expandingTilde(pattern)));
    if (pattern.contains(u'$') || pattern.contains(u'`'))
      return texts;
    for (const QString& name : wanted.dir().entryList({wanted.fileName()}, QDir::Files, QDir::Name)) {
      QFile file(wanted.dir().filePath(name));
      if (file.open(QIODevice::ReadOnly))
        texts.push_back(file.read(longestFile));
    }
    return texts;
  };
}

}  // namespace platform
