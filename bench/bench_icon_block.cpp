// Cost of the icon and gif blocks on a generated project: the time of
// building both blocks against the time of only decoding their files, and
// the peak memory of a build with 100 icons against one with 500.
//
//   bench_icon_block [repetitions, default 3]
//
// The project holds 500 icons of 64 x 64 (PNG without alpha, PNG with
// alpha, JPEG and BMP in turn, each picture different) and 20 GIFs of 30
// frames of 80 x 80, written by a small encoder below (a 3-3-2 palette,
// LZW with a clear code often enough that codes stay 9 bits wide). Icon
// widgets show the icons in runs of 10, each run in another pixel format
// (RGB565, aRGB4444, softpng, RGB565_zip, aRGB8565); gif widgets use every
// gif, half of them in the automatic format, the even ones with a
// transparent colour in every frame.
//
// Time: each phase runs `repetitions` times in this process and the best
// run counts. Decode-only loads every icon with QImage and reads every
// frame of every gif with QImageReader; the blocks are IconBlockBuilder and
// GifBlockBuilder on a build context made from the loaded project, with
// their use checks (which read the page files).
//
// Memory: each figure is the peak RSS (VmHWM) of a child process that
// builds the two blocks of one project once:
//
//   bench_icon_block --child PATH/project.uiprj
//
// With VANTILE_BENCH_KEEP set the generated projects stay in the temporary
// directory.

#include "BenchSupport.h"

#include "build/BuildContext.h"
#include "build/GifBlock.h"
#include "build/IconBlock.h"
#include "build/MakeBin.h"
#include "project/PageList.h"
#include "project/ProjectSettings.h"
#include "widgets/EditBuffer.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WidgetLine.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

using namespace vantile;
using namespace bench;

