#pragma once
// What the media kinds show on the canvas. A qrcode shows the QR code of
// its content, black modules on white, in its rectangle: the code's side is
// its `size(50pixels)` times 50 pixels, from the rectangle's top left
// corner. wav, video and camera keep the family look of their kind.
// Pure like the other renderers: widget + project directory in, the
// widget's image at panel size out.

#include "widgets/EditBuffer.h"

#include <QImage>
#include <QString>

namespace vantile {

namespace MediaRenderers {

// Same shape as TextRenderers::Renderer. Null when the widget has no size
// or side, or when the content is too long for any QR code (*problem says so).
QImage renderQrcode(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);

// The pixels of module i of n across a side of `side` pixels: from
// i x side / n up to, not including, (i + 1) x side / n, both truncated.
int moduleStart(int i, int n, int side);

} // namespace MediaRenderers

} // namespace vantile
