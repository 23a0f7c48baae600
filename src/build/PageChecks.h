#pragma once
// The checks a build runs over the saved page files before the page
// block: the overlap groups (the only check that rewrites page files), the
// font, gif and icon use checks, and the page range check of the project
// check. None of them stops a build; complaints go to the build's error
// text and log.

#include "build/BuildContext.h"
#include "project/PageFile.h"
#include "widgets/WidgetKinds.h"

#include <QByteArray>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVector>

namespace vantile {

class EditBuffer;

namespace PageChecks {

constexpr quint16 kNoGroup = 0xFFFF;

// The page file of a page row: "Plugin/PageNNNN" + suffix (".cfg", ".cfc", ".bin").
QString pageFile(int row, const QString &suffix);
// The key that seals the page files of a project.
quint32 pageKey(const ProjectSettings &settings);
// Records of a page file of either form, read as the designer reads them
// (PageFile::read). A missing file gives no lines and, with a context,
// "Can't open this file:" in the log; a file that is there but can't be
// read (not a regular file, too large) is also a complaint, told once.
QStringList readPage(const QString &path, quint32 key, BuildContext *ctx = nullptr,
                     PageFile::Breaks breaks = PageFile::Breaks::Drop);

// --- geometry and groups of one line -------------------------------------------
// True when `inner` lies wholly inside `outer`, borders included: equal
// rectangles count as inside.
bool liesInside(const QRect &outer, const QRect &inner);
// X, Y, W, H of a widget line: by its kind's fields; a kind not described
// yet is read from the first four fields of its line.
QRect lineRect(const QString &line);
// The group number (`tail`) of a line; kNoGroup for kinds without one.
quint16 lineGroup(const QString &line);
// The line with its group number set; the line as it stands for a kind
// without a group field.
QString withGroup(const QString &line, quint16 group);
bool hasGroupField(WidgetKind kind);
bool isGroupParentKind(WidgetKind kind); // gif, button, batVar, rProgress, rtouch, icon, bitIcon
bool isGroupMemberKind(WidgetKind kind); // label, number, icon, pngNumber, RTC, bitIcon

// The group step on the lines of one page: every group number reset to
// 0xFFFF and, except on chip index 0, the groups made anew.
QStringList assignGroups(const QStringList &lines, int chipIndex);
// For each line, the index of the line that is the parent of its group, or
// -1 when the line is in no group or is a parent itself.
QVector<int> groupParents(const QStringList &lines);

// --- the steps ------------------------------------------------------------------
// The overlap group step: rewrites each page's .cfg whose groups changed.
void overlapGroupStep(BuildContext &ctx);

// The mode of a picture a widget uses: its format code with bit 7 set.
// Kinds without a picture-format field only need the picture to be there.
constexpr quint8 kPresenceMode = 0x90;
// The mode a parsed widget asks for its pictures: its picture-format word
// (the `dataFormat` row) with bit 7, or kPresenceMode when it has none or
// leaves it empty (the encoder then chooses by transparency).
quint8 pictureMode(const EditBuffer &widget);

// Icon use: fills `modes` (one byte per icon id, grown as needed) from the
// icon fields of the described kinds, with complaints. A pair of fields
// "...first..." / "...last..." is a run of pictures, first to last. An
// unused id takes a widget's mode; presence only gives way to a real format
// and replaces none; of two real formats the first stands, and the second
// is a complaint.
void iconUseCheck(BuildContext &ctx, QByteArray &modes);
// Gif use: fills `modes` from the gif fields of the described kinds.
void gifUseCheck(BuildContext &ctx, QByteArray &modes);
// Font use: marks each used font id below fontCount whose file exists.
void fontUseCheck(BuildContext &ctx, QByteArray &used, int fontCount);

// The text of the page range check: "Out of page range!\n" and a line for
// each widget outside the panel rectangle (XSIZE x YSIZE as set).
QString pageRangeCheck(const QString &projectDir, const QStringList &pageLines,
                       const ProjectSettings &settings);
// The lines of that text for one page's lines: "PageN,widget_Name:<name>,
// X:<x> Y:<y>\n" for each widget (but gifs) not wholly inside `panel`.
QString pageRangeFindings(int row, const QStringList &lines, const QRect &panel);

// What the build runs at its check point: the group step, then the page
// range check, whose findings (when there are any) go to the error text.
void preBuildChecks(BuildContext &ctx);

} // namespace PageChecks

} // namespace vantile
