#include "app/FlowLayout.h"

#include <QWidget>

namespace vantile {

FlowLayout::FlowLayout(QWidget *parent, int spacing, int groupGap)
    : QLayout(parent), m_spacing(spacing), m_groupGap(groupGap)
{
}

FlowLayout::~FlowLayout()
{
    while (QLayoutItem *item = takeAt(0))
        delete item;
}

void FlowLayout::addItem(QLayoutItem *item)
{
    m_items.append(item);
    m_groupStarts.append(m_groupNext);
    m_groupNext = false;
}

QLayoutItem *FlowLayout::takeAt(int index)
{
    if (index < 0 || index >= m_items.size())
        return nullptr;
    m_groupStarts.removeAt(index);
    return m_items.takeAt(index);
}

int FlowLayout::heightForWidth(int width) const
{
    return arrange(QRect(0, 0, width, 0), false);
}

QSize FlowLayout::minimumSize() const
{
    // as narrow as the widest item: everything else wraps
    QSize size;
    for (QLayoutItem *item : m_items)
        size = size.expandedTo(item->minimumSize());
    const QMargins m = contentsMargins();
    return size + QSize(m.left() + m.right(), m.top() + m.bottom());
}

QSize FlowLayout::sizeHint() const
{
    // one row
    int w = 0;
    int h = 0;
    for (int i = 0; i < m_items.size(); ++i) {
        const QSize s = m_items[i]->sizeHint();
        if (i > 0)
            w += m_groupStarts[i] ? m_groupGap : m_spacing;
        w += s.width();
        h = qMax(h, s.height());
    }
    const QMargins m = contentsMargins();
    return QSize(w + m.left() + m.right(), h + m.top() + m.bottom());
}

void FlowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int FlowLayout::arrange(const QRect &rect, bool apply) const
{
    const QMargins m = contentsMargins();
    const QRect area = rect.marginsRemoved(m);
    int x = area.x();
    int y = area.y();
    int rowHeight = 0;
    bool rowEmpty = true;
    for (int i = 0; i < m_items.size(); ++i) {
        QLayoutItem *item = m_items[i];
        if (item->isEmpty())
            continue;
        const QSize s = item->sizeHint();
        const int gap = rowEmpty ? 0 : (m_groupStarts[i] ? m_groupGap : m_spacing);
        if (!rowEmpty && x + gap + s.width() > area.right() + 1) {
            x = area.x();
            y += rowHeight + m_spacing;
            rowHeight = 0;
            rowEmpty = true;
        }
        if (!rowEmpty)
            x += gap;
        if (apply)
            item->setGeometry(QRect(QPoint(x, y), s));
        x += s.width();
        rowHeight = qMax(rowHeight, s.height());
        rowEmpty = false;
    }
    return y + rowHeight - rect.y() + m.bottom();
}

} // namespace vantile
