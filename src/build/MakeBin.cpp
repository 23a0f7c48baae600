#include "build/MakeBin.h"
#include "build/CommandList.h"
#include "build/FontBlock.h"
#include "build/PageBlock.h"
#include "build/PageChecks.h"
#include "build/GifBlock.h"
#include "build/IconBlock.h"
#include "build/PictureBlock.h"
#include "build/TextBlocks.h"
#include "export/HeaderExport.h"
#include "export/SerialCommands.h"
#include "export/VariableLists.h"

#include "project/AppPaths.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QtEndian>

namespace vantile {

namespace {

const char *const kImageName = "Morvane_Flash.bin";
const char *const kTempName = "Morvane_Flash.tmp";
const char *const kOldImageName = "Morvane_Flash.uibin";
const char *const kTimeFormat = "yyyy/MM/dd hh:mm:ss";

// The project folders, made in this order when missing.
const char *const kProjectFolders[] = {"Picture", "FontBin", "Gif", "Icon", "Music",
                                       "Plugin", "Video", "WavBin", "MultiLanguage"};

const Material kMaterialOrder[kMaterialCount] = {Material::Font, Material::Language, Material::Wav,
                                                 Material::Gif,  Material::Picture,  Material::Icon,
                                                 Material::StaticText};

Block blockOf(Material m)
{
    switch (m) {
    case Material::Font: return Block::Font;
    case Material::Language: return Block::Language;
    case Material::Wav: return Block::Wav;
    case Material::Gif: return Block::Gif;
    case Material::Picture: return Block::Picture;
    case Material::Icon: return Block::Icon;
    case Material::StaticText: return Block::StaticText;
    }
    return Block::Font;
}

QString withSlash(const QString &dir)
{
    return dir.endsWith(QLatin1Char('/')) ? dir : dir + QLatin1Char('/');
}

void removeIfExists(const QString &path)
{
    if (QFile::exists(path))
        QFile::remove(path);
}

void removeMatching(const QString &dir, const QStringList &patterns)
{
    QDir d(dir);
    if (!d.exists())
        return;
    for (const QString &name : d.entryList(patterns, QDir::Files))
        d.remove(name);
}

// An icon's number: the digits among the first five characters, up to a
// "_"; exactly four of them, or -1.
int iconNumber(const QString &fileName)
{
    QString digits;
    for (int i = 0; i < qMin(5, fileName.size()); ++i) {
        const QChar c = fileName[i];
        if (c == QLatin1Char('_'))
            break;
        if (c.isDigit())
            digits.append(c);
    }
    return digits.size() == 4 ? digits.toInt() : -1;
}

bool writeText(const QString &path, const QString &text)
{
    return TextFiles::writeAtomically(path, text.toUtf8());
}

} // namespace

// --- opening a project ---------------------------------------------------------

ProjectLoad loadProject(const QString &uiprjPathIn)
{
    ProjectLoad load;
    const QFileInfo info(uiprjPathIn);
    const QString path = info.absoluteFilePath();
    if (!info.isFile()) {
        load.reason = QStringLiteral("Can't open this file: ") + path;
        return load;
    }

    BuildInput &in = load.input;
    in.uiprjPath = path;
    in.projectDir = withSlash(info.absolutePath());

    QString ini = path;
    ini.replace(QRegularExpression(QStringLiteral("\\.uiprj$")), QStringLiteral(".ini"));
    if (ini == path)
        ini = path + QStringLiteral(".ini");
    const VersionGate gate = ProjectSettings::checkVersion(ini);
    if (!gate.iniFound) {
        load.reason = QStringLiteral("Can't open this file: ") + ini
                      + (gate.reason.isEmpty() ? QString() : QStringLiteral(" (") + gate.reason + QLatin1Char(')'));
        return load;
    }
    if (!gate.accepted) {
        load.reason = ProjectSettings::versionRefusedText(gate.valueText, 0);
        return load;
    }

    const quint32 key = IniValue::hexadecimal(in.settings.supplierId.toLatin1());
    SealedFile::Class cls = SealedFile::Plain;
    bool ok = false;
    FileError error;
    const QStringList raw = SealedFile::readLines(path, key, &cls, &ok, {}, &error);
    if (cls == SealedFile::Illegal) {
        load.reason = QStringLiteral("This is illegal uiprj: ") + path;
        return load;
    }
    if (!ok) {
        load.reason = QStringLiteral("Can't open this file: ") + path + QStringLiteral(" (") + error.reason
                      + QLatin1Char(')');
        return load;
    }
    for (const QString &line : raw) {
        if (line.trimmed().isEmpty())
            continue;
        const PageInfo p = PageInfo::parse(line);
        if (p.id < 0) {
            load.warnings << QStringLiteral("from :") + QString::number(p.id) + QStringLiteral("Error page ID ") + path;
            continue;
        }
        in.pageLines << line;
    }
    if (in.pageLines.isEmpty()) {
        load.reason = QStringLiteral("This is a null uiprj: ") + path;
        return load;
    }

    QByteArray iniBytes;
    if (TextFiles::readFile(ini, &iniBytes, &error) != TextFiles::ReadStatus::Ok) {
        load.reason = QStringLiteral("Can't open this file: ") + ini + QStringLiteral(" (") + error.reason
                      + QLatin1Char(')');
        return load;
    }
    if (in.settings.readIni(iniBytes, in.pageLines.size()).startPageOverflow)
        load.warnings << QStringLiteral("Start page from uiprj ini file is over than the max page id");
    load.ok = true;
    return load;
}

// --- results -------------------------------------------------------------------

QStringList BuildResult::complaints() const
{
    static const QRegularExpression heading(QStringLiteral("^Page\\d+:$"));
    QStringList out;
    for (const QString &line : errorText.split(QLatin1Char('\n'))) {
        const QString t = line.trimmed();
        if (!t.isEmpty() && !heading.match(t).hasMatch())
            out << t;
    }
    return out;
}

namespace BuildExit {

int forResult(const BuildResult &result, bool strict, QString *reason)
{
    auto say = [reason](const QString &text) {
        if (reason)
            *reason = text;
    };
    if (!result.imageWritten) {
        say(QStringLiteral("Morvane_Flash.bin was not written"));
        return NoImage;
    }
    if (strict) {
        const QStringList c = result.complaints();
        if (!c.isEmpty()) {
            say(QString::number(c.size()) + QStringLiteral(" complaint(s) in Make_error_info.txt, first: ")
                + c.first());
            return Strict;
        }
        if (result.overFlash) {
            say(QStringLiteral("Morvane_Flash.bin is over spi flash: ") + QString::number(result.imageSize)
                + QStringLiteral(" > ") + QString::number(result.flashLimit));
            return Strict;
        }
    }
    say(QString());
    return Ok;
}

} // namespace BuildExit

// --- the image file in pieces ------------------------------------------------------

namespace FlashFile {

namespace {
// Files are read in pieces of at most this size, well inside one chunk,
// so the memory a build holds does not grow with the project.
constexpr qint64 kReadPiece = qint64(1) << 20;

qint64 pieceSize(qint64 chunk)
{
    return qMin(chunk, kReadPiece);
}
} // namespace

quint32 crc(const QString &path, qint64 chunk, bool *ok)
{
    QFile f(path);
    const bool opened = f.open(QIODevice::ReadOnly);
    if (ok)
        *ok = opened;
    quint32 sum = 0;
    if (!opened)
        return sum;
    while (!f.atEnd()) {
        const QByteArray piece = f.read(pieceSize(chunk));
        if (piece.isEmpty())
            break;
        sum = SealedFile::crc32(piece, sum);
    }
    return sum;
}

bool append(QFile &out, const QString &path, qint64 chunk, quint32 *crc)
{
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    while (!in.atEnd()) {
        const QByteArray piece = in.read(pieceSize(chunk));
        if (piece.isEmpty())
            break;
        if (crc)
            *crc = SealedFile::crc32(piece, *crc);
        if (out.write(piece) != piece.size())
            return false;
    }
    return true;
}

bool appendPad(QFile &out, qint64 count, qint64 chunk, quint32 *crc)
{
    while (count > 0) {
        const qint64 n = qMin(count, pieceSize(chunk));
        const QByteArray piece(int(n), char(0xFF));
        if (crc)
            *crc = SealedFile::crc32(piece, *crc);
        if (out.write(piece) != n)
            return false;
        count -= n;
    }
    return true;
}

bool stampCopy(const QString &from, const QString &to, quint32 size, quint32 crc, qint64 chunk,
               const std::function<bool(qint64)> &interrupt)
{
    QFile in(from);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    // The old image stays under its name until the new one is complete.
    QSaveFile out(to);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    uchar stamp[12];
    qToLittleEndian<quint32>(size, stamp);
    qToLittleEndian<quint32>(crc, stamp + 4);
    qToLittleEndian<quint32>(~crc, stamp + 8);
    qint64 at = 0;
    bool good = true;
    while (good && !in.atEnd()) {
        QByteArray piece = in.read(pieceSize(chunk));
        if (piece.isEmpty())
            break;
        // The stamp lies in the first piece with the usual chunk size; any
        // of its bytes that fall into this piece are written here.
        for (int i = 0; i < 12; ++i) {
            const qint64 pos = qint64(Flash::kImageSizeAt) + i - at;
            if (pos >= 0 && pos < piece.size())
                piece[int(pos)] = char(stamp[i]);
        }
        good = out.write(piece) == piece.size();
        at += piece.size();
        if (good && interrupt && interrupt(at))
            good = false;
    }
    good = good && in.error() == QFileDevice::NoError;
    if (!good) {
        out.cancelWriting();
        return false;
    }
    return out.commit();
}

} // namespace FlashFile

// --- the driver ---------------------------------------------------------------------

MakeBin::MakeBin() = default;
MakeBin::~MakeBin() = default;

void MakeBin::setBuilder(std::unique_ptr<BlockBuilder> builder)
{
    if (builder) {
        const int i = int(builder->block());
        m_builders[i] = std::move(builder);
    }
}

bool MakeBin::hasBuilder(Block block) const
{
    return m_builders[int(block)] != nullptr;
}

void MakeBin::setStep(BuildStep step, StepFunction function)
{
    m_steps[int(step)] = std::move(function);
}

void MakeBin::runStep(BuildContext &ctx, BuildStep step)
{
    if (m_steps[int(step)])
        m_steps[int(step)](ctx);
}

bool MakeBin::runBlock(BuildContext &ctx, Block block)
{
    BlockBuilder *builder = m_builders[int(block)].get();
    if (!builder)
        return false;
    const QString file = ctx.blockPath(block);
    removeIfExists(file);
    const qint64 start = ctx.runningAddress;
    builder->build(ctx);
    const qint64 moved = ctx.runningAddress - start;
    const QFileInfo info(file);
    const qint64 size = info.exists() ? info.size() : 0;
    if (moved != size)
        ctx.complain(QStringLiteral("The ") + blockName(block) + QStringLiteral(" block file holds ")
                     + QString::number(size) + QStringLiteral(" bytes but moved the image address by ")
                     + QString::number(moved));
    return info.exists();
}

BuildResult MakeBin::run(const BuildInput &input, const BuildOptions &options)
{
    BuildResult result;
    if (input.projectDir.isEmpty()) {
        logTo(m_logSink, QStringLiteral("No project to build"));
        return result;
    }
    BuildContext ctx;
    ctx.projectDir = withSlash(input.projectDir);
    ctx.uiprjPath = input.uiprjPath;
    ctx.settings = input.settings;
    ctx.pageLines = input.pageLines;
    ctx.directory = &m_directory;
    ctx.logSink = m_logSink;
    ctx.notifier = m_notifier;
    const qint64 chunk = options.chunkSize > 0 ? options.chunkSize : Flash::kChunkSize;
    auto now = [&options] { return options.fixedTime.isValid() ? options.fixedTime : QDateTime::currentDateTime(); };

    // 1. A fresh log and error text.
    ctx.log(now().toString(QLatin1String(kTimeFormat)));
    ctx.log(QStringLiteral("Start to make bin..."));
    ctx.errorText.clear();

    // 2. The project folders.
    QDir project(ctx.projectDir);
    for (const char *folder : kProjectFolders)
        if (!project.exists(QLatin1String(folder)))
            project.mkdir(QLatin1String(folder));

    // 3. The build time.
    if (options.fixedTime.isValid())
        ctx.buildTime = options.fixedTime;
    else if (ctx.settings.compilationTimeFixed && ctx.settings.compileDateTime.isValid())
        ctx.buildTime = ctx.settings.compileDateTime;
    else
        ctx.buildTime = QDateTime::currentDateTime();
    result.buildTime = ctx.buildTime;

    // 4. The page that is open.
    runStep(ctx, BuildStep::SaveOpenPage);

    // 5. Variable image and command area sizes.
    ctx.layout = Flash::FrontLayout::of(ctx.settings);
    ctx.flags = BuildFlags::of(ctx.settings);

    // 6. Page count and the highest icon.
    for (const QString &line : ctx.pageLines)
        ctx.pages << PageInfo::parse(line);
    ctx.totalPages = ctx.pages.isEmpty() ? 0 : qMax(0, ctx.pages.last().id + 1);
    const QStringList iconFiles = QDir(ctx.path(QStringLiteral("Icon"))).entryList(
        {QStringLiteral("*.jpeg"), QStringLiteral("*.jpg"), QStringLiteral("*.bmp"), QStringLiteral("*.png")},
        QDir::Files, QDir::Name);
    for (const QString &name : iconFiles) {
        const int n = iconNumber(name);
        if (n >= 0) {
            ctx.hasIcons = true;
            ctx.highestIcon = qMax(ctx.highestIcon, n);
        }
    }

    // 7. Needle frames, then the settings block.
    runStep(ctx, BuildStep::NeedleAnimation);
    ctx.uiMessage = UiMessageBlock::build(ctx.settings, ctx.buildTime);
    ctx.log(QStringLiteral("Get UI message"));

    // 8. The pinyin table moves the variable image.
    const quint32 a = ctx.layout.variableAddress();
    QByteArray pinyin;
    if (ctx.layout.gbkCode) {
        m_directory.set(BlockDirectory::PinyinAddress, Flash::kPinyinAddress);
        m_directory.set(BlockDirectory::PinyinSize, Flash::kPinyinSize);
        pinyin = options.pinyinTable.isEmpty() ? Flash::pinyinTable() : options.pinyinTable;
        if (pinyin.isEmpty()) {
            result.pinyinMissing = true;
            ctx.log(QStringLiteral("PinyinTable.bin is not part of this program: the pinyin table is left as zeros"));
        } else if (pinyin.size() != int(Flash::kPinyinSize)) {
            ctx.log(QStringLiteral("PinyinTable.bin holds ") + QString::number(pinyin.size())
                    + QStringLiteral(" bytes instead of ") + QString::number(Flash::kPinyinSize));
        }
        pinyin = pinyin.left(int(Flash::kPinyinSize));
        pinyin.append(QByteArray(int(Flash::kPinyinSize) - pinyin.size(), '\0'));
    }
    m_directory.set(BlockDirectory::VariableImageAddress, a);

    // 9. Empty variable image and command area, no merged pages.
    ctx.variables = VariableImage(ctx.layout.modbusMaster);
    ctx.commandArea = QByteArray(int(ctx.layout.commandSize()), '\0');
    ctx.vicePages.clear();
    ctx.mergeMap.clear();

    // 10. Slide menus of chip 10 show other pages inside them.
    if (ctx.settings.panelType == 10)
        runStep(ctx, BuildStep::SlideMenuMerge);

    // 11. The font table, checks, the page blocks, the command list.
    runStep(ctx, BuildStep::FontScan);
    runStep(ctx, BuildStep::PreBuildChecks);
    ctx.runningAddress = ctx.layout.pageBlockAddress();
    m_directory.set(BlockDirectory::PageBlockAddress, quint32(ctx.runningAddress));
    const bool pageBuilt = runBlock(ctx, Block::Page);
    const bool viceBuilt = runBlock(ctx, Block::VicePage);
    runStep(ctx, BuildStep::SaveCommandList);

    // 12. The Modbus command table.
    if (ctx.layout.modbusMaster) {
        m_directory.set(BlockDirectory::CommandTableAddress, ctx.layout.commandAddress());
        m_directory.set(BlockDirectory::CommandTableSize, 0);
        runStep(ctx, BuildStep::CommandTable);
    } else {
        m_directory.set(BlockDirectory::CommandTableAddress, 0xFFFFFFFFu);
        m_directory.set(BlockDirectory::CommandTableSize, 0);
    }

    // 13-15. The material blocks, in fixed places in OTA mode.
    const QString addrInfo = ctx.path(QStringLiteral("Addr_Info.txt"));
    QStringList addrProblems;
    const OtaAddresses current = OtaAddresses::load(addrInfo, nullptr, &addrProblems);
    // A damaged Addr_Info.txt is told and left as it is for the user to mend.
    for (const QString &problem : addrProblems)
        ctx.complain(QStringLiteral("Addr_Info.txt ") + problem);
    // The previous build's reserve and end texts; before the first build of
    // this project in this session, the file as it stands.
    const OtaMemory previous = m_otaProject == ctx.projectDir ? m_otaMemory : OtaMemory::of(current);
    OtaPlacement placement(current, previous, ctx.layout.alignUnit(), Flash::flashLimit(ctx.settings.flashSize));
    bool built[kMaterialCount] = {};
    ctx.runningAddress = placement.startFont(ctx.runningAddress);
    for (Material m : kMaterialOrder) {
        if (m != Material::Font)
            placement.startBlock(m, ctx.runningAddress);
        const qint64 start = ctx.runningAddress;
        built[int(m)] = runBlock(ctx, blockOf(m));
        ctx.runningAddress = placement.finishBlock(m, start, ctx.runningAddress, built[int(m)]);
    }
    for (const QString &note : placement.notes())
        ctx.log(note);
    for (const QString &complaint : placement.complaints())
        ctx.complain(complaint);

    // 16. The address header for the host.
    runStep(ctx, BuildStep::HeaderExport);

    // 17. The image, unstamped, as Morvane_Flash.tmp.
    const QString imagePath = ctx.path(QLatin1String(kImageName));
    const QString tempPath = ctx.path(QLatin1String(kTempName));
    QByteArray front(int(ctx.layout.pageBlockAddress()), char(0xFF));
    front.replace(0, int(Flash::kDirectorySize), m_directory.bytes());
    front.replace(int(Flash::kUiMessageAddress), int(Flash::kUiMessageSize), ctx.uiMessage);
    if (ctx.layout.gbkCode)
        front.replace(int(Flash::kPinyinAddress), int(Flash::kPinyinSize), pinyin);
    front.replace(int(a), int(ctx.layout.variableSize()),
                  ctx.variables.bytes().left(int(ctx.layout.variableSize())));
    if (ctx.layout.modbusMaster) {
        QByteArray area = ctx.commandArea.left(int(ctx.layout.commandSize()));
        area.append(QByteArray(int(ctx.layout.commandSize()) - area.size(), '\0'));
        front.replace(int(ctx.layout.commandAddress()), area.size(), area);
    }
    // Morvane_Flash.bin itself is replaced only when the new one is complete (step 20).
    removeIfExists(tempPath);
    removeIfExists(ctx.path(QLatin1String(kOldImageName)));
    quint32 assembledCrc = 0;
    bool assembled = false;
    {
        QFile temp(tempPath);
        if (!temp.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            ctx.log(QStringLiteral("Can't open this file: ") + tempPath);
        } else {
            // the image's CRC is carried along while it is written: no second pass
            quint32 *crc = &assembledCrc;
            bool good = temp.write(front) == front.size();
            assembledCrc = SealedFile::crc32(front, assembledCrc);
            if (pageBuilt)
                good = FlashFile::append(temp, ctx.blockPath(Block::Page), chunk, crc) && good;
            if (viceBuilt)
                good = FlashFile::append(temp, ctx.blockPath(Block::VicePage), chunk, crc) && good;
            if (placement.enabled())
                good = FlashFile::appendPad(temp, placement.fontPaddedStart() - temp.size(), chunk, crc) && good;
            for (Material m : kMaterialOrder) {
                if (built[int(m)])
                    good = FlashFile::append(temp, ctx.blockPath(blockOf(m)), chunk, crc) && good;
                good = FlashFile::appendPad(temp, placement.pad(m), chunk, crc) && good;
            }
            assembled = good;
            if (!good)
                ctx.log(QStringLiteral("Fail to write ") + tempPath);
            else if (temp.size() != ctx.runningAddress)
                ctx.complain(QStringLiteral("Morvane_Flash.tmp holds ") + QString::number(temp.size())
                             + QStringLiteral(" bytes, the blocks end at ") + QString::number(ctx.runningAddress));
        }
    }

    // 18. The OTA addresses.
    result.ota = placement.addresses();
    result.ota.wavNum = QString::number(m_directory.value(BlockDirectory::WavCount));
    result.ota.gifNum = QString::number(m_directory.value(BlockDirectory::GifCount));
    result.ota.imageNum = QString::number(m_directory.value(BlockDirectory::PictureCount));
    result.ota.iconNum = QString::number(m_directory.value(BlockDirectory::IconCount));
    if (addrProblems.isEmpty() && !result.ota.save(addrInfo))
        ctx.log(QStringLiteral("Fail to create ") + addrInfo);
    m_otaProject = ctx.projectDir;
    m_otaMemory = OtaMemory::of(result.ota);

    // 19-20. Size check, CRC and stamp.
    ctx.log(QString());
    ctx.log(QStringLiteral("Make Morvane_Flash.bin"));
    const qint64 size = QFileInfo(tempPath).size();
    result.imageSize = size;
    result.flashLimit = Flash::flashLimit(ctx.settings.flashSize);
    if (QFile::exists(tempPath) && Flash::exceedsFlash(size, ctx.settings.flashSize)) {
        result.overFlash = true;
        ctx.log(QStringLiteral("Flash max size") + QString::number(result.flashLimit) + QStringLiteral("< bin size")
                + QString::number(size));
        ctx.notify(QStringLiteral("Warning"), QStringLiteral("Morvane_Flash.bin is over spi flash!"));
    }
    bool crcRead = assembled;
    result.imageCrc = assembled ? assembledCrc : FlashFile::crc(tempPath, chunk, &crcRead);
    if (crcRead)
        result.imageWritten =
            FlashFile::stampCopy(tempPath, imagePath, quint32(size), result.imageCrc, chunk, options.interruptCopy);
    if (crcRead && !result.imageWritten)
        ctx.complain(QStringLiteral("Fail to write ") + imagePath
                     + (QFile::exists(imagePath) ? QStringLiteral(": the image of the last build stays") : QString()));
    result.imagePath = imagePath;

    // 21. Where the sibling tools find the image.
    if (result.imageWritten)
        AppPaths::writeOneLine(AppPaths::currentBinPathFile(), imagePath);

    // 22. The unstamped copy goes.
    removeIfExists(tempPath);

    // 23. The logs.
    if (!writeText(ctx.path(QStringLiteral("Make_info.txt")), ctx.buildLog.join(QLatin1Char('\n'))))
        ctx.notify(QStringLiteral("Message"), QStringLiteral("Fail to open this file"));
    if (!writeText(ctx.path(QStringLiteral("Make_error_info.txt")), ctx.errorText))
        ctx.notify(QStringLiteral("Message"), QStringLiteral("Fail to open this file"));

    // 24. The widget lists for the host.
    runStep(ctx, BuildStep::WidgetListExport);

    // 25.
    ctx.log(QStringLiteral("Generate \"Morvane_Flash.bin\" file on ") + now().toString(QLatin1String(kTimeFormat)));

    // 26. Intermediate files.
    const QStringList binAndTmp = {QStringLiteral("*.bin"), QStringLiteral("*.tmp")};
    removeMatching(ctx.path(QStringLiteral("Plugin")), binAndTmp);
    removeIfExists(ctx.path(QStringLiteral("FontBin/Font_all.bin")));
    removeIfExists(ctx.path(QStringLiteral("WavBin/Wav_all.bin")));
    removeMatching(ctx.path(QStringLiteral("Gif")), binAndTmp);
    removeMatching(ctx.path(QStringLiteral("Picture")), binAndTmp);
    removeMatching(ctx.path(QStringLiteral("Icon")), binAndTmp);

    // 27. The serial command list.
    removeIfExists(ctx.path(QStringLiteral("SerialPortCommands.csv")));
    runStep(ctx, BuildStep::SerialCommandExport);

    // 28.
    if (result.imageWritten)
        ctx.notify(QStringLiteral("Note"), QStringLiteral("Morvane_Flash.bin is ready!"));

    result.errorText = ctx.errorText;
    result.log = ctx.buildLog;
    result.directory = m_directory;
    return result;
}

void MakeBin::cleanProject(const QString &projectDirIn, const LogSink &log)
{
    const QString dir = withSlash(projectDirIn);
    for (const char *name : {"Morvane_Flash.bin", "Morvane_Flash.tmp", "Morvane_Flash.uibin", "Make_info.txt",
                             "Make_error_info.txt", "TouchWidget.csv", "DisplayWidget.csv",
                             "SerialPortCommands.csv"})
        removeIfExists(dir + QLatin1String(name));
    const QStringList binAndTmp = {QStringLiteral("*.bin"), QStringLiteral("*.tmp")};
    removeMatching(dir + QStringLiteral("Plugin"), binAndTmp + QStringList{QStringLiteral("*.cfc")});
    removeMatching(dir + QStringLiteral("Gif"), binAndTmp);
    removeMatching(dir + QStringLiteral("Picture"), binAndTmp);
    removeMatching(dir + QStringLiteral("Icon"), binAndTmp);
    removeIfExists(dir + QStringLiteral("FontBin/Font_all.bin"));
    removeIfExists(dir + QStringLiteral("WavBin/Wav_all.bin"));
    removeIfExists(dir + QStringLiteral("MultiLanguage/MultiLanguage.bin"));
    logTo(log, QStringLiteral("Clean project - Done"));
}

void installStandardBuild(MakeBin &driver)
{
    // The block builders, the checks and the exports join here as they are
    // written; a block without a builder is left out of the image.
    driver.setBuilder(std::make_unique<PictureBlockBuilder>());
    driver.setBuilder(std::make_unique<PageBlock::PageBuilder>());
    driver.setBuilder(std::make_unique<PageBlock::VicePageBuilder>());
    driver.setBuilder(std::make_unique<StaticTextBlockBuilder>());
    driver.setBuilder(std::make_unique<LanguageBlockBuilder>());
    driver.setBuilder(std::make_unique<FontBlockBuilder>());
    driver.setBuilder(std::make_unique<WavBlockBuilder>());
    driver.setStep(BuildStep::FontScan, FontBlock::scanFonts);
    driver.setStep(BuildStep::SlideMenuMerge, PageBlock::slideMenuMerge);
    driver.setStep(BuildStep::PreBuildChecks, PageChecks::preBuildChecks);
    driver.setBuilder(std::make_unique<GifBlockBuilder>());
    driver.setBuilder(std::make_unique<IconBlockBuilder>());
    driver.setStep(BuildStep::NeedleAnimation, NeedleAnimation::run);
    driver.setStep(BuildStep::CommandTable, CommandList::MakeCommandBlock);
    driver.setStep(BuildStep::HeaderExport, HeaderExport::ExportHeader);
    driver.setStep(BuildStep::WidgetListExport, VariableLists::ExportVariableCsv);
    driver.setStep(BuildStep::SerialCommandExport, SerialCommands::ExportSerialCommands);
}

} // namespace vantile
