#include "build/IconBlock.h"

#include "build/ImageEncoder.h"
#include "build/MakeBin.h"
#include "build/OrderedWork.h"
#include "build/PageChecks.h"
#include "project/MediaFiles.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindRegistry.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WidgetLine.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QVector>

#include <cmath>

namespace vantile {

namespace {

using PictureBlock::Entry;
using PictureBlock::crossesVc530Boundary;
using PictureBlock::kVc530Boundary;

QString hex8(quint32 value)
{
    return QStringLiteral("%1").arg(value, 8, 16, QLatin1Char('0')).toUpper();
}

QString fourDigits(int n)
{
    return QStringLiteral("%1").arg(n, 4, 10, QLatin1Char('0'));
}

void removeFiles(const QString &dirPath, const QStringList &patterns)
{
    QDir dir(dirPath);
    for (const QString &f : dir.entryList(patterns, QDir::Files | QDir::Hidden))
        dir.remove(f);
}

const QStringList &pictureFilters()
{
    static const QStringList filters = {QStringLiteral("*.jpeg"), QStringLiteral("*.jpg"), QStringLiteral("*.bmp"),
                                        QStringLiteral("*.png")};
    return filters;
}

// Places one encoded picture at the running data address and writes it to
// the block: on VC530 a picture that would run across the boundary starts
// at it, with 0xFF in front. Sets the entry.
bool place(QFile &out, Entry &entry, const EncodedImage &encoded, qint64 &dataAddress, bool vc530)
{
    const qint64 length = encoded.length();
    bool ok = true;
    if (vc530 && crossesVc530Boundary(dataAddress, length)) {
        const QByteArray pad(int(kVc530Boundary - dataAddress), char(0xFF));
        ok = out.write(pad) == pad.size();
        dataAddress = kVc530Boundary;
    }
    ok = ok && out.write(encoded.bytes) == encoded.bytes.size();
    entry.address = quint32(dataAddress);
    entry.width = encoded.width;
    entry.height = encoded.height;
    entry.length = quint32(length) & 0xFFFFFFu;
    entry.format = encoded.format;
    dataAddress += length;
    return ok;
}

} // namespace

namespace IconBlock {

int languageCount(const ProjectSettings &settings)
{
    return int(qBound<qint64>(1, LineGrammar::readDecimal(settings.languageNum), 9999));
}

QStringList languageFolders(const QString &projectDir, int languages)
{
    QStringList folders;
    for (int k = 1; k < languages; ++k) {
        const QString name = fourDigits(k);
        if (QDir(projectDir + QStringLiteral("Icon/") + name).exists())
            folders << name;
    }
    return folders;
}

QStringList pictureFiles(const QString &dirPath)
{
    return QDir(dirPath).entryList(pictureFilters(), QDir::Files, QDir::Name);
}

QStringList filesByNumber(const QStringList &files)
{
    QStringList byNumber;
    for (const QString &name : files) {
        const int n = LineGrammar::iconNumber(name);
        if (n < 0)
            continue;
        while (byNumber.size() <= n)
            byNumber << QString();
        if (byNumber[n].isEmpty())
            byNumber[n] = name;
    }
    return byNumber;
}

void build(BuildContext &ctx, const QByteArray &modes)
{
    const QString iconDir = ctx.path(QStringLiteral("Icon"));
    const qint64 start = ctx.runningAddress;
    const bool vc530 = ctx.settings.panelType == PictureBlock::kVc530Controller;

    // 1. Languages and their folders.
    const int languages = languageCount(ctx.settings);
    const QStringList folders = languageFolders(ctx.projectDir, languages);

    // 2. A fresh folder of intermediates.
    ctx.log(QString());
    QDir().mkpath(iconDir);
    removeFiles(iconDir, {QStringLiteral("*.bin"), QStringLiteral("*.tmp")});

    // 3. Numbered icons and needle frames.
    const QStringList byNumber = filesByNumber(pictureFiles(iconDir));
    const int c1 = byNumber.size();
    const QStringList needles = pictureFiles(ctx.path(QStringLiteral("Needle")));
    const int c2 = needles.size();
    const int count = c1 + c2;
    ctx.directory->set(BlockDirectory::IconAddress, quint32(start));
    ctx.directory->set(BlockDirectory::IconCount, quint32(count));
    ctx.log(QStringLiteral("Icon_number:") + QString::number(c1));
    ctx.log(QStringLiteral("needle Icon_number:") + QString::number(c2));
    if (count == 0)
        return; // no file; the running address stays

    // 5. The tables, on VC530 not across the boundary.
    QByteArray head;
    qint64 tableAddress = start;
    const qint64 tableSize = qint64(PictureBlock::kEntrySize) * count * languages;
    if (vc530 && crossesVc530Boundary(tableAddress, tableSize)) {
        head = QByteArray(int(kVc530Boundary - start), char(0xFF));
        tableAddress = kVc530Boundary;
        ctx.directory->set(BlockDirectory::IconAddress, quint32(tableAddress));
    }
    qint64 dataAddress = tableAddress + tableSize;

    const EncodeOptions options = EncodeOptions::fromSettings(ctx.settings);
    QVector<QVector<Entry>> tables(languages, QVector<Entry>(count));

    // The pictures go straight behind room for the tables, in table order;
    // the tables are written over that room once every entry is known. So
    // no encoded picture is held longer than it takes to write it.
    QFile out(ctx.blockPath(Block::Icon));
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        ctx.complain(QStringLiteral("Fail to open ") + out.fileName());
        return;
    }
    bool written = out.write(head) == head.size() && out.write(QByteArray(int(tableSize), '\0')) == tableSize;

