#include "app/settings/view/CommandRow.h"

#include "app/look/LookColors.h"
#include "app/look/SymbolButton.h"
#include "platform/desktop/Pasteboard.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace sorrel {
namespace {

constexpr int lineGap = 2, buttonGap = 10;
constexpr int buttonSide = 24, symbolSide = 14;

}  // namespace

CommandRow::CommandRow(QWidget* parent)
    : QWidget(parent),
      title(new FormText(FormRow::text, this)),
      command(new FormPath({11, QFont::Normal, LookColors::secondaryLabel}, this)),
      copy(new SymbolButton({QStringLiteral("doc.on.doc"), symbolSide, LookColors::secondaryLabel},
                            buttonSide, this)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins({});
  row->setSpacing(buttonGap);
  auto* const lines = new QVBoxLayout;
  lines->setSpacing(lineGap);
  lines->addWidget(title);
  lines->addWidget(command);
  row->addLayout(lines, 1);
  row->addWidget(copy);
  copy->setFocusPolicy(Qt::TabFocus);
  connect(copy, &QAbstractButton::clicked, this, [this] {
    // Where it can't be copied, it can still be selected.
    (void)platform::Pasteboard::writeObjects({command->toPlainText()});
  });
}

void CommandRow::setTexts(const QString& titleText, const QString& commandText, const QString& copyHelp) {
  title->setText(titleText);
  command->setText(commandText);
  command->setAccessibleName(titleText);
  copy->setHelp(copyHelp);
}

}  // namespace sorrel
