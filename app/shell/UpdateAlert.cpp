#include "app/shell/UpdateAlert.h"

#include "app/settings/LocalizationManager.h"
#include "app/shell/ReleaseNotes.h"
#include "platform/desktop/Image.h"
#include "platform/desktop/Workspace.h"

namespace sorrel {
namespace {

using platform::Alert;
using platform::UpdateProblem;
using platform::UpdateReport;

constexpr int notesWidth = 320;  // as the alert's texts

/// An alert, and what each of its buttons opens.
struct Telling {
  Alert alert;
  QList<QUrl> opened;
};

const char* reasonKey(UpdateProblem problem) {
  switch (problem) {
    case UpdateProblem::Unreachable:
      return "updates.problem.unreachable";
    case UpdateProblem::Insecure:
      return "updates.problem.insecure";
    case UpdateProblem::Redirected:
      return "updates.problem.redirected";
    case UpdateProblem::Refused:
      return "updates.problem.refused";
    case UpdateProblem::TooLarge:
      return "updates.problem.tooLarge";
    case UpdateProblem::TooSlow:
      return "updates.problem.tooSlow";
    case UpdateProblem::CutOff:
      return "updates.problem.cutOff";
    case UpdateProblem::Forged:
      return "updates.problem.forged";
    case UpdateProblem::Malformed:
      return "updates.problem.malformed";
    case UpdateProblem::Unwritable:
      return "updates.problem.unwritable";
    case UpdateProblem::Outdated:
      return "updates.problem.outdated";
    case UpdateProblem::Broken:
      break;
  }
  return "updates.problem.broken";
}

QString text(const char* key) {
  return localized(QString::fromLatin1(key));
}

/// The language of the texts in use, which need not be the one that was chosen.
QString language() {
  return text("updates.notesLanguage");
}

Telling tellingOf(const UpdateReport::Newer& news, const QString& running) {
  Telling telling;
  Alert& alert = telling.alert;
  alert.style = Alert::Style::Informational;
  alert.messageText = text("updates.newer").arg(news.release.version.text());
  alert.informativeText = text("updates.newer.running").arg(running);
  if (!news.package.isEmpty()) {
    alert.informativeText += u' ' + text("updates.newer.ready");
    alert.buttons << text("updates.install");
    telling.opened << QUrl::fromLocalFile(news.package);
  } else if (news.packageProblem) {
    alert.informativeText +=
        u' ' + text(news.packageProblem == UpdateProblem::Forged ? "updates.newer.forged"
                                                                 : "updates.newer.noPackage");
  }
  alert.accessoryView = std::make_unique<ReleaseNotes>(news.release.notesIn(language()), notesWidth);
  alert.buttons << text("updates.openPage") << text("updates.later");
  telling.opened << news.release.page;
  return telling;
}

Telling tellingOf(UpdateReport::UpToDate, const QString& running) {
  Telling telling;
  telling.alert.style = Alert::Style::Informational;
  telling.alert.messageText = text("updates.upToDate");
  telling.alert.informativeText = text("updates.upToDate.running").arg(running);
  telling.alert.buttons << text("common.ok");
  return telling;
}

Telling tellingOf(UpdateProblem problem, const QString&) {
  Telling telling;
  telling.alert.messageText = text("updates.failed");
  telling.alert.informativeText = text(reasonKey(problem));
  telling.alert.buttons << text("common.ok");
  return telling;
}

}  // namespace

void UpdateAlert::present(const UpdateReport& report) {
  Telling telling =
      std::visit([this](const auto& outcome) { return tellingOf(outcome, running.text()); }, report.outcome);
  if (const auto image = platform::Image::named(QStringLiteral("sorrel")))
    telling.alert.icon = image->icon;
  telling.alert.isUnasked = !report.wasAsked;
  delete shown;
  shown =
      Alert::present(std::move(telling.alert), nullptr, [opened = telling.opened](std::optional<int> button) {
        if (button && *button < opened.size())
          platform::Workspace::open(opened[*button]);
      });
}

}  // namespace sorrel
