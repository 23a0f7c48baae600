#pragma once
// The build driver: turns a saved project into Morvane_Flash.bin.
//
// One MakeBin lives as long as the session that builds with it (the
// designer keeps one, the command line makes one per run): the block
// directory and the OTA memory carry over from one build to the next.
// The driver never shows anything: its log lines go to the log sink and
// its messages to the notifier, and run() returns what happened.
//
// The designer stops its auto-save timer around run() and deletes its own
// temporary page file afterwards; the driver saves the open page through
// the BuildStep::SaveOpenPage step.

#include "build/BuildContext.h"
#include "build/FlashLayout.h"
#include "build/OtaPlacement.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>

class QFile;

namespace vantile {

// What a build reads of a project.
struct BuildInput {
    QString uiprjPath;
    QString projectDir;            // with a trailing "/"
    ProjectSettings settings;
    QStringList pageLines;         // the page list as the session holds it
};

// The outcome of opening a project for a build without the designer.
struct ProjectLoad {
    bool ok = false;
    QString reason;                // one line when !ok
    QStringList warnings;          // things Open would show in a box
    BuildInput input;
};

// Reads <name>.uiprj and <name>.ini the way Open does: the version gate,
// the page list (plain or sealed), the settings.
ProjectLoad loadProject(const QString &uiprjPath);

struct BuildOptions {
    // When valid, the time of the whole build: stamped into the settings
    // block and written in the log lines, so that two builds of one project
    // give the same bytes. Otherwise the build time is the project's fixed
    // timestamp when it has one, else the current time.
    QDateTime fixedTime;
    // When not empty, used instead of the built-in pinyin table.
    QByteArray pinyinTable;
    // Largest piece of the image held in memory while copying.
    qint64 chunkSize = Flash::kChunkSize;
    // For tests: called with the bytes copied so far while the image is
    // written under its final name; returning true stops the copy there,
    // as a build killed at that moment would.
    std::function<bool(qint64 copied)> interruptCopy;
};

struct BuildResult {
    bool imageWritten = false;
    QString imagePath;             // <project>/Morvane_Flash.bin
    qint64 imageSize = 0;
    quint32 imageCrc = 0;
    bool overFlash = false;        // the image is larger than the flash
    qint64 flashLimit = 0;
    bool pinyinMissing = false;    // "With GBKCode" without a table in this program
    QDateTime buildTime;
    QString errorText;             // what Make_error_info.txt holds
    QStringList log;               // the build log, to its last line
    BlockDirectory directory;
    OtaAddresses ota;              // the OTA addresses as saved

    // The complaint lines of the error text: without empty lines and
    // without the page headings ("Page3:") the page block puts there.
    QStringList complaints() const;
};

class MakeBin
{
public:
    MakeBin();
    ~MakeBin();
    MakeBin(const MakeBin &) = delete;
    MakeBin &operator=(const MakeBin &) = delete;

    void setLogSink(LogSink sink) { m_logSink = std::move(sink); }
    void setNotifier(Notifier notifier) { m_notifier = std::move(notifier); }

    // One builder per block; a later one replaces an earlier one.
    void setBuilder(std::unique_ptr<BlockBuilder> builder);
    bool hasBuilder(Block block) const;
    void setStep(BuildStep step, StepFunction function);

    BuildResult run(const BuildInput &input, const BuildOptions &options = {});

    const BlockDirectory &directory() const { return m_directory; }

    // Removes the build's outputs and intermediate files from a project and
    // logs "Clean project - Done". Sources and settings stay.
    static void cleanProject(const QString &projectDir, const LogSink &log = {});

private:
    bool runBlock(BuildContext &ctx, Block block);
    void runStep(BuildContext &ctx, BuildStep step);

    LogSink m_logSink;
    Notifier m_notifier;
    std::array<std::unique_ptr<BlockBuilder>, kBlockCount> m_builders;
    std::array<StepFunction, kBuildStepCount> m_steps;
    BlockDirectory m_directory;
    QString m_otaProject;          // the project the OTA memory belongs to
    OtaMemory m_otaMemory;
};

// Every builder and step the program has, installed on a driver. The
// designer and the command line both build through this.
void installStandardBuild(MakeBin &driver);

// The image file in pieces: nothing larger than `chunk` is in memory.
namespace FlashFile {
// CRC-32 (reflected 0xEDB88320, start 0, no complement) of a whole file.
quint32 crc(const QString &path, qint64 chunk = Flash::kChunkSize, bool *ok = nullptr);
// Appends a whole file; a missing file appends nothing and returns false.
// With `crc`, the CRC of what is written is carried on in it.
bool append(QFile &out, const QString &path, qint64 chunk = Flash::kChunkSize, quint32 *crc = nullptr);
// Appends `count` bytes of 0xFF.
bool appendPad(QFile &out, qint64 count, qint64 chunk = Flash::kChunkSize, quint32 *crc = nullptr);
// Copies `from` to `to` with the size, the CRC and its complement written
// at 0x174, 0x178 and 0x17C. The copy goes to a temporary file beside `to`
// that replaces it only when complete: on any failure `to` is as it was.
// False when `from` can't be read or the copy fails (or is interrupted).
bool stampCopy(const QString &from, const QString &to, quint32 size, quint32 crc,
               qint64 chunk = Flash::kChunkSize, const std::function<bool(qint64)> &interrupt = {});
} // namespace FlashFile

// Exit codes of the command-line build.
namespace BuildExit {
constexpr int Ok = 0;
constexpr int CannotOpen = 1;  // the project could not be opened
constexpr int Usage = 2;
constexpr int NoImage = 3;     // the image was not written
constexpr int Strict = 4;      // --strict and the build had complaints
// The exit code for a finished build; *reason gets one line when not Ok.
// Strict counts complaints and an image larger than the flash.
int forResult(const BuildResult &result, bool strict, QString *reason = nullptr);
} // namespace BuildExit

} // namespace vantile
