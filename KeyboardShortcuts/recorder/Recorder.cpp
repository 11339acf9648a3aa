#include "KeyboardShortcuts/recorder/Recorder.h"

#include <QHBoxLayout>
#include <QLabel>

namespace KeyboardShortcuts {

Recorder::Recorder(const QString& title, const Name& name, RecorderCocoa::OnChange onChange, QWidget* parent)
    : QWidget(parent), label(new QLabel(this)), control(new RecorderCocoa(name, std::move(onChange), this)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins({});
  row->addWidget(label, 1);
  row->addWidget(control);
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(control);
  setTitle(title);
}

Recorder::Recorder(const Name& name, RecorderCocoa::OnChange onChange, QWidget* parent)
    : Recorder(QString(), name, std::move(onChange), parent) {
}

void Recorder::setTitle(const QString& title) {
  label->setText(title);
  label->setVisible(!title.isEmpty());
  setAccessibleName(title);
  control->setAccessibleName(title);
}

}  // namespace KeyboardShortcuts
