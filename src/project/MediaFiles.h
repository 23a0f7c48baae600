#pragma once
// Media of a project: the names that page lists and widget lines give for
// files in Picture/, Icon/, Gif/ and the other folders, and the guarded
// reading of pictures. A name never leads out of its folder, and a
// picture's declared size is checked before anything is decoded.

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

namespace vantile {

namespace MediaFiles {

constexpr int kMaxPictureSide = 8192;
// Pictures are read whole; no picture a panel can show comes near this.
constexpr qint64 kMaxPictureFileSize = qint64(256) << 20;

// True for a name that stays inside its folder: not empty, no "/" or "\",
// not "." or "..", no drive (":").
bool isPlainName(const QString &name);

// projectDir + folder + name, or an empty path with *error set when the
// name would leave the folder. folder is like "Picture/".
QString pathIn(const QString &projectDir, const QString &folder, const QString &name, QString *error = nullptr);

// Why a picture of this declared size is refused, or empty when it is
// accepted: a side above 8192, or more than four times the panel's pixels
// (no panel limit when the panel size is not valid).
QString sizeRefusal(const QSize &declared, const QSize &panel);

// The declared size of a picture, read from its header without decoding;
// invalid when the header can't be read.
QSize declaredSize(const QByteArray &bytes);

// Reads a picture file: a regular file of at most kMaxPictureFileSize,
// its declared size accepted by sizeRefusal, then decoded by the image
// library. A null image with *error on failure. *fileBytes receives the
// file's bytes when it could be read, also when decoding failed.
QImage readPicture(const QString &path, const QSize &panel, QString *error = nullptr,
                   QByteArray *fileBytes = nullptr);

} // namespace MediaFiles

} // namespace vantile
