#pragma once
// The project check: what a project holds that a build would take wrongly,
// without building it. Three groups, each written only when it found
// something, so that a faultless project gives an empty report:
//
//   file names    media files whose names don't start with the number the
//                 build reads from them, and numbers used twice in a folder;
//   widget names  object names that start with no known word, and object
//                 names used twice on one page;
//   page range    widgets that leave the panel (PageChecks::pageRangeCheck).
//
// The report goes to Project-error-information.txt in the project. The
// check changes nothing else.

#include "project/LogSink.h"
#include "project/ProjectSettings.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace vantile {

namespace ProjectCheck {

extern const char *const kReportFile; // "Project-error-information.txt"

// The media folders looked at, in the order of the report.
const QStringList &mediaFolders(); // FontBin, Gif, Icon, Picture, Video, WavBin

// Whether the build takes a file of the folder as one of its media (fonts
// and wavs "*.bin" but the build's own block files, gifs "*.gif", icons and
// pictures by their picture types, any file in Video/).
bool isMediaFile(const QString &folder, const QString &fileName);
// The number the build reads from a file name of the folder; -1 when it
// reads none (two digits for fonts, four for the others, any count in
// Video/ ended by "_" or ".").
qint64 fileNumber(const QString &folder, const QString &fileName);

// The file-name group for a project directory: "Incorrect file naming!"
// and then, for each folder with such files, "<folder> Folder:", their
// names one to a line and an empty line; the same under "File name is
// repeated!" for numbers that two or more files share. Empty when all
// names are good.
QString CheckFileNames(const QString &projectDir);

// The widget-name group over the lines of the pages (pages[row]). Keys
// (the text before the first ":") of two characters or fewer are skipped.
// A key that begins with neither "Page" nor a kind word gives "Invalid
// widget name:<key>", a key that stood on an earlier line of its page
// "Repeated widget name:<key>"; either line is taken out of its page. The
// findings of a page follow a "Page<row>:" line, and the group ends with
// the count. Returns 0 when no name is bad, otherwise the count; *text
// gets the group (nothing when the count is 0).
int CheckWidgetNames(QList<QStringList> &pages, QString *text);

// Supplies the lines of a page instead of its saved file (the designer's
// open page); returns false to have the file read.
using PageSource = std::function<bool(int row, QStringList *lines)>;

struct Report {
    QString text;          // the whole report; empty for a faultless project
    int badNames = 0;      // what CheckWidgetNames counted
    bool clean() const { return text.isEmpty(); }
};

// The three groups over a project: its media folders and the pages of its
// page list (Plugin/PageNNNN.cfg, either form). A page file that can't be
// read counts as empty and gives "Can't open this file:" in the log.
Report run(const QString &projectDir, const QStringList &pageLines, const ProjectSettings &settings,
           const LogSink &log = {}, const PageSource &source = {});

// Writes the report (UTF-8, no mark) to Project-error-information.txt,
// replacing an older one; false with *error when it can't be written.
bool writeReport(const QString &projectDir, const QString &text, QString *error = nullptr);

} // namespace ProjectCheck

} // namespace vantile