namespace {

constexpr int kIconSide = 64;
constexpr int kIcons = 500;
constexpr int kFewIcons = 100;
constexpr int kRun = 10;                  // icons per icon widget
constexpr int kGifs = 20;
constexpr int kGifFrames = 30;
constexpr int kGifSide = 80;
constexpr int kWidgetsPerPage = 10;
constexpr double kTargetRatio = 1.3;      // blocks <= 1.3 x decode-only
constexpr double kMemoryTolerance = 1.25; // 500-icon peak within 25 % of the 100-icon peak

const char *const kRunFormats[] = {"RGB565", "aRGB4444", "softpng", "RGB565_zip", "aRGB8565"};
const char *const kFileKinds[] = {"png", "png", "jpg", "bmp"}; // by number % 4; 1 has alpha

quint32 xorshift(quint32 &state)
{
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
}

// --- pictures -----------------------------------------------------------------

QString iconName(int n)
{
    return QStringLiteral("%1_icon.%2").arg(n, 4, 10, QLatin1Char('0')).arg(QLatin1String(kFileKinds[n % 4]));
}

QString gifName(int n)
{
    return QStringLiteral("%1_anim.gif").arg(n, 4, 10, QLatin1Char('0'));
}

// An icon: a gradient with grain and a disc; number % 4 == 1 fades to
// transparent towards the corners.
QImage icon(int n)
{
    const bool alpha = n % 4 == 1;
    QImage img(kIconSide, kIconSide, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    quint32 state = 0x2545F491u ^ quint32(n * 2654435761u + 1);
    for (int y = 0; y < kIconSide; ++y) {
        QRgb *row = reinterpret_cast<QRgb *>(img.scanLine(y));
        for (int x = 0; x < kIconSide; ++x) {
            const int grain = int(xorshift(state) & 7) - 4;
            const int r = qBound(0, 4 * x + 3 * n % 256 + grain, 255);
            const int g = qBound(0, 4 * y + grain, 255);
            const int b = qBound(0, 255 - 2 * (x + y) + 7 * n % 64, 255);
            const int d = qAbs(x - kIconSide / 2) + qAbs(y - kIconSide / 2);
            row[x] = qRgba(r, g, b, alpha ? qBound(0, 320 - 5 * d, 255) : 255);
        }
    }
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(QColor::fromHsv(n * 37 % 360, 200, 230));
    p.setPen(Qt::NoPen);
    p.drawEllipse(QPointF(kIconSide / 2 + n % 9 - 4, kIconSide / 2), 14, 14);
    return img;
}

// A minimal GIF89a writer: global 3-3-2 palette, full-canvas frames that
// do not dispose, an optional transparent index 255. The LZW stream sends
// a clear code before the table would need 10-bit codes.
class GifWriter
{
public:
    GifWriter(int w, int h) : m_w(w), m_h(h)
    {
        m_bytes = "GIF89a";
        putWord(w);
        putWord(h);
        m_bytes += char(0xF7); // global table of 256 entries
        m_bytes += char(0);
        m_bytes += char(0);
        for (int i = 0; i < 256; ++i) {
            m_bytes += char((i >> 5) * 255 / 7);
            m_bytes += char(((i >> 2) & 7) * 255 / 7);
            m_bytes += char((i & 3) * 255 / 3);
        }
        m_bytes += QByteArray::fromHex("21FF0B") + "NETSCAPE2.0" + QByteArray::fromHex("03010000 00");
    }

    void frame(const QByteArray &indices, bool transparent)
    {
        m_bytes += QByteArray::fromHex("21F904");
        m_bytes += char(transparent ? 0x05 : 0x04); // do not dispose; transparency flag
        putWord(5);
        m_bytes += char(transparent ? 0xFF : 0x00);
        m_bytes += char(0);
        m_bytes += char(0x2C);
        putWord(0);
        putWord(0);
        putWord(m_w);
        putWord(m_h);
        m_bytes += char(0);
        m_bytes += char(8); // minimum code size
        const QByteArray lzw = codes(indices);
        for (int at = 0; at < lzw.size(); at += 255) {
            const QByteArray block = lzw.mid(at, 255);
            m_bytes += char(block.size());
            m_bytes += block;
        }
        m_bytes += char(0);
    }

    QByteArray finish() { return m_bytes + char(0x3B); }

private:
    void putWord(int v)
    {
        m_bytes += char(v & 0xFF);
        m_bytes += char(v >> 8);
    }
    static QByteArray codes(const QByteArray &indices)
    {
        QByteArray packed;
        quint32 acc = 0;
        int bits = 0;
        auto put = [&](int code) {
            acc |= quint32(code) << bits;
            bits += 9;
            while (bits >= 8) {
                packed += char(acc & 0xFF);
                acc >>= 8;
                bits -= 8;
            }
        };
        constexpr int kClear = 256, kEnd = 257, kSinceClear = 250;
        for (int i = 0; i < indices.size(); ++i) {
            if (i % kSinceClear == 0)
                put(kClear);
            put(quint8(indices[i]));
        }
        put(kEnd);
        if (bits > 0)
            packed += char(acc & 0xFF);
        return packed;
    }

    int m_w, m_h;
    QByteArray m_bytes;
};

// Gif n: a colour field with a bar moving across it; the even gifs have a
// transparent corner in every frame.
QByteArray gif(int n)
{
    GifWriter w(kGifSide, kGifSide);
    const bool transparent = n % 2 == 0;
    for (int f = 0; f < kGifFrames; ++f) {
        QByteArray indices(kGifSide * kGifSide, '\0');
        for (int y = 0; y < kGifSide; ++y) {
            for (int x = 0; x < kGifSide; ++x) {
                int index = ((x * 8 / kGifSide) << 5) | ((y * 8 / kGifSide) << 2) | ((n + f) & 3);
                if (qAbs(x - (f * kGifSide / kGifFrames)) < 4)
                    index = 0xE3 ^ n;
                if (index == 255 || (transparent && x + y < 12))
                    index = transparent ? 255 : 254;
                indices[y * kGifSide + x] = char(index);
            }
        }
        w.frame(indices, transparent);
    }
    return w.finish();
}

// --- the project --------------------------------------------------------------

EditBuffer widget(WidgetKind kind, int slot, int x, int y, int w, int h)
{
    return WidgetLine::createNew(kind, quint32(slot), QRect(x, y, w, h));
}

// Writes a project with `icons` icons (a multiple of kRun) and all gifs
// into dir; copies the pictures from `source` when given. Returns the
// .uiprj path, or an empty string when a file could not be written.
QString makeProject(const QString &dir, int icons, const QString &source = QString())
{
    const QString root = dir + QLatin1Char('/');
    QList<QStringList> pages;
    QStringList page;
    auto add = [&](const EditBuffer &b) {
        page << WidgetLine::write(b);
        if (page.size() == kWidgetsPerPage) {
            pages << page;
            page.clear();
        }
    };
    quint32 address = 0x1000;
    for (int run = 0; run < icons / kRun; ++run) {
        EditBuffer b = widget(WidgetKind::Icon, run, 70 * (run % kWidgetsPerPage), 0, kIconSide, kIconSide);
        b.setText("firstIcon", iconName(run * kRun));
        b.setText("lastIcon", iconName(run * kRun + kRun - 1));
        b.setText("dataFormat", QLatin1String(kRunFormats[run % 5]));
        b.setNumber("maxDisplayID", kRun - 1);
        b.setNumber("writeAddr", address);
        address += 1;
        add(b);
    }
    for (int g = 0; g < kGifs; ++g) {
        EditBuffer b = widget(WidgetKind::Gif, g, 90 * (g % kWidgetsPerPage), 100, kGifSide, kGifSide);
        b.setText("gifName", gifName(g));
        b.setText("dataFormat", g % 4 == 1 ? QStringLiteral("RGB565") : g % 4 == 3 ? QStringLiteral("aRGB4444") : QString());
        b.setNumber("WriteAddr", address);
        address += 1;
        add(b);
    }
    if (!page.isEmpty())
        pages << page;

    QByteArray list("\xEF\xBB\xBF");
    for (int i = 0; i < pages.size(); ++i) {
        const QString black = QLatin1String(PageList::kBlackColor);
        list += (QStringLiteral("Page") + PageList::pageId(i) + QLatin1Char(':') + black + QLatin1Char(';')
                 + QStringLiteral("Page %1;").arg(i) + black + QLatin1Char(';'))
                    .toUtf8()
            + '\n';
        const QByteArray cfg = "\xEF\xBB\xBF" + (pages[i].join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
        if (!writeFile(root + QStringLiteral("Plugin/Page") + PageList::pageId(i) + QStringLiteral(".cfg"), cfg))
            return QString();
    }
    if (!writeFile(root + QStringLiteral("bench.uiprj"), list))
        return QString();

    ProjectSettings s;
    s.xsize = QStringLiteral("800");
    s.ysize = QStringLiteral("480");
    s.panelType = 1;
    s.flashTypeIndex = 1;
    s.flashSize = 8;
    s.volume = QStringLiteral("20");
    s.languageNum = QStringLiteral("1");
    if (!writeFile(root + QStringLiteral("bench.ini"), s.toIni()))
        return QString();

    QDir().mkpath(root + QStringLiteral("Icon"));
    QDir().mkpath(root + QStringLiteral("Gif"));
    for (int n = 0; n < icons; ++n) {
        const QString target = root + QStringLiteral("Icon/") + iconName(n);
        if (!source.isEmpty()) {
            if (!QFile::copy(source + QStringLiteral("/Icon/") + iconName(n), target))
                return QString();
        } else if (!icon(n).save(target, kFileKinds[n % 4], 90)) {
            return QString();
        }
    }
    for (int g = 0; g < kGifs; ++g) {
        const QString target = root + QStringLiteral("Gif/") + gifName(g);
        if (!source.isEmpty() ? !QFile::copy(source + QStringLiteral("/Gif/") + gifName(g), target)
                              : !writeFile(target, gif(g)))
            return QString();
    }
    return root + QStringLiteral("bench.uiprj");
}

// --- the phases ---------------------------------------------------------------

struct BlockRun {
    bool ok = false;
    QString problem;
    qint64 iconBytes = 0, gifBytes = 0;
    double iconS = 0, gifS = 0;
    int complaints = 0;
};

BlockRun buildBlocks(const QString &uiprj)
{
    BlockRun run;
    const ProjectLoad load = loadProject(uiprj);
    if (!load.ok) {
        run.problem = load.reason;
        return run;
    }
    BlockDirectory directory;
    BuildContext ctx;
    ctx.projectDir = load.input.projectDir;
    ctx.uiprjPath = load.input.uiprjPath;
    ctx.settings = load.input.settings;
    ctx.pageLines = load.input.pageLines;
    for (const QString &line : ctx.pageLines)
        ctx.pages << PageInfo::parse(line);
    ctx.totalPages = ctx.pages.size();
    ctx.flags = BuildFlags::of(ctx.settings);
    ctx.directory = &directory;
    ctx.runningAddress = 0x100000;
    QElapsedTimer timer;
    timer.start();
    IconBlockBuilder().build(ctx);
    run.iconS = timer.nsecsElapsed() / 1e9;
    const qint64 afterIcons = ctx.runningAddress;
    timer.restart();
    GifBlockBuilder().build(ctx);
    run.gifS = timer.nsecsElapsed() / 1e9;
    run.iconBytes = afterIcons - 0x100000;
    run.gifBytes = ctx.runningAddress - afterIcons;
    run.complaints = ctx.errorText.count(QLatin1Char('\n'));
    if (run.complaints)
        run.problem = ctx.errorText.left(400);
    run.ok = QFile::exists(ctx.blockPath(Block::Icon)) && QFile::exists(ctx.blockPath(Block::Gif));
    if (!run.ok && run.problem.isEmpty())
        run.problem = QStringLiteral("a block file is missing");
    return run;
}

// Decodes every icon; returns the pixels decoded.
qint64 decodeIcons(const QString &projectDir, int icons)
{
    qint64 pixels = 0;
    for (int n = 0; n < icons; ++n) {
        const QImage image(projectDir + QStringLiteral("/Icon/") + iconName(n));
        pixels += qint64(image.width()) * image.height();
    }
    return pixels;
}

// Decodes every frame of every gif; returns the pixels decoded.
qint64 decodeGifs(const QString &projectDir)
{
    qint64 pixels = 0;
    for (int g = 0; g < kGifs; ++g) {
        QImageReader reader(projectDir + QStringLiteral("/Gif/") + gifName(g), "gif");
        for (QImage frame = reader.read(); !frame.isNull(); frame = reader.read())
            pixels += qint64(frame.width()) * frame.height();
    }
    return pixels;
}

int runChild(const QString &uiprj)
{
    const qint64 before = peakRssKb();
    QElapsedTimer timer;
    timer.start();
    const BlockRun run = buildBlocks(uiprj);
    const qint64 ms = timer.elapsed();
    reportChild(run.ok, ms, before);
    if (!run.ok)
        out("CHILD problem: %s", qPrintable(run.problem));
    return run.ok ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    // The icons are painted without text: no display and no fonts needed.
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() == 3 && args.at(1) == QLatin1String("--child"))
        return runChild(args.at(2));
    const int reps = args.size() > 1 ? qMax(1, args.at(1).toInt()) : 3;

    for (const char *format : {"png", "jpg", "bmp", "gif"}) {
        const bool canWrite = QByteArray(format) == "gif" || QImageWriter::supportedImageFormats().contains(format);
        if (!canWrite || !QImageReader::supportedImageFormats().contains(format)) {
            out("the image library cannot handle %s here", format);
            return 1;
        }
    }

    QTemporaryDir tmp;
    if (!tmp.isValid()) {
        out("cannot make a temporary directory");
        return 1;
    }
    if (qEnvironmentVariableIsSet("VANTILE_BENCH_KEEP")) {
        tmp.setAutoRemove(false);
        out("keeping the generated projects in %s", qPrintable(tmp.path()));
    }
    const QString bigDir = tmp.path() + QStringLiteral("/i500");
    const QString smallDir = tmp.path() + QStringLiteral("/i100");

    out("bench_icon_block: %d icons of %dx%d (PNG, PNG with alpha, JPEG, BMP), %d gifs of %d frames of %dx%d",
        kIcons, kIconSide, kIconSide, kGifs, kGifFrames, kGifSide, kGifSide);
    QElapsedTimer timer;
    timer.start();
    const QString bigProject = makeProject(bigDir, kIcons);
    const QString smallProject = bigProject.isEmpty() ? QString() : makeProject(smallDir, kFewIcons, bigDir);
    if (bigProject.isEmpty() || smallProject.isEmpty()) {
        out("cannot write the generated projects under %s", qPrintable(tmp.path()));
        return 1;
    }
    qint64 iconFiles = 0, gifFiles = 0;
    for (int n = 0; n < kIcons; ++n)
        iconFiles += QFileInfo(bigDir + QStringLiteral("/Icon/") + iconName(n)).size();
    for (int g = 0; g < kGifs; ++g)
        gifFiles += QFileInfo(bigDir + QStringLiteral("/Gif/") + gifName(g)).size();
    out("generated in %.2f s; icon files %.2f MB, gif files %.2f MB", timer.elapsed() / 1000.0, iconFiles / 1e6,
        gifFiles / 1e6);

    // --- time -------------------------------------------------------------
    const qint64 expectedPixels =
        qint64(kIcons) * kIconSide * kIconSide + qint64(kGifs) * kGifFrames * kGifSide * kGifSide;
    double bestDecode = 1e300, bestBlocks = 1e300;
    double best[4] = {1e300, 1e300, 1e300, 1e300}; // icon decode, gif decode, icon block, gif block
    BlockRun last;
    for (int r = 0; r < reps; ++r) {
        timer.restart();
        qint64 pixels = decodeIcons(bigDir, kIcons);
        const double iconDecodeS = timer.nsecsElapsed() / 1e9;
        timer.restart();
        pixels += decodeGifs(bigDir);
        const double gifDecodeS = timer.nsecsElapsed() / 1e9;
        const double decodeS = iconDecodeS + gifDecodeS;
        if (pixels != expectedPixels) {
            out("decode-only: %lld pixels instead of %lld", pixels, expectedPixels);
            return 1;
        }
        timer.restart();
        last = buildBlocks(bigProject);
        const double blocksS = timer.nsecsElapsed() / 1e9;
        if (!last.ok) {
            out("block build failed: %s", qPrintable(last.problem));
            return 1;
        }
        out("run %d: decode-only %.3f s, icon + gif blocks %.3f s", r + 1, decodeS, blocksS);
        bestDecode = std::min(bestDecode, decodeS);
        bestBlocks = std::min(bestBlocks, blocksS);
        const double parts[4] = {iconDecodeS, gifDecodeS, last.iconS, last.gifS};
        for (int k = 0; k < 4; ++k)
            best[k] = std::min(best[k], parts[k]);
    }
    if (last.complaints)
        out("note: the blocks reported %d complaint(s): %s", last.complaints, qPrintable(last.problem));
    const double ratio = bestBlocks / bestDecode;
    out("");
    out("decode-only (%d icons, %d gif frames): %.3f s", kIcons, kGifs * kGifFrames, bestDecode);
    out("icon + gif blocks:                    %.3f s  (icon_all.bin %.2f MB, gif_all.bin %.2f MB)", bestBlocks,
        last.iconBytes / 1e6, last.gifBytes / 1e6);
    out("  icons: decode %.3f s, block %.3f s (%.2fx); gifs: decode %.3f s, block %.3f s (%.2fx)", best[0],
        best[2], best[2] / best[0], best[1], best[3], best[3] / best[1]);
    out("ratio blocks/decode:                  %.2fx   target: <= %.1fx decode-only -> %s", ratio, kTargetRatio,
        ratio <= kTargetRatio ? "met" : "NOT MET");

    // --- memory -----------------------------------------------------------
    const ChildFigures small = runChildProcess(smallProject);
    const ChildFigures big = runChildProcess(bigProject);
    out("");
    if (!small.ok || !big.ok) {
        out("peak memory: a child build failed");
        return 1;
    }
    out("peak RSS, %3d icons: %6.1f MB  (%.1f MB before the blocks; blocks %.2f s)", kFewIcons, small.after / 1024.0,
        small.before / 1024.0, small.ms / 1000.0);
    out("peak RSS, %3d icons: %6.1f MB  (%.1f MB before the blocks; blocks %.2f s)", kIcons, big.after / 1024.0,
        big.before / 1024.0, big.ms / 1000.0);
    const double growth = double(big.after) / double(small.after);
    out("peak 500 / 100 icons: %.2fx   target: memory flat in the number of icons (within %.0f %%) -> %s", growth,
        (kMemoryTolerance - 1.0) * 100.0, growth <= kMemoryTolerance ? "met" : "NOT MET");
    return 0;
}
