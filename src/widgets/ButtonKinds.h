#pragma once
// The kinds that turn a touch into an action: button, popbox, kbkey.

#include "widgets/FieldSchema.h"

namespace vantile {

namespace ButtonKinds {

extern const KindDef button;
extern const KindDef popBox;
extern const KindDef kbKey;

} // namespace ButtonKinds

} // namespace vantile
