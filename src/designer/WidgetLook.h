#pragma once
// How an unmarked widget looks on the canvas, told by its kind alone: a
// translucent fill and a border in the colour of the kind's family, and a
// small name tag inside a widget that shows no picture. Pure functions of
// the kind and the parsed widget (Qt Gui only), so that anything that draws
// a page's widgets can use them, not only the canvas.

#include "widgets/EditBuffer.h"
#include "widgets/WidgetKinds.h"

#include <QColor>
#include <QRect>
#include <QString>

class QPainter;

namespace vantile {

namespace WidgetLook {

// The families, in the order the widget palette lists them.
enum class Family : quint8 { Touch, Text, Picture, Gauge, Keyboard, Time, Media, Menu, Curve };
constexpr int kFamilyCount = 9;

Family family(WidgetKind kind);
// The family's colour: mid-bright and saturated, so a thin line of it shows
// on black pages as on white ones.
QColor colour(Family family);
// English name of a family ("Touch and buttons"); translate it in the
// context "vantile::WidgetLook".
const char *familyName(Family family);
// The kinds of a family, in palette order.
QVector<WidgetKind> kinds(Family family);

// The unmarked look as a style sheet for the widget's live label.
QString style(WidgetKind kind);
QString style(const EditBuffer &widget);

// The name tag: the text small at the top left of `inside`, light on a dark
// translucent strip, cut to the rectangle (elided when it is too narrow).
// Paints nothing for an empty text or an empty rectangle.
void paintNameTag(QPainter &painter, const QRect &inside, const QString &text);

} // namespace WidgetLook

} // namespace vantile
