#pragma once
// Shared by the core tests: bytes written out by hand, files, the CRC
// worked bit by bit, widget lines and the records they give, and a build
// context on a project folder of its own.

#include "build/BuildContext.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindRegistry.h"
#include "widgets/WidgetLine.h"

#include <QImage>
#include <QtTest>

namespace core {

using namespace vantile;

// The columns of a data table, one type and name each, in order.
template <typename... Types, typename... Names>
void addColumns(Names... names)
{
    static_assert(sizeof...(Types) == sizeof...(Names), "a name for each column");
    (QTest::addColumn<Types>(names), ...);
}

inline QByteArray hex(const char *spaced) { return QByteArray::fromHex(spaced); } // blanks are skipped
inline QByteArray ff(int n) { return QByteArray(n, char(0xFF)); }

inline QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Writes the file whole, its folder made first.
inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    QVERIFY2(f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size(), qPrintable(path));
}

// A picture of one colour, its folder made first.
inline void solid(const QString &path, const QSize &size, QRgb colour)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    QVERIFY2(image.save(path), qPrintable(path));
}

// Bit by bit, without a table: reflected 0xEDB88320, start 0, no complement.
inline quint32 slowCrc(const QByteArray &data)
{
    quint32 crc = 0;
    for (char ch : data) {
        crc ^= quint8(ch);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ ((crc & 1u) ? 0xEDB88320u : 0u);
    }
    return crc;
}

inline quint32 le32(const QByteArray &b, int at)
{
    return quint32(quint8(b[at])) | quint32(quint8(b[at + 1])) << 8 | quint32(quint8(b[at + 2])) << 16
           | quint32(quint8(b[at + 3])) << 24;
}

// The word of each kind as page files write it (a static text is a marked label).
inline QStringList kindWords()
{
    return QStringLiteral("label number button icon bitIcon gif varAdj slider RTC uitimer qrcode Clock keypad kbkey "
                          "textroll pngNumber wav slmenu slidemenuPro rtouch progress rProgress enkeyB cnkeyB batVar "
                          "curve popbox encoder camera video autoVar needle")
        .split(' ');
}

// The line with field `pos` (counted after the colon) replaced by `text`.
inline QString withField(const QString &line, int pos, const QString &text)
{
    QStringList fields = line.section(':', 1).chopped(1).split(',');
    fields[pos] = text;
    return line.section(':', 0, 0) + ':' + fields.join(',') + ';';
}

// The texts of a widget's parameter rows, as the designer's table shows them.
inline QStringList cellsOf(const EditBuffer &b, int language = 0)
{
    QStringList cells;
    for (const TableRow &r : WidgetLine::tableRows(b, language))
        cells << r.second;
    return cells;
}

// write(parse(line)): the line as the designer saves it.
inline QString rewritten(const QString &line)
{
    EditBuffer b;
    return WidgetLine::parse(line, b) == ParseStatus::Ok ? WidgetLine::write(b) : QStringLiteral("<not parsed>");
}

// Records of widget lines on an 800 x 480 page and panel (a Vice page's
// picture 400 x 300, at 90 degrees PW 480 and 300), with the initial
// values and complaints they leave. No fonts unless a test sets them.
struct RecordBuild {
    VariableImage image;
    FontTable fonts;
    QString errors;
    RecordContext ctx;

    explicit RecordBuild(bool master = false, int rotation = 0)
        : image(master)
    {
        ctx.rotation = rotation;
        ctx.pagePicture = ctx.panel = QSize(800, 480);
        ctx.vicePicture = QSize(400, 300);
        ctx.variables = &image;
        ctx.errorText = &errors;
    }
    // The record appended behind a byte already in the stream, or "<count>"
    // when the writer's count is not what it appended.
    QByteArray write(const QString &line) { return written(line, false); }
    // The form for the file of Vice pages; the context is a Vice page's from then on.
    QByteArray writeVice(const QString &line)
    {
        ctx.viceFlag = true;
        return written(line, true);
    }
    QByteArray at(int byte, int n) const { return image.bytes().mid(byte, n); }

private:
    QByteArray written(const QString &line, bool viceForm)
    {
        QByteArray out("\xAA", 1);
        const int n = viceForm ? KindRegistry::writeViceRecord(out, line, ctx) : KindRegistry::writeRecord(out, line, ctx);
        return n == out.size() - 1 && out[0] == '\xAA' ? out.mid(1) : QByteArray("<count>");
    }
};

// A build context on a fresh project folder holding `folders`.
struct BuildDir {
    QTemporaryDir dir;
    BlockDirectory directory;
    BuildContext ctx;

    explicit BuildDir(const QStringList &folders = {QStringLiteral("Plugin")})
    {
        ctx.projectDir = dir.path() + QLatin1Char('/');
        ctx.directory = &directory;
        for (const QString &f : folders)
            QDir(dir.path()).mkpath(f);
    }
    // Blank pages 0 .. n-1 in the page list.
    void blankPages(int n)
    {
        for (int i = 0; i < n; ++i) {
            ctx.pageLines << PageList::blankLine(i);
            ctx.pages << PageInfo::parse(ctx.pageLines.last());
        }
    }
    void put(const QString &relative, const QByteArray &bytes) { writeFile(ctx.path(relative), bytes); }
    // Page `row`'s file holding these lines.
    void page(int row, const QStringList &lines)
    {
        put(QStringLiteral("Plugin/Page%1.cfg").arg(row, 4, 10, QLatin1Char('0')),
            lines.isEmpty() ? QByteArray() : (lines.join('\n') + '\n').toUtf8());
    }
    QByteArray block(Block b) const { return readAll(ctx.blockPath(b)); }
};

} // namespace core
