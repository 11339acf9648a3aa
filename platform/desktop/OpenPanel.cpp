#include "platform/desktop/OpenPanel.h"

#include "platform/base/Environment.h"

#include <QFileDialog>

namespace platform {
namespace {

class DesktopOpenPanel : public OpenPanelPresenter {
 public:
  void present(const OpenPanel& panel, QWidget& window, Chosen chosen) override {
    auto* const dialog = new QFileDialog(&window, panel.message);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setSupportedSchemes({QStringLiteral("file")});
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
    if (!panel.contentTypes.isEmpty())
      dialog->setMimeTypeFilters(panel.contentTypes);
    if (!panel.prompt.isEmpty())
      dialog->setLabelText(QFileDialog::Accept, panel.prompt);
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, chosen = std::move(chosen)](int result) {
      chosen(result == QDialog::Accepted ? dialog->selectedUrls() : QList<QUrl>());
    });
    dialog->show();
  }
};

}  // namespace

OpenPanelPresenter& OpenPanelPresenter::shared() {
  return *Environment::shared<OpenPanelPresenter>([] { return std::make_shared<DesktopOpenPanel>(); });
}

}  // namespace platform
