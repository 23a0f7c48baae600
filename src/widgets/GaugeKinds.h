#pragma once
// The kinds that show or set one value on a scale: slider (a bar the user
// drags), progress (a bar that only shows), rProgress (a ring that only
// shows), rtouch (a ring the user drags) and needle (a gauge pointer).
// Each puts its default value into the variable image at its write address.

#include "widgets/FieldSchema.h"

namespace vantile {

namespace GaugeKinds {

extern const KindDef slider;
extern const KindDef progress;
extern const KindDef rProgress;
extern const KindDef rTouch;
extern const KindDef needle;

// A direction number (0 L_to_R, 1 R_to_L, 2 U_to_D, 3 D_to_U) as the panel
// sees it when the picture is turned by the rotation setting (0-3):
// rotation 1 turns clockwise, so L_to_R becomes U_to_D.
int turnedDirection(int direction, int rotation);

// The needle's number for the variable image: sign and point taken out of
// the text, the digits times ten for each place by which `decimalDigit`
// exceeds the fraction digits given ("1.5" with 3 gives 1500, "-2" with 1
// gives -20, "1.25" with 1 keeps 125).
qint64 needleNumber(const QString &text, int decimalDigit);

} // namespace GaugeKinds

} // namespace vantile
