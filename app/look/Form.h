#pragma once

#include "app/look/TextStyle.h"
#include "platform/base/Subscription.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>

#include <vector>

class QVBoxLayout;

namespace sorrel {

// A form: rounded groups of rows on a calm ground, with a title above each group and captions below it. In a
// row the label stands at the left and the control at the right. All of it follows the appearance by itself;
// the texts are given anew when the language changes.

/// A text in one look.
class FormText : public QLabel {
 public:
  FormText(const TextStyle& style, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  const TextStyle style;
};

/// What explains a group, over as many lines as it needs. Without a text it takes no room.
class FormCaption : public QWidget {
 public:
  enum class Kind { Note, Warning };

  FormCaption(Kind kind, QWidget* parent);
  void setText(const QString& text);
  [[nodiscard]] QString text() const { return label->text(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Kind kind;
  FormText* const label;
};

class FormRow : public QWidget {
 public:
  /// Of the label.
  static const TextStyle text;

  FormRow(QWidget* control, QWidget* parent);
  /// It is the control's accessible name too.
  void setLabel(const QString& title);

 private:
  FormText* const label;
  QWidget* const control;
};

class FormGroup : public QWidget {
 public:
  explicit FormGroup(QWidget* parent);

  void setTitle(const QString& text);
  FormRow* addRow(QWidget* control);
  /// A row that is all the contents' own.
  QWidget* addWide(QWidget* contents);
  /// A row of buttons, beginning at the left.
  QWidget* addButtons(const std::vector<QWidget*>& buttons);
  FormCaption* addCaption(FormCaption::Kind kind = FormCaption::Kind::Note);

 private:
  class Sheet;

  FormText* const title;
  Sheet* const sheet;
  QVBoxLayout* const captions;
};

/// Groups from top to bottom; they scroll where they don't fit. What it lies on paints the ground.
class Form : public QScrollArea {
 public:
  explicit Form(QWidget* parent);

  /// Something above the groups.
  void addHeader(QWidget* header);
  FormGroup* addGroup();

 private:
  QVBoxLayout* column;
  int nextGap = 13;  // above the next group
};

/// A path that can be selected; it breaks anywhere.
class FormPath : public QPlainTextEdit {
 public:
  FormPath(const TextStyle& style, QWidget* parent);
  void setText(const QString& path);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void setColor(const TextStyle& style);
  void fit();

  const platform::Subscription appearance;
};

/// A combo box that leaves the wheel to the form around it: who scrolls doesn't mean to choose.
class FormPicker : public QComboBox {
 public:
  explicit FormPicker(QWidget* parent);

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace sorrel