    // The numbered pictures of one folder into one table.
    // Pictures are read and encoded on worker threads, a few ahead of the
    // one being written; logging and writing stay here, in table order.
    const int workers = OrderedWork::workerCount();
    const int window = 4 * workers;
    EncodeOptions workerOptions = options;
    workerOptions.perRow = nullptr; // the event loop is pumped here, once an item
    struct Picture {
        bool encoded = false;
        EncodedImage image;
        QString error;
    };

    auto scanFolder = [&](const QString &folder, QVector<Entry> &table, const QStringList &names,
                          const QVector<Entry> *fallback) {
        const QString relative = folder.isEmpty() ? QStringLiteral("Icon/") : QStringLiteral("Icon/") + folder + QLatin1Char('/');
        auto modeOf = [&](int i) { return i < modes.size() ? quint8(modes[i]) : quint8(0); };
        const std::function<Picture(int)> make = [&](int i) {
            Picture p;
            const QString name = names.value(i);
            if (name.isEmpty() || !(modeOf(i) & 0x80))
                return p;
            p.encoded = true;
            QByteArray fileBytes;
            const QString path = MediaFiles::pathIn(ctx.projectDir, relative, name, &p.error);
            const QImage image = path.isEmpty() ? QImage() : ImageEncoder::load(path, &p.error, &fileBytes, ctx.panel());
            if (!image.isNull())
                p.image = ImageEncoder::encode(image, modeOf(i) & 0x7F, workerOptions, fileBytes);
            return p;
        };
        const std::function<bool(int, Picture &)> take = [&](int i, Picture &p) {
            if (options.perRow)
                options.perRow();
            Entry &entry = table[i];
            const quint8 mode = modeOf(i);
            const QString name = names.value(i);
            if (fallback && (name.isEmpty() || !(mode & 0x80))) {
                entry = fallback->at(i);
                return true;
            }
            entry.address = quint32(dataAddress);
            entry.width = 0;
            entry.height = 0;
            entry.length = 0;
            entry.format = 0;
            if (!(mode & 0x80))
                return true; // no widget uses it
            if (name.isEmpty()) {
                entry.format = PictureBlock::kUnreadableFormat;
                ctx.complain(QStringLiteral("The icon") + QString::number(i) + QStringLiteral("does not exist!"));
                return true;
            }
            ctx.log(QStringLiteral("Scan icon:") + name + QStringLiteral("..."));
            if (!p.image.isValid() || p.image.length() <= 0) {
                entry.format = PictureBlock::kUnreadableFormat;
                ctx.complain(QStringLiteral("The icon cannot be opened: ") + relative + name
                             + (p.error.isEmpty() ? QString() : QStringLiteral(" (") + p.error + QLatin1Char(')')));
                return true;
            }
            written = place(out, entry, p.image, dataAddress, vc530) && written;
            return true;
        };
        OrderedWork::run<Picture>(c1, workers, window, make, take);
    };

