#pragma once

#include <QSize>

class QPainter;
class QRect;
class QStyleOption;
class QStyleOptionComboBox;

/// Fields to write in and combo boxes, as the application's style draws them.
namespace sorrel::FieldControls {

inline constexpr int padding = 7;  // between the edge and the text

void paintLineEdit(QPainter& painter, const QStyleOption& field);

/// For contents that measure `contents`.
[[nodiscard]] QSize comboBoxSize(const QSize& contents);
/// Where the chosen text lies, or in an editable box the field.
[[nodiscard]] QRect comboBoxText(const QStyleOptionComboBox& box);
[[nodiscard]] QRect comboBoxArrow(const QStyleOptionComboBox& box);
/// The list is as wide as its rows' titles lie over the box's text.
[[nodiscard]] QRect comboBoxList(const QStyleOptionComboBox& box);
void paintComboBox(QPainter& painter, const QStyleOptionComboBox& box);
void paintComboBoxLabel(QPainter& painter, const QStyleOptionComboBox& box);

}  // namespace sorrel::FieldControls
