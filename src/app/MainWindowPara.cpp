// The parameter table: filling rows, the editors a double click opens,
// and applying an edit. The page's own rows live here; the kinds bring
// their rows through the same table.

#include "app/MainWindow.h"

#include "app/ParaDelegates.h"
#include "app/Prompts.h"

#include <QCursor>
#include <QFileInfo>
#include <QLabel>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>

namespace vantile {

void MainWindow::setupParaTable()
{
    tableView_Para->setItemDelegateForColumn(0, new ReadOnlyDelegate(tableView_Para));
    auto *itemDelegate = new TableItemDelegate(tableView_Para);
    tableView_Para->setItemDelegateForColumn(1, itemDelegate);
    connect(itemDelegate, &QAbstractItemDelegate::closeEditor, this, &MainWindow::Para_TabelView_Edit_End);
}

void MainWindow::fillPageRows()
{
    const QModelIndex current = tableView_Para->currentIndex();
    const int scroll = tableView_Para->verticalScrollBar()->value();
    m_paraModel->removeRows(0, m_paraModel->rowCount());
    if (!projectOpen())
        return;
    const QStringList values = m_pageAttr.values();
    const QList<PageAttributes::Row> &rows = PageAttributes::rows();
    for (int i = 0; i < rows.size(); ++i) {
        const QString label = m_languageIndex == 1 ? QString::fromUtf8(rows[i].zh) : QLatin1String(rows[i].key);
        auto *labelItem = new QStandardItem(label);
        labelItem->setEditable(false);
        auto *valueItem = new QStandardItem(values.value(i));
        valueItem->setEditable(rows[i].editor != PageAttributes::Editor::ReadOnly);
        m_paraModel->appendRow({labelItem, valueItem});
    }
    tableView_Para->setColumnWidth(0, m_paraColumnWidth[0]);
    if (current.isValid())
        tableView_Para->setCurrentIndex(m_paraModel->index(current.row(), current.column()));
    tableView_Para->verticalScrollBar()->setValue(scroll);
}

QStringList MainWindow::paraValues() const
{
    QStringList values;
    for (int r = 0; r < m_paraModel->rowCount(); ++r)
        values << m_paraModel->index(r, 1).data().toString();
    return values;
}

void MainWindow::applyPageRows()
{
    const QString oldImage = m_pageAttr.pageImage;
    const QString oldColor = m_pageAttr.pageColor;
    m_pageAttr.applyValues(paraValues());
    if (m_pageAttr.pageImage != oldImage || m_pageAttr.pageColor != oldColor) {
        PageInfo bg;
        bg.image = m_pageAttr.pageImage;
        bg.isColor = bg.image.isEmpty();
        bg.background = m_pageAttr.pageColor;
        m_pageImage = buildBackground(bg);
        m_pageAttr.w = m_pageImage.width();
        m_pageAttr.h = m_pageImage.height();
        showBackground();
    }
    updatePageLine();
    m_pageDirty = 1;
    fillPageRows();
    fillWidgetTable();
}

void MainWindow::Para_TabelView_Edit_End(QWidget *, QAbstractItemDelegate::EndEditHint)
{
    if (!projectOpen())
        return;
    applyPageRows();
}

void MainWindow::on_tableView_Para_doubleClicked(const QModelIndex &index)
{
    if (!projectOpen() || !index.isValid() || index.column() != 1)
        return;
    const int row = index.row();
    const QList<PageAttributes::Row> &rows = PageAttributes::rows();
    if (row >= rows.size())
        return;
    QString result;
    switch (rows[row].editor) {
    case PageAttributes::Editor::ReadOnly:
        return;
    case PageAttributes::Editor::Text:
    case PageAttributes::Editor::Hex:
    case PageAttributes::Editor::Decimal:
        tableView_Para->edit(index);
        return;
    case PageAttributes::Editor::Switch:
        result = Prompts::chooseWord(this, {QStringLiteral("Enable"), QStringLiteral("Disable")}, QCursor::pos());
        break;
    case PageAttributes::Editor::PageRef: {
        QStringList pages;
        for (int r = 0; r < m_pageInfoList.size(); ++r)
            pages << QStringLiteral("Page") + PageList::pageId(r);
        result = Prompts::chooseWord(this, pages, QCursor::pos());
        break;
    }
    case PageAttributes::Editor::PagePicture: {
        const QString file = Prompts::openFile(this, QStringLiteral("Select a picture"),
                                               m_projectDir + QStringLiteral("Picture"),
                                               QStringLiteral("file(*.jpg *jpeg *bmp *.png)"));
        if (!file.isEmpty())
            result = QFileInfo(file).fileName();
        break;
    }
    case PageAttributes::Editor::Color: {
        const PageList::Rgb c = PageList::parseRgbColor(index.data().toString());
        const QColor chosen = Prompts::chooseColor(this, QColor(c.r, c.g, c.b), QStringLiteral("Select Page Color"));
        if (chosen.isValid())
            result = PageList::rgbColorText(chosen.red(), chosen.green(), chosen.blue());
        break;
    }
    }
    if (result.isEmpty())
        return; // a dismissed editor changes nothing
    m_paraModel->setData(index, result);
    applyPageRows();
}

} // namespace vantile