    // 4./6. Language 0: the numbered icons.
    scanFolder(QString(), tables[0], byNumber, nullptr);

    // 7. The needle frames, drawn for the panel already.
    const int needleFormat = ctx.settings.needleDataType == 1 ? FormatArgb4444Zip : FormatArgb4444;
    {
        const std::function<EncodedImage(int)> make = [&](int j) {
            const QString path = MediaFiles::pathIn(ctx.projectDir, QStringLiteral("Needle/"), needles[j]);
            return path.isEmpty() ? EncodedImage() : ImageEncoder::encodeNeedleFrame(path, needleFormat, workerOptions);
        };
        const std::function<bool(int, EncodedImage &)> take = [&](int j, EncodedImage &encoded) {
            if (options.perRow)
                options.perRow();
            Entry &entry = tables[0][c1 + j];
            entry.address = quint32(dataAddress);
            entry.length = 0;
            entry.format = PictureBlock::kUnreadableFormat;
            if (!encoded.isValid() || encoded.length() <= 0) {
                ctx.complain(QStringLiteral("The needle frame cannot be opened: Needle/") + needles[j]);
                return true;
            }
            written = place(out, entry, encoded, dataAddress, vc530) && written;
            return true;
        };
        OrderedWork::run<EncodedImage>(c2, workers, window, make, take);
    }

    // 8. The further languages; one whose folder is missing repeats language 0.
    for (int k = 1; k < languages; ++k) {
        const QString folder = fourDigits(k);
        QVector<Entry> &table = tables[k];
        if (!folders.contains(folder)) {
            table = tables[0];
            continue;
        }
        ctx.log(QStringLiteral("---------------------Scan Icon dir") + folder
                + QStringLiteral("---------------------"));
        scanFolder(folder, table, filesByNumber(pictureFiles(iconDir + QLatin1Char('/') + folder)), &tables[0]);
        for (int j = 0; j < c2; ++j)
            table[c1 + j] = tables[0][c1 + j];
    }

    // 9. The tables, in the room left for them in front of the pictures.
    QByteArray tableBytes;
    tableBytes.reserve(int(tableSize));
    for (const QVector<Entry> &table : tables) {
        for (int i = 0; i < count; ++i) {
            const Entry &e = table.at(i);
            tableBytes.append(e.bytes());
            ctx.log(QStringLiteral("W&H:") + QString::number(e.width) + QLatin1Char(',') + QString::number(e.height));
            ctx.log(QStringLiteral("Len&F:") + QString::number(e.length) + QLatin1Char(',') + QString::number(e.format));
            ctx.log(QStringLiteral("icon") + QString::number(i) + QStringLiteral("bin_Addr:") + hex8(e.address));
        }
    }
    written = out.seek(head.size()) && out.write(tableBytes) == tableBytes.size() && out.seek(out.size()) && written;
    if (!written)
        ctx.complain(QStringLiteral("Fail to write ") + out.fileName() + QStringLiteral(": ") + out.errorString());
    const qint64 size = out.size();
    out.close();
    ctx.runningAddress = start + size;
    ctx.log(QStringLiteral("Make icon_all.bin"));
}

} // namespace IconBlock

