#include "export/ProjectCheck.h"

#include "build/BuildContext.h"
#include "build/FontBlock.h"
#include "build/MediaInfo.h"
#include "build/PageChecks.h"
#include "project/PageFile.h"
#include "project/PageList.h"
#include "project/TextFiles.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetKinds.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>

namespace vantile {

namespace ProjectCheck {

const char *const kReportFile = "Project-error-information.txt";

namespace {

QString withSlash(const QString &dir)
{
    return dir.endsWith(QLatin1Char('/')) ? dir : dir + QLatin1Char('/');
}

bool endsWithAny(const QString &name, std::initializer_list<const char *> suffixes)
{
    for (const char *s : suffixes)
        if (name.endsWith(QLatin1String(s), Qt::CaseInsensitive))
            return true;
    return false;
}

// One sub-list of the file-name group: for each folder that has names,
// its heading, the names and an empty line.
QString folderLists(const QMap<QString, QStringList> &byFolder)
{
    QString text;
    for (const QString &folder : mediaFolders()) {
        const QStringList names = byFolder.value(folder);
        if (names.isEmpty())
            continue;
        text += folder + QStringLiteral(" Folder:\n");
        for (const QString &name : names)
            text += name + QLatin1Char('\n');
        text += QLatin1Char('\n');
    }
    return text;
}

} // namespace

const QStringList &mediaFolders()
{
    static const QStringList folders = {QStringLiteral("FontBin"), QStringLiteral("Gif"),
                                        QStringLiteral("Icon"),    QStringLiteral("Picture"),
                                        QStringLiteral("Video"),   QStringLiteral("WavBin")};
    return folders;
}

bool isMediaFile(const QString &folder, const QString &name)
{
    if (folder == QLatin1String("FontBin"))
        return endsWithAny(name, {".bin"}) && name != QFileInfo(blockFile(Block::Font)).fileName();
    if (folder == QLatin1String("WavBin"))
        return endsWithAny(name, {".bin"}) && name != QFileInfo(blockFile(Block::Wav)).fileName();
    if (folder == QLatin1String("Gif"))
        return endsWithAny(name, {".gif"});
    if (folder == QLatin1String("Icon") || folder == QLatin1String("Picture"))
        return endsWithAny(name, {".png", ".jpg", ".jpeg", ".bmp"});
    return folder == QLatin1String("Video");
}

qint64 fileNumber(const QString &folder, const QString &name)
{
    if (folder == QLatin1String("FontBin"))
        return LineGrammar::fontNumber(name);
    if (folder == QLatin1String("Gif"))
        return LineGrammar::gifNumber(name);
    if (folder == QLatin1String("Icon"))
        return LineGrammar::iconNumber(name);
    if (folder == QLatin1String("Picture"))
        return PageList::pictureNumber(name);
    if (folder == QLatin1String("Video"))
        return MediaInfo::videoNumber(name);
    if (folder == QLatin1String("WavBin"))
        return FontBlock::wavNumber(name);
    return -1;
}

QString CheckFileNames(const QString &projectDir)
{
    QMap<QString, QStringList> bad, repeated;
    for (const QString &folder : mediaFolders()) {
        const QStringList names = QDir(withSlash(projectDir) + folder).entryList(QDir::Files, QDir::Name);
        QMap<qint64, QStringList> byNumber;
        for (const QString &name : names) {
            if (!isMediaFile(folder, name))
                continue;
            const qint64 n = fileNumber(folder, name);
            if (n < 0)
                bad[folder] << name;
            else
                byNumber[n] << name;
        }
        for (const QStringList &same : qAsConst(byNumber))
            if (same.size() > 1)
                repeated[folder] << same;
    }
    QString text;
    if (!bad.isEmpty())
        text += QStringLiteral("Incorrect file naming!\n") + folderLists(bad);
    if (!repeated.isEmpty())
        text += QStringLiteral("File name is repeated!\n") + folderLists(repeated);
    return text;
}

int CheckWidgetNames(QList<QStringList> &pages, QString *text)
{
    const QStringList words = QStringList{QStringLiteral("Page")} + WidgetKinds::kindWords();
    auto known = [&words](const QString &key) {
        for (const QString &w : words)
            if (key.startsWith(w))
                return true;
        return false;
    };
    int count = 0;
    QString found;
    for (int row = 0; row < pages.size(); ++row) {
        QStringList kept;
        QSet<QString> seen;
        QString page;
        for (const QString &line : qAsConst(pages[row])) {
            const QString key = LineGrammar::split(line).objectName;
            if (key.size() <= 2) {
                kept << line;
                continue;
            }
            if (!known(key))
                page += QStringLiteral("Invalid widget name:") + key + QLatin1Char('\n');
            else if (seen.contains(key))
                page += QStringLiteral("Repeated widget name:") + key + QLatin1Char('\n');
            else {
                seen.insert(key);
                kept << line;
                continue;
            }
            ++count;
        }
        pages[row] = kept;
        if (!page.isEmpty())
            found += QStringLiteral("Page") + QString::number(row) + QStringLiteral(":\n") + page;
    }
    if (text && count > 0)
        *text += QStringLiteral("Incorrect widget name!\n") + found + QStringLiteral("Bad widget names: ")
                 + QString::number(count) + QStringLiteral("\n\n");
    return count;
}

Report run(const QString &projectDir, const QStringList &pageLines, const ProjectSettings &settings,
           const LogSink &log, const PageSource &source)
{
    Report report;
    report.text = CheckFileNames(projectDir);

    const QString dir = withSlash(projectDir);
    const quint32 key = PageChecks::pageKey(settings);
    QList<QStringList> pages;
    for (int row = 0; row < pageLines.size(); ++row) {
        QStringList lines;
        if (!source || !source(row, &lines)) {
            const QString path = dir + PageChecks::pageFile(row, QStringLiteral(".cfg"));
            const PageFile::Read page = PageFile::read(path, key, log);
            if (!page.ok)
                logTo(log, QStringLiteral("Can't open this file:") + path
                               + (page.error.reason.isEmpty() ? QString() : QStringLiteral(" (") + page.error.reason
                                                                                + QLatin1Char(')')));
            else if (page.form == SealedFile::Illegal)
                logTo(log, QStringLiteral("This is illegal uiprj: ") + path);
            lines = page.lines;
        }
        pages << lines;
    }
    report.badNames = CheckWidgetNames(pages, &report.text);

    const QRect panel(0, 0, settings.xSizeValue(), settings.ySizeValue());
    QString range;
    for (int row = 0; row < pages.size(); ++row)
        range += PageChecks::pageRangeFindings(row, pages[row], panel);
    if (!range.isEmpty())
        report.text += QStringLiteral("Out of page range!\n") + range;
    return report;
}

bool writeReport(const QString &projectDir, const QString &text, QString *error)
{
    return TextFiles::writeAtomically(withSlash(projectDir) + QLatin1String(kReportFile), text.toUtf8(), error);
}

} // namespace ProjectCheck

} // namespace vantile
