#include "build/MediaInfo.h"
#include "build/BuildContext.h"

#include <QDir>
#include <QLibrary>

#include <cstddef>
#include <string>

namespace vantile {

namespace MediaInfo {

const char *const kDefaultLibrary = "libmediainfo.so.0";
const char *const kUnableToLoad = "Unable to load MediaInfo.dll";

namespace {

// The library's C interface in its wide-character form (wchar_t texts; the
// "A" forms would take the locale's 8-bit encoding). Enumerations travel
// as int.
using NewFn = void *(*)();
using DeleteFn = void (*)(void *);
using OpenFn = std::size_t (*)(void *, const wchar_t *file);
using CloseFn = void (*)(void *);
using GetFn = const wchar_t *(*)(void *, int streamKind, std::size_t streamNumber, const wchar_t *parameter,
                                 int infoKind, int searchKind);

constexpr int kStreamGeneral = 0;
constexpr int kStreamVideo = 1;
constexpr int kInfoName = 0;
constexpr int kInfoText = 1;

struct Api {
    QString name = QString::fromLatin1(kDefaultLibrary);
    bool tried = false;
    bool loaded = false;
    NewFn create = nullptr;
    DeleteFn destroy = nullptr;
    OpenFn open = nullptr;
    CloseFn close = nullptr;
    GetFn get = nullptr;
};

Api &api()
{
    static Api a;
    return a;
}

// Loads once per name. A library once loaded stays in the process.
bool load(Api &a)
{
    if (a.tried)
        return a.loaded;
    a.tried = true;
    a.loaded = false;
    QLibrary lib(a.name);
    if (!lib.load())
        return false;
    a.create = reinterpret_cast<NewFn>(lib.resolve("MediaInfo_New"));
    a.destroy = reinterpret_cast<DeleteFn>(lib.resolve("MediaInfo_Delete"));
    a.open = reinterpret_cast<OpenFn>(lib.resolve("MediaInfo_Open"));
    a.close = reinterpret_cast<CloseFn>(lib.resolve("MediaInfo_Close"));
    a.get = reinterpret_cast<GetFn>(lib.resolve("MediaInfo_Get"));
    a.loaded = a.create && a.destroy && a.open && a.close && a.get;
    return a.loaded;
}

QString value(const Api &a, void *handle, int stream, const wchar_t *parameter)
{
    const wchar_t *text = a.get(handle, stream, 0, parameter, kInfoText, kInfoName);
    return text ? QString::fromWCharArray(text) : QString();
}

// The numbers are plain decimal texts ("25.000", "1000"); none reads as 0.
double number(const QString &text)
{
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    return ok ? v : 0.0;
}

// The digits a file name starts with, when "_" or "." ends them; -1 else.
qint64 leadingId(const QString &name)
{
    int i = 0;
    while (i < name.size() && i < 9 && name[i].isDigit() && name[i].unicode() < 128)
        ++i;
    if (i == 0 || i >= name.size() || (name[i] != QLatin1Char('_') && name[i] != QLatin1Char('.')))
        return -1;
    return name.left(i).toLongLong();
}

} // namespace

void setLibraryName(const QString &name)
{
    Api &a = api();
    const QString wanted = name.isEmpty() ? QString::fromLatin1(kDefaultLibrary) : name;
    if (wanted == a.name)
        return;
    a = Api();
    a.name = wanted;
}

QString libraryName()
{
    return api().name;
}

bool libraryLoaded()
{
    return load(api());
}

bool readVideo(const QString &path, VideoFacts *facts, QString *error)
{
    Api &a = api();
    if (!load(a)) {
        if (error)
            *error = QString::fromLatin1(kUnableToLoad);
        return false;
    }
    void *handle = a.create();
    if (!handle) {
        if (error)
            *error = QStringLiteral("Can't read this video:") + path;
        return false;
    }
    const std::wstring file = QDir::toNativeSeparators(path).toStdWString();
    // a file the library doesn't know opens all the same, with no video in it
    const bool opened = a.open(handle, file.c_str()) != 0
                        && number(value(a, handle, kStreamGeneral, L"VideoCount")) >= 1;
    if (opened && facts) {
        VideoFacts f;
        f.width = int(number(value(a, handle, kStreamVideo, L"Width")));
        f.height = int(number(value(a, handle, kStreamVideo, L"Height")));
        f.durationMs = qint64(number(value(a, handle, kStreamGeneral, L"Duration")) + 0.5);
        f.frameRate = number(value(a, handle, kStreamVideo, L"FrameRate"));
        f.bitRate = qint64(number(value(a, handle, kStreamVideo, L"BitRate")));
        if (f.bitRate == 0)
            f.bitRate = qint64(number(value(a, handle, kStreamGeneral, L"OverallBitRate")));
        *facts = f;
    }
    a.close(handle);
    a.destroy(handle);
    if (!opened && error)
        *error = QStringLiteral("Can't read this video:") + path;
    return opened;
}

QString videoFile(const QString &projectDir, int videoId)
{
    // regular files only: a pipe or a device among them is never opened
    const QStringList names = QDir(projectDir + QStringLiteral("Video")).entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        if (leadingId(name) == videoId)
            return name;
    }
    return QString();
}

qint64 videoNumber(const QString &fileName)
{
    return leadingId(fileName);
}

void probeVideo(BuildContext &ctx, const QString &widgetName, int videoId)
{
    if (!libraryLoaded()) {
        ctx.log(QString());
        ctx.log(QString::fromLatin1(kUnableToLoad));
        return;
    }
    const QString name = videoFile(ctx.projectDir, videoId);
    if (name.isEmpty()) {
        ctx.log(widgetName + QStringLiteral(": no video numbered ") + QString::number(videoId)
                + QStringLiteral(" in the Video folder"));
        return;
    }
    VideoFacts f;
    QString error;
    if (!readVideo(ctx.path(QStringLiteral("Video/") + name), &f, &error)) {
        ctx.log(widgetName + QStringLiteral(": ") + error);
        return;
    }
    ctx.log(widgetName + QStringLiteral(": Video/") + name + QStringLiteral(" ") + QString::number(f.width)
            + QStringLiteral("x") + QString::number(f.height) + QStringLiteral(", ")
            + QString::number(f.durationMs) + QStringLiteral(" ms, ") + QString::number(f.frameRate, 'g', 6)
            + QStringLiteral(" fps, ") + QString::number(f.bitRate) + QStringLiteral(" bit/s"));
}

} // namespace MediaInfo

} // namespace vantile
