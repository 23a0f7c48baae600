#pragma once
// The fixed slot tables of a page's live widgets: one per kind, of the
// kind's maximum, index N holding the widget named prefix_N, with the
// selection byte of each slot beside it. The designer fills them with its
// label controls; the core only keeps the pointers.

#include "widgets/WidgetKinds.h"

#include <array>
#include <memory>

namespace vantile {

template <typename Widget>
class WidgetSlots
{
public:
    explicit WidgetSlots(int maximum = 0)
        : m_size(maximum)
        , m_widgets(new Widget *[size_t(maximum)]())
        , m_selected(new quint8[size_t(maximum)]())
    {
    }

    int maximum() const { return m_size; }
    bool inRange(quint32 index) const { return index < quint32(m_size); }

    // The lowest free index, -1 when the table is full.
    int lowestFree() const
    {
        for (int i = 0; i < m_size; ++i) {
            if (!m_widgets[i])
                return i;
        }
        return -1;
    }

    Widget *at(quint32 index) const { return inRange(index) ? m_widgets[index] : nullptr; }
    // Refuses an index beyond the table.
    bool put(quint32 index, Widget *w)
    {
        if (!inRange(index))
            return false;
        m_widgets[index] = w;
        return true;
    }
    void release(quint32 index)
    {
        if (inRange(index)) {
            m_widgets[index] = nullptr;
            m_selected[index] = 0;
        }
    }
    void clear()
    {
        for (int i = 0; i < m_size; ++i) {
            m_widgets[i] = nullptr;
            m_selected[i] = 0;
        }
    }
    int count() const
    {
        int n = 0;
        for (int i = 0; i < m_size; ++i)
            n += m_widgets[i] ? 1 : 0;
        return n;
    }

    bool isSelected(quint32 index) const { return inRange(index) && m_selected[index]; }
    void setSelected(quint32 index, bool on)
    {
        if (inRange(index))
            m_selected[index] = on ? 1 : 0;
    }

private:
    int m_size;
    std::unique_ptr<Widget *[]> m_widgets;
    std::unique_ptr<quint8[]> m_selected;
};

// The tables of one page, one per kind; a static label lives in the
// label table.
template <typename Widget>
class PageSlots
{
public:
    PageSlots()
    {
        for (WidgetKind k : WidgetKinds::all()) {
            if (WidgetKinds::info(k).slotOwner == k)
                m_tables[size_t(kindIndex(k))].reset(new WidgetSlots<Widget>(WidgetKinds::info(k).maximum));
        }
    }

    // The table of a kind; an empty table for WidgetKind::None.
    WidgetSlots<Widget> &of(WidgetKind kind) { return *table(kind); }
    const WidgetSlots<Widget> &of(WidgetKind kind) const { return *table(kind); }

    void clear()
    {
        for (auto &t : m_tables) {
            if (t)
                t->clear();
        }
    }

private:
    WidgetSlots<Widget> *table(WidgetKind kind) const
    {
        const int i = kindIndex(WidgetKinds::info(kind).slotOwner);
        return i >= 0 && i < kWidgetKindCount ? m_tables[size_t(i)].get() : m_none.get();
    }

    std::array<std::unique_ptr<WidgetSlots<Widget>>, kWidgetKindCount> m_tables;
    std::unique_ptr<WidgetSlots<Widget>> m_none{new WidgetSlots<Widget>(0)};
};

} // namespace vantile
