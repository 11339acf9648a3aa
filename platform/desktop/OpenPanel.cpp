#include "platform/desktop/OpenPanel.h"

#include "platform/base/Environment.h"
#include "platform/base/Locations.h"

#include <QFileDialog>
#include <QMimeDatabase>
#include <QSet>

namespace platform {
namespace {

/// The names that files of these types have, as a filter of the toolkit's.
QString nameFilter(const QString& title, const QStringList& contentTypes) {
  const QMimeDatabase database;
  QSet<QString> patterns;
  const auto add = [&](const QMimeType& type) {
    for (const QString& pattern : type.globPatterns())
      patterns << pattern.toLower() << pattern.toUpper();  // some choosers tell them apart
  };
  for (const QString& contentType : contentTypes) {
    if (!contentType.endsWith(u'*')) {
      add(database.mimeTypeForName(contentType));
      continue;
    }
    const QStringView family = QStringView(contentType).chopped(1);
    for (const QMimeType& type : database.allMimeTypes())
      if (type.name().startsWith(family))
        add(type);
  }
  QStringList sorted(patterns.begin(), patterns.end());
  sorted.sort();
  return QStringLiteral("%1 (%2)").arg(title, sorted.join(u' '));
}

class DesktopOpenPanel : public OpenPanelPresenter {
 public:
  void present(const OpenPanel& panel, QWidget& window, Chosen chosen) override {
    auto* const dialog = new QFileDialog(&window, panel.message);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setSupportedSchemes({QStringLiteral("file")});
    dialog->setDirectoryUrl(folder);
    switch (panel.choice) {
      case OpenPanel::Choice::File:
        dialog->setFileMode(QFileDialog::ExistingFile);
        break;
      case OpenPanel::Choice::Files:
        dialog->setFileMode(QFileDialog::ExistingFiles);
        break;
      case OpenPanel::Choice::Folder:
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
        break;
    }
    if (!panel.contentTypes.isEmpty()) {
      dialog->setOption(QFileDialog::HideNameFilterDetails);
      dialog->setNameFilter(nameFilter(panel.contentsTitle, panel.contentTypes));
    }
    if (!panel.prompt.isEmpty())
      dialog->setLabelText(QFileDialog::Accept, panel.prompt);
    QObject::connect(dialog, &QDialog::finished, dialog,
                     [this, dialog, chosen = std::move(chosen)](int result) {
                       folder = dialog->directoryUrl();
                       chosen(result == QDialog::Accepted ? dialog->selectedUrls() : QList<QUrl>());
                     });
    dialog->show();
  }

 private:
  QUrl folder = QUrl::fromLocalFile(Locations::home());  // where the user was last
};

}  // namespace

OpenPanelPresenter& OpenPanelPresenter::shared() {
  return *Environment::shared<OpenPanelPresenter>([] { return std::make_shared<DesktopOpenPanel>(); });
}

}  // namespace platform
