#pragma once
// The kinds that show pictures chosen by a variable: icon (one picture of a
// numbered run of Icon/, by the value), bitIcon (one of two pictures, by one
// bit of the value) and gif (an animation of Gif/ started and stopped by
// codes). All three are display records; icon and bitIcon also stand on
// Vice pages.

#include "widgets/FieldSchema.h"

namespace vantile {

namespace IconKinds {

extern const KindDef icon;
extern const KindDef bitIcon;
extern const KindDef gif;

// The first value of an icon's variable; false when `defaultDisplayID` is
// empty and nothing is stored. A text with a "." after its first character
// names a picture: inside the run firstIcon..lastIcon it gives
// D - F + minDisplayID, outside it maxDisplayID + 1 (no picture matches).
// Any other text is read as a decimal number.
bool iconInitialValue(const EditBuffer &widget, quint16 *value);

// The first value of a gif's variable by its `defaultStatus`: Run the start
// code, Stop the stop code, RunOnce the play-once code, Disappear (and any
// unknown word) the truncated middle of start and stop, which is none of
// the codes.
quint16 gifInitialValue(const EditBuffer &widget);

} // namespace IconKinds

} // namespace vantile
