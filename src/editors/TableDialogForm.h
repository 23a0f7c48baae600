#pragma once
// The form the side editors share: a table over a row of buttons, the
// first ones at the left, the last ones (OK, Cancel) at the right.

#include <QHBoxLayout>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <initializer_list>

namespace vantile {

namespace TableDialogForm {

inline QTableWidget *table(QWidget *dialog)
{
    auto *t = new QTableWidget(dialog);
    t->setObjectName(QStringLiteral("tableWidget"));
    t->setSelectionMode(QAbstractItemView::SingleSelection);
    return t;
}

// A button with its object name, never the dialog's default (Enter edits cells).
inline QPushButton *button(QWidget *dialog, const char *objectName)
{
    auto *b = new QPushButton(dialog);
    b->setObjectName(QLatin1String(objectName));
    b->setAutoDefault(false);
    return b;
}

inline void lay(QWidget *dialog, QTableWidget *table, std::initializer_list<QPushButton *> left,
                std::initializer_list<QPushButton *> right)
{
    auto *layout = new QVBoxLayout(dialog);
    layout->addWidget(table);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : left)
        buttons->addWidget(b);
    buttons->addStretch(1);
    for (QPushButton *b : right)
        buttons->addWidget(b);
    layout->addLayout(buttons);
}

} // namespace TableDialogForm

} // namespace vantile
