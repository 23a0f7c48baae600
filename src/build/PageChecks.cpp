#include "build/PageChecks.h"

#include "project/PageFile.h"
#include "project/PageList.h"
#include "project/SealedFile.h"
#include "widgets/EditBuffer.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetLine.h"
#include "widgets/WordTables.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace vantile {

namespace PageChecks {

namespace {

using K = WidgetKind;

// Parents in the order the groups are numbered.
const K kParentOrder[] = {K::Gif, K::Button, K::BatVar, K::RProgress, K::RTouch, K::Icon, K::BitIcon};

bool isOneOf(K kind, std::initializer_list<K> kinds)
{
    for (K k : kinds)
        if (k == kind)
            return true;
    return false;
}

// A static label is a label as far as groups are concerned.
K groupKind(const QString &line)
{
    const K k = WidgetKinds::kindOfLine(line);
    return k == K::Statictext ? K::Label : k;
}

QString hexTwo(int n)
{
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

// Icon count: one more than the highest number in Icon/, 0 without icons.
int iconCount(const BuildContext &ctx)
{
    return ctx.hasIcons ? ctx.highestIcon + 1 : 0;
}

// Numbers of the media files of a folder, by a reader of names.
QSet<int> numbersIn(const QString &dir, int (*reader)(const QString &))
{
    QSet<int> found;
    for (const QString &name : QDir(dir).entryList(QDir::Files))
        if (reader(name) >= 0)
            found.insert(reader(name));
    return found;
}

// The mode rule: 0 takes the format, 0x90 (presence only) gives way to a
// real format and replaces none; a second real format is a complaint.
bool setMode(QByteArray &modes, int id, quint8 mode)
{
    constexpr quint8 kPresence = kPresenceMode;
    if (id < 0)
        return true;
    if (modes.size() <= id)
        modes.append(QByteArray(id + 1 - modes.size(), '\0'));
    const quint8 old = quint8(modes[id]);
    if (old == 0 || (old == kPresence && mode != kPresence)) {
        modes[id] = char(mode);
        return true;
    }
    return mode == kPresence || old == mode;
}

// A needle of the picture styles draws its needleIcon; the drawn styles need none.
bool needleUsesPicture(const EditBuffer &b)
{
    const QString type = b.text("needleType");
    return type == QLatin1String("PNGdrawing") || type == QLatin1String("Animation");
}

template <typename F>
void forEachPageLine(BuildContext &ctx, F f)
{
    const quint32 key = pageKey(ctx.settings);
    for (int row = 0; row < ctx.pageLines.size(); ++row) {
        const QStringList lines = readPage(ctx.path(pageFile(row, QStringLiteral(".cfg"))), key, &ctx);
        for (const QString &line : lines)
            f(row, line);
    }
}

// Every field of the given codec in the described widgets of all pages.
template <typename F>
void forEachFieldOf(BuildContext &ctx, Codec codec, F f)
{
    forEachPageLine(ctx, [&](int row, const QString &line) {
        const K kind = WidgetKinds::kindOfLine(line);
        EditBuffer b;
        if (kind == K::None || WidgetLine::parse(line, kind, b) != ParseStatus::Ok)
            return;
        const KindDef *def = b.definition();
        for (int i = 0; i < def->fieldCount; ++i)
            if (def->fields[i].codec == codec)
                f(row, b, b.value(i));
    });
}

} // namespace

QString pageFile(int row, const QString &suffix)
{
    return QStringLiteral("Plugin/Page") + PageList::pageId(row) + suffix;
}

quint32 pageKey(const ProjectSettings &settings)
{
    return IniValue::hexadecimal(settings.supplierId.toLatin1());
}

QStringList readPage(const QString &path, quint32 key, BuildContext *ctx, PageFile::Breaks breaks)
{
    const PageFile::Read page = PageFile::read(path, key, {}, breaks);
    if (ctx && !page.ok) {
        // a missing page reads as empty; one that is there but can't be read is a fault
        if (QFileInfo::exists(path))
            ctx->complainOnce(QStringLiteral("Can't open this file:") + path + QStringLiteral(" (")
                              + page.error.reason + QLatin1Char(')'));
        else
            ctx->log(QStringLiteral("Can't open this file:") + path);
    }
    if (ctx && page.form == SealedFile::Illegal)
        ctx->complainOnce(QStringLiteral("This is illegal uiprj: ") + path);
    return page.lines;
}

bool liesInside(const QRect &outer, const QRect &inner)
{
    return outer.contains(inner, false);
}

QRect lineRect(const QString &line)
{
    const K kind = WidgetKinds::kindOfLine(line);
    if (kind == K::None)
        return QRect();
    EditBuffer b;
    if (WidgetLine::parse(line, kind, b) == ParseStatus::Ok)
        return b.rect();
    const QStringList f = LineGrammar::split(line).fields;
    auto at = [&f](int i) { return int(qint16(LineGrammar::readDecimal(f.value(i)))); };
    return QRect(at(0), at(1), at(2), at(3));
}

bool hasGroupField(WidgetKind kind)
{
    return isOneOf(kind == K::Statictext ? K::Label : kind,
                   {K::Gif, K::Button, K::BatVar, K::Icon, K::Label, K::Number, K::PngNumber, K::RTC,
                    K::RProgress, K::RTouch, K::BitIcon});
}

bool isGroupParentKind(WidgetKind kind)
{
    return isOneOf(kind, {K::Gif, K::Button, K::BatVar, K::RProgress, K::RTouch, K::Icon, K::BitIcon});
}

bool isGroupMemberKind(WidgetKind kind)
{
    return isOneOf(kind == K::Statictext ? K::Label : kind,
                   {K::Label, K::Number, K::Icon, K::PngNumber, K::RTC, K::BitIcon});
}

quint16 lineGroup(const QString &line)
{
    const K kind = WidgetKinds::kindOfLine(line);
    if (!hasGroupField(kind))
        return kNoGroup;
    EditBuffer b;
    if (WidgetLine::parse(line, kind, b) == ParseStatus::Ok)
        return b.tail();
    // Not described yet: the group number stands just before lockState.
    const QStringList f = LineGrammar::split(line).fields;
    if (f.size() < 2)
        return kNoGroup;
    return quint16(LineGrammar::readHex(f[f.size() - 2]));
}

QString withGroup(const QString &line, quint16 group)
{
    const K kind = WidgetKinds::kindOfLine(line);
    if (!hasGroupField(kind))
        return line;
    // Only the group field changes; every other character of the record
    // stays as the designer wrote it.
    EditBuffer b;
    if (WidgetLine::parse(line, kind, b) == ParseStatus::Ok) {
        const KindDef *def = b.definition();
        const FieldDef *tail = def->find("tail");
        if (!tail || !tail->inLine())
            return line;
        const QString objectName = LineGrammar::split(line).objectName;
        return LineGrammar::setField(line, tail->linePos, LineGrammar::hex16(group), [&](int pos) {
            const FieldDef *f = def->atLine(pos);
            if (!f)
                return QString();
            return f->defaultText ? QString::fromUtf8(f->defaultText) : objectName;
        });
    }
    const LineGrammar::Parts p = LineGrammar::split(line);
    if (p.fields.size() < 2)
        return line;
    return LineGrammar::setField(line, p.fields.size() - 2, LineGrammar::hex16(group));
}

QStringList assignGroups(const QStringList &input, int chipIndex)
{
    QStringList lines = input;
    for (QString &line : lines)
        line = withGroup(line, kNoGroup);
    if (chipIndex == 0 || lines.isEmpty())
        return lines;

    QVector<K> kinds;
    QVector<QRect> rects;
    for (const QString &line : lines) {
        kinds << groupKind(line);
        rects << lineRect(line);
    }
    quint16 counter = 1;
    for (K parentKind : kParentOrder) {
        for (int p = 0; p < lines.size(); ++p) {
            if (kinds[p] != parentKind)
                continue;
            bool member = false;
            for (int m = 0; m < lines.size(); ++m) {
                if (m == p || !isGroupMemberKind(kinds[m]) || !liesInside(rects[p], rects[m]))
                    continue;
                lines[m] = withGroup(lines[m], counter);
                member = true;
            }
            if (member) {
                lines[p] = withGroup(lines[p], counter);
                ++counter;
            }
        }
    }
    return lines;
}

QVector<int> groupParents(const QStringList &lines)
{
    QVector<int> parents(lines.size(), -1);
    QVector<quint16> groups;
    QVector<K> kinds;
    for (const QString &line : lines) {
        groups << lineGroup(line);
        kinds << groupKind(line);
    }
    // The parent of a group is the widget of a parent kind, first in the
    // numbering order, whose rectangle holds every other widget of the group.
    QMap<quint16, int> parentOf;
    for (K parentKind : kParentOrder) {
        for (int p = 0; p < lines.size(); ++p) {
            const quint16 g = groups[p];
            if (kinds[p] != parentKind || g == kNoGroup || parentOf.contains(g))
                continue;
            const QRect outer = lineRect(lines[p]);
            bool holdsAll = true;
            for (int m = 0; m < lines.size() && holdsAll; ++m)
                if (m != p && groups[m] == g)
                    holdsAll = liesInside(outer, lineRect(lines[m]));
            if (holdsAll)
                parentOf.insert(g, p);
        }
    }
    for (int i = 0; i < lines.size(); ++i) {
        const auto it = parentOf.constFind(groups[i]);
        if (groups[i] != kNoGroup && it != parentOf.constEnd() && it.value() != i)
            parents[i] = it.value();
    }
    return parents;
}

void overlapGroupStep(BuildContext &ctx)
{
    const quint32 key = pageKey(ctx.settings);
    for (int row = 0; row < ctx.pageLines.size(); ++row) {
        const QString path = ctx.path(pageFile(row, QStringLiteral(".cfg")));
        // line breaks inside records are kept, so a rewrite changes nothing but groups
        const QStringList lines = readPage(path, key, &ctx, PageFile::Breaks::Keep);
        const QStringList grouped = assignGroups(lines, ctx.settings.panelType);
        if (grouped != lines && !SealedFile::writeLines(path, grouped, key, ctx.logSink))
            ctx.complain(QStringLiteral("Can't write this file:") + path);
    }
}

quint8 pictureMode(const EditBuffer &b)
{
    const KindDef *def = b.definition();
    if (!def)
        return kPresenceMode;
    for (int i = 0; i < def->fieldCount; ++i)
        if (def->fields[i].table == &WordTables::pictureFormat && !b.value(i).text.isEmpty())
            return quint8(0x80 | (WordTables::pictureFormat.valueOf(b.value(i).text) & 0x7F));
    return kPresenceMode;
}

namespace {

// Whether a run of pictures is what the widget shows, so that a run left
// empty is a fault: the digits of the picture kinds and clocks, and of a
// gauge or needle that is set to show its number in pictures. Other runs
// (a button's pictures and the like) may stay empty: the page shows them.
bool needsItsRun(const EditBuffer &b, const QString &firstKey)
{
    switch (b.kind()) {
    case K::Icon:
    case K::PngNumber:
    case K::RTC:
    case K::UITimer:
        return true;
    case K::RProgress:
    case K::RTouch:
        return WordTables::digitSource.valueOf(b.text("digitDisplayMode")) == 2; // IconNum
    case K::Needle:
        return firstKey.startsWith(QLatin1String("showNumber")) && b.isOn("showNumber");
    default:
        return false;
    }
}

} // namespace

void iconUseCheck(BuildContext &ctx, QByteArray &modes)
{
    const int count = iconCount(ctx);
    forEachPageLine(ctx, [&](int row, const QString &line) {
        const K kind = WidgetKinds::kindOfLine(line);
        EditBuffer b;
        if (kind == K::None || WidgetLine::parse(line, kind, b) != ParseStatus::Ok)
            return;
        const KindDef *def = b.definition();
        const bool needle = kind == K::Needle;
        const QString head = QStringLiteral("Page") + QString::number(row) + QStringLiteral(": ") + b.name();
        const QString whose = needle ? QStringLiteral(", the needle's ") : QStringLiteral(", the Icon's ");
        const quint8 mode = pictureMode(b);
        bool clashTold = false;
        auto mark = [&](int id) {
            if (!setMode(modes, id, mode) && !clashTold) {
                ctx.complain(head + whose + QStringLiteral("imageData is multiple modes"));
                clashTold = true;
            }
        };
        QSet<int> pairedEnds;
        for (int i = 0; i < def->fieldCount; ++i) {
            const FieldDef &f = def->fields[i];
            if (f.codec != Codec::IconRef || pairedEnds.contains(i))
                continue;
            const QString key = QLatin1String(f.key);
            // "firstIcon" and "lastIcon" (with any prefix) name a run of pictures.
            const int last = key.contains(QLatin1String("first"))
                ? def->indexOf(QString(key).replace(QLatin1String("first"), QLatin1String("last")).toLatin1().constData())
                : -1;
            const int first = LineGrammar::iconNumber(b.value(i).text);
            if (last < 0 || def->fields[last].codec != Codec::IconRef) {
                if (first < 0) {
                    // Only the picture kinds need their picture; a button may have none.
                    if (kind == K::Icon || kind == K::BitIcon)
                        ctx.complain(head + QStringLiteral(", the Icon's eImage is missing"));
                    else if (needle && key == QLatin1String("needleIcon") && needleUsesPicture(b))
                        ctx.complain(head + QStringLiteral(", the needle's firstImage or lastImage is missing"));
                    continue;
                }
                if (first >= count) {
                    ctx.complain(head + QStringLiteral(", eImage is over the max Icon's id"));
                    continue;
                }
                mark(first);
                continue;
            }
            pairedEnds.insert(last);
            const int end = LineGrammar::iconNumber(b.value(last).text);
            if (first < 0 && end < 0) {
                if (needsItsRun(b, key))
                    ctx.complain(head + whose + QStringLiteral("firstImage is missing"));
                continue;
            }
            if (first < 0 || end < 0) {
                ctx.complain(head + whose + QStringLiteral("firstImage or lastImage is missing"));
                continue;
            }
            if (qMax(first, end) >= count)
                ctx.complain(head + QStringLiteral(", lastImage is over the max Icon's id"));
            for (int id = first; id <= qMax(first, end) && id < count; ++id)
                mark(id);
        }
    });
}

void gifUseCheck(BuildContext &ctx, QByteArray &modes)
{
    const QSet<int> files = numbersIn(ctx.path(QStringLiteral("Gif")), LineGrammar::gifNumber);
    forEachFieldOf(ctx, Codec::GifRef, [&](int row, const EditBuffer &b, const FieldValue &v) {
        const int id = LineGrammar::gifNumber(v.text);
        if (id < 0 || !files.contains(id)) {
            ctx.complain(QStringLiteral("Page") + QString::number(row) + QStringLiteral(": ") + b.name()
                         + QString::number(id) + QStringLiteral("_Gifxxx isn't in the Gif folder"));
            return;
        }
        // Two gif widgets on one file in two formats: the first one's stands.
        setMode(modes, id, pictureMode(b));
    });
}

void fontUseCheck(BuildContext &ctx, QByteArray &used, int fontCount)
{
    if (used.size() < fontCount)
        used.append(QByteArray(fontCount - used.size(), '\0'));
    const QSet<int> files = numbersIn(ctx.path(QStringLiteral("FontBin")), LineGrammar::fontNumber);
    forEachFieldOf(ctx, Codec::FontRef, [&](int row, const EditBuffer &b, const FieldValue &v) {
        const int id = int(v.number);
        if (!files.contains(id)) {
            ctx.complain(QStringLiteral("Page") + QString::number(row) + QStringLiteral(": ") + b.name()
                         + hexTwo(id) + QStringLiteral("_Fontxxx isn't in the FontBin folder"));
            return;
        }
        if (id >= 0 && id < fontCount)
            used[id] = 1;
    });
}

QString pageRangeCheck(const QString &projectDir, const QStringList &pageLines, const ProjectSettings &settings)
{
    QString text = QStringLiteral("Out of page range!\n");
    const QRect panel(0, 0, settings.xSizeValue(), settings.ySizeValue());
    const quint32 key = pageKey(settings);
    QString dir = projectDir;
    if (!dir.endsWith(QLatin1Char('/')))
        dir += QLatin1Char('/');
    for (int row = 0; row < pageLines.size(); ++row)
        text += pageRangeFindings(row, readPage(dir + pageFile(row, QStringLiteral(".cfg")), key), panel);
    return text;
}

QString pageRangeFindings(int row, const QStringList &lines, const QRect &panel)
{
    QString text;
    for (const QString &line : lines) {
        const K kind = WidgetKinds::kindOfLine(line);
        if (kind == K::None || kind == K::Gif)
            continue;
        const QRect r = lineRect(line);
        if (liesInside(panel, r))
            continue;
        EditBuffer b;
        QString name = LineGrammar::split(line).objectName;
        if (WidgetLine::parse(line, kind, b) == ParseStatus::Ok)
            name = b.name();
        text += QStringLiteral("Page") + QString::number(row) + QStringLiteral(",widget_Name:") + name
                + QStringLiteral(", X:") + QString::number(r.x()) + QStringLiteral(" Y:") + QString::number(r.y())
                + QLatin1Char('\n');
    }
    return text;
}

void preBuildChecks(BuildContext &ctx)
{
    overlapGroupStep(ctx);
    // Widgets that leave the panel: the heading and one complaint each.
    const QString range = pageRangeCheck(ctx.projectDir, ctx.pageLines, ctx.settings);
    const QStringList lines = range.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (lines.size() > 1)
        for (const QString &line : lines)
            ctx.complain(line);
}

} // namespace PageChecks

} // namespace vantile
