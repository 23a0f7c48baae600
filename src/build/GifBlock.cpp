#include "build/GifBlock.h"

#include "build/MakeBin.h"
#include "build/OrderedWork.h"
#include "build/PageChecks.h"
#include "build/PictureBlock.h"
#include "project/MediaFiles.h"
#include "widgets/LineGrammar.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QVector>

namespace vantile {

namespace {

void putLe(QByteArray &b, int at, quint32 value, int bytes)
{
    for (int k = 0; k < bytes; ++k)
        b[at + k] = char((value >> (8 * k)) & 0xFF);
}

QString hex8(quint32 value)
{
    return QStringLiteral("%1").arg(value, 8, 16, QLatin1Char('0')).toUpper();
}

} // namespace

namespace GifBlock {

int frameFormat(int requested, bool firstFrameTransparent, const EncodeOptions &options)
{
    int format = requested;
    if (format > FormatZoomIn)
        format = firstFrameTransparent ? FormatArgb4444 : FormatRgb565;
    if (options.controller == 5 && options.rgb888)
        format = FormatArgb8888;
    return format;
}

namespace {

// Writes the frame table and the first `n` frames of a gif at the current
// position of `out` (the table first as room, then over it once the frames
// are placed); the frame count written (the frames the reader gave before
// it stopped, at most n). Frames are encoded and written one by one.
int encodeFrames(QByteArray &bytes, int n, qint64 base, QFile &out, int requestedFormat,
                 const EncodeOptions &options, bool vc530, Encoded &result)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "gif");

    const qint64 tableAt = out.pos();
    QByteArray table(kFrameEntrySize * n, '\0');
    bool written = out.write(table) == table.size();
    qint64 address = base + qint64(kFrameEntrySize) * n;
    int format = -1;
    int done = 0;
    // One worker decodes the frames in turn (the reader composes each on
    // the ones before it) a few ahead; encoding and writing happen here.
    struct Frame {
        QImage image;
        QString error;
    };
    const std::function<Frame(int)> decode = [&](int) {
        Frame f;
        f.image = reader.read();
        if (f.image.isNull())
            f.error = reader.errorString();
        return f;
    };
    const std::function<bool(int, Frame &)> take = [&](int, Frame &frame) {
        if (frame.image.isNull()) {
            result.error = frame.error;
            return false;
        }
        const QImage &image = frame.image;
        if (format < 0)
            format = frameFormat(requestedFormat, ImageEncoder::hasTransparency(image), options);
        EncodedImage encoded;
        if (format == FormatJpg || format == FormatZoomIn) {
            // No packer for these: the frame keeps its size and has no data.
            const QSize size = ImageEncoder::rotatedSize(image.size(), options.rotation);
            encoded.format = format;
            encoded.width = size.width();
            encoded.height = size.height();
        } else {
            encoded = ImageEncoder::encode(image, format, options);
        }
        const qint64 length = encoded.length();
        if (vc530 && PictureBlock::crossesVc530Boundary(address, length)) {
            const QByteArray pad(int(PictureBlock::kVc530Boundary - address), char(0xFF));
            written = out.write(pad) == pad.size() && written;
            address = PictureBlock::kVc530Boundary;
        }
        written = out.write(encoded.bytes) == encoded.bytes.size() && written;
        const int at = kFrameEntrySize * done;
        putLe(table, at, quint32(address), 4);
        putLe(table, at + 8, quint32(encoded.width), 2);
        putLe(table, at + 10, quint32(encoded.height), 2);
        putLe(table, at + 12, quint32(length), 3);
        table[at + 15] = char(encoded.format & 0xFF);
        address += length;
        ++done;
        if (options.perRow)
            options.perRow();
        return true;
    };
    OrderedWork::run<Frame>(n, 1, 3, decode, take);
    if (done < n)
        return done;
    const qint64 end = out.pos();
    if (!written || !out.seek(tableAt) || out.write(table) != table.size() || !out.seek(end)) {
        result.error = out.errorString();
        return 0;
    }
    result.frames = n;
    result.length = end - tableAt;
    return n;
}

} // namespace

Encoded encodeGif(qint64 base, const QString &path, QFile &out, int requestedFormat,
                  const EncodeOptions &options, bool vc530, const QSize &panel)
{
    Encoded result;
    // Regular files of a bounded size only, and the declared size checked
    // before any frame is decoded.
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > MediaFiles::kMaxPictureFileSize) {
        result.error = info.exists() ? QStringLiteral("not a regular file of a readable size")
                                     : QStringLiteral("no such file");
        return result;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.error = file.errorString();
        return result;
    }
    QByteArray bytes = file.readAll();
    file.close();
    int n = 0;
    {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer, "gif");
        const QSize declared = reader.size();
        const QString refusal = MediaFiles::sizeRefusal(declared, panel);
        if (!declared.isValid() || !refusal.isEmpty()) {
            result.error = refusal.isEmpty() ? QStringLiteral("not a GIF the reader knows") : refusal;
            return result;
        }
        n = reader.imageCount();
    }
    if (n <= 0) {
        result.error = QStringLiteral("no frames");
        return result;
    }
    const qint64 at = out.pos();
    const int done = encodeFrames(bytes, n, base, out, requestedFormat, options, vc530, result);
    // A gif that breaks off keeps the frames it has, in a shorter table
    // (so every frame moves: write it again from the start).
    if (done > 0 && done < n) {
        out.resize(at);
        out.seek(at);
        encodeFrames(bytes, done, base, out, requestedFormat, options, vc530, result);
    }
    if (result.frames <= 0) {
        out.resize(at); // nothing of a gif without data stays
        out.seek(at);
    }
    return result;
}

