#include "editors/LanguageTextEditor.h"
#include "editors/TableDialogForm.h"

#include "app/Prompts.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetLine.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace vantile {

namespace {

QTableWidgetItem *fixedItem(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setFlags(item->flags() & ~Qt::ItemIsEditable);
    return item;
}

const QString kFilter = QStringLiteral("file(*.csv)");

} // namespace

LanguageTextEditor::LanguageTextEditor(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("LanguageTextEditor"));
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    resize(900, 500);
    tableWidget = TableDialogForm::table(this);
    pushButton_LoadCommand = TableDialogForm::button(this, "pushButton_LoadCommand");
    pushButton_SaveCommand = TableDialogForm::button(this, "pushButton_SaveCommand");
    pushButton_ok = TableDialogForm::button(this, "pushButton_ok");
    pushButton_Canncel = TableDialogForm::button(this, "pushButton_Canncel");
    TableDialogForm::lay(this, tableWidget, {pushButton_LoadCommand, pushButton_SaveCommand},
                         {pushButton_ok, pushButton_Canncel});
    m_titles = TextTables::defaultTitles(m_languages);
    setColumns();
    retranslate();
    QMetaObject::connectSlotsByName(this);
}

void LanguageTextEditor::retranslate()
{
    setWindowTitle(m_pageId.isEmpty() ? tr("LanguageTextEditor")
                                      : tr("LanguageTextEditor Page") + m_pageId);
    pushButton_LoadCommand->setText(tr("Load"));
    pushButton_SaveCommand->setText(tr("Save as"));
    pushButton_ok->setText(tr("OK"));
    pushButton_Canncel->setText(tr("Cancel"));
}

void LanguageTextEditor::setColumns()
{
    const int columns = kFixedColumns + m_languages;
    tableWidget->setColumnCount(columns);
    tableWidget->setHorizontalHeaderLabels(QStringList{QStringLiteral("Name"), QStringLiteral("WriteAddr"),
                                                       QStringLiteral("WordLength")}
                                           + m_titles);
    QHeaderView *header = tableWidget->horizontalHeader();
    header->setSectionResizeMode(columns > 9 ? QHeaderView::Fixed : QHeaderView::Stretch);
    for (int c = kFixedColumns; c < columns; ++c)
        tableWidget->setColumnWidth(c, 200);
}

void LanguageTextEditor::Update_from_MainWindow(const QString &page)
{
    m_pageId = page;
    m_projectDir = m_source.projectDir ? m_source.projectDir() : QString();
    m_languages = TextTables::languageCount(m_source.languageNum ? m_source.languageNum() : QString());
    retranslate();

    // the page's multi-language labels and textrolls
    QList<Widget> widgets;
    const QStringList lines = m_source.pageLines ? m_source.pageLines() : QStringList();
    for (const QString &line : lines) {
        EditBuffer b;
        if (WidgetLine::parse(line, b) != ParseStatus::Ok)
            continue;
        const WidgetKind k = b.kind();
        if (k != WidgetKind::Label && k != WidgetKind::Statictext && k != WidgetKind::TextRoll)
            continue;
        if (!b.isOn("multi-language"))
            continue;
        widgets.append({b.objectName(), quint16(b.number("writeAddr")), int(b.number("wordLength")),
                        b.text("defaultText")});
    }

    // the column titles shared by all pages
    m_titles = TextTables::defaultTitles(m_languages);
    const QString headerFile = TextTables::headerPath(m_projectDir);
    if (QFileInfo::exists(headerFile)) {
        QByteArray bytes;
        FileError error;
        if (TextFiles::readFile(headerFile, &bytes, &error) == TextFiles::ReadStatus::Ok)
            m_titles = TextTables::titlesFromHeader(TextFiles::splitPlain(bytes).value(0), m_languages);
        else
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("打开文件失败"), error.detail());
    }
    setColumns();

    // the page's texts: its .csv, or the older .csb when there is no .csv
    QList<TextTables::LanguageRow> fileRows;
    const QString csv = TextTables::languagePath(m_projectDir, m_pageId);
    const QString csb = TextTables::languagePath(m_projectDir, m_pageId, true);
    if (QFileInfo::exists(csv) || QFileInfo(csv).isSymLink())
        readTable(csv, &fileRows);
    else if (QFileInfo::exists(csb))
        readTable(csb, &fileRows);
    fillRows(widgets, fileRows);
    m_changed = false;
}

