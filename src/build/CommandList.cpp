#include "build/CommandList.h"

#include "widgets/LineGrammar.h"

namespace vantile {

bool CommandRow::isBlank() const
{
    if (!description.isEmpty())
        return false;
    for (const QString &c : cells)
        if (!c.trimmed().isEmpty())
            return false;
    return true;
}

namespace CommandList {

namespace {

constexpr int kAddressCell = 0;
constexpr int kReserveCell = 9;

// The text behind the last ";" goes back as it came, unless it would end
// the fields somewhere else or break the line.
QString descriptionField(const QString &description)
{
    if (description.contains(QLatin1Char(';')) || description.contains(QLatin1Char('\n'))
        || description.contains(QLatin1Char('\r')) || LineGrammar::isHexText(description))
        return LineGrammar::toHexText(description);
    return description;
}

void putWord(QByteArray &bytes, int at, quint32 value)
{
    bytes[at] = char((value >> 8) & 0xFF);
    bytes[at + 1] = char(value & 0xFF);
}

QString withoutCarriageReturn(const QString &line)
{
    return line.endsWith(QLatin1Char('\r')) ? line.chopped(1) : line;
}

} // namespace

QString path(const QString &projectDir)
{
    return projectDir + QLatin1String(kFileName);
}

bool parseLine(const QString &line, CommandRow *row)
{
    const int end = line.lastIndexOf(QLatin1Char(';'));
    const QString fieldText = end < 0 ? line : line.left(end);
    QStringList fields = fieldText.split(QLatin1Char(','));
    const bool whole = end >= 0 && fields.size() == kFieldCount;
    if (fields.size() > kFieldCount) {
        // the surplus stays with the last cell, commas and all
        fields[kFieldCount - 1] = fields.mid(kFieldCount - 1).join(QLatin1Char(','));
        fields = fields.mid(0, kFieldCount);
    }
    if (row) {
        row->select = readNumber(fields.value(0)) != 0;
        row->cells.clear();
        for (int i = 1; i < kFieldCount; ++i)
            row->cells << fields.value(i);
        row->description = end < 0 ? QString() : LineGrammar::fromHexText(line.mid(end + 1));
    }
    return whole;
}

QString lineOf(const CommandRow &row)
{
    QStringList fields{row.select ? QStringLiteral("1") : QStringLiteral("0")};
    for (int i = 0; i < kCellCount; ++i) {
        const QString cell = row.cells.value(i);
        if (cell.trimmed().isEmpty() && i == kAddressCell)
            fields << QStringLiteral("0xA5");
        else if (cell.trimmed().isEmpty() && i == kReserveCell)
            fields << QStringLiteral("0x00");
        else
            fields << cell;
    }
    return fields.join(QLatin1Char(',')) + QLatin1Char(';') + descriptionField(row.description);
}

ReadResult parse(const QByteArray &bytes)
{
    ReadResult result;
    result.status = TextFiles::ReadStatus::Ok;
    const QStringList lines = TextFiles::decode(bytes, &result.wasGbk).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = withoutCarriageReturn(lines[i]);
        if (line.trimmed().isEmpty())
            continue;
        CommandRow row;
        if (!parseLine(line, &row))
            result.damaged << QStringLiteral("Line %1: %2").arg(i + 1).arg(line);
        result.rows << row;
    }
    return result;
}

ReadResult read(const QString &filePath)
{
    QByteArray bytes;
    FileError error;
    const TextFiles::ReadStatus status = TextFiles::readFile(filePath, &bytes, &error);
    if (status != TextFiles::ReadStatus::Ok) {
        ReadResult failed;
        failed.status = status;
        failed.error = error;
        return failed;
    }
    return parse(bytes);
}

QByteArray encode(const QList<CommandRow> &rows)
{
    QString text;
    for (const CommandRow &row : rows)
        if (!row.isBlank())
            text += lineOf(row) + QLatin1Char('\n');
    return text.toUtf8();
}

bool save(const QString &filePath, const QList<CommandRow> &rows, QString *error)
{
    return TextFiles::writeAtomically(filePath, encode(rows), error);
}

quint32 readNumber(const QString &field)
{
    if (field.contains(QLatin1Char('x')) || field.contains(QLatin1Char('X')))
        return LineGrammar::readHex(field);
    return quint32(LineGrammar::readDecimal(field));
}

bool isValidFunction(quint32 function)
{
    return (function >= 1 && function <= 6) || function == 15 || function == 16;
}

QByteArray record(const QStringList &fields)
{
    auto n = [&fields](int i) { return readNumber(fields.value(i)); };
    QByteArray r(kRecordSize, '\0');
    r[0] = char(0xA5);
    r[1] = char(n(1) & 0xFF);  // Address
    r[2] = char(n(2) & 0xFF);  // Function
    putWord(r, 3, n(3));       // Register
    putWord(r, 5, n(4));       // WriteAddr
    putWord(r, 7, n(5));       // Quantity
    putWord(r, 9, n(6));       // Operation
    r[11] = char(n(7) & 0xFF); // Parameter
    r[12] = char(n(8) & 0xFF); // Repeat
    putWord(r, 13, n(9));      // Response(ms)
    r[15] = char(n(10) & 0xFF);// Reserve
    return r;
}

void MakeCommandBlock(BuildContext &ctx)
{
    const int capacity = ctx.commandArea.size();
    if (capacity < kRecordSize)
        return;
    const QString file = path(ctx.projectDir);
    QByteArray bytes;
    FileError error;
    const TextFiles::ReadStatus status = TextFiles::readFile(file, &bytes, &error);
    if (status != TextFiles::ReadStatus::Ok) {
        ctx.log(QStringLiteral("Open fail:") + file);
        if (status != TextFiles::ReadStatus::Missing && !error.reason.isEmpty())
            ctx.log(error.reason);
        return;
    }
    int at = 0;
    for (const QString &raw : TextFiles::decode(bytes).split(QLatin1Char('\n'))) {
        const QString line = withoutCarriageReturn(raw);
        if (line.trimmed().isEmpty())
            continue;
        if (at + kRecordSize > capacity)
            break; // the area is full: the rest of the list is cut
        const int end = line.lastIndexOf(QLatin1Char(';'));
        const QStringList fields = line.left(end).split(QLatin1Char(','));
        if (end < 0 || fields.size() != kFieldCount) {
            ctx.complain(QStringLiteral("Wrong command line:") + line);
            continue;
        }
        if (!isValidFunction(readNumber(fields[2]))) {
            ctx.complain(QStringLiteral("Wrong command index:") + line);
            continue;
        }
        ctx.commandArea.replace(at, kRecordSize, record(fields));
        at += kRecordSize;
    }
    if (ctx.directory)
        ctx.directory->set(BlockDirectory::CommandTableSize, quint32(at));
}

} // namespace CommandList

} // namespace vantile
