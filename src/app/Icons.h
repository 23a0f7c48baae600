#pragma once
// The designer's own action icons, drawn at start: a tinted tile with a
// short mark. No picture files are needed.

#include <QColor>
#include <QIcon>
#include <QString>

namespace vantile {
namespace Icons {
QIcon tile(const QString &mark, const QColor &color);
}
} // namespace vantile
