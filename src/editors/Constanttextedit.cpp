#include "editors/Constanttextedit.h"
#include "editors/TableDialogForm.h"

#include "app/Prompts.h"
#include "widgets/LineGrammar.h"

#include <QCursor>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace vantile {

namespace {

const QString kNamePrefix = QStringLiteral("Statictext_");

QTableWidgetItem *fixedItem(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setFlags(item->flags() & ~Qt::ItemIsEditable);
    return item;
}

// "0X1A2B3C" -> 0x1A2B3C; anything unreadable is black.
quint32 colourValue(const QString &cell)
{
    return LineGrammar::readHex(cell) & 0xFFFFFF;
}

QString colourCell(const QColor &c)
{
    return QStringLiteral("0X%1").arg(c.rgb() & 0xFFFFFF, 6, 16, QLatin1Char('0')).toUpper();
}

int entryNumber(const QString &name)
{
    return int(LineGrammar::readDecimal(name.mid(kNamePrefix.size())));
}

} // namespace

Constanttextedit::Constanttextedit(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Constanttextedit"));
    resize(760, 460);
    tableWidget = TableDialogForm::table(this);
    tableWidget->horizontalHeader()->hide();
    tableWidget->verticalHeader()->hide();
    pushButton_add = TableDialogForm::button(this, "pushButton_add");
    pushButton_del = TableDialogForm::button(this, "pushButton_del");
    pushButton_ok = TableDialogForm::button(this, "pushButton_ok");
    pushButton_Canncel = TableDialogForm::button(this, "pushButton_Canncel");
    TableDialogForm::lay(this, tableWidget, {pushButton_add, pushButton_del}, {pushButton_ok, pushButton_Canncel});

    connect(tableWidget, &QTableWidget::itemChanged, this, &Constanttextedit::onTableItemChanged);
    connect(tableWidget, &QTableWidget::cellClicked, this, &Constanttextedit::constant_Preview);
    connect(tableWidget, &QTableWidget::cellDoubleClicked, this, &Constanttextedit::show_prodcut_sets);
    setLanguageCount(1);
    retranslate();
    QMetaObject::connectSlotsByName(this);
}

void Constanttextedit::retranslate()
{
    setWindowTitle(tr("Static Text Settings"));
    pushButton_add->setText(tr("Add"));
    pushButton_del->setText(tr("Delete"));
    pushButton_ok->setText(tr("OK"));
    pushButton_Canncel->setText(tr("Cancel"));
    setHeaderRows();
}

void Constanttextedit::setHeaderRows()
{
    const bool filling = m_filling;
    m_filling = true;
    if (tableWidget->rowCount() < kHeaderRows)
        tableWidget->setRowCount(kHeaderRows);
    tableWidget->clearSpans();
    const QStringList titles = TextTables::defaultTitles(m_languages);
    tableWidget->setItem(0, 0, fixedItem(tr("Constant Num")));
    tableWidget->setItem(1, 0, fixedItem(QString()));
    for (int l = 0; l < m_languages; ++l) {
        tableWidget->setItem(0, 1 + 3 * l, fixedItem(titles[l]));
        tableWidget->setSpan(0, 1 + 3 * l, 1, 3);
        tableWidget->setItem(1, 1 + 3 * l, fixedItem(tr("Text")));
        tableWidget->setItem(1, 2 + 3 * l, fixedItem(tr("Color")));
        tableWidget->setItem(1, 3 + 3 * l, fixedItem(tr("Font")));
    }
    for (int r = 0; r < kHeaderRows; ++r)
        for (int c = 0; c < tableWidget->columnCount(); ++c)
            if (QTableWidgetItem *item = tableWidget->item(r, c))
                item->setBackground(QColor(QStringLiteral("LightSkyBlue")));
    m_filling = filling;
}

void Constanttextedit::setLanguageCount(int languages)
{
    m_languages = qBound(1, languages, 32);
    tableWidget->setColumnCount(3 * m_languages + 1);
    setHeaderRows();
}

QStringList Constanttextedit::fontFiles() const
{
    if (m_projectDir.isEmpty())
        return {};
    return QDir(m_projectDir + QStringLiteral("FontBin")).entryList(QDir::Files, QDir::Name);
}

QString Constanttextedit::fontFileName(int fontId) const
{
    for (const QString &file : fontFiles())
        if (LineGrammar::fontNumber(file) == fontId)
            return file;
    return QStringLiteral("NoFont1");
}

int Constanttextedit::fontIdOf(const QString &cell) const
{
    if (!fontFiles().contains(cell))
        return 0;
    return qMax(0, LineGrammar::fontNumber(cell));
}

void Constanttextedit::appendEntry(const TextTables::ConstantEntry &entry)
{
    const bool filling = m_filling;
    m_filling = true;
    const int row = tableWidget->rowCount();
    tableWidget->insertRow(row);
    tableWidget->setItem(row, 0, fixedItem(kNamePrefix + QString::number(entry.number)));
    for (int l = 0; l < m_languages; ++l) {
        const TextTables::ConstantCell cell = entry.cells.value(l);
        tableWidget->setItem(row, 1 + 3 * l, new QTableWidgetItem(cell.text));
        auto *colour = fixedItem(cell.colour);
        colour->setBackground(QColor::fromRgb(colourValue(cell.colour)));
        colour->setForeground(qGray(colourValue(cell.colour)) < 128 ? Qt::white : Qt::black);
        tableWidget->setItem(row, 2 + 3 * l, colour);
        tableWidget->setItem(row, 3 + 3 * l, fixedItem(fontFileName(cell.fontId)));
    }
    m_filling = filling;
}

