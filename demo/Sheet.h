#pragma once

#include <QImage>

#include <vector>

namespace demo {

/// Pictures beside each other, in rows.
[[nodiscard]] QImage sheetOf(const std::vector<QImage>& pictures, std::size_t columns);

/// Writes it as a PNG that is as small as can be.
void save(const QImage& picture, const QString& path);

}  // namespace demo
