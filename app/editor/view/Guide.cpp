#include "app/editor/view/Guide.h"

#include "app/shell/AppColors.h"

#include <QPainter>
#include <QPen>

namespace sorrel {
namespace {

constexpr double dash = 6, gap = 4;  // in display units

void strokeDashes(QPainter& painter, const QPainterPath& path, QColor color, double opacity, double width) {
  color.setAlphaF(float(opacity));
  QPen pen(color, width, Qt::CustomDashLine, Qt::FlatCap, Qt::MiterJoin);
  pen.setDashPattern({dash / width, gap / width});
  pen.setMiterLimit(10);
  painter.strokePath(path, pen);
}

}  // namespace

/// Dark below light, so that it is seen on any picture.
void strokeGuide(QPainter& painter, const QPainterPath& path, Emphasis emphasis) {
  const QColor accent = AppColors::accent.resolved(platform::Appearance::Dark);
  const bool isEmphasized = emphasis == Emphasis::Emphasized;
  strokeDashes(painter, path, Qt::black, isEmphasized ? 0.55 : 0.35, isEmphasized ? 2.5 : 2);
  strokeDashes(painter, path, accent, isEmphasized ? 1 : 0.75, isEmphasized ? 1.5 : 1);
}

}  // namespace sorrel
