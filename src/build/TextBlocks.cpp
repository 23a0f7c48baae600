#include "build/TextBlocks.h"
#include "project/TextTables.h"
#include "widgets/EditBuffer.h"
#include "widgets/WidgetLine.h"

#include "build/PageChecks.h"
#include "project/PageList.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"
#include "widgets/LineGrammar.h"
#include "widgets/TextEncoding.h"
#include "widgets/WidgetKinds.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QtEndian>

namespace vantile {

namespace {

constexpr quint32 kRowOff = 0xFFFFFFFFu;
constexpr int kFieldsPerLanguage = 3; // text, colour, font
constexpr int kLanguageColumn = 3;    // .csv: key, WriteAddr, WordLength, then the languages
constexpr int kMaxLanguages = 32;

QString hex8(quint32 value)
{
    return QStringLiteral("%1").arg(value, 8, 16, QLatin1Char('0')).toUpper();
}

void appendLe16(QByteArray &out, quint16 v)
{
    out.append(char(v & 0xFF));
    out.append(char(v >> 8));
}

void appendLe32(QByteArray &out, quint32 v)
{
    uchar b[4];
    qToLittleEndian<quint32>(v, b);
    out.append(reinterpret_cast<const char *>(b), 4);
}

bool writeBytes(BuildContext &ctx, const QString &path, const QByteArray &bytes)
{
    QString reason;
    if (TextFiles::writeAtomically(path, bytes, &reason))
        return true;
    ctx.complain(QStringLiteral("Fail to write ") + path
                 + (reason.isEmpty() ? QString() : QStringLiteral(" (") + reason + QLatin1Char(')')));
    return false;
}

// Text bytes for a font, with a line in the log the first time a font id
// that FontBin/ doesn't hold is asked for.
struct FontEncoder {
    BuildContext &ctx;
    QString what;
    QSet<int> told;

