#include "build/FontBlock.h"

#include "build/MakeBin.h"
#include "build/PageChecks.h"
#include "widgets/LineGrammar.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vantile {

namespace FontBlock {

namespace {

const char *const kTooMany = "Too much fontxx.bin in the FontBin folder";

QString hex8(qint64 value)
{
    return QStringLiteral("%1").arg(quint32(value), 8, 16, QLatin1Char('0')).toUpper();
}

// Lines told at most once in a build, though the scan runs more than once.
void logOnce(BuildContext &ctx, const QString &line)
{
    if (ctx.told.contains(line))
        return;
    ctx.told.insert(line);
    ctx.log(line);
}

// Copies exactly `size` bytes of a file behind `out`; a file that became
// shorter since it was listed is filled up with 0xFF, so that the table
// stays true. False when that was needed.
bool appendExactly(QFile &out, const QString &path, qint64 size)
{
    constexpr qint64 kPiece = qint64(1) << 20;
    QFile in(path);
    qint64 left = size;
    // a pipe put in place of the file since it was listed would never end
    if (QFileInfo(path).isFile() && in.open(QIODevice::ReadOnly)) {
        while (left > 0) {
            const QByteArray piece = in.read(qMin(left, kPiece));
            if (piece.isEmpty())
                break;
            out.write(piece);
            left -= piece.size();
        }
    }
    if (left > 0)
        FlashFile::appendPad(out, left);
    return left == 0;
}

struct Entry {
    QString name; // empty: no data
    QString path;
    qint64 size = 0;
};

// Writes a block file: the table, then the files of the entries with a
// size. Returns the file's size, -1 when it could not be written.
qint64 writeBlock(BuildContext &ctx, Block block, const QVector<Entry> &entries, const QString &scanWord)
{
    QVector<qint64> sizes;
    for (const Entry &e : entries)
        sizes << e.size;
    const QString path = ctx.blockPath(block);
    QFile::remove(path);
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        ctx.complain(QStringLiteral("Fail to open ") + path);
        return -1;
    }
    out.write(table(ctx.runningAddress, sizes));
    for (const Entry &e : entries) {
        if (e.size <= 0)
            continue;
        if (!scanWord.isEmpty())
            ctx.log(scanWord + e.name + QStringLiteral("..."));
        if (!appendExactly(out, e.path, e.size))
            ctx.complain(QStringLiteral("Can't read this file: ") + e.path);
    }
    const qint64 size = out.size();
    const bool good = out.error() == QFileDevice::NoError;
    out.close();
    if (!good) {
        ctx.complain(QStringLiteral("Fail to write ") + path);
        QFile::remove(path);
        return -1;
    }
    return size;
}

} // namespace

// --- fonts ----------------------------------------------------------------------

FontListing listFonts(const QString &projectDir)
{
    FontListing l;
    QString dir = projectDir;
    if (!dir.endsWith(QLatin1Char('/')))
        dir += QLatin1Char('/');
    dir += QStringLiteral("FontBin/");
    // devices, pipes and dangling links are listed too, to be refused by name
    const QStringList names =
        QDir(dir).entryList({QStringLiteral("*.bin")}, QDir::Files | QDir::System, QDir::Name);
    int highest = -1;
    for (const QString &name : names) {
        // "Font" behind the first character: Font_all.bin is no font
        if (name.indexOf(QLatin1String("Font"), 1) < 0)
            continue;
        FontListing::File f;
        f.name = name;
        f.id = LineGrammar::fontNumber(name);
        if (f.id < 0) {
            l.nameless << name;
            continue;
        }
        if (f.id < kMaxFonts) {
            f.header = FontFile::readHeader(dir + name);
            f.size = f.header.fileSize;
        }
        highest = qMax(highest, f.id);
        l.files << f;
    }
    if (l.files.isEmpty())
        return l;

    l.count = highest + 1;
    if (l.count > kMaxFonts) {
        l.tooMany = true;
        l.count = kMaxFonts;
    }
    l.table.count = l.count;
    for (int i = 0; i < l.files.size(); ++i) {
        const FontListing::File &f = l.files[i];
        if (f.id >= kMaxFonts || !f.header.ok() || l.chosen[f.id] >= 0)
            continue;
        l.chosen[f.id] = i;
        l.table.width[f.id] = quint8(f.header.header.width);
        l.table.height[f.id] = quint8(f.header.header.height);
        l.table.encoding[f.id] = quint8(f.header.header.encoding());
    }
    return l;
}

void report(BuildContext &ctx, const FontListing &l)
{
    if (l.tooMany && !ctx.told.contains(QLatin1String(kTooMany))) {
        ctx.told.insert(QLatin1String(kTooMany));
        ctx.notify(QStringLiteral("Warning"), QLatin1String(kTooMany));
    }
    for (const QString &name : l.nameless)
        logOnce(ctx, name + QStringLiteral(" has no two-digit font id and is left out"));
    for (int i = 0; i < l.files.size(); ++i) {
        const FontListing::File &f = l.files[i];
        const FontFile::HeaderRead &h = f.header;
        if (f.id >= kMaxFonts) {
            ctx.complainOnce(f.name + QStringLiteral(" id is over 64"));
        } else if (h.status == FontFile::HeaderRead::Short) {
            ctx.complainOnce(f.name + QStringLiteral(" is invalid"));
        } else if (!h.ok()) {
            ctx.complainOnce(f.name + QStringLiteral(" is invalid: ") + h.reason);
        } else if (l.chosen[f.id] != i) {
            ctx.complainOnce(f.name + QStringLiteral(" has the same id as ") + l.files[l.chosen[f.id]].name
                                  + QStringLiteral(" and is left out"));
        } else if (h.header.fileSize() > h.fileSize) {
            // the panel reads what is there; the user should know it is short
            logOnce(ctx, f.name + QStringLiteral(" holds ") + QString::number(h.fileSize)
                             + QStringLiteral(" bytes, its characters need ")
                             + QString::number(h.header.fileSize()));
        }
    }
}

