#include "platform/desktop/ColorSampler.h"

#include "platform/base/Locations.h"
#include "platform/base/Log.h"

#include <QRegularExpression>

#include <utility>

namespace platform {

void ColorSampler::show(Handler handler) {
  if (tool)
    return refuse(std::move(handler));
  const Task task{.executable = Locations::systemTool(QStringLiteral("/usr/sbin/screencapture")),
                  .arguments = {QStringLiteral("--pick-color")}};
  auto started = ask(task, [this](const TaskAnswer& answer) { finish(answer); });
  if (!started) {
    log(QStringLiteral("Sorrel screencapture launch failed: ") + started.error().reason);
    return refuse(std::move(handler));
  }
  tool = *std::move(started);
  waiting = std::move(handler);
}

void ColorSampler::refuse(Handler handler) {
  std::erase_if(refusals, [](const WorkItem& told) { return !told.isPending(); });
  refusals.push_back(MainQueue::main().asyncAfter(MainQueue::Milliseconds(0),
                                                  [handler = std::move(handler)] { handler(std::nullopt); }));
}

void ColorSampler::finish(const TaskAnswer& answer) {
  // Nothing here is touched after the handler, in which this may go.
  const OwnedTask ended = std::exchange(tool, nullptr);
  const Handler handler = std::exchange(waiting, nullptr);
  handler(answer.isGood ? sampledColor(answer.output) : std::nullopt);
}

std::optional<quint32> sampledColor(const QByteArray& output) {
  static const QRegularExpression form(QStringLiteral("\\A#([0-9A-F]{6})\n\\z"));
  const QRegularExpressionMatch match = form.match(QString::fromLatin1(output));
  return match.hasMatch() ? std::optional(match.captured(1).toUInt(nullptr, 16)) : std::nullopt;
}

}  // namespace platform
