#include "editors/DialogModbus.h"
#include "editors/TableDialogForm.h"

#include "app/Prompts.h"

#include <QEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>

namespace vantile {

namespace {

QTableWidgetItem *itemWith(const QString &text, bool editable)
{
    auto *item = new QTableWidgetItem(text);
    if (!editable)
        item->setFlags(item->flags() & ~Qt::ItemIsEditable);
    return item;
}

bool menuColumn(int column)
{
    return column == DialogModbus::Function || column == DialogModbus::Operation;
}

} // namespace

const QStringList &DialogModbus::functionValues()
{
    static const QStringList values{QStringLiteral("0x03"), QStringLiteral("0x04"), QStringLiteral("0x06"),
                                    QStringLiteral("0x10"), QStringLiteral("0x01"), QStringLiteral("0x02"),
                                    QStringLiteral("0x05"), QStringLiteral("0x0F")};
    return values;
}

const QStringList &DialogModbus::operationValues()
{
    static const QStringList values{QStringLiteral("0x00"), QStringLiteral("0x01"), QStringLiteral("0x02"),
                                    QStringLiteral("0x03")};
    return values;
}

DialogModbus::DialogModbus(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("DialogModbus"));
    resize(1100, 460);
    tableWidget = TableDialogForm::table(this);
    tableWidget->setColumnCount(ColumnCount);
    tableWidget->verticalHeader()->hide();
    tableWidget->horizontalHeader()->setStretchLastSection(true);
    tableWidget->setContextMenuPolicy(Qt::CustomContextMenu);
    pushButton_LoadCommand = TableDialogForm::button(this, "pushButton_LoadCommand");
    pushButton_SaveCommand = TableDialogForm::button(this, "pushButton_SaveCommand");
    pushButton_Up = TableDialogForm::button(this, "pushButton_Up");
    pushButton_Down = TableDialogForm::button(this, "pushButton_Down");
    TableDialogForm::lay(this, tableWidget, {pushButton_Up, pushButton_Down},
                         {pushButton_LoadCommand, pushButton_SaveCommand});

    connect(tableWidget, &QTableWidget::itemChanged, this, &DialogModbus::onItemChanged);
    connect(tableWidget, &QWidget::customContextMenuRequested, this, &DialogModbus::showMenu);
    setRows({});
    retranslate();
    QMetaObject::connectSlotsByName(this);
}

void DialogModbus::retranslate()
{
    setWindowTitle(tr("Modbus command list"));
    tableWidget->setHorizontalHeaderLabels({tr("Item"), tr("Select"), tr("Address"), tr("Function"), tr("Register"),
                                            tr("WriteAddr"), tr("Quantity"), tr("Operation"), tr("Parameter"),
                                            tr("Repeat"), tr("Response(ms)"), tr("Reserve"), tr("Description")});
    pushButton_LoadCommand->setText(tr("Load"));
    pushButton_SaveCommand->setText(tr("Save"));
    pushButton_Up->setText(tr("Move up"));
    pushButton_Down->setText(tr("Move down"));
}

void DialogModbus::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}

// --- the table -------------------------------------------------------------------

void DialogModbus::appendRow(int at, const CommandRow &row)
{
    const bool filling = m_filling;
    m_filling = true;
    tableWidget->insertRow(at);
    tableWidget->setItem(at, Item, itemWith(QString(), false));
    auto *select = itemWith(QString(), false);
    select->setFlags(select->flags() | Qt::ItemIsUserCheckable);
    select->setCheckState(row.select ? Qt::Checked : Qt::Unchecked);
    tableWidget->setItem(at, Select, select);
    for (int c = Address; c <= Reserve; ++c)
        tableWidget->setItem(at, c, itemWith(row.cells.value(c - Address), !menuColumn(c)));
    tableWidget->setItem(at, Description, itemWith(row.description, true));
    m_filling = filling;
}

void DialogModbus::renumber()
{
    const bool filling = m_filling;
    m_filling = true;
    for (int r = 0; r < tableWidget->rowCount(); ++r)
        tableWidget->item(r, Item)->setText(QString::number(r + 1));
    m_filling = filling;
}

