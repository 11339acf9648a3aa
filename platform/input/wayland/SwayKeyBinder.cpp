#include "platform/input/wayland/SwayKeyBinder.h"

#include "platform/base/Log.h"
#include "platform/input/LatinKeys.h"
#include "platform/input/Triggers.h"
#include "platform/input/wayland/SwayBindings.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace platform {
namespace {

using namespace Qt::StringLiterals;
using Type = SwayIpc::Type;

constexpr std::chrono::milliseconds patienceAtTheEnd{200};
/// What a binding does, which is nothing; sway tells of it by these words.
const QString pressCommand = u"nop sorrel-press "_s;
const QString releaseCommand = u"nop sorrel-release "_s;

KeySymbols symbols() {
  const Keyboard keyboard = readKeyboardOrStandard();
  return keyboard.keymap ? KeySymbols(keyboard.keymap.get()) : KeySymbols();
}

}  // namespace

SwayKeyBinder::SwayKeyBinder(const QByteArray& socketPath, Listener heardBy)
    : listener(std::move(heardBy)), consent(UserDefaults::standard().observe(hotKeysMayBeBound, [this] {
        update();
        listener.onStateChange();
      })) {
  auto connected = SwayIpc::connect(socketPath);
  if (!connected) {
    unavailable = MainQueue::main().asyncAfter({}, [this] { listener.onUnavailable(); });
    return;
  }
  sway = std::move(*connected);
  sway->listen(
      [this](const SwayIpc::Message& message) { heard(message); },
      [this] { unavailable = MainQueue::main().asyncAfter({}, [this] { listener.onUnavailable(); }); });
  sway->send(Type::Subscribe, R"(["binding","workspace"])");
  sway->send(Type::GetVersion);
  sway->send(Type::GetConfig);
}

SwayKeyBinder::~SwayKeyBinder() {
  if (bound.isEmpty())
    return;
  unbindAll();
  sway->finish(patienceAtTheEnd);  // sway doesn't read what was sent by one who has hung up
}

void SwayKeyBinder::bind(const std::vector<HotKey>& hotKeys) {
  wanted = hotKeys;
  update();
}

HotKeyState SwayKeyBinder::state() const {
  HotKeyState state{HotKeyWay::Sway, {}, {}};
  for (const HotKey& hotKey : wanted)
    if (isTaken(hotKey))
      state.taken << hotKey.name;
  return state;
}

void SwayKeyBinder::heard(const SwayIpc::Message& message) {
  switch (message.type) {
    case Type::GetVersion:
      configurationPath =
          QJsonDocument::fromJson(message.text).object().value("loaded_config_file_name"_L1).toString();
      break;
    case Type::GetConfig:
      readConfiguration(message.text);
      break;
    case Type::BindingEvent:
      keyHeard(message.text);
      break;
    case Type::WorkspaceEvent:
      if (QJsonDocument::fromJson(message.text).object().value("change"_L1) != "reload"_L1)
        break;
      bound.clear();
      sway->send(Type::GetConfig);
      break;
    default:
      break;
  }
}

void SwayKeyBinder::readConfiguration(const QByteArray& answer) {
  const QJsonObject object = QJsonDocument::fromJson(answer).object();
  configured = swayBindings(object.value("config"_L1).toString().toUtf8(), symbols(),
                            swayIncludesOf(configurationPath));
  if (!std::exchange(isConfigurationKnown, true) && !UserDefaults::standard().value(hotKeysMayBeBound))
    log(u"Sorrel hot keys: sway can bind them, which the settings ask about"_s);
  update();
  listener.onStateChange();
}

void SwayKeyBinder::keyHeard(const QByteArray& event) {
  const QString command =
      QJsonDocument::fromJson(event).object().value("binding"_L1).toObject().value("command"_L1).toString();
  if (command.startsWith(pressCommand))
    listener.onKey(KeyAction::Press, command.sliced(pressCommand.size()));
  else if (command.startsWith(releaseCommand))
    listener.onKey(KeyAction::Release, command.sliced(releaseCommand.size()));
}

/// A binding stands for the press and one for the release, since sway tells of a held key as of many presses.
void SwayKeyBinder::update() {
  if (!sway || !isConfigurationKnown)
    return;
  unbindAll();
  if (!UserDefaults::standard().value(hotKeysMayBeBound))
    return;
  for (const HotKey& hotKey : wanted) {
    const QString keys = swayCombination(hotKey);
    if (keys.isEmpty() || isTaken(hotKey))
      continue;
    command(u"bindcode --no-warn %1 %2%3"_s.arg(keys, pressCommand, hotKey.name));
    command(u"bindcode --no-warn --release %1 %2%3"_s.arg(keys, releaseCommand, hotKey.name));
    bound << keys;
  }
}

void SwayKeyBinder::unbindAll() {
  for (const QString& keys : std::exchange(bound, {})) {
    command(u"unbindcode "_s + keys);
    command(u"unbindcode --release "_s + keys);
  }
}

bool SwayKeyBinder::isTaken(const HotKey& hotKey) const {
  return std::ranges::find(configured, SymbolicHotKey{true, hotKey.keyCode, hotKey.modifiers}) !=
         configured.end();
}

}  // namespace platform
