#pragma once
// A layout that puts its items in rows, left to right, and starts a new row
// when the width runs out: its height follows its width. Items may start a
// group (startGroup), which leaves a wider gap before it.

#include <QLayout>
#include <QList>

namespace vantile {

class FlowLayout : public QLayout
{
public:
    explicit FlowLayout(QWidget *parent = nullptr, int spacing = 2, int groupGap = 8);
    ~FlowLayout() override;

    // The next widget added opens a group: a wider gap before it, unless it
    // begins a row.
    void startGroup() { m_groupNext = true; }

    void addItem(QLayoutItem *item) override;
    int count() const override { return m_items.size(); }
    QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect &rect) override;

private:
    int arrange(const QRect &rect, bool apply) const;

    QList<QLayoutItem *> m_items;
    QList<bool> m_groupStarts;
    bool m_groupNext = false;
    int m_spacing;
    int m_groupGap;
};

} // namespace vantile
