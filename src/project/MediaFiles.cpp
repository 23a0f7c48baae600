#include "project/MediaFiles.h"

#include "project/TextFiles.h"

#include <QBuffer>
#include <QImageReader>

namespace vantile {
namespace MediaFiles {

bool isPlainName(const QString &name)
{
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return false;
    for (QChar c : name)
        if (c == QLatin1Char('/') || c == QLatin1Char('\\') || c == QLatin1Char(':') || c.unicode() == 0)
            return false;
    return true;
}

QString pathIn(const QString &projectDir, const QString &folder, const QString &name, QString *error)
{
    if (isPlainName(name))
        return projectDir + folder + name;
    if (error)
        *error = QStringLiteral("The name leaves the %1 folder: %2").arg(folder.chopped(1), name);
    return QString();
}

QString sizeRefusal(const QSize &declared, const QSize &panel)
{
    if (declared.width() > kMaxPictureSide || declared.height() > kMaxPictureSide)
        return QStringLiteral("The picture declares %1 x %2 pixels, more than %3 on a side")
            .arg(declared.width())
            .arg(declared.height())
            .arg(kMaxPictureSide);
    const qint64 pixels = qint64(declared.width()) * declared.height();
    const qint64 panelPixels = qint64(panel.width()) * panel.height();
    if (panel.isValid() && panelPixels > 0 && pixels > 4 * panelPixels)
        return QStringLiteral("The picture declares %1 x %2 pixels, more than four times the panel's %3 x %4")
            .arg(declared.width())
            .arg(declared.height())
            .arg(panel.width())
            .arg(panel.height());
    return QString();
}

QSize declaredSize(const QByteArray &bytesIn)
{
    QByteArray bytes = bytesIn; // QBuffer wants a non-const array; this is a shallow copy
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    QSize size = reader.size();
    if (!size.isValid() && bytes.size() >= 26 && bytes.startsWith("BM")) {
        // a BMP whose header the library refuses: width and height at 18 and 22
        auto le32 = [&](int at) {
            return qint32(quint8(bytes[at]) | quint8(bytes[at + 1]) << 8 | quint8(bytes[at + 2]) << 16
                          | quint32(quint8(bytes[at + 3])) << 24);
        };
        const qint64 w = le32(18);
        const qint64 h = qAbs(qint64(le32(22)));
        size = QSize(int(qMin<qint64>(w, INT_MAX)), int(qMin<qint64>(h, INT_MAX)));
    }
    return size;
}

QImage readPicture(const QString &path, const QSize &panel, QString *error, QByteArray *fileBytes)
{
    auto fail = [&](const QString &why) {
        if (error)
            *error = why;
        return QImage();
    };
    QByteArray bytes;
    FileError fileError;
    if (TextFiles::readFile(path, &bytes, &fileError, kMaxPictureFileSize) != TextFiles::ReadStatus::Ok)
        return fail(QStringLiteral("cannot open %1: %2").arg(path, fileError.reason));
    if (fileBytes)
        *fileBytes = bytes;
    const QString refusal = sizeRefusal(declaredSize(bytes), panel);
    if (!refusal.isEmpty())
        return fail(path + QStringLiteral(": ") + refusal);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QImage image = reader.read();
    if (image.isNull())
        return fail(QStringLiteral("%1: %2").arg(path, reader.errorString()));
    if (error)
        error->clear();
    return image;
}

} // namespace MediaFiles
} // namespace vantile
