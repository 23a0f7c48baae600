#include "build/PageBlock.h"
#include "project/MediaFiles.h"

#include "build/MediaInfo.h"
#include "build/PageChecks.h"
#include "project/PageAttributes.h"
#include "project/SealedFile.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindRegistry.h"
#include "widgets/LineGrammar.h"
#include "widgets/Records.h"
#include "widgets/WidgetLine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QVector>

namespace vantile {

namespace PageBlock {

const char *const kMergeBoundary = "Mergerboundaryline";

namespace {

using K = WidgetKind;
using Records::appendU16;
using Records::appendU8;

void appendU32(QByteArray &out, quint32 v)
{
    appendU16(out, quint16(v & 0xFFFF));
    appendU16(out, quint16(v >> 16));
}

quint16 pageRef(const QString &reference)
{
    return LineGrammar::refField(LineGrammar::pageNumber(reference));
}

// Which lines a run of the passes writes, and with which writers.
enum class Run {
    Page,   // a page's own lines
    Merged, // a host's Vice pages behind its own lines: no slide menu record
    Vice,   // a Vice page for the Vice block: the Vice forms, one stream
};

// One run of the passes over a list of lines.
class PassRun
{
public:
    PassRun(const QStringList &lines, const RecordContext &ctx, Streams &out, Run run)
        : m_lines(lines), m_ctx(ctx), m_out(out), m_run(run),
          m_parents(PageChecks::groupParents(lines)), m_written(lines.size(), false)
    {
        for (const QString &line : lines)
            m_kinds << WidgetKinds::kindOfLine(line);
    }

    void run()
    {
        // 1. Slide menus. The merged lines are tested for a word no line
        // begins with, so they give no slide menu record.
        if (m_run == Run::Page)
            forKind(K::SlideMenuPro, [this](int i) { writeOne(i); });
        // 2. The page's own record; the Vice block has no touch stream.
        for (int i = 0; i < m_lines.size(); ++i) {
            if (PageAttributes::isPageLine(m_lines[i])) {
                m_written[i] = true;
                if (m_run == Run::Vice)
                    continue;
                PageAttributes page;
                page.parse(m_lines[i]);
                m_out.touch.append(pageTouchRecord(page, m_ctx.viceFlag));
            }
        }
        // 3-7. The group parents that move, each followed by its group.
        for (K k : {K::Gif, K::Button, K::BatVar, K::RProgress, K::RTouch})
            forKind(k, [this](int i) { writeWithGroup(i); });
        // 8, 9. Picture widgets that lie in no group (or lead one).
        for (K k : {K::BitIcon, K::Icon})
            forKind(k, [this](int i) {
                if (m_parents[i] < 0)
                    writeWithGroup(i);
            });
        // 10. Everything else in file order; group members went with their parent.
        for (int i = 0; i < m_lines.size(); ++i) {
            if (m_written[i] || m_kinds[i] == K::None || m_parents[i] >= 0)
                continue;
            writeOne(i);
        }
    }

private:
    template <typename F>
    void forKind(K kind, F f)
    {
        for (int i = 0; i < m_lines.size(); ++i)
            if (m_kinds[i] == kind && !m_written[i])
                f(i);
    }

    // On a Vice page only the six kinds with a Vice form write anything,
    // but a group of theirs still follows its parent's place.
    void writeOne(int i)
    {
        m_written[i] = true;
        if (m_run == Run::Vice) {
            KindRegistry::writeViceRecord(m_out.display, m_lines[i], m_ctx);
            return;
        }
        const bool touch = WidgetKinds::info(m_kinds[i]).recordClass == RecordClass::Touch;
        KindRegistry::writeRecord(touch ? m_out.touch : m_out.display, m_lines[i], m_ctx);
    }

    void writeWithGroup(int parent)
    {
        writeOne(parent);
        for (int i = 0; i < m_lines.size(); ++i)
            if (m_parents[i] == parent && !m_written[i])
                writeOne(i);
    }