void build(BuildContext &ctx, const QByteArray &modes)
{
    const QString gifDir = ctx.path(QStringLiteral("Gif"));
    const qint64 start = ctx.runningAddress;
    const bool vc530 = ctx.settings.panelType == PictureBlock::kVc530Controller;

    // 1. A fresh folder of intermediates.
    ctx.log(QString());
    QDir().mkpath(gifDir);
    QDir dir(gifDir);
    for (const QString &f : dir.entryList({QStringLiteral("*.bin"), QStringLiteral("*.tmp")}, QDir::Files | QDir::Hidden))
        dir.remove(f);

    // 2./3. The gifs and their count.
    QStringList byNumber;
    for (const QString &name : dir.entryList({QStringLiteral("*.gif")}, QDir::Files, QDir::Name)) {
        const int n = LineGrammar::gifNumber(name);
        if (n < 0)
            continue;
        while (byNumber.size() <= n)
            byNumber << QString();
        if (byNumber[n].isEmpty())
            byNumber[n] = name;
    }
    const int count = byNumber.size();
    qint64 tableAddress = start + (start & 1);
    ctx.directory->set(BlockDirectory::GifAddress, quint32(tableAddress));
    ctx.directory->set(BlockDirectory::GifCount, quint32(count));
    if (count == 0) {
        ctx.directory->set(BlockDirectory::GifAddress, quint32(start));
        return; // no file; the running address stays
    }
    ctx.log(QStringLiteral("Gif_Number:") + QString::number(count));

    // 5./6. Each used gif behind room for the table, which is written
    // over that room at the end.
    QFile out(ctx.blockPath(Block::Gif));
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        ctx.complain(QStringLiteral("Fail to open ") + out.fileName());
        return;
    }
    if (start & 1)
        out.write(QByteArray(1, char(0xFF)));
    const qint64 tableAt = out.pos();
    QByteArray table(kEntrySize * count, '\0');
    out.write(table);
    const EncodeOptions options = EncodeOptions::fromSettings(ctx.settings);
    qint64 dataAddress = tableAddress + qint64(kEntrySize) * count;
    QVector<QPair<quint32, quint32>> entries(count, {0u, 0u});
    for (int id = 0; id < count; ++id) {
        const QString name = byNumber.at(id);
        const quint8 mode = id < modes.size() ? quint8(modes[id]) : 0;
        if (name.isEmpty() || !(mode & 0x80))
            continue;
        ctx.log(QStringLiteral("Scan gif:") + name + QStringLiteral("..."));
        const QString path = MediaFiles::pathIn(ctx.projectDir, QStringLiteral("Gif/"), name);
        const Encoded encoded = encodeGif(dataAddress, path, out, mode & 0x7F, options, vc530, ctx.panel());
        if (encoded.length <= 0 || encoded.frames <= 0) {
            ctx.complain(QStringLiteral("The gif does not exist or cannot be opened: Gif/") + name
                         + (encoded.error.isEmpty() ? QString() : QStringLiteral(" (") + encoded.error + QLatin1Char(')')));
            continue;
        }
        entries[id] = {quint32(dataAddress), quint32(encoded.frames)};
        dataAddress += encoded.length;
    }

    // 7. The table.
    ctx.log(QStringLiteral("Gif number:") + QString::number(count));
    for (int id = 0; id < count; ++id) {
        putLe(table, kEntrySize * id, entries[id].first, 4);
        putLe(table, kEntrySize * id + 4, entries[id].second, 4);
        ctx.log(QStringLiteral("frame_num:") + QString::number(entries[id].second));
        ctx.log(QStringLiteral("gif") + QString::number(id) + QStringLiteral("bin_Addr:") + hex8(entries[id].first));
    }
    if (!out.seek(tableAt) || out.write(table) != table.size() || !out.seek(out.size()))
        ctx.complain(QStringLiteral("Fail to write ") + out.fileName() + QStringLiteral(": ") + out.errorString());
    const qint64 size = out.size();
    out.close();
    ctx.runningAddress = start + size;
    ctx.log(QStringLiteral("Make Gif_all.bin"));
}

} // namespace GifBlock

void GifBlockBuilder::build(BuildContext &ctx)
{
    QByteArray modes;
    PageChecks::gifUseCheck(ctx, modes);
    GifBlock::build(ctx, modes);
}

} // namespace vantile
