#include "platform/base/FatalMessages.h"

#include "platform/base/Log.h"

#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

namespace platform {
namespace {

struct Held {
  QString beginning;
  std::vector<std::pair<QtMsgType, QString>> messages;
  QtMessageHandler previous = nullptr;
};

std::optional<Held> held;

void hold(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type != QtFatalMsg) {
    held->messages.emplace_back(type, text);
    return;
  }
  // The first complaint is the cause, and the last a page of advice.
  const QString& cause = held->messages.empty() ? text : held->messages.front().second;
  log(held->beginning + cause.simplified());
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

FatalMessages::FatalMessages(const QString& beginning) {
  held.emplace(Held{beginning, {}, nullptr});
  held->previous = qInstallMessageHandler(hold);
}

FatalMessages::~FatalMessages() {
  qInstallMessageHandler(held->previous);
  for (const auto& [type, text] : held->messages)
    held->previous(type, {}, text);
  held.reset();
}

}  // namespace platform
