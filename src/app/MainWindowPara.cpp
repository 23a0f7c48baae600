// The parameter table: filling rows, the editors a double click opens,
// and applying an edit. The page's own rows live here; the kinds bring
// their rows through the same table.

#include "app/MainWindow.h"

#include "app/ParaDelegates.h"
#include "app/Prompts.h"
#include "app/TableView.h"
#include "build/FontFile.h"
#include "designer/CanvasWidgets.h"
#include "project/TextTables.h"
#include "widgets/WidgetLine.h"
#include "widgets/WordTables.h"

#include <QCursor>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>

#include <functional>

namespace vantile {

// A chosen font file decides the rows that describe it: the encoding, and
// the character size where the kind shows one. A file that is no font
// leaves them and says why in the log.
static void takeFontHeader(QStandardItemModel *model, const KindDef &def, const QString &path,
                           const std::function<void(const QString &)> &log)
{
    const FontFile::HeaderRead read = FontFile::readHeader(path);
    if (!read.ok()) {
        const QString why = read.status == FontFile::HeaderRead::Short
                                ? QStringLiteral("%1 bytes, a font file has at least %2 bytes")
                                      .arg(read.fileSize).arg(FontFile::kMinFileSize)
                                : read.reason;
        log(path + QStringLiteral(": not a font file: ") + why);
        return;
    }
    const auto set = [&](const char *key, const QString &text) {
        const FieldDef *f = def.find(key);
        if (f && f->hasRow())
            model->setData(model->index(f->row, 1), text);
    };
    const int encoding = read.header.encoding();
    const QString word = WordTables::encoding.wordOf(encoding);
    set("encoding", word.isEmpty() ? QString::number(encoding) : word);
    set("fontWidth", QString::number(read.header.width));
    set("fontHeight", QString::number(read.header.height));
}

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
    tableView_Para->resizeColumnToContents(0); // the longest label shows whole
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
    if (m_selectedName == QLatin1String("label_Show"))
        applyPageRows();
    else
        applyWidgetRows();
}