void IconBlockBuilder::build(BuildContext &ctx)
{
    // The icon count of the use check follows the folder as it is now.
    const QStringList byNumber = IconBlock::filesByNumber(IconBlock::pictureFiles(ctx.path(QStringLiteral("Icon"))));
    ctx.hasIcons = !byNumber.isEmpty();
    ctx.highestIcon = qMax(0, int(byNumber.size()) - 1);
    QByteArray modes;
    PageChecks::iconUseCheck(ctx, modes);
    IconBlock::build(ctx, modes);
}

// --- needle animations ------------------------------------------------------------

namespace NeedleAnimation {

namespace {

constexpr int kMaxFrames = 3600;
constexpr int kMaxAnimations = 256;

// The fields the animation step reads, in the order of a needle's line.
enum LinePos { PosStart = 9, PosFinal = 10, PosStep = 11, PosType = 15, PosIcon = 21 };

struct NeedleLine {
    bool ok = false;
    QString type;
    Definition definition;
};

NeedleLine readNeedle(const QString &line)
{
    NeedleLine n;
    EditBuffer b;
    if (KindRegistry::hasSchema(WidgetKind::Needle)) {
        if (WidgetLine::parse(line, WidgetKind::Needle, b) != ParseStatus::Ok)
            return n;
        n.type = b.text("needleType");
        n.definition = {b.text("needleIcon"), int(b.number("startAngle")), int(b.number("finalAngle")),
                        int(b.number("step"))};
    } else {
        const QStringList f = LineGrammar::split(line).fields;
        if (f.size() <= PosIcon)
            return n;
        auto number = [&f](int pos) { return int(LineGrammar::readDecimal(f.at(pos))); };
        n.type = f.at(PosType);
        n.definition = {f.at(PosIcon), number(PosStart), number(PosFinal), number(PosStep)};
    }
    n.ok = true;
    return n;
}

bool drawsPicture(const QString &type)
{
    return type == QLatin1String("PNGdrawing") || type == QLatin1String("Animation");
}

} // namespace

QList<int> angles(int startAngle, int finalAngle, int step)
{
    QList<int> list{startAngle};
    if (step <= 0)
        return list;
    for (qint64 a = qint64(startAngle) + step; a <= finalAngle && list.size() < kMaxFrames; a += step)
        list << int(a);
    return list;
}

QList<Animation> plan(BuildContext &ctx, int *needleCount)
{
    const int c1 = IconBlock::filesByNumber(IconBlock::pictureFiles(ctx.path(QStringLiteral("Icon")))).size();
    const quint32 key = PageChecks::pageKey(ctx.settings);
    QList<Definition> needles;
    for (int row = 0; row < ctx.pageLines.size(); ++row) {
        const QStringList lines = PageChecks::readPage(ctx.path(PageChecks::pageFile(row, QStringLiteral(".cfg"))), key, &ctx);
        for (const QString &line : lines) {
            if (WidgetKinds::kindOfLine(line) != WidgetKind::Needle)
                continue;
            const NeedleLine n = readNeedle(line);
            if (n.ok && drawsPicture(n.type))
                needles << n.definition;
        }
    }
    if (needleCount)
        *needleCount = needles.size();

    QList<Animation> animations;
    int frames = 0;
    for (const Definition &d : needles) {
        bool known = false;
        for (const Animation &a : animations)
            known = known || a.definition == d;
        if (known)
            continue;
        Animation a;
        a.definition = d;
        a.number = animations.size();
        a.firstFrame = frames;
        a.frames = angles(d.startAngle, d.finalAngle, d.step).size();
        a.firstEntry = c1 + frames;
        frames += a.frames;
        animations << a;
    }
    return animations;
}

quint32 place(const QList<Animation> &animations, const Definition &definition)
{
    for (const Animation &a : animations)
        if (a.definition == definition)
            return quint32(a.firstEntry);
    return 0xFFFFFFFFu;
}

QImage frame(const QImage &needle, int angle, int rotation, QPoint *offset)
{
    const int w = needle.width();
    const int h = needle.height();
    // A square that holds the needle at any angle around its pivot.
    const int side = int(std::ceil(std::sqrt(double(w) * w + 4.0 * h * h))) + 2;
    const int c = side / 2;
    QImage square(side, side, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    {
        QPainter p(&square);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        p.translate(c, c);
        p.rotate(angle - 180 + 90 * (rotation & 3));
        p.drawImage(QPoint(-(w / 2), -h), needle);
    }
    // Trimmed to what is drawn.
    int left = side, top = side, right = -1, bottom = -1;
    for (int y = 0; y < side; ++y) {
        const QRgb *row = reinterpret_cast<const QRgb *>(square.constScanLine(y));
        for (int x = 0; x < side; ++x) {
            if (qAlpha(row[x]) == 0)
                continue;
            left = qMin(left, x);
            right = qMax(right, x);
            top = qMin(top, y);
            bottom = qMax(bottom, y);
        }
    }
    if (right < 0) {
        left = top = c;
        right = bottom = c;
    }
    if (offset)
        *offset = QPoint(left - c, top - c);
    return square.copy(left, top, right - left + 1, bottom - top + 1).convertToFormat(QImage::Format_ARGB32);
}

QString frameFileName(int animation, int frame, const QPoint &offset)
{
    return fourDigits(animation) + QStringLiteral("_0") + QStringLiteral("%1").arg(frame, 4, 10, QLatin1Char('0'))
           + QLatin1Char('_') + QString::number(offset.x()) + QLatin1Char('_') + QString::number(offset.y())
           + QStringLiteral(".png");
}

void run(BuildContext &ctx)
{
    // 1. A clean Needle/.
    const QString needleDir = ctx.path(QStringLiteral("Needle"));
    QDir().mkpath(needleDir);
    removeFiles(needleDir, {QStringLiteral("*.bin"), QStringLiteral("*.png")});

    // 2./3. The needles that draw a picture, and their animations.
    int needles = 0;
    const QList<Animation> animations = plan(ctx, &needles);
    ctx.log(QStringLiteral("ndl_Ani_number:") + QString::number(needles));
    ctx.log(QStringLiteral("Needle_Ani_Number:") + QString::number(animations.size()));
    ctx.needleFrames = [animations](const QString &icon, int startAngle, int finalAngle, int step) {
        return place(animations, Definition{icon, startAngle, finalAngle, step});
    };
    if (animations.size() > 255)
        ctx.complain(QStringLiteral("Needle's animation is over than 256"));

    // 4. The frames.
    for (const Animation &a : animations) {
        if (a.number >= kMaxAnimations)
            break;
        QString error;
        const QString path = MediaFiles::pathIn(ctx.projectDir, QStringLiteral("Icon/"), a.definition.icon, &error);
        const QImage needle = path.isEmpty() ? QImage() : ImageEncoder::load(path, &error, nullptr, ctx.panel());
        QImage source = needle.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        if (needle.isNull()) {
            // Empty frames keep the places of the animations behind it.
            ctx.complain(QStringLiteral("The needle picture cannot be opened: Icon/") + a.definition.icon
                         + (error.isEmpty() ? QString() : QStringLiteral(" (") + error + QLatin1Char(')')));
            source = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
            source.fill(Qt::transparent);
        }
        const QList<int> list = angles(a.definition.startAngle, a.definition.finalAngle, a.definition.step);
        for (int k = 0; k < list.size(); ++k) {
            QPoint offset;
            const QImage image = frame(source, list[k], ctx.settings.rotate, &offset);
            const QString file = needleDir + QLatin1Char('/') + frameFileName(a.number, k, offset);
            if (!image.save(file, "PNG"))
                ctx.complain(QStringLiteral("Fail to write ") + file);
        }
    }
}

} // namespace NeedleAnimation

} // namespace vantile