void DialogModbus::setRows(const QList<CommandRow> &rows)
{
    m_filling = true;
    tableWidget->setRowCount(0);
    for (const CommandRow &row : rows)
        appendRow(tableWidget->rowCount(), row);
    if (tableWidget->rowCount() == 0)
        appendRow(0, CommandRow()); // the table keeps one row
    renumber();
    m_filling = false;
}

QList<CommandRow> DialogModbus::rows() const
{
    QList<CommandRow> out;
    for (int r = 0; r < tableWidget->rowCount(); ++r) {
        CommandRow row;
        row.select = tableWidget->item(r, Select)->checkState() == Qt::Checked;
        for (int c = Address; c <= Reserve; ++c)
            row.cells << tableWidget->item(r, c)->text();
        row.description = tableWidget->item(r, Description)->text();
        out << row;
    }
    return out;
}

bool DialogModbus::isEmpty() const
{
    for (const CommandRow &row : rows())
        if (!row.isBlank())
            return false;
    return true;
}

void DialogModbus::onItemChanged(QTableWidgetItem *item)
{
    if (m_filling)
        return;
    if (item->column() >= Address && item->column() <= Reserve) {
        // a separator typed into a cell would shift every field behind it
        QString text = item->text();
        text.remove(QLatin1Char(',')).remove(QLatin1Char(';')).remove(QLatin1Char('\n')).remove(QLatin1Char('\r'));
        if (text != item->text()) {
            m_filling = true;
            item->setText(text);
            m_filling = false;
        }
    }
    m_changed = true;
}

// --- menus and rows --------------------------------------------------------------

void DialogModbus::showMenu(const QPoint &pos)
{
    const QModelIndex index = tableWidget->indexAt(pos);
    if (!index.isValid())
        return;
    tableWidget->setCurrentCell(index.row(), index.column());
    const QPoint global = tableWidget->viewport()->mapToGlobal(pos);
    if (index.column() == Function) {
        const QString value = Prompts::chooseWord(this, functionValues(), global);
        if (!value.isEmpty())
            SlotFunctionMenuClicked(value);
    } else if (index.column() == Operation) {
        const QString value = Prompts::chooseWord(this, operationValues(), global);
        if (!value.isEmpty())
            SlotOperationMenuClicked(value);
    } else {
        const QString word = Prompts::chooseWord(this, {QStringLiteral("insert"), QStringLiteral("delete")}, global);
        if (!word.isEmpty())
            SlotMenuClicked(word);
    }
}

void DialogModbus::setCurrentText(int column, const QString &value)
{
    const int row = tableWidget->currentRow();
    if (row < 0)
        return;
    tableWidget->item(row, column)->setText(value);
}

void DialogModbus::SlotFunctionMenuClicked(const QString &value)
{
    setCurrentText(Function, value);
}

void DialogModbus::SlotOperationMenuClicked(const QString &value)
{
    setCurrentText(Operation, value);
}

void DialogModbus::SlotMenuClicked(const QString &word)
{
    const int row = tableWidget->currentRow();
    if (word == QLatin1String("insert")) {
        const int at = row < 0 ? tableWidget->rowCount() : row + 1;
        appendRow(at, CommandRow());
        renumber();
        tableWidget->setCurrentCell(at, Address);
        m_changed = true;
    } else if (word == QLatin1String("delete")) {
        if (tableWidget->rowCount() <= 1) {
            Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Keep at least one line!"));
            return;
        }
        if (row < 0)
            return;
        tableWidget->removeRow(row);
        renumber();
        m_changed = true;
    }
}

void DialogModbus::moveRow(int step)
{
    const int row = tableWidget->currentRow();
    if (row < 0)
        return;
    if (step < 0 && row == 0) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Has reached the top!"));
        return;
    }
    if (step > 0 && row == tableWidget->rowCount() - 1) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Has reached the bottom!"));
        return;
    }
    const int other = row + (step < 0 ? -1 : 1);
    const int column = tableWidget->currentColumn();
    m_filling = true;
    for (int c = Select; c < ColumnCount; ++c) {
        QTableWidgetItem *a = tableWidget->takeItem(row, c);
        QTableWidgetItem *b = tableWidget->takeItem(other, c);
        tableWidget->setItem(row, c, b);
        tableWidget->setItem(other, c, a);
    }
    m_filling = false;
    tableWidget->setCurrentCell(other, column);
    m_changed = true;
}

