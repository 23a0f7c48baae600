// The encoder's action list: an item row of the parameter table opens the
// list dialog on its entry, and the dialog's answer replaces that entry in
// the encoder's line.

#include "app/MainWindow.h"

#include "editors/DialogList.h"
#include "project/PageList.h"
#include "widgets/VariableKinds.h"
#include "widgets/WidgetLine.h"

namespace vantile {

namespace {

QByteArray itemKey(int item)
{
    return "item" + QByteArray::number(item);
}

} // namespace

void MainWindow::openEncoderItem(int row)
{
    const KindDef *def = m_editBuffer.definition();
    const FieldDef *field = def ? def->atRow(row) : nullptr;
    if (m_editBuffer.kind() != WidgetKind::Encoder || !field || field->codec != Codec::Entry)
        return;
    m_encoderItem = QByteArray(field->key).mid(4).toInt();
    connect(m_dialogList, &DialogList::List_Update_to_MainWindow, this, &MainWindow::Update_from_DialogList,
            Qt::UniqueConnection);
    connect(this, &MainWindow::Update_to_DialogList, m_dialogList, &DialogList::List_Update_from_MainWindow,
            Qt::UniqueConnection);
    QStringList pages;
    for (int r = 0; r < m_pageInfoList.size(); ++r)
        pages << QStringLiteral("Page") + PageList::pageId(r);
    m_dialogList->setPages(pages);
    emit Update_to_DialogList(m_editBuffer.objectName() + QLatin1Char(':')
                              + VariableKinds::toDialogEntry(m_editBuffer.text(itemKey(m_encoderItem).constData())));
    showMasked(m_dialogList);
}

void MainWindow::Update_from_DialogList(const QString &text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    if (!projectOpen() || colon <= 0 || m_encoderItem < 1)
        return;
    const QString name = text.left(colon);
    if (name != m_selectedName)
        selectByName(name);
    if (m_selectedName != name || m_editBuffer.kind() != WidgetKind::Encoder)
        return;
    const QByteArray key = itemKey(m_encoderItem);
    const QString previous = m_editBuffer.text(key.constData());
    m_editBuffer.setText(key.constData(), VariableKinds::fromDialogEntry(text.mid(colon + 1), previous));
    WidgetLine::storeLine(m_currentPageLines, m_editBuffer);
    m_pageDirty = 1;
    fillWidgetRows();
    fillWidgetTable();
    takeStep(m_currentPageRow);
}

} // namespace vantile