void scanFonts(BuildContext &ctx)
{
    const FontListing l = listFonts(ctx.projectDir);
    report(ctx, l);
    ctx.fonts = l.table;
}

QByteArray table(qint64 blockAddress, const QVector<qint64> &sizes)
{
    QByteArray t(sizes.size() * kEntrySize, '\0');
    qint64 address = blockAddress + t.size();
    for (int i = 0; i < sizes.size(); ++i) {
        const quint32 a = quint32(address), s = quint32(sizes[i]);
        for (int k = 0; k < 4; ++k) {
            t[i * kEntrySize + k] = char((a >> (8 * k)) & 0xFF);
            t[i * kEntrySize + 4 + k] = char((s >> (8 * k)) & 0xFF);
        }
        address += sizes[i];
    }
    return t;
}

void buildFonts(BuildContext &ctx, const UsedMarks &usedMarks)
{
    ctx.log(QString());
    const qint64 start = ctx.runningAddress;
    ctx.directory->set(BlockDirectory::FontAddress, quint32(start));
    const FontListing l = listFonts(ctx.projectDir);
    report(ctx, l);
    ctx.fonts = l.table;
    if (l.files.isEmpty()) {
        ctx.directory->set(BlockDirectory::FontCount, 0);
        return;
    }
    ctx.directory->set(BlockDirectory::FontCount, quint32(l.count));
    ctx.log(QStringLiteral("Font_Number:") + QString::number(l.count));

    const QByteArray used = usedMarks ? usedMarks(ctx, l.count) : QByteArray();
    const QString dir = ctx.path(QStringLiteral("FontBin/"));
    QVector<Entry> entries(l.count);
    for (int id = 0; id < l.count; ++id) {
        const FontListing::File *f = l.fileOf(id);
        if (f && id < used.size() && used[id] != 0)
            entries[id] = {f->name, dir + f->name, f->size};
    }
    const qint64 size = writeBlock(ctx, Block::Font, entries, QStringLiteral("Scan fontbin:"));
    if (size < 0)
        return;
    ctx.runningAddress = start + size;
    ctx.log(QStringLiteral("Make Font_all.bin"));
}

// --- sounds ---------------------------------------------------------------------

int wavNumber(const QString &name)
{
    return LineGrammar::leadingNumber(name, 5, 4);
}

void buildWavs(BuildContext &ctx)
{
    ctx.log(QString());
    const qint64 start = ctx.runningAddress;
    ctx.directory->set(BlockDirectory::WavAddress, quint32(start));
    ctx.directory->set(BlockDirectory::WavCount, 0);

    const QString dir = ctx.path(QStringLiteral("WavBin/"));
    QList<QPair<int, QString>> files; // number, name
    int highest = -1;
    for (const QString &name :
         QDir(dir).entryList({QStringLiteral("*.bin")}, QDir::Files | QDir::System, QDir::Name)) {
        const int n = wavNumber(name);
        if (n < 0 || !name.contains(QLatin1String("Wav")))
            continue;
        files << qMakePair(n, name);
        highest = qMax(highest, n);
    }
    if (files.isEmpty())
        return;

    const int count = highest + 1;
    ctx.directory->set(BlockDirectory::WavCount, quint32(count));
    ctx.log(QStringLiteral("wav_count:") + QString::number(count));
    QVector<Entry> entries(count);
    for (const auto &[n, name] : files) {
        Entry &e = entries[n];
        if (!e.name.isEmpty()) {
            ctx.complainOnce(name + QStringLiteral(" has the same number as ") + e.name
                             + QStringLiteral(" and is left out"));
            continue;
        }
        const QFileInfo info(dir + name);
        if (!info.isFile()) {
            ctx.complainOnce(name + QStringLiteral(" is invalid: Not a regular file"));
            continue;
        }
        e = {name, dir + name, info.size()};
    }
    for (const Entry &e : entries)
        if (!e.name.isEmpty())
            ctx.log(QStringLiteral("Scan wav:") + e.name + QStringLiteral("..."));
    QVector<qint64> sizes;
    for (const Entry &e : entries)
        sizes << e.size;
    qint64 address = start + qint64(count) * kEntrySize;
    for (int i = 0; i < count; ++i) {
        ctx.log(QStringLiteral("Len:") + QString::number(sizes[i]));
        ctx.log(QStringLiteral("wav") + QString::number(i) + QStringLiteral("bin_Addr:") + hex8(address));
        address += sizes[i];
    }

    const qint64 size = writeBlock(ctx, Block::Wav, entries, QString());
    if (size < 0)
        return;
    ctx.runningAddress = start + size;
    ctx.log(QStringLiteral("Make Wav_all.bin"));
}

} // namespace FontBlock

void FontBlockBuilder::build(BuildContext &ctx)
{
    FontBlock::buildFonts(ctx, [](BuildContext &c, int count) {
        QByteArray used;
        PageChecks::fontUseCheck(c, used, count);
        return used;
    });
}

} // namespace vantile