void MainWindow::on_tableView_Para_doubleClicked(const QModelIndex &index)
{
    if (!projectOpen() || !index.isValid() || index.column() != 1)
        return;
    const int row = index.row();
    if (m_selectedName != QLatin1String("label_Show")) {
        const KindDef *def = m_editBuffer.definition();
        const FieldDef *field = def ? def->atRow(row) : nullptr;
        if (!field)
            return;
        if (field->codec == Codec::Entry) {
            openEncoderItem(row); // the encoder's action list
            return;
        }
        if (field->editor == Editor::Inline || field->editor == Editor::TextDialog) {
            tableView_Para->edit(index);
            return;
        }
        const QString result = widgetEditorResult(*field, index);
        if (result.isEmpty())
            return; // a dismissed editor changes nothing
        m_paraModel->setData(index, result);
        if (field->editor == Editor::FontFile)
            takeFontHeader(m_paraModel, *def, m_projectDir + QStringLiteral("FontBin/") + result,
                           [this](const QString &line) { log(line); });
        applyWidgetRows();
        return;
    }
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

namespace vantile {

// --- widgets -----------------------------------------------------------------------

QSize MainWindow::pagePictureSize() const
{
    return m_pageImage.size();
}

void MainWindow::selectByName(const QString &objectName)
{
    if (!projectOpen())
        return;
    // the reference look moves to the new selection
    CanvasWidgets::setCommonLook(m_canvasWidgets->find(m_selectedName));
    if (objectName.isEmpty() || objectName == QLatin1String("label_Show") || objectName == QLatin1String("Page")) {
        m_selectedName = QStringLiteral("label_Show");
        selectWidgetRow();
        fillPageRows();
        return;
    }
    const QString key = objectName + QLatin1Char(':');
    for (const QString &line : m_currentPageLines) {
        if (!line.startsWith(key))
            continue;
        if (WidgetLine::parse(line, m_editBuffer) != ParseStatus::Ok)
            break;
        m_selectedName = objectName;
        if (QLabel *label = m_canvasWidgets->find(objectName)) {
            label->setStyleSheet(m_referenceStyle);
            label->raise();
        }
        selectWidgetRow();
        fillWidgetRows();
        return;
    }
    m_selectedName = QStringLiteral("label_Show");
    fillPageRows();
}

void MainWindow::on_tableView_Wdg_clicked(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    selectByName(m_wdgModel->index(index.row(), 0).data().toString());
}

void MainWindow::fillWidgetRows()
{
    const QModelIndex current = tableView_Para->currentIndex();
    const int scroll = tableView_Para->verticalScrollBar()->value();
    m_paraModel->removeRows(0, m_paraModel->rowCount());
    const KindDef *def = m_editBuffer.definition();
    RowContext ctx;
    const QString fontDir = m_projectDir + QStringLiteral("FontBin");
    ctx.fontFileName = [fontDir](int id) {
        const QStringList files = QDir(fontDir).entryList({QStringLiteral("%1*").arg(id, 2, 10, QLatin1Char('0'))},
                                                          QDir::Files, QDir::Name);
        return files.value(0);
    };
    const QVector<TableRow> rows = WidgetLine::tableRows(m_editBuffer, m_languageIndex, ctx);
    for (int i = 0; i < rows.size(); ++i) {
        auto *labelItem = new QStandardItem(rows[i].first);
        labelItem->setEditable(false);
        m_paraModel->appendRow({labelItem, new QStandardItem(rows[i].second)});
        tableView_Para->setRowHidden(i, !WidgetLine::rowShown(m_editBuffer, i));
    }
    Q_UNUSED(def);
    tableView_Para->resizeColumnToContents(0); // the longest label shows whole
    if (current.isValid() && current.row() < m_paraModel->rowCount())
        tableView_Para->setCurrentIndex(m_paraModel->index(current.row(), current.column()));
    tableView_Para->verticalScrollBar()->setValue(scroll);
}

void MainWindow::applyWidgetRows()
{
    if (!WidgetLine::applyEdit(m_editBuffer, paraValues(), pagePictureSize()))
        return;
    if (QLabel *label = m_canvasWidgets->find(m_editBuffer.objectName())) {
        const QSize picture = m_canvasWidgets->paint(label, m_editBuffer, m_zoomFactor, m_projectDir);
        if (picture.isValid() && !m_editBuffer.isLocked()) {
            // a widget that shows a picture takes its size
            m_editBuffer.setW(picture.width());
            m_editBuffer.setH(picture.height());
        }
    }
    WidgetLine::storeLine(m_currentPageLines, m_editBuffer);
    m_pageDirty = 1;
    fillWidgetRows();
    fillWidgetTable();
    takeStep(m_currentPageRow);
}

// The colour dialog is titled by the kind whose colour it edits.
static QString colorDialogTitle(WidgetKind kind)
{
    switch (kind) {
    case WidgetKind::Label:
    case WidgetKind::Statictext:
        return QStringLiteral("Select Label Color");
    case WidgetKind::Number:
        return QStringLiteral("Select Number Color");
    case WidgetKind::TextRoll:
        return QStringLiteral("Select TextRoll Color");
    case WidgetKind::Clock:
        return QStringLiteral("Select Clock Color");
    default:
        return QStringLiteral("Select Color");
    }
}

QString MainWindow::widgetEditorResult(const FieldDef &field, const QModelIndex &index)
{
    const QPoint at = QCursor::pos();
    switch (field.editor) {
    case Editor::Menu:
    case Editor::PictureFormat:
        return Prompts::chooseWord(this, field.menuChoices(), at);
    case Editor::IconPicture:
    case Editor::PagePicture:
    case Editor::GifFile: {
        const bool gif = field.editor == Editor::GifFile;
        const QString folder = field.editor == Editor::IconPicture ? QStringLiteral("Icon")
                               : gif                                ? QStringLiteral("Gif")
                                                                    : QStringLiteral("Picture");
        const QString file = Prompts::openFile(this, QStringLiteral("Select a picture"), m_projectDir + folder,
                                               gif ? QStringLiteral("file(*.gif)")
                                                   : QStringLiteral("file(*.jpg *jpeg *bmp *.png)"));
        return file.isEmpty() ? QString() : QFileInfo(file).fileName();
    }
    case Editor::PageRef: {
        QStringList pages;
        for (int r = 0; r < m_pageInfoList.size(); ++r)
            pages << QStringLiteral("Page") + PageList::pageId(r);
        return Prompts::chooseWord(this, pages, at);
    }
    case Editor::FontFile: {
        QStringList fonts = QDir(m_projectDir + QStringLiteral("FontBin")).entryList(QDir::Files, QDir::Name);
        if (fonts.isEmpty())
            fonts = QStringList{QStringLiteral("NoFont1"), QStringLiteral("NoFont2")};
        const QString chosen = Prompts::chooseWord(this, fonts, at);
        return chosen.startsWith(QLatin1String("NoFont")) ? QString() : chosen;
    }
    case Editor::ConstantText: {
        // the entries of Constant_text.csv as "N:text"; the row takes N and
        // the widget's text follows the entry
        const TextTables::ConstantRead read =
            TextTables::readConstantText(TextTables::constantTextPath(m_projectDir), 1);
        QStringList entries = TextTables::constantMenu(read.entries);
        if (entries.isEmpty())
            entries = QStringList{QStringLiteral("NoConstant_Num1"), QStringLiteral("NoConstant_Num2")};
        const int number = TextTables::constantMenuNumber(Prompts::chooseWord(this, entries, at));
        QString text;
        if (number <= 0 || !TextTables::constantText(read.entries, number, &text))
            return QString();
        const KindDef *def = m_editBuffer.definition();
        if (const FieldDef *f = def ? def->find("defaultText") : nullptr)
            if (f->hasRow())
                m_paraModel->setData(m_paraModel->index(f->row, 1), text);
        return QString::number(number);
    }
    case Editor::Colour: {
        const quint32 rgb = quint32(index.data().toString().mid(2).toUInt(nullptr, 16));
        const QColor chosen = Prompts::chooseColor(this, QColor::fromRgb(rgb), colorDialogTitle(m_editBuffer.kind()));
        if (!chosen.isValid())
            return QString();
        return QStringLiteral("0x%1").arg(chosen.rgb() & 0xFFFFFF, 6, 16, QLatin1Char('0')).toUpper().replace(
            QLatin1String("0X"), QLatin1String("0x"));
    }
    case Editor::Inline:
    case Editor::TextDialog:
        break;
    }
    return QString();
}

void MainWindow::UpdatePageWdgList_from_TableView(int from, int to)
{
    // Row 0 is the page; rows 1.. are the widget lines in order.
    if (!projectOpen() || from < 1 || to < 1)
        return;
    QList<int> widgetLines;
    for (int i = 0; i < m_currentPageLines.size(); ++i)
        if (!PageAttributes::isPageLine(m_currentPageLines[i]) && m_currentPageLines[i].indexOf(QLatin1Char(':')) > 0)
            widgetLines << i;
    if (from > widgetLines.size() || to > widgetLines.size())
        return;
    m_currentPageLines.move(widgetLines[from - 1], widgetLines[to - 1]);
    loadWidgets(); // a later line lies above an earlier one
    m_pageDirty = 1;
    fillWidgetTable();
}

void MainWindow::loadWidgets()
{
    m_canvasWidgets->clear();
    for (const QString &line : m_currentPageLines) {
        const QString error = m_canvasWidgets->load(line, m_zoomFactor, m_projectDir);
        if (!error.isEmpty())
            log(error);
    }
}

} // namespace vantile
