#pragma once
// What the steps of one build share, and the two ways a later step plugs
// into the driver (MakeBin.h): a block builder, which appends one block of
// the image, or a step function run at a fixed point of the build.

#include "build/FlashLayout.h"
#include "project/LogSink.h"
#include "project/PageList.h"
#include "project/ProjectSettings.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

namespace vantile {

// A message the designer shows in a box (title, text); the command line
// prints it.
using Notifier = std::function<void(const QString &title, const QString &text)>;

// The blocks behind the Modbus area, in image order.
enum class Block : int { Page, VicePage, Font, Language, Wav, Gif, Picture, Icon, StaticText };
constexpr int kBlockCount = 9;

// The file a block builder writes, relative to the project directory.
QString blockFile(Block block);
// "page", "Vice page", "Font", ... for log lines.
QString blockName(Block block);

// Build flags the encoders and record writers read.
struct BuildFlags {
    int controller = 0;    // comboBox_ICType index, 10 counted as 8
    int rotation = 0;      // 0..3
    int logicalWidth = 0;  // XSIZE, or YSIZE for rotation 1 and 3
    int logicalHeight = 0;
    bool rgb888 = false;
    bool argb = false;     // "aRGB Png"
    bool bgr = false;
    bool nand = false;     // chip 3 or 4 on Nand flash
    bool byteSwap = false;

    static BuildFlags of(const ProjectSettings &settings);
};

struct BuildContext {
    // --- the project ----------------------------------------------------------
    QString projectDir;            // with a trailing "/"
    QString uiprjPath;
    ProjectSettings settings;
    QStringList pageLines;         // the page list, one "PageNNNN:..." line per page
    QList<PageInfo> pages;         // the same, parsed
    int totalPages = 0;            // number of the last entry + 1, 0 for none
    int highestIcon = 0;           // highest number in Icon/, 0 for none
    bool hasIcons = false;

    // --- build state ----------------------------------------------------------
    QDateTime buildTime;           // stamped into the settings block
    BuildFlags flags;
    Flash::FrontLayout layout;
    BlockDirectory *directory = nullptr;
    QByteArray uiMessage;          // 256 bytes
    VariableImage variables;
    QByteArray commandArea;        // 0x2000 bytes in master mode, else empty
    qint64 runningAddress = 0;     // the address the next block gets
    QList<int> vicePages;          // pages shown inside a slide menu (chip 10)
    QMap<int, QList<int>> mergeMap;// host page -> its Vice pages
    FontTable fonts;               // filled by the font scan before the page blocks
    // set by the needle animation step: where a needle's frames stand
    std::function<quint32(const QString &icon, int startAngle, int finalAngle, int step)> needleFrames;
    QString errorText;             // the collected complaints (Make_error_info.txt)
    QStringList buildLog;          // the build log (Make_info.txt)
    LogSink logSink;
    Notifier notifier;

    // A line of the build log, passed on to the sink.
    void log(const QString &line);
    // A complaint: to the error text (with its line end) and to the log.
    void complain(const QString &message);
    // The same, but a message already given in this build is not repeated
    // (a page file that several steps fail to read is told once).
    void complainOnce(const QString &message);
    QSet<QString> told;
    void notify(const QString &title, const QString &text);

    QString path(const QString &relative) const { return projectDir + relative; }
    // The panel as set (XSIZE x YSIZE): pictures are checked against it.
    QSize panel() const { return QSize(settings.xSizeValue(), settings.ySizeValue()); }
    QString blockPath(Block block) const { return projectDir + blockFile(block); }
};

// A builder of one block. It reads ctx.runningAddress, writes its block
// file (blockFile(block())) and its directory fields, and adds the file's
// size to ctx.runningAddress. A builder that finds nothing to build writes
// no file and leaves the running address. The driver removes the block's
// file before calling it.
class BlockBuilder
{
public:
    virtual ~BlockBuilder() = default;
    virtual Block block() const = 0;
    virtual void build(BuildContext &ctx) = 0;
};

// Points of the build where later steps run. A step that is not installed
// has no effect.
enum class BuildStep : int {
    SaveOpenPage,       // the designer saves the page that is open
    NeedleAnimation,    // frames of the needle animations into Needle/
    SlideMenuMerge,     // chip 10: Vice pages and the merged page files
    FontScan,           // the font table from the headers in FontBin/
    PreBuildChecks,     // page range and font use checks
    SaveCommandList,    // the Modbus list is written back to command.list
    CommandTable,       // master mode: command.list into ctx.commandArea
    HeaderExport,       // UI_<name>.h
    WidgetListExport,   // TouchWidget.csv, DisplayWidget.csv
    SerialCommandExport,// SerialPortCommands.csv
};
constexpr int kBuildStepCount = 10;

using StepFunction = std::function<void(BuildContext &ctx)>;

} // namespace vantile
