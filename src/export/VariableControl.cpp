#include "export/VariableControl.h"

#include "build/PageChecks.h"
#include "project/PageFile.h"
#include "project/PageList.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"
#include "widgets/EditBuffer.h"
#include "widgets/WidgetLine.h"

#include <QDir>

namespace vantile {

namespace VariableControl {

namespace {

using K = WidgetKind;

QString withSlash(const QString &dir)
{
    return dir.endsWith(QLatin1Char('/')) ? dir : dir + QLatin1Char('/');
}

} // namespace

bool rewritesKind(WidgetKind kind)
{
    switch (kind) {
    case K::Label: case K::Statictext: case K::TextRoll: case K::Number: case K::PngNumber: case K::Gif:
    case K::QRCode: case K::BitIcon: case K::AutoVar: case K::Icon: case K::Encoder: case K::Needle:
    case K::Progress: case K::RProgress: case K::SlMenu: case K::VarAdj: case K::RTouch: case K::Slider:
    case K::Keypad: case K::ENKeyB: case K::CNKeyB: case K::Clock: case K::UITimer: case K::KBKey:
        return true;
    default:
        return false;
    }
}

QStringList convertLines(const QStringList &lines)
{
    QStringList out;
    for (const QString &line : lines) {
        const WidgetKind kind = WidgetKinds::kindOfLine(line);
        EditBuffer b;
        if (rewritesKind(kind) && !line.contains(QLatin1Char('\n'))
            && WidgetLine::parse(line, kind, b) == ParseStatus::Ok)
            out << WidgetLine::write(b);
        else
            out << line;
    }
    return out;
}

QStringList textCopy(const QString &pageName, const QStringList &lines)
{
    return QStringList{QStringLiteral("//PAGE:") + pageName} + lines;
}

Result ExportVariableControl(const QString &uiprjPath, const QString &projectDir, const ProjectSettings &settings,
                             const QStringList &pageLines, const LogSink &log, const Notifier &notify)
{
    auto say = [&notify](const char *title, const char *text) {
        if (notify)
            notify(QLatin1String(title), QLatin1String(text));
    };
    Result result;
    if (pageLines.isEmpty()) {
        result.status = Result::NoPages;
        say("Warning", "There aren't any page to bin!");
        return result;
    }
    const QString dir = withSlash(projectDir);
    auto failed = [&](const FileError &error) {
        result.failed << error.detail();
        logTo(log, QStringLiteral("Save the file failed: ") + error.path
                       + (error.reason.isEmpty() ? QString() : QStringLiteral(" (") + error.reason + QLatin1Char(')')));
    };
    auto write = [&](const QString &path, const QByteArray &bytes) {
        QString reason;
        if (TextFiles::writeAtomically(path, bytes, &reason))
            result.written << path;
        else
            failed(FileError{path, reason});
    };

    // The settings, marked as converted.
    ProjectSettings marked = settings;
    marked.supplierVer = QStringLiteral("V1.00");
    QString ini = uiprjPath;
    if (ini.endsWith(QLatin1String(".uiprj")))
        ini.chop(6);
    write(ini + QStringLiteral(".ini"), marked.toIni());

    QDir().mkpath(dir + QStringLiteral("Plugin"));
    QDir().mkpath(dir + QStringLiteral("Variablecontrol"));
    const quint32 key = PageChecks::pageKey(settings);
    for (int row = 0; row < pageLines.size(); ++row) {
        const QString cfg = dir + PageChecks::pageFile(row, QStringLiteral(".cfg"));
        // Records that span lines keep their breaks, so that they are
        // written back as they were.
        const PageFile::Read page = PageFile::read(cfg, key, log, PageFile::Breaks::Keep);
        QStringList lines;
        if (!page.ok || page.form == SealedFile::Illegal) {
            logTo(log, QStringLiteral("Can't open this file:") + cfg);
        } else {
            lines = convertLines(page.lines);
            FileError error;
            if (SealedFile::writeLines(cfg, lines, key, log, &error))
                result.written << cfg;
            else
                failed(error.isSet() ? error : FileError{cfg, QString()});
        }
        write(dir + QStringLiteral("Variablecontrol/Page") + PageList::pageId(row) + QStringLiteral(".txt"),
              TextFiles::encodePlain(textCopy(PageInfo::parse(pageLines[row]).name, lines)));
    }

    if (!result.failed.isEmpty()) {
        result.status = Result::SaveFailed;
        say("Warning", "Save the file failed");
    } else {
        say("Note", "The conversion is complete!");
    }
    return result;
}

} // namespace VariableControl

} // namespace vantile
