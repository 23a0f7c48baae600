#pragma once
// The Modbus command list of the project (command.list): the commands the
// panel polls other devices with in master mode, one table row each.
// Created once, shown and hidden without the mask.
//
// Function and Operation take their values from a menu on a right click;
// a right click elsewhere offers "insert" and "delete". The table keeps at
// least one row. The build asks for an automatic save of unsaved rows
// (SaveCommandList_automatic) before it reads the file.

#include "build/CommandList.h"

#include <QDialog>
#include <QStringList>

class QPushButton;
class QTableWidget;
class QTableWidgetItem;

namespace vantile {

class DialogModbus : public QDialog
{
    Q_OBJECT
public:
    enum Column {
        Item, Select, Address, Function, Register, WriteAddr, Quantity, Operation,
        Parameter, Repeat, Response, Reserve, Description, ColumnCount
    };

    static const QStringList &functionValues();  // "0x03", "0x04", ...
    static const QStringList &operationValues(); // "0x00" .. "0x03"

    explicit DialogModbus(QWidget *parent = nullptr);
    void retranslate();

    // Shows the list of a project: loaded from its command.list when the
    // dialog doesn't already show that project's list. Unsaved rows of
    // another project are asked about first; false when that was cancelled.
    bool openFor(const QString &projectDir);
    // Fills the table from a file. A file that can't be read is told and
    // leaves the table as it was (false); damaged lines are told and shown
    // as far as they go.
    bool loadFile(const QString &path);

    QList<CommandRow> rows() const;
    void setRows(const QList<CommandRow> &rows);
    QString projectDir() const { return m_projectDir; }
    bool isChanged() const { return m_changed; }
    QTableWidget *table() const { return tableWidget; }

    // The row operations of the menu and the move buttons, on the current row.
    void moveRow(int step);

public slots:
    void on_pushButton_LoadCommand_clicked();
    void on_pushButton_SaveCommand_clicked();
    void on_pushButton_Up_clicked() { moveRow(-1); }
    void on_pushButton_Down_clicked() { moveRow(1); }
    // Writes unsaved rows to the project's command.list, without a question.
    // Nothing is written when the table holds no unsaved rows, or when the
    // project's file could not be read (it is left as it is).
    void SaveCommandList_automatic();
    // "insert" adds a blank row behind the current one, "delete" removes it.
    void SlotMenuClicked(const QString &word);
    void SlotFunctionMenuClicked(const QString &value);
    void SlotOperationMenuClicked(const QString &value);

protected:
    void reject() override; // Esc and the title bar: the close question
    void changeEvent(QEvent *event) override;

private:
    void showMenu(const QPoint &pos);
    void appendRow(int at, const CommandRow &row);
    void renumber();
    void setCurrentText(int column, const QString &value);
    void onItemChanged(QTableWidgetItem *item);
    bool isEmpty() const;
    bool writeTo(const QString &path);
    bool isProjectFile(const QString &path) const;

    QString m_projectDir;
    bool m_changed = false;
    bool m_filling = false;
    bool m_projectFileRead = false; // the table came from the project's file (or it had none)

    QTableWidget *tableWidget;
    QPushButton *pushButton_LoadCommand;
    QPushButton *pushButton_SaveCommand;
    QPushButton *pushButton_Up;
    QPushButton *pushButton_Down;
};

} // namespace vantile