// --- files -----------------------------------------------------------------------

bool DialogModbus::isProjectFile(const QString &path) const
{
    return !m_projectDir.isEmpty()
           && QFileInfo(path).absoluteFilePath() == QFileInfo(CommandList::path(m_projectDir)).absoluteFilePath();
}

bool DialogModbus::loadFile(const QString &path)
{
    const CommandList::ReadResult read = CommandList::read(path);
    if (!read.ok()) {
        Prompts::message(this, QStringLiteral("Message"), QStringLiteral("Fail to open this file"), read.error.detail());
        return false;
    }
    setRows(read.rows);
    if (!read.damaged.isEmpty())
        Prompts::message(this, QStringLiteral("Warning"),
                         tr("Some lines of the command list are incomplete; they are shown as far as they go. "
                            "The file stays as it is until the list is saved."),
                         path + QLatin1Char('\n') + read.damaged.join(QLatin1Char('\n')));
    return true;
}

bool DialogModbus::openFor(const QString &projectDir)
{
    if (isVisible() && projectDir == m_projectDir) {
        raise();
        activateWindow();
        return true;
    }
    if (m_changed && !m_projectDir.isEmpty()) {
        // unsaved rows of the project opened before
        const auto answer = Prompts::question(this, QStringLiteral("Quit"), QStringLiteral("Do you need to save command.list?"),
                                              {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
        if (answer == QMessageBox::Cancel || (answer == QMessageBox::Yes && !writeTo(CommandList::path(m_projectDir))))
            return false;
    }
    m_projectDir = projectDir;
    const QString file = CommandList::path(projectDir);
    const CommandList::ReadResult read = CommandList::read(file);
    if (read.status == TextFiles::ReadStatus::Missing) {
        setRows({});
        m_projectFileRead = true;
    } else {
        m_projectFileRead = loadFile(file);
        if (!m_projectFileRead)
            setRows({});
    }
    m_changed = false;
    show();
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    raise();
    activateWindow();
    return true;
}

bool DialogModbus::writeTo(const QString &path)
{
    QString error;
    if (!CommandList::save(path, rows(), &error)) {
        Prompts::message(this, QStringLiteral("Message"), QStringLiteral("Fail to open this file"),
                         FileError{path, error}.detail());
        return false;
    }
    if (isProjectFile(path)) {
        m_changed = false;
        m_projectFileRead = true;
    }
    return true;
}

void DialogModbus::on_pushButton_LoadCommand_clicked()
{
    const QString path = Prompts::openFile(this, QStringLiteral("Select command txt files"), m_projectDir,
                                           QStringLiteral("file(*.list)"));
    if (path.isEmpty() || !loadFile(path))
        return;
    // the table now differs from the project's file, unless it is that file
    m_changed = !isProjectFile(path);
    if (!m_changed)
        m_projectFileRead = true;
}

void DialogModbus::on_pushButton_SaveCommand_clicked()
{
    if (isEmpty()) {
        Prompts::message(this, QStringLiteral("Message"), QStringLiteral("There are nothing to save"));
        return;
    }
    const QString path = Prompts::saveFile(this, QStringLiteral("Save command txt files"),
                                           CommandList::path(m_projectDir), QStringLiteral("file(*.list)"));
    if (!path.isEmpty())
        writeTo(path);
}

void DialogModbus::SaveCommandList_automatic()
{
    if (m_projectDir.isEmpty() || !m_changed || !m_projectFileRead)
        return;
    writeTo(CommandList::path(m_projectDir));
}

void DialogModbus::reject()
{
    if (m_changed) {
        const auto answer = Prompts::question(this, QStringLiteral("Quit"), QStringLiteral("Do you need to save command.list?"),
                                              {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
        if (answer == QMessageBox::Cancel)
            return;
        if (answer == QMessageBox::Yes && !writeTo(CommandList::path(m_projectDir)))
            return; // the rows stay on screen
        m_changed = false; // "No": the file keeps what it had
    }
    QDialog::reject();
}

} // namespace vantile