    QByteArray encode(const QString &text, int fontId)
    {
        if (fontId < 0 || fontId >= ctx.fonts.count) {
            if (!told.contains(fontId))
                ctx.log(what + QStringLiteral(": font id ") + QString::number(fontId)
                        + QStringLiteral(" is not in FontBin/, its texts are stored as GBK"));
            told.insert(fontId);
        }
        return TextEncoding::encode(text, TextBlocks::fontEncoding(ctx.fonts, fontId));
    }
};

} // namespace

namespace TextBlocks {

int languageCount(const ProjectSettings &settings)
{
    // the language editor holds at most 32 columns of languages
    return int(qMin<qint64>(LineGrammar::readDecimal(settings.languageNum), kMaxLanguages));
}

int fontEncoding(const FontTable &fonts, int fontId)
{
    if (fontId < 0 || fontId >= fonts.count || fontId >= FontTable::kMaxFonts)
        return 5;
    return fonts.encoding[fontId];
}

ConstantTable parseConstantText(const QStringList &lines, int languages)
{
    // the entries as the static text editor reads them, then the build's slots
    ConstantTable table;
    table.languages = qMax(1, languages);
    const QList<TextTables::ConstantEntry> entries =
        TextTables::parseConstantText(lines, table.languages, &table.shortLines);
    if (entries.isEmpty())
        return table;

    // M is the number on the last line, whatever came before it.
    table.slotCount = qMin(entries.last().number, 0xFFFF);
    QVector<const TextTables::ConstantEntry *> slotEntries(table.slotCount, nullptr);
    for (const TextTables::ConstantEntry &e : entries) {
        if (e.number < 1 || e.number > table.slotCount) {
            table.dropped << QStringLiteral("Constant_text.csv: number ") + QString::number(e.number)
                                 + QStringLiteral(" has no slot (the last line's number is ")
                                 + QString::number(table.slotCount) + QStringLiteral("), the line is left out");
            continue;
        }
        slotEntries[e.number - 1] = &e;
    }
    table.rows.reserve(table.slotCount * table.languages);
    for (int lang = 0; lang < table.languages; ++lang) {
        for (int slot = 0; slot < table.slotCount; ++slot) {
            ConstantRow row;
            if (const TextTables::ConstantEntry *e = slotEntries.at(slot)) {
                const TextTables::ConstantCell &cell = e->cells.at(lang);
                row.number = slot + 1;
                row.text = cell.text;
                row.colour = LineGrammar::readHex(cell.colour);
                row.fontId = qMin(cell.fontId, 0xFFFF);
            }
            table.rows.append(row);
        }
    }
    return table;
}

bool readLanguageWidget(const QString &line, LanguageWidget *widget)
{
    // labels and textrolls by their kinds' fields; a static label has no variable text
    const WidgetKind kind = WidgetKinds::kindOfLine(line);
    EditBuffer b;
    if ((kind != WidgetKind::Label && kind != WidgetKind::TextRoll)
        || WidgetLine::parse(line, kind, b) != ParseStatus::Ok)
        return false;
    widget->objectName = b.objectName();
    widget->key = QLatin1String(WidgetKinds::info(kind).prefix) + QLatin1Char('_') + QString::number(b.index());
    widget->writeAddress = quint16(b.number("writeAddr"));
    widget->fontId = int(qBound<qint64>(0, b.number("fontID"), 0xFFFF));
    widget->multiLanguage = b.isOn("multi-language");
    return true;
}

QString languageFile(int row)
{
    return QStringLiteral("MultiLanguage/Page") + PageList::pageId(row) + QStringLiteral(".csv");
}

QHash<QString, QStringList> languageRows(const QStringList &lines)
{
    QHash<QString, QStringList> rows;
    for (const QString &line : lines) {
        const QStringList fields = line.split(QLatin1Char(','));
        const QString key = fields.first().trimmed();
        if (!key.isEmpty() && !rows.contains(key))
            rows.insert(key, fields);
    }
    return rows;
}

} // namespace TextBlocks

// --- static texts ----------------------------------------------------------------

void StaticTextBlockBuilder::build(BuildContext &ctx)
{
    using namespace TextBlocks;
    ctx.log(QStringLiteral("Get Constant text data..."));
    const int languages = qMax(1, languageCount(ctx.settings));

    const QString csv = ctx.path(QStringLiteral("Constant_text.csv"));
    QStringList lines;
    if (QFileInfo::exists(csv)) {
        bool ok = false;
        FileError error;
        lines = TextFiles::readLines(csv, &ok, &error);
        if (!ok)
            ctx.complain(QStringLiteral("Can't open this file:") + csv + QStringLiteral(" (") + error.reason
                         + QLatin1Char(')'));
    }
    const ConstantTable table = parseConstantText(lines, languages);
    for (const QString &note : table.dropped)
        ctx.complain(note);
    for (const QString &note : table.shortLines)
        ctx.log(note);

    const int r = table.rows.size();
    const qint64 start = ctx.runningAddress;
    ctx.directory->set(BlockDirectory::StaticTextAddress, quint32(start));
    ctx.directory->set(BlockDirectory::StaticTextCount, quint32(r / languages));

    const QString dataPath = ctx.path(QStringLiteral("Plugin/Constant_para.bin"));
    const QString allPath = ctx.blockPath(Block::StaticText);
    QFile::remove(dataPath);
    QFile::remove(allPath);
    if (r == 0)
        return; // no texts: no block, the next one begins here

    FontEncoder encoder{ctx, QStringLiteral("Constant_text.csv"), {}};
    QByteArray addresses;
    QByteArray data;
    addresses.reserve(4 * r);
    qint64 next = start + 4 * qint64(r);
    for (const ConstantRow &row : table.rows) {
        if (!row.isOn()) {
            appendLe32(addresses, kRowOff);
            continue;
        }
        appendLe32(addresses, quint32(next));
        const QByteArray bytes = encoder.encode(row.text, row.fontId);
        data.append(bytes);
        next += bytes.size();
    }

    writeBytes(ctx, dataPath, data);
    if (!writeBytes(ctx, allPath, addresses + data))
        return;
    ctx.runningAddress = start + addresses.size() + data.size();
    ctx.log(QStringLiteral("Make Page_para_all.bin"));
}

// --- languages -------------------------------------------------------------------

namespace {

struct LanguagePage {
    QList<TextBlocks::LanguageWidget> widgets;
    QHash<QString, QStringList> rows; // the .csv's rows by key
};

// The language editor's table of a page: its .csv, or for an old project
// the .csb when there is no .csv. Neither: the page has no texts.
QHash<QString, QStringList> readLanguageTable(BuildContext &ctx, int row)
{
    const QString csv = ctx.path(TextBlocks::languageFile(row));
    QString csb = csv;
    csb.chop(1);
    csb.append(QLatin1Char('b'));
    bool ok = false;
    FileError error;
    QStringList lines;
    if (!QFileInfo::exists(csv) && QFileInfo::exists(csb))
        lines = SealedFile::readLines(csb, PageChecks::pageKey(ctx.settings), nullptr, &ok, {}, &error);
    else
        lines = TextFiles::readLines(csv, &ok, &error);
    if (!ok) {
        const QString why = error.reason.isEmpty() ? QString() : QStringLiteral(" (") + error.reason + QLatin1Char(')');
        ctx.complainOnce(QStringLiteral("Can't open this file:") + csv + why);
        return {};
    }
    return TextBlocks::languageRows(lines);
}

} // namespace

void LanguageBlockBuilder::build(BuildContext &ctx)
{
    using namespace TextBlocks;
    ctx.log(QString());
    ctx.log(QStringLiteral("Make Label MultiLanguage bin..."));
    const qint64 start = ctx.runningAddress;
    ctx.directory->set(BlockDirectory::LanguageAddress, quint32(start));
    ctx.log(QStringLiteral("MultiLang_Msg_Addr:") + hex8(quint32(start)));
    const int languages = languageCount(ctx.settings);
    ctx.log(QStringLiteral("lang_num =") + QString::number(languages));

    const QString binPath = ctx.blockPath(Block::Language);
    const QString tmpPath = ctx.path(QStringLiteral("MultiLanguage/MultiLanguage.tmp"));
    QFile::remove(binPath);
    QFile::remove(tmpPath);
    if (languages <= 1) {
        ctx.directory->set(BlockDirectory::LanguageCount, 0);
        return;
    }

    // Each page is read once; only pages with multi-language widgets need their table.
    const quint32 key = PageChecks::pageKey(ctx.settings);
    QList<LanguagePage> pages;
    for (int row = 0; row < ctx.pageLines.size(); ++row) {
        LanguagePage page;
        const QStringList lines =
            PageChecks::readPage(ctx.path(PageChecks::pageFile(row, QStringLiteral(".cfg"))), key, &ctx);
        for (const QString &line : lines) {
            LanguageWidget w;
            if (readLanguageWidget(line, &w) && w.multiLanguage)
                page.widgets.append(w);
        }
        if (!page.widgets.isEmpty())
            page.rows = readLanguageTable(ctx, row);
        pages.append(page);
    }

    QFile tmp(tmpPath);
    if (!tmp.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        ctx.complain(QStringLiteral("Fail to open ") + tmpPath + QStringLiteral(" (") + tmp.errorString()
                     + QLatin1Char(')'));
        ctx.directory->set(BlockDirectory::LanguageCount, 0);
        return;
    }
    QVector<quint32> address(languages);
    QVector<quint32> length(languages);
    qint64 next = start + 8 * qint64(languages);
    bool written = true;
    FontEncoder encoder{ctx, QStringLiteral("MultiLanguage"), {}};
    for (int lang = 0; lang < languages; ++lang) {
        ctx.log(QStringLiteral("MultiLanguage scan") + QString::number(lang));
        QByteArray records;
        for (const LanguagePage &page : pages) {
            for (const LanguageWidget &w : page.widgets) {
                const QStringList columns = page.rows.value(w.key);
                if (columns.size() <= kLanguageColumn + lang) {
                    ctx.log(QStringLiteral("lang_index=") + QString::number(lang) + QStringLiteral(", mlStr.count()=")
                            + QString::number(columns.size()));
                    ctx.log(QStringLiteral("Multi-Lang:") + w.objectName + QStringLiteral("lang_index")
                            + QString::number(lang) + QStringLiteral("over than the max number!"));
                    continue;
                }
                const QString text = LineGrammar::fromHexText(columns.at(kLanguageColumn + lang));
                ctx.log(QStringLiteral("mlStr.at(lang_index):") + text);
                QByteArray bytes = encoder.encode(text, w.fontId);
                if (bytes.size() > 0xFFFF) {
                    ctx.complain(QStringLiteral("Multi-Lang:") + w.objectName + QStringLiteral(" text of ")
                                 + QString::number(bytes.size()) + QStringLiteral(" bytes is cut to 65535"));
                    bytes.truncate(0xFFFF);
                }
                ctx.log(QStringLiteral("rdLen=") + QString::number(bytes.size()));
                appendLe16(records, w.writeAddress);
                appendLe16(records, quint16(bytes.size()));
                records.append(bytes);
            }
        }
        written = tmp.write(records) == records.size() && written;
        address[lang] = quint32(next);
        length[lang] = quint32(records.size());
        next += records.size();
    }
    tmp.close();
    if (!written) {
        ctx.complain(QStringLiteral("Fail to write ") + tmpPath);
        QFile::remove(tmpPath);
        ctx.directory->set(BlockDirectory::LanguageCount, 0);
        return;
    }

    QByteArray bin;
    for (int lang = 0; lang < languages; ++lang) {
        appendLe32(bin, address[lang]);
        appendLe32(bin, length[lang]);
        ctx.log(QStringLiteral("ml_Addr[i]=") + QString::number(address[lang]) + QStringLiteral(",ml_len[i]=")
                + QString::number(length[lang]));
    }
    QByteArray records;
    if (tmp.open(QIODevice::ReadOnly))
        records = tmp.readAll();
    tmp.close();
    QFile::remove(tmpPath);
    if (records.size() != next - start - bin.size()) {
        ctx.complain(QStringLiteral("Fail to read ") + tmpPath);
        ctx.directory->set(BlockDirectory::LanguageCount, 0);
        return;
    }
    bin.append(records);
    if (!writeBytes(ctx, binPath, bin)) {
        ctx.directory->set(BlockDirectory::LanguageCount, 0);
        return;
    }
    ctx.directory->set(BlockDirectory::LanguageCount, quint32(bin.size()));
    ctx.runningAddress = start + bin.size();
    ctx.log(QStringLiteral("Make MultiLanguage.bin"));
}

} // namespace vantile
