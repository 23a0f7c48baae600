#pragma once
// The facts of a video file (width, height, duration, frame rate, bit
// rate), read through the MediaInfo library's C interface. The library is
// loaded when first needed, not linked: a machine without it still builds,
// and the build log says that the facts could not be read.

#include <QString>

namespace vantile {

struct BuildContext;

namespace MediaInfo {

// The library's name on this system.
extern const char *const kDefaultLibrary; // "libmediainfo.so.0"
// The build log's line when the library can't be loaded.
extern const char *const kUnableToLoad; // "Unable to load MediaInfo.dll"

// What was read of a video; a value the file doesn't tell stays 0.
struct VideoFacts {
    int width = 0;
    int height = 0;
    qint64 durationMs = 0;
    double frameRate = 0;
    qint64 bitRate = 0; // bits per second
};

// The library to load from now on; an empty name goes back to the default.
// A different name is tried at the next use.
void setLibraryName(const QString &name);
QString libraryName();

// Loads the library if that hasn't been done; false when it can't be
// loaded or lacks one of the functions used.
bool libraryLoaded();

// Reads a file. False, with the reason in *error, when the library isn't
// there or the file can't be opened or holds no video.
bool readVideo(const QString &path, VideoFacts *facts, QString *error = nullptr);

// The file of Video/ with the number `videoId` (the digits its name starts
// with, ended by "_" or "."); empty when there is none.
QString videoFile(const QString &projectDir, int videoId);
// The number of a Video/ file by that rule; -1 when its name has none.
qint64 videoNumber(const QString &fileName);

// The build's look at the video a widget plays: without the library an
// empty line and kUnableToLoad in the log; otherwise the file's facts, or
// why they couldn't be read. Never stops the build.
void probeVideo(BuildContext &ctx, const QString &widgetName, int videoId);

} // namespace MediaInfo

} // namespace vantile
