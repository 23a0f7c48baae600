#pragma once
// The kinds that show text from a font of FontBin/: label (a string in
// variable memory that a host can change), its static form Statictext (a
// fixed text of Constant_text.csv, told apart by the static mark of the
// line) and textroll (a scrolling string).

#include "widgets/FieldSchema.h"

namespace vantile {

namespace TextKinds {

extern const KindDef label;
extern const KindDef staticText;
extern const KindDef textRoll;

// Offset of `tail` in the label record; the Vice form moves it to the front.
constexpr int kLabelTailOffset = 29;

} // namespace TextKinds

} // namespace vantile
