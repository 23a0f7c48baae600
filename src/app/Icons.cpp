#include "app/Icons.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace vantile {
namespace Icons {

QIcon tile(const QString &mark, const QColor &color)
{
    QIcon icon;
    for (int size : {16, 24, 32, 48}) {
        QPixmap pm(size, size);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        p.setRenderHint(QPainter::Antialiasing);
        QLinearGradient g(0, 0, 0, size);
        g.setColorAt(0, color.lighter(135));
        g.setColorAt(1, color);
        QPainterPath path;
        const qreal r = size * 0.2;
        path.addRoundedRect(QRectF(0.5, 0.5, size - 1, size - 1), r, r);
        p.fillPath(path, g);
        p.setPen(QPen(color.darker(140), 1));
        p.drawPath(path);
        QFont f(QStringLiteral("Sans"));
        f.setBold(true);
        f.setPixelSize(mark.size() > 2 ? size * 0.34 : mark.size() == 2 ? size * 0.42 : size * 0.6);
        p.setFont(f);
        p.setPen(Qt::white);
        p.drawText(QRectF(0, 0, size, size), Qt::AlignCenter, mark);
        p.end();
        icon.addPixmap(pm);
    }
    return icon;
}

} // namespace Icons
} // namespace vantile
