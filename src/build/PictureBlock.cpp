#include "build/PictureBlock.h"
#include "project/MediaFiles.h"

#include "build/ImageEncoder.h"
#include "build/MakeBin.h"
#include "project/PageList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QVector>

namespace vantile {

namespace PictureBlock {

QByteArray Entry::bytes() const
{
    QByteArray b(kEntrySize, '\0');
    for (int k = 0; k < 4; ++k)
        b[k] = char((address >> (8 * k)) & 0xFF);
    b[4] = char(width & 0xFF);
    b[5] = char((width >> 8) & 0xFF);
    b[6] = char(height & 0xFF);
    b[7] = char((height >> 8) & 0xFF);
    for (int k = 0; k < 3; ++k)
        b[8 + k] = char((length >> (8 * k)) & 0xFF);
    b[11] = char(format & 0xFF);
    return b;
}

quint32 colourValue(int red, int green, int blue, bool rgb888)
{
    if (rgb888)
        return (quint32(red & 0xFF) << 16) | (quint32(green & 0xFF) << 8) | quint32(blue & 0xFF);
    return (quint32(red << 8) & 0xF800u) | (quint32(green << 3) & 0x07E0u) | (quint32(blue >> 3) & 0x1Fu);
}

QString imageFileName(int index)
{
    return QStringLiteral("Page") + QStringLiteral("%1").arg(index, 4, 10, QLatin1Char('0'))
        + QStringLiteral("_img.bin");
}

int requestedFormat(bool transparent, int chipIndex, bool pageImageZip)
{
    if (transparent)
        return FormatSoftPng;
    if (pageImageZip && (chipIndex == 4 || chipIndex == 6 || chipIndex == 7))
        return FormatRgb565Zip;
    return FormatRgb565;
}

bool crossesVc530Boundary(qint64 address, qint64 size)
{
    return address < kVc530Boundary && address + size > kVc530Boundary;
}

} // namespace PictureBlock

namespace {

using namespace PictureBlock;

void removeIntermediates(const QString &dirPath)
{
    QDir dir(dirPath);
    const QStringList files =
        dir.entryList({QStringLiteral("*.bin"), QStringLiteral("*.tmp")}, QDir::Files | QDir::Hidden);
    for (const QString &f : files)
        dir.remove(f);
}

QString hex8(quint32 value)
{
    return QStringLiteral("%1").arg(value, 8, 16, QLatin1Char('0')).toUpper();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return f.write(bytes) == bytes.size();
}

} // namespace

void PictureBlockBuilder::build(BuildContext &ctx)
{
    const QString pictureDir = ctx.path(QStringLiteral("Picture"));
    const QString blockPath = ctx.blockPath(Block::Picture);

    // 1. A fresh folder of intermediates.
    ctx.log(QString());
    QDir().mkpath(pictureDir);
    removeIntermediates(pictureDir);

    const int count = ctx.pages.size();
    const bool vc530 = ctx.settings.panelType == kVc530Controller;
    const qint64 start = ctx.runningAddress;

    // 3. The list of backgrounds.
    ctx.log(QStringLiteral("Page_Number:") + QString::number(count));
    ctx.log(QStringLiteral("Picture list----"));
    for (const PageInfo &page : ctx.pages)
        ctx.log(page.field1);
    ctx.log(QStringLiteral("Picture list----"));

    if (count == 0) {
        // Nothing to build: no file, the running address stays.
        ctx.directory->set(BlockDirectory::PictureAddress, quint32(start));
        ctx.directory->set(BlockDirectory::PictureCount, 0);
        return;
    }

    // 2. The table on an even address; on VC530 not across the boundary.
    QByteArray head;
    qint64 tableAddress = start;
    if (tableAddress & 1) {
        head.append(char(0xFF));
        ++tableAddress;
    }
    const qint64 tableSize = qint64(count) * kEntrySize;
    if (vc530 && crossesVc530Boundary(tableAddress, tableSize)) {
        head = QByteArray(int(kVc530Boundary - start), char(0xFF));
        tableAddress = kVc530Boundary;
    }
    qint64 dataAddress = tableAddress + tableSize;

    // 4. The entries.
    const EncodeOptions options = EncodeOptions::fromSettings(ctx.settings);
    QVector<Entry> entries(count);
    QHash<QString, int> firstByName;
    QStringList imageFiles; // in entry order
    for (int i = 0; i < count; ++i) {
        const PageInfo &page = ctx.pages.at(i);
        Entry &entry = entries[i];

        if (page.isColor) {
            const PageList::Rgb rgb = PageList::parseRgbColor(page.background);
            entry.address = quint32(dataAddress);
            entry.width = ctx.flags.logicalWidth;
            entry.height = ctx.flags.logicalHeight;
            entry.length = colourValue(rgb.r, rgb.g, rgb.b, ctx.flags.rgb888);
            entry.format = kColourFormat;
            continue;
        }

        const QString name = page.image;
        if (!vc530) {
            const auto earlier = firstByName.constFind(name);
            if (earlier != firstByName.constEnd()) {
                entry = entries.at(earlier.value());
                continue;
            }
            firstByName.insert(name, i);
        }

        const QString relative = QStringLiteral("Picture/") + name;
        QString error;
        QByteArray fileBytes;
        const QString path = MediaFiles::pathIn(ctx.projectDir, QStringLiteral("Picture/"), name, &error);
        const QImage image = path.isEmpty() ? QImage() : ImageEncoder::load(path, &error, &fileBytes, ctx.panel());
        EncodedImage encoded;
        if (!image.isNull()) {
            // Chip 3 is not among the zip chips: VC530 takes 1 or 0.
            const int requested = requestedFormat(ImageEncoder::hasTransparency(image),
                                                  ctx.settings.panelType, ctx.settings.pageImageZip);
            encoded = ImageEncoder::encode(image, requested, options, fileBytes);
        }

        if (!encoded.isValid()) {
            entry.address = quint32(dataAddress);
            entry.width = 0;
            entry.height = 0;
            entry.length = 0;
            entry.format = kUnreadableFormat;
            ctx.complain(QStringLiteral("The image does not exist or cannot be opened: ") + relative
                         + QStringLiteral(" (page ") + QString::number(i) + QLatin1Char(')'));
            if (!error.isEmpty())
                ctx.log(error);
            continue;
        }

        entry.width = encoded.width;
        entry.height = encoded.height;
        entry.format = encoded.format;
        const qint64 length = encoded.length();
        if (length <= 0) {
            entry.address = quint32(dataAddress);
            entry.length = 0;
            continue;
        }
        if (length > 0xFFFFFF)
            ctx.complain(QStringLiteral("The image is too large for the picture table: ") + relative
                         + QStringLiteral(" (") + QString::number(length) + QStringLiteral(" bytes)"));

        QByteArray fileData;
        if (vc530 && crossesVc530Boundary(dataAddress, length)) {
            fileData = QByteArray(int(kVc530Boundary - dataAddress), char(0xFF));
            dataAddress = kVc530Boundary;
        }
        fileData.append(encoded.bytes);
        entry.address = quint32(dataAddress);
        entry.length = quint32(length) & 0xFFFFFFu;
        dataAddress += length;

        ctx.log(QStringLiteral("Scan image:") + name + QStringLiteral("..."));
        const QString imageFile = pictureDir + QLatin1Char('/') + imageFileName(i);
        if (!writeFile(imageFile, fileData))
            ctx.complain(QStringLiteral("Fail to write ") + imageFile);
        imageFiles << imageFile;
    }

    // 5. The table.
    QByteArray table;
    table.reserve(int(tableSize));
    for (int i = 0; i < count; ++i) {
        const Entry &e = entries.at(i);
        table.append(e.bytes());
        ctx.log(QStringLiteral("W&H:") + QString::number(e.width) + QLatin1Char(',') + QString::number(e.height));
        ctx.log(QStringLiteral("Len&F:") + QString::number(e.length) + QLatin1Char(',') + QString::number(e.format));
        ctx.log(QStringLiteral("image") + QString::number(i) + QStringLiteral("bin_Addr:") + hex8(e.address));
    }

    // 6. The block file: head, table, then the images in page order.
    QFile out(blockPath);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        ctx.complain(QStringLiteral("Fail to open ") + blockPath);
        return;
    }
    out.write(head);
    out.write(table);
    for (const QString &file : imageFiles)
        FlashFile::append(out, file);
    const qint64 size = out.size();
    out.close();

    ctx.directory->set(BlockDirectory::PictureAddress, quint32(tableAddress));
    ctx.directory->set(BlockDirectory::PictureCount, quint32(count));
    ctx.runningAddress = start + size;
    ctx.log(QStringLiteral("Make Picture_all.bin"));
}

} // namespace vantile
