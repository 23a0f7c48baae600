#pragma once
// What the picture kinds show on the canvas: icons, bit icons and gifs
// (one picture of theirs), the bars and rings (the swept part of the
// foreground for the default value), needles (the pointer at its default
// angle about the pivot) and the variable buttons that carry a picture.
// Like the text renderers these are pure: widget + project directory in,
// the widget's image at panel size out; the canvas scales it by its zoom.
//
// A picture that is missing or can't be read is simply left out; when a
// widget has nothing at all to show the result is null and the canvas
// draws the kind's family look instead.

#include "widgets/EditBuffer.h"

#include <QImage>
#include <QPolygonF>
#include <QString>

namespace vantile {

namespace PictureRenderers {

// Same shape as TextRenderers::Renderer.
QImage renderIcon(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderBitIcon(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderGif(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderBar(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderRing(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderNeedle(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderVarButton(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);

// The picture a file of Icon/ holds: null for an empty name, a name that
// leaves the folder, a missing file (no problem) or one that no reader
// takes (*problem says which and why).
QImage iconPicture(const QString &projectDir, const QString &name, QString *problem = nullptr);

// A picture field of the widget (a file of Icon/); a picture that can't be
// read adds "<object name>: <why>" to *problem, joined by "; ".
QImage widgetPicture(const EditBuffer &w, const char *key, const QString &projectDir, QString *problem);
void addProblem(QString *problem, const EditBuffer &w, const QString &why);

// The share of `value` between `minimum` and `maximum`, within 0..1
// (0 when the range is empty or reversed).
double shareOf(qint64 value, qint64 minimum, qint64 maximum);

// The part of a bar `size` big that a share fills, by direction number
// (0 left to right, 1 right to left, 2 top down, 3 bottom up), in the
// bar's own coordinates.
QRect filledPart(const QSize &size, double share, int direction);

// The angle a needle shows: its default value when that lies strictly
// between the start and final angles, otherwise the start angle.
int needleAngle(int defaultValue, int startAngle, int finalAngle);

// The clip of a ring swept from `fromAngle` to `toAngle` degrees about
// `centre` (0 points down, angles run clockwise on the screen, as the
// needle's), reaching past every corner of a picture `reach` pixels from
// the centre: the centre, one point on each 45 degree mark the sweep
// passes, and the two ends.
QPolygonF sweepClip(const QPointF &centre, double reach, double fromAngle, double toAngle);

} // namespace PictureRenderers

} // namespace vantile
