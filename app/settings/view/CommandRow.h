#pragma once

#include "app/look/Form.h"

namespace sorrel {

class SymbolButton;

/// What a command is for, the command below it, and a button that copies it.
class CommandRow : public QWidget {
 public:
  explicit CommandRow(QWidget* parent);

  void setTexts(const QString& title, const QString& command, const QString& copyHelp);

 private:
  FormText* const title;
  FormPath* const command;
  SymbolButton* const copy;
};

}  // namespace sorrel
