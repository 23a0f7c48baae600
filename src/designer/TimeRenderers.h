#pragma once
// What the time kinds show on the canvas, at one fixed moment, so that a
// page looks the same every time it is opened: an RTC its date or time in
// its digit pictures, a Clock its dial with the three hands, a timer its
// preset value in its digit pictures. Pure like the other renderers:
// widget + project directory in, the widget's image at panel size out.
//
// A digit run is the run of pictures from the widget's first icon on: the
// digits 0 to 9, then the minus sign, the point and the colon (first + 10,
// + 11, + 12), as our picture-digit maker writes them. The date's "/" is
// shown by the minus sign, a blank by an empty cell of a digit's width; a
// sign the run has no picture for leaves its cell empty too. A widget with
// no picture to show gives a null image (the canvas shows the family look).

#include "widgets/EditBuffer.h"

#include <QDateTime>
#include <QImage>
#include <QString>

namespace vantile {

namespace TimeRenderers {

// 2026-05-28, a Thursday, 10:10:30.
QDateTime previewMoment();

// The signs an RTC shows for a date format number (the date format words)
// at a moment: "YY/MM/DD HH:MM:SS" gives "26/05/28 10:10:30"; in the words
// "MM" next to a ":" is the minute, elsewhere the month; "Week" is the day
// of the week, Sunday 0 to Saturday 6. An unknown number shows format 0.
QString rtcText(int dateFormat, const QDateTime &moment);

// The signs a timer shows for a timer format number and a count of
// seconds: HH:MM:SS, HH:MM and MM:SS in two digits each (the leading field
// takes more when it needs them), SS the whole count in at least two
// digits; NULL (and an unknown number) shows nothing.
QString timerText(int timerFormat, quint32 seconds);

// The place of a sign in a digit run; -1 for a sign with no picture.
int runOffset(QChar sign);

// The angles of the hands in degrees, clockwise from twelve o'clock; the
// hour and minute hands move on with the minutes and seconds.
struct HandAngles {
    double hour = 0, minute = 0, second = 0;
};
HandAngles handAngles(const QTime &time);

// Same shape as TextRenderers::Renderer.
QImage renderRTC(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderClock(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
// The timer's preset value (presetAddr_value) taken as seconds.
QImage renderTimer(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);

} // namespace TimeRenderers

} // namespace vantile