bool LanguageTextEditor::readTable(const QString &path, QList<TextTables::LanguageRow> *rows)
{
    QByteArray bytes;
    FileError error;
    if (TextFiles::readFile(path, &bytes, &error) != TextFiles::ReadStatus::Ok) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Read fail,please check the path!"),
                         error.detail());
        return false;
    }
    QStringList problems;
    *rows = TextTables::parseLanguageTable(TextFiles::splitPlain(bytes), m_languages, &problems);
    if (!problems.isEmpty())
        Prompts::message(this, QStringLiteral("Warning"), tr("Some lines of the file could not be read."),
                         path + QLatin1Char('\n') + problems.join(QLatin1Char('\n')));
    return true;
}

void LanguageTextEditor::fillRows(const QList<Widget> &widgets, const QList<TextTables::LanguageRow> &fileRows)
{
    m_filling = true;
    tableWidget->setRowCount(0);
    tableWidget->setRowCount(widgets.size());
    for (int r = 0; r < widgets.size(); ++r) {
        const Widget &w = widgets[r];
        tableWidget->setItem(r, 0, fixedItem(w.key));
        tableWidget->setItem(r, 1, fixedItem(LineGrammar::hex16(w.writeAddr)));
        tableWidget->setItem(r, 2, fixedItem(QString::number(w.wordLength)));
        // the default language is the widget's own text
        tableWidget->setItem(r, kFixedColumns, new QTableWidgetItem(w.defaultText));
        for (int l = 1; l < m_languages; ++l)
            tableWidget->setItem(r, kFixedColumns + l, new QTableWidgetItem);
    }
    m_filling = false;
    QList<TextTables::LanguageRow> others = fileRows;
    for (TextTables::LanguageRow &row : others)
        if (!row.texts.isEmpty())
            row.texts.removeFirst(); // keep the default cells
    mergeTexts(others);
}

// Texts of the rows whose key names a row of the table; `fileRows` hold
// the texts from Language1 on.
void LanguageTextEditor::mergeTexts(const QList<TextTables::LanguageRow> &fileRows)
{
    m_filling = true;
    for (int r = 0; r < tableWidget->rowCount(); ++r) {
        const QString key = tableWidget->item(r, 0)->text();
        for (const TextTables::LanguageRow &row : fileRows) {
            if (row.key != key)
                continue;
            for (int l = 1; l < m_languages; ++l)
                tableWidget->item(r, kFixedColumns + l)->setText(row.texts.value(l - 1));
            break;
        }
    }
    m_filling = false;
}

QList<TextTables::LanguageRow> LanguageTextEditor::rows() const
{
    QList<TextTables::LanguageRow> out;
    for (int r = 0; r < tableWidget->rowCount(); ++r) {
        TextTables::LanguageRow row;
        row.key = tableWidget->item(r, 0)->text();
        row.writeAddr = quint16(LineGrammar::readHexOrNone(tableWidget->item(r, 1)->text()));
        row.wordLength = tableWidget->item(r, 2)->text().toInt();
        for (int l = 0; l < m_languages; ++l) {
            const QTableWidgetItem *item = tableWidget->item(r, kFixedColumns + l);
            row.texts << (item ? item->text() : QString());
        }
        out << row;
    }
    return out;
}

bool LanguageTextEditor::writeTable(const QString &path)
{
    QString error;
    if (!TextFiles::writeAtomically(path, TextTables::writeLanguageTable(rows(), m_languages), &error)) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Save the file failed"),
                         path + QLatin1Char('\n') + error);
        return false;
    }
    return true;
}