void Constanttextedit::loadFile(const QString &path)
{
    m_path = path;
    m_filling = true;
    tableWidget->setRowCount(kHeaderRows);
    setHeaderRows();
    const TextTables::ConstantRead read = TextTables::readConstantText(path, m_languages);
    if (read.status != TextFiles::ReadStatus::Ok && read.status != TextFiles::ReadStatus::Missing)
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Read fail,please check the path!"),
                         read.error.detail());
    for (const TextTables::ConstantEntry &e : read.entries)
        appendEntry(e);
    if (!read.problems.isEmpty())
        Prompts::message(this, QStringLiteral("Warning"),
                         tr("Some lines of the file are incomplete; what they hold is shown."),
                         path + QLatin1Char('\n') + read.problems.join(QLatin1Char('\n')));
    m_filling = false;
    m_changed = false;
}

QList<TextTables::ConstantEntry> Constanttextedit::entries() const
{
    QList<TextTables::ConstantEntry> out;
    const QStringList fonts = fontFiles();
    for (int row = kHeaderRows; row < tableWidget->rowCount(); ++row) {
        TextTables::ConstantEntry e;
        auto text = [&](int column) {
            const QTableWidgetItem *item = tableWidget->item(row, column);
            return item ? item->text() : QString();
        };
        e.number = entryNumber(text(0));
        for (int l = 0; l < m_languages; ++l) {
            TextTables::ConstantCell c;
            c.text = text(1 + 3 * l);
            c.colour = text(2 + 3 * l);
            const QString font = text(3 + 3 * l);
            c.fontId = fonts.contains(font) ? qMax(0, LineGrammar::fontNumber(font)) : 0;
            e.cells << c;
        }
        out << e;
    }
    return out;
}

void Constanttextedit::on_pushButton_add_clicked()
{
    int highest = 0;
    for (int row = kHeaderRows; row < tableWidget->rowCount(); ++row)
        if (const QTableWidgetItem *item = tableWidget->item(row, 0))
            highest = qMax(highest, entryNumber(item->text()));
    TextTables::ConstantEntry e;
    e.number = highest + 1;
    const QStringList fonts = fontFiles();
    for (int l = 0; l < m_languages; ++l) {
        TextTables::ConstantCell c;
        c.fontId = fonts.isEmpty() ? -1 : qMax(0, LineGrammar::fontNumber(fonts.first()));
        e.cells << c;
    }
    appendEntry(e);
    // the first font file as it is named, even one without a number
    for (int l = 0; l < m_languages && !fonts.isEmpty(); ++l)
        tableWidget->item(tableWidget->rowCount() - 1, 3 + 3 * l)->setText(fonts.first());
    m_changed = true;
}

void Constanttextedit::on_pushButton_del_clicked()
{
    const int row = tableWidget->currentRow();
    if (row < kHeaderRows)
        return;
    tableWidget->removeRow(row);
    m_changed = true;
}

void Constanttextedit::onTableItemChanged()
{
    if (!m_filling)
        m_changed = true;
}

void Constanttextedit::constant_Preview(int row, int column)
{
    if (row < kHeaderRows)
        return;
    const int language = column >= 1 ? (column - 1) / 3 : 0;
    auto text = [&](int c) {
        const QTableWidgetItem *item = tableWidget->item(row, c);
        return item ? item->text() : QString();
    };
    emit Preview_to_MainWindow(text(1 + 3 * language), int(colourValue(text(2 + 3 * language))),
                               fontIdOf(text(3 + 3 * language)), entryNumber(text(0)));
}

void Constanttextedit::show_prodcut_sets(int row, int column)
{
    if (row < kHeaderRows || column < 1)
        return;
    QTableWidgetItem *item = tableWidget->item(row, column);
    if (!item)
        return;
    switch ((column - 1) % 3) {
    case 1: {
        const QColor chosen = Prompts::chooseColor(this, QColor::fromRgb(colourValue(item->text())),
                                                   QStringLiteral("Select Label Color"));
        if (!chosen.isValid())
            return;
        item->setText(colourCell(chosen));
        item->setBackground(chosen);
        item->setForeground(qGray(chosen.rgb()) < 128 ? Qt::white : Qt::black);
        break;
    }
    case 2: {
        QStringList fonts = fontFiles();
        if (fonts.isEmpty())
            fonts = QStringList{QStringLiteral("NoFont1"), QStringLiteral("NoFont2")};
        const QString chosen = Prompts::chooseWord(this, fonts, QCursor::pos());
        if (chosen.isEmpty() || chosen.startsWith(QLatin1String("NoFont")))
            return;
        item->setText(chosen);
        break;
    }
    default:
        tableWidget->editItem(item);
        return;
    }
    m_changed = true;
}

bool Constanttextedit::save()
{
    const QString path = m_path.isEmpty() ? TextTables::constantTextPath(m_projectDir) : m_path;
    QString error;
    if (!TextFiles::writeAtomically(path, TextTables::writeConstantText(entries(), m_languages), &error)) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Save the file failed"),
                         path + QLatin1Char('\n') + error);
        return false;
    }
    m_changed = false;
    emit Update_to_MainWindow(path);
    return true;
}

void Constanttextedit::finish()
{
    hide();
    emit ConstanttextEditor_close();
}

void Constanttextedit::on_pushButton_ok_clicked()
{
    if (save())
        finish(); // a failed save keeps the table open, nothing is lost
}

void Constanttextedit::on_pushButton_Canncel_clicked()
{
    if (m_changed) {
        const auto answer = Prompts::question(this, QStringLiteral("Message"), QStringLiteral("Do you need to save ?"),
                                              {QMessageBox::Yes, QMessageBox::No});
        if (answer == QMessageBox::Yes && !save())
            return;
    }
    m_changed = false;
    finish();
}

void Constanttextedit::reject()
{
    on_pushButton_Canncel_clicked();
}

} // namespace vantile
