#pragma once
// Delegates of the parameter table: column 0 (the labels) never edits,
// column 1 edits in place with a line edit.

#include <QStyledItemDelegate>

namespace vantile {

class ReadOnlyDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget *createEditor(QWidget *, const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return nullptr;
    }
};

class TableItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
};

} // namespace vantile