    const QStringList &m_lines;
    const RecordContext &m_ctx;
    Streams &m_out;
    const Run m_run;
    QVector<K> m_kinds;
    QVector<int> m_parents;
    QVector<bool> m_written;
};

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Runs a writer step and passes the complaints it added to the error text
// on to the build log.
template <typename F>
void withComplaintsLogged(BuildContext &ctx, F f)
{
    const int before = ctx.errorText.size();
    f();
    const QString added = ctx.errorText.mid(before);
    for (const QString &line : added.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        ctx.log(line);
}

void checkLimit(BuildContext &ctx, int row, const char *what, int size)
{
    if (size > kStreamLimit)
        ctx.complain(QStringLiteral("Page") + QString::number(row) + QStringLiteral(": the ")
                     + QLatin1String(what) + QStringLiteral(" records take ") + QString::number(size)
                     + QStringLiteral(" bytes, more than ") + QString::number(kStreamLimit));
}

} // namespace

QByteArray pageTouchRecord(const PageAttributes &page, bool viceFlag)
{
    QByteArray out;
    Records::appendTouchHeader(out, 0, page.reportToHost == QLatin1String("Enable"), viceFlag, 21);
    appendU16(out, pageRef(page.leftPage));
    appendU16(out, page.leftReturn);
    appendU16(out, pageRef(page.rightPage));
    appendU16(out, page.rightReturn);
    appendU16(out, pageRef(page.topPage));
    appendU16(out, page.topReturn);
    appendU16(out, pageRef(page.bottomPage));
    appendU16(out, page.bottomReturn);
    appendU8(out, page.slideEffect == QLatin1String("Enable") ? 1 : 0);
    appendU16(out, quint16(page.slideAreaTop));
    appendU16(out, quint16(page.slideAreaBottom));
    return out;
}

Streams buildStreams(const QStringList &lines, const RecordContext &ctx, const QStringList &merged,
                     const RecordContext *mergedCtx)
{
    Streams out;
    PassRun(lines, ctx, out, Run::Page).run();
    if (!merged.isEmpty()) {
        RecordContext vice = mergedCtx ? *mergedCtx : ctx;
        vice.viceFlag = true;
        PassRun(merged, vice, out, Run::Merged).run();
    }
    return out;
}

QByteArray viceStream(const QStringList &lines, const RecordContext &ctx)
{
    Streams out;
    PassRun(lines, ctx, out, Run::Vice).run();
    return out.display;
}

QByteArray pageIndex(quint32 blockAddress, const QList<Lengths> &pages)
{
    QByteArray out;
    quint32 display = blockAddress + quint32(kIndexEntrySize * pages.size());
    for (const Lengths &p : pages) {
        const quint32 touch = display + quint32(p.display);
        appendU32(out, display);
        appendU16(out, quint16(p.display));
        appendU32(out, touch);
        appendU16(out, quint16(p.touch));
        display = touch + quint32(p.touch);
    }
    return out;
}

QByteArray viceIndex(quint32 blockAddress, const QList<int> &lengths)
{
    QByteArray out;
    quint32 address = blockAddress + quint32(kViceEntrySize * lengths.size());
    for (int length : lengths) {
        appendU32(out, address);
        appendU16(out, quint16(length));
        address += quint32(length);
    }
    return out;
}

QSize pagePictureSize(const BuildContext &ctx, int row)
{
    const QSize canvas = ctx.settings.canvasSize();
    if (row < 0 || row >= ctx.pages.size() || ctx.pages[row].isColor || ctx.pages[row].image.isEmpty())
        return canvas;
    // a picture the picture block refuses leaves the page without one: canvas size
    const QString path = MediaFiles::pathIn(ctx.projectDir, QStringLiteral("Picture/"), ctx.pages[row].image);
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return canvas;
    const QSize size = QImageReader(path).size();
    if (!size.isValid() || !MediaFiles::sizeRefusal(size, ctx.panel()).isEmpty())
        return canvas;
    return size;
}

namespace {

QList<QSize> allPictureSizes(const BuildContext &ctx)
{
    QList<QSize> sizes;
    for (int r = 0; r < ctx.pages.size(); ++r)
        sizes << pagePictureSize(ctx, r);
    return sizes;
}

RecordContext contextWith(BuildContext &ctx, int row, const QList<QSize> &sizes)
{
    RecordContext rc;
    rc.rotation = ctx.settings.rotate;
    rc.pagePicture = sizes.value(row, ctx.settings.canvasSize());
    rc.vicePicture = rc.pagePicture;
    rc.panel = QSize(ctx.settings.xSizeValue(), ctx.settings.ySizeValue());
    rc.colour24 = ctx.flags.rgb888;
    rc.pagePictureSize = [sizes](int page) { return sizes.value(page, QSize()); };
    rc.variables = &ctx.variables;
    rc.fonts = &ctx.fonts;
    rc.needleFrames = ctx.needleFrames;
    rc.videoProbe = [&ctx](const QString &name, int id) { MediaInfo::probeVideo(ctx, name, id); };
    rc.errorText = &ctx.errorText;
    return rc;
}

} // namespace

RecordContext recordContext(BuildContext &ctx, int row)
{
    return contextWith(ctx, row, allPictureSizes(ctx));
}

void collectVicePages(BuildContext &ctx)
{
    const quint32 key = PageChecks::pageKey(ctx.settings);
    for (int row = 0; row < ctx.pageLines.size(); ++row) {
        const QStringList lines = PageChecks::readPage(ctx.path(PageChecks::pageFile(row, QStringLiteral(".cfg"))),
                                                       key, &ctx);
        for (const QString &line : lines) {
            if (WidgetKinds::kindOfLine(line) != K::SlideMenuPro)
                continue;
            EditBuffer b;
            WidgetLine::parse(line, K::SlideMenuPro, b);
            const QString target = b.text("pageGoto");
            if (target.isEmpty())
                continue;
            // a page the list doesn't have, or the host itself, can't be shown inside it
            const int page = LineGrammar::pageNumber(target);
            if (page < 0 || page >= ctx.pageLines.size() || page == row) {
                ctx.complain(QStringLiteral("Page") + QString::number(row) + QStringLiteral(": ") + b.name()
                             + QStringLiteral(", the page ") + target + QStringLiteral(" can't be shown in it"));
                continue;
            }
            if (!ctx.vicePages.contains(page))
                ctx.vicePages.append(page);
            if (!ctx.mergeMap[row].contains(page))
                ctx.mergeMap[row].append(page);
        }
    }
}

void writeMergedFiles(BuildContext &ctx)
{
    const quint32 key = PageChecks::pageKey(ctx.settings);
    const int chip = ctx.settings.panelType;
    auto groupedLines = [&](int row) {
        return PageChecks::assignGroups(
            PageChecks::readPage(ctx.path(PageChecks::pageFile(row, QStringLiteral(".cfg"))), key, &ctx), chip);
    };
    for (auto it = ctx.mergeMap.constBegin(); it != ctx.mergeMap.constEnd(); ++it) {
        QStringList text = groupedLines(it.key());
        text << QLatin1String(kMergeBoundary) + QLatin1Char(';');
        for (int vice : it.value())
            text << groupedLines(vice);
        const QString path = ctx.path(PageChecks::pageFile(it.key(), QStringLiteral(".cfc")));
        if (!SealedFile::writeLines(path, text, SealedFile::kBuiltInKey, ctx.logSink))
            ctx.complain(QStringLiteral("Can't write this file:") + path);
    }
}

void slideMenuMerge(BuildContext &ctx)
{
    collectVicePages(ctx);
    writeMergedFiles(ctx);
}

void PageBuilder::build(BuildContext &ctx)
{
    ctx.log(QString());
    ctx.log(QStringLiteral("Get page widget data..."));
    const quint32 address = quint32(ctx.runningAddress);

    QDir plugin(ctx.path(QStringLiteral("Plugin")));
    for (const QString &name : plugin.entryList({QStringLiteral("*.bin"), QStringLiteral("*.tmp")}, QDir::Files))
        plugin.remove(name);

    const int n = ctx.pageLines.size();
    if (n == 0) {
        ctx.directory->set(BlockDirectory::PageCount, 0);
        ctx.notify(QStringLiteral("Warning"), QStringLiteral("There aren't any page to bin!"));
        return;
    }
    ctx.directory->set(BlockDirectory::PageBlockAddress, address);
    ctx.directory->set(BlockDirectory::PageCount, quint32(n));
    ctx.log(QStringLiteral("Page_Number:") + QString::number(n));

    const quint32 key = PageChecks::pageKey(ctx.settings);
    const QList<QSize> sizes = allPictureSizes(ctx);
    QList<Lengths> lengths;
    QStringList binFiles;
    for (int row = 0; row < n; ++row) {
        RecordContext rc = contextWith(ctx, row, sizes);
        ctx.log(QStringLiteral("Page ") + QString::number(row) + QStringLiteral("backImageW.H =")
                + QString::number(rc.pagePicture.width()) + QStringLiteral(", ")
                + QString::number(rc.pagePicture.height()));
        ctx.errorText += QStringLiteral("Page") + QString::number(row) + QStringLiteral(":\n");
        const QString cfg = PageChecks::pageFile(row, QStringLiteral(".cfg"));
        ctx.log(QStringLiteral("page_cfg_name:") + cfg);

        QStringList lines;
        QStringList merged;
        RecordContext mergedCtx = rc;
        if (ctx.mergeMap.contains(row)) {
            const QStringList all = PageChecks::readPage(ctx.path(PageChecks::pageFile(row, QStringLiteral(".cfc"))),
                                                         SealedFile::kBuiltInKey, &ctx);
            bool behind = false;
            for (const QString &line : all) {
                if (line.startsWith(QLatin1String(kMergeBoundary))) {
                    behind = true;
                    continue;
                }
                (behind ? merged : lines) << line;
            }
            // The merged lines turn with the Vice area: the first Vice page's picture.
            const QList<int> vices = ctx.mergeMap.value(row);
            if (!vices.isEmpty())
                mergedCtx.vicePicture = sizes.value(vices.first(), rc.pagePicture);
        } else {
            lines = PageChecks::readPage(ctx.path(cfg), key, &ctx);
        }

        Lengths len;
        if (!lines.isEmpty() && !ctx.vicePages.contains(row)) {
            Streams s;
            withComplaintsLogged(ctx, [&] { s = buildStreams(lines, rc, merged, &mergedCtx); });
            checkLimit(ctx, row, "display", s.display.size());
            checkLimit(ctx, row, "touch", s.touch.size());
            const QString bin = PageChecks::pageFile(row, QStringLiteral(".bin"));
            if (!writeFile(ctx.path(bin), s.display + s.touch))
                ctx.complain(QStringLiteral("Can't write this file:") + ctx.path(bin));
            binFiles << bin;
            len.display = s.display.size();
            len.touch = s.touch.size();
        }
        lengths << len;
    }

    QByteArray block = pageIndex(address, lengths);
    for (const QString &bin : binFiles)
        block += readFile(ctx.path(bin));
    if (!writeFile(ctx.blockPath(Block::Page), block)) {
        ctx.complain(QStringLiteral("Can't write this file:") + ctx.blockPath(Block::Page));
        return;
    }
    ctx.runningAddress += block.size();
    ctx.log(QStringLiteral("Make Page_para_all.bin"));
}

void VicePageBuilder::build(BuildContext &ctx)
{
    ctx.log(QString());
    ctx.log(QStringLiteral("Get page widget data..."));
    const quint32 address = quint32(ctx.runningAddress);
    const int n = ctx.pageLines.size();
    ctx.directory->set(BlockDirectory::VicePageAddress, address);
    ctx.directory->set(BlockDirectory::VicePageCount, quint32(n));
    if (n == 0)
        return;

    const quint32 key = PageChecks::pageKey(ctx.settings);
    const QList<QSize> sizes = allPictureSizes(ctx);
    QList<int> lengths;
    QStringList binFiles;
    for (int row = 0; row < n; ++row) {
        if (!ctx.vicePages.contains(row)) {
            lengths << 0;
            continue;
        }
        // A Vice page that hosts one of its own has its lines in its .cfc, in
        // front of the boundary; a .cfc left by an earlier build is no guide.
        QStringList lines;
        if (ctx.mergeMap.contains(row)) {
            const QString cfc = ctx.path(PageChecks::pageFile(row, QStringLiteral(".cfc")));
            for (const QString &line : PageChecks::readPage(cfc, SealedFile::kBuiltInKey, &ctx)) {
                if (line.startsWith(QLatin1String(kMergeBoundary)))
                    break;
                lines << line;
            }
        } else {
            lines = PageChecks::readPage(ctx.path(PageChecks::pageFile(row, QStringLiteral(".cfg"))), key, &ctx);
        }
        RecordContext rc = contextWith(ctx, row, sizes);
        rc.viceFlag = true;
        rc.vicePicture = rc.pagePicture; // the Vice area: the Vice page's picture
        QByteArray stream;
        withComplaintsLogged(ctx, [&] { stream = viceStream(lines, rc); });
        checkLimit(ctx, row, "Vice", stream.size());
        const QString bin = QStringLiteral("Plugin/Vice") + QStringLiteral("Page") + PageList::pageId(row)
                            + QStringLiteral(".bin");
        if (!stream.isEmpty()) {
            writeFile(ctx.path(bin), stream);
            binFiles << bin;
        }
        lengths << stream.size();
    }

    QByteArray block = viceIndex(address, lengths);
    for (const QString &bin : binFiles)
        block += readFile(ctx.path(bin));
    if (!writeFile(ctx.blockPath(Block::VicePage), block)) {
        ctx.complain(QStringLiteral("Can't write this file:") + ctx.blockPath(Block::VicePage));
        return;
    }
    ctx.runningAddress += block.size();
    ctx.log(QStringLiteral("Make VicePage_para_all.bin"));
}

} // namespace PageBlock

} // namespace vantile
