#pragma once
// What the menu kinds and the trend curve show on the canvas, and the rule
// that keeps a dragged slidemenuPro's next item on the canvas. Like the
// other renderers these are pure: widget + project directory in, the
// widget's image at panel size out; the canvas scales it by its zoom.
//
// A missing picture is left out; a widget with nothing to show gives a
// null image and keeps its family look.

#include "widgets/EditBuffer.h"

#include <QImage>
#include <QPoint>
#include <QSize>
#include <QString>

namespace vantile {

namespace MenuRenderers {

// A framed rectangle in the curve's colour with its reference line, dashed,
// on the row `y_ReferenceLine` (a page row) when that lies inside it.
QImage renderCurve(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
// The background picture with the sliding strip (foreground) over it.
QImage renderSlMenu(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
// The background picture, the page it shows as far as it fits, the outlines
// of its frames along the slide direction and the released-state picture
// in the first frame.
QImage renderSlideMenuPro(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);

// The picture of a page as it lies in Picture/: the file whose four leading
// digits are the page's number. Null when there is none.
QImage pagePicture(const QString &projectDir, int page);
// The size of one frame of a slidemenuPro: its rows, or for a row of 0 the
// size of the picture of the page it shows.
QSize frameSize(const EditBuffer &menu, const QString &projectDir);

// A slidemenuPro whose direction is set is held so that its second item,
// one gap and one frame beyond it along the slide direction, stays on the
// canvas: `topLeft` is where the drag has put its label (canvas pixels,
// already inside the canvas), `labelSize` its label's size. Other widgets
// come back as they are.
QPoint clampDrag(const EditBuffer &widget, const QString &projectDir, const QPoint &topLeft,
                 const QSize &labelSize, const QSize &canvas, float zoom);

} // namespace MenuRenderers

} // namespace vantile
