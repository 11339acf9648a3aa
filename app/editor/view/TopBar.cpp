#include "app/editor/view/TopBar.h"

#include "app/editor/view/ByteCount.h"
#include "app/look/LookColors.h"
#include "app/look/TextStyle.h"
#include "app/settings/LocalizationManager.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

namespace sorrel {
namespace {

QLayout* imageInfoBadge(QLabel* pixels, QLabel* file) {
  auto* const lines = new QVBoxLayout;
  lines->setSpacing(1);
  lines->addStretch();
  for (QLabel* const line : {pixels, file}) {
    line->setAlignment(Qt::AlignRight);
    lines->addWidget(line);
  }
  lines->addStretch();
  applyStyle(*pixels, {11, QFont::DemiBold, LookColors::label});
  applyStyle(*file, {10, QFont::Normal, LookColors::secondaryLabel});
  return lines;
}

}  // namespace

TopBar::TopBar(EditorModel& shown, const std::function<void()>& onCancel, const std::function<void()>& onSave,
               QWidget* parent)
    : QWidget(parent),
      model(shown),
      pixels(new QLabel(this)),
      file(new QLabel(this)),
      cancelButton(new QPushButton(this)),
      saveButton(new QPushButton(this)),
      cancelKey(new QShortcut(Qt::Key_Escape, this)),
      watch(shown, {&shown.imagePixelSize, &shown.isEditingText}, [this] { refresh(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  setFixedHeight(height);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(16, 0, 16, 0);
  row->setSpacing(12);
  row->addStretch();
  row->addLayout(imageInfoBadge(pixels, file));
  for (QPushButton* const button : {cancelButton, saveButton}) {
    button->setFont(fontOf({13, QFont::Normal, {}}));
    button->setFocusPolicy(Qt::TabFocus);
    row->addWidget(button);
  }
  saveButton->setDefault(true);
  connect(cancelButton, &QAbstractButton::clicked, this, onCancel);
  connect(cancelKey, &QShortcut::activated, this, onCancel);
  connect(saveButton, &QAbstractButton::clicked, this, onSave);
  refresh();
  showTexts();
}

/// It may have been made before the picture was there.
void TopBar::showEvent(QShowEvent*) {
  refresh();
}

void TopBar::refresh() {
  pixels->setText(
      QStringLiteral("%1 × %2 px").arg(model.imagePixelSize->width()).arg(model.imagePixelSize->height()));
  cancelKey->setEnabled(!model.isEditingText);
}

void TopBar::showTexts() {
  file->setText(QStringLiteral("%1 · %2").arg(fileSizeText(model.originalByteCount),
                                              QFileInfo(model.fileURL.path()).suffix().toUpper()));
  cancelButton->setText(localized(QStringLiteral("editor.cancel")));
  saveButton->setText(localized(QStringLiteral("editor.save")));
}

}  // namespace sorrel
