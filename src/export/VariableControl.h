#pragma once
// The variable control conversion of an older project: every page's
// widget lines of the kinds that carry variables are read and written
// again in today's form, into the page file (Plugin/PageNNNN.cfg) and into
// a text copy (Variablecontrol/PageNNNN.txt) whose first line is
// "//PAGE:" and the page's name. Lines of other kinds, the page's own
// "Page:" line and anything the writer doesn't know stay as they stand.
// The settings are saved with "SupplierVer: V1.00" while it runs.

#include "build/BuildContext.h"
#include "project/LogSink.h"
#include "project/ProjectSettings.h"
#include "widgets/WidgetKinds.h"

#include <QString>
#include <QStringList>

namespace vantile {

namespace VariableControl {

// label (and the static label), textroll, number, pngNumber, gif, qrcode,
// bitIcon, autoVar, icon, encoder, needle, progress, rProgress, slmenu,
// varAdj, rtouch, slider, keypad, enkeyB, cnkeyB, Clock, uitimer, kbkey.
bool rewritesKind(WidgetKind kind);

// The lines of one page with each line of those kinds parsed and written
// anew. A line that doesn't parse, or that holds a line break (an old text
// over two physical lines), stays as it is.
QStringList convertLines(const QStringList &lines);

// The text copy of a page: "//PAGE:" + the page's name, then its lines.
QStringList textCopy(const QString &pageName, const QStringList &lines);

struct Result {
    enum Status { Complete, NoPages, SaveFailed };
    Status status = Complete;
    QStringList written; // the files written, in order
    QStringList failed;  // "<path>\n<reason>" of each file that could not be written
};

// The conversion over the pages of a project; the messages go to `notify`:
// "Note" / "The conversion is complete!", "Warning" / "There aren't any
// page to bin!" (nothing written), "Warning" / "Save the file failed" (the
// files that could not be written are in the log and in Result::failed).
// A page file that can't be read is not rewritten: "Can't open this
// file:" in the log, and its text copy holds only the "//PAGE:" line.
// Every file is replaced whole or not at all.
Result ExportVariableControl(const QString &uiprjPath, const QString &projectDir, const ProjectSettings &settings,
                             const QStringList &pageLines, const LogSink &log = {}, const Notifier &notify = {});

} // namespace VariableControl

} // namespace vantile
