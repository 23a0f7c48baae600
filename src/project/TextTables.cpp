#include "project/TextTables.h"

#include "widgets/LineGrammar.h"

namespace vantile {

namespace TextTables {

namespace {

const QChar kComma = QLatin1Char(',');

QByteArray withMark(const QStringList &lines)
{
    QByteArray out("\xEF\xBB\xBF");
    for (const QString &line : lines) {
        out += line.toUtf8();
        out += '\n';
    }
    return out;
}

// A decimal field of digits only; -1 when it holds anything else.
int plainNumber(const QString &field)
{
    const QString t = field.trimmed();
    if (t.isEmpty() || t.size() > 9)
        return -1;
    for (const QChar c : t)
        if (!c.isDigit() || c.unicode() > 0x7F)
            return -1;
    return t.toInt();
}

QString lineProblem(int lineNo, const QString &what)
{
    return QStringLiteral("line %1: %2").arg(lineNo).arg(what);
}

} // namespace

// --- Constant_text.csv ----------------------------------------------------------

QString constantTextPath(const QString &projectDir)
{
    return projectDir + QStringLiteral("Constant_text.csv");
}

QByteArray writeConstantText(const QList<ConstantEntry> &entries, int languages)
{
    QStringList lines;
    for (const ConstantEntry &e : entries) {
        QStringList fields{QString::number(e.number)};
        for (int l = 0; l < languages; ++l) {
            const ConstantCell c = e.cells.value(l);
            fields << LineGrammar::toHexText(c.text) << c.colour << QString::number(c.fontId);
        }
        lines << fields.join(kComma);
    }
    return withMark(lines);
}

QList<ConstantEntry> parseConstantText(const QStringList &lines, int languages, QStringList *problems)
{
    QList<ConstantEntry> entries;
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines[i].trimmed();
        if (line.isEmpty())
            continue;
        const QStringList f = line.split(kComma);
        ConstantEntry e;
        const int number = plainNumber(f[0]);
        if (number < 0 && problems)
            *problems << lineProblem(i + 1, QStringLiteral("no entry number in \"%1\"").arg(f[0].left(32)));
        e.number = qMax(0, number);
        for (int l = 0; l < languages; ++l) {
            ConstantCell c;
            const int at = 1 + 3 * l;
            if (at < f.size())
                c.text = LineGrammar::fromHexText(f[at]);
            if (at + 1 < f.size() && !f[at + 1].trimmed().isEmpty())
                c.colour = f[at + 1].trimmed();
            if (at + 2 < f.size())
                c.fontId = qMax(0, plainNumber(f[at + 2]));
            e.cells << c;
        }
        if (f.size() < 1 + 3 * languages && problems)
            *problems << lineProblem(i + 1, QStringLiteral("%1 fields, %2 expected").arg(f.size()).arg(1 + 3 * languages));
        entries << e;
    }
    return entries;
}

ConstantRead readConstantText(const QString &path, int languages)
{
    ConstantRead r;
    QByteArray bytes;
    r.status = TextFiles::readFile(path, &bytes, &r.error);
    if (r.status == TextFiles::ReadStatus::Ok)
        r.entries = parseConstantText(TextFiles::splitPlain(bytes), languages, &r.problems);
    return r;
}

QStringList constantMenu(const QList<ConstantEntry> &entries)
{
    QStringList menu;
    for (const ConstantEntry &e : entries)
        if (e.number > 0)
            menu << QString::number(e.number) + QLatin1Char(':') + e.cells.value(0).text;
    return menu;
}

int constantMenuNumber(const QString &entry)
{
    const int colon = entry.indexOf(QLatin1Char(':'));
    return colon > 0 ? plainNumber(entry.left(colon)) : -1;
}

bool constantText(const QList<ConstantEntry> &entries, int number, QString *text)
{
    for (const ConstantEntry &e : entries) {
        if (number > 0 && e.number == number) {
            *text = e.cells.value(0).text;
            return true;
        }
    }
    return false;
}

// --- MultiLanguage/ ----------------------------------------------------------------

int languageCount(const QString &langueNum)
{
    return int(qBound<qint64>(1, LineGrammar::readDecimal(langueNum), 32));
}

QStringList defaultTitles(int languages)
{
    QStringList titles{QStringLiteral("defaultLanguage")};
    for (int l = 1; l < languages; ++l)
        titles << QStringLiteral("Language%1").arg(l);
    return titles;
}

QStringList titlesFromHeader(const QString &headerLine, int languages)
{
    QStringList titles = headerLine.trimmed().split(kComma);
    const QStringList defaults = defaultTitles(languages);
    for (int l = 0; l < titles.size() && l < languages; ++l)
        if (titles[l].trimmed().isEmpty())
            titles[l] = defaults[l];
    while (titles.size() < languages)
        titles << defaults[titles.size()];
    return titles.mid(0, languages);
}

QString headerPath(const QString &projectDir)
{
    return projectDir + QStringLiteral("MultiLanguage/TableHeader.txt");
}

QString languagePath(const QString &projectDir, const QString &pageId, bool older)
{
    return projectDir + QStringLiteral("MultiLanguage/Page") + pageId
           + (older ? QStringLiteral(".csb") : QStringLiteral(".csv"));
}

QByteArray writeLanguageTable(const QList<LanguageRow> &rows, int languages)
{
    QStringList lines;
    for (const LanguageRow &r : rows) {
        QStringList fields{r.key, LineGrammar::hex16(r.writeAddr), QString::number(r.wordLength)};
        for (int l = 0; l < languages; ++l)
            fields << r.texts.value(l);
        lines << fields.join(kComma);
    }
    return withMark(lines);
}

QList<LanguageRow> parseLanguageTable(const QStringList &lines, int languages, QStringList *problems)
{
    QList<LanguageRow> rows;
    for (int i = 0; i < lines.size(); ++i) {
        if (lines[i].trimmed().isEmpty())
            continue;
        const QStringList f = lines[i].split(kComma);
        if (f.size() < 3 || f[0].trimmed().isEmpty()) {
            if (problems)
                *problems << lineProblem(i + 1, QStringLiteral("%1 fields, at least 3 expected").arg(f.size()));
            continue;
        }
        LanguageRow r;
        r.key = f[0].trimmed();
        r.writeAddr = quint16(LineGrammar::readHexOrNone(f[1]));
        r.wordLength = int(qMin<qint64>(LineGrammar::readDecimal(f[2]), 0xFFFF));
        for (int l = 0; l < languages; ++l)
            r.texts << f.value(3 + l);
        rows << r;
    }
    return rows;
}

} // namespace TextTables

} // namespace vantile