void LanguageTextEditor::on_pushButton_LoadCommand_clicked()
{
    const QString path = Prompts::openFile(this, QStringLiteral("Select files"),
                                           m_projectDir + QStringLiteral("MultiLanguage"), kFilter);
    if (path.isEmpty())
        return;
    QList<TextTables::LanguageRow> fileRows;
    if (!readTable(path, &fileRows))
        return;
    // the whole row, default language included, for the page's widgets
    m_filling = true;
    for (int r = 0; r < tableWidget->rowCount(); ++r)
        for (const TextTables::LanguageRow &row : fileRows)
            if (row.key == tableWidget->item(r, 0)->text()) {
                tableWidget->item(r, kFixedColumns)->setText(row.texts.value(0));
                break;
            }
    m_filling = false;
    for (TextTables::LanguageRow &row : fileRows)
        if (!row.texts.isEmpty())
            row.texts.removeFirst();
    mergeTexts(fileRows);
    m_changed = true;
}

void LanguageTextEditor::on_pushButton_SaveCommand_clicked()
{
    const QString path = Prompts::saveFile(this, QStringLiteral("Select files"),
                                           m_projectDir + QStringLiteral("MultiLanguage"), kFilter);
    if (!path.isEmpty())
        writeTable(path);
}

bool LanguageTextEditor::saveToProject()
{
    if (m_pageId.isEmpty() || m_projectDir.isEmpty())
        return true;
    QDir(m_projectDir).mkpath(QStringLiteral("MultiLanguage"));
    const QString header = TextTables::headerPath(m_projectDir);
    QString error;
    if (!TextFiles::writeAtomically(header, m_titles.join(QLatin1Char(',')).toUtf8() + '\n', &error)) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Save the file failed"),
                         header + QLatin1Char('\n') + error);
        return false;
    }
    // the default texts go back to the page first, then the page's file
    QString update = m_pageId;
    for (const TextTables::LanguageRow &row : rows())
        update += QLatin1Char('\n') + row.key + QLatin1Char(':') + LineGrammar::toHexText(row.texts.value(0));
    emit Update_to_MainWindow(update);
    if (!writeTable(TextTables::languagePath(m_projectDir, m_pageId)))
        return false;
    m_changed = false;
    return true;
}

bool LanguageTextEditor::parseUpdate(const QString &text, QString *pageId, QList<QPair<QString, QString>> *texts)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.isEmpty() || lines[0].isEmpty())
        return false;
    *pageId = lines[0];
    texts->clear();
    for (int i = 1; i < lines.size(); ++i) {
        const int colon = lines[i].indexOf(QLatin1Char(':'));
        if (colon <= 0)
            return false;
        texts->append({lines[i].left(colon), LineGrammar::fromHexText(lines[i].mid(colon + 1))});
    }
    return true;
}

void LanguageTextEditor::finish()
{
    hide();
    emit LanguageTextEditor_close();
}

void LanguageTextEditor::on_pushButton_ok_clicked()
{
    if (saveToProject())
        finish(); // a failed save keeps the table open, nothing is lost
}

void LanguageTextEditor::on_pushButton_Canncel_clicked()
{
    const auto answer = Prompts::question(this, QStringLiteral("Quit"), QStringLiteral("Do you need to save to the project?"),
                                          {QMessageBox::Yes, QMessageBox::No});
    if (answer == QMessageBox::Yes && !saveToProject())
        return;
    finish();
}

void LanguageTextEditor::reject()
{
    on_pushButton_Canncel_clicked();
}

void LanguageTextEditor::on_tableWidget_cellChanged(int row, int column)
{
    if (m_filling)
        return;
    m_changed = true;
    preview(row, column);
}

void LanguageTextEditor::on_tableWidget_cellClicked(int row, int column)
{
    // the current cell follows the click, so that Load and Save as keep it
    if (row >= 0 && column >= 0)
        tableWidget->setCurrentCell(row, column);
    preview(row, column);
}

void LanguageTextEditor::preview(int row, int column)
{
    // language columns follow Name, WriteAddr and WordLength
    const QTableWidgetItem *name = tableWidget->item(row, 0);
    const QTableWidgetItem *text = tableWidget->item(row, column);
    if (column >= 3 && name && text)
        emit Preview_to_MainWindow(name->text(), text->text());
}

} // namespace vantile
