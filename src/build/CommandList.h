#pragma once
// The Modbus command list of a project, command.list, and the command
// table it gives the image in master mode.
//
// The file is UTF-8 text (an older GBK file is read too), one command a
// line:
//
//     Select,Address,Function,Register,WriteAddr,Quantity,Operation,
//     Parameter,Repeat,Response(ms),Reserve;Description
//
// Select is "1" or "0"; an empty Address is written "0xA5", an empty
// Reserve "0x00". The fields end at the line's last ";"; what stands
// behind it is the row's description, which the build ignores (written in
// the "*Hex:" form when it holds a ";" or a line break). A number field is
// hexadecimal when it holds an "x", otherwise decimal.
//
// The table: one 16-byte record per command, words high byte first:
//
//   0  0xA5          1  Address       2  Function
//   3  Register      5  WriteAddr     7  Quantity     9  Operation
//   11 Parameter     12 Repeat        13 Response(ms) 15 low byte of Reserve

#include "build/BuildContext.h"
#include "project/TextFiles.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace vantile {

// One line of the list as the dialog's table holds it.
struct CommandRow {
    bool select = false;
    QStringList cells;   // Address .. Reserve: ten texts as typed
    QString description;

    // No cell and no description holds anything (Select aside).
    bool isBlank() const;
};

namespace CommandList {

constexpr int kFieldCount = 11;       // Select .. Reserve
constexpr int kCellCount = 10;        // Address .. Reserve
constexpr int kRecordSize = 16;
constexpr char kFileName[] = "command.list";

// <projectDir>command.list
QString path(const QString &projectDir);

// The cells of a line, and whether the line is whole: it has its ";" and
// exactly eleven fields. A line with more fields keeps the surplus in its
// Reserve cell, one with fewer leaves the missing cells empty: written
// back, such a line still carries every character it had.
bool parseLine(const QString &line, CommandRow *row);
// The line of a row, without its line end.
QString lineOf(const CommandRow &row);

struct ReadResult {
    TextFiles::ReadStatus status = TextFiles::ReadStatus::Missing;
    FileError error;        // which file and why, when it could not be read
    QList<CommandRow> rows; // empty lines are skipped
    QStringList damaged;    // "Line N: text" for each line that is not whole
    bool wasGbk = false;
    bool ok() const { return status == TextFiles::ReadStatus::Ok; }
};

ReadResult parse(const QByteArray &bytes);
ReadResult read(const QString &path);

// The file's bytes: UTF-8 without a byte order mark, "\n" after each line.
// Blank rows are left out.
QByteArray encode(const QList<CommandRow> &rows);
// Written through a temporary file: a failed save leaves the old file.
bool save(const QString &path, const QList<CommandRow> &rows, QString *error = nullptr);

// A number field: hexadecimal behind an "x" or "X", otherwise its digits
// read as decimal.
quint32 readNumber(const QString &field);
// The function codes the panel plays: 1 to 6, 15 and 16.
bool isValidFunction(quint32 function);
// The record of eleven fields (Select .. Reserve).
QByteArray record(const QStringList &fields);

// The build step: command.list into ctx.commandArea, as many records as
// the area holds; directory field 0x4C gets the bytes used. A wrong
// function code or an incomplete line goes to the error text and leaves
// only that line out.
void MakeCommandBlock(BuildContext &ctx);

} // namespace CommandList

} // namespace vantile
