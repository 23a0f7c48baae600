#pragma once
// The trend curve: a display widget that draws a line through the samples
// a host pushes into one of the panel's curve channels, scaled so that the
// range minData..maxData fills the widget's height.

#include "widgets/FieldSchema.h"

namespace vantile {

namespace CurveKinds {

extern const KindDef curve;

// The number a `maxData` or `minData` text holds: an optional "-", then
// the digits before any "."; other characters are skipped.
qint64 dataValue(const QString &text);

// Pixels per unit of data with 8 fractional bits: t = H x 2560 / (max -
// min) by integer division, cut to 16 bits; the scale is t / 10, one more
// when the remainder is above 5. Equal max and min give 0.
quint16 scale(int height, qint64 maxData, qint64 minData);

} // namespace CurveKinds

} // namespace vantile
