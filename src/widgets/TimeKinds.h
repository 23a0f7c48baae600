#pragma once
// The time kinds, display records all three: RTC (the panel's calendar
// shown in picture digits), Clock (an analog dial with hour, minute and
// second hands) and uitimer (a timer counting up or down, preset, read and
// controlled through variables, writing up to eight variables when it
// runs out). RTC also stands on Vice pages.

#include "widgets/FieldSchema.h"

namespace vantile {

namespace TimeKinds {

extern const KindDef rtc;
extern const KindDef analogClock;
extern const KindDef uitimer;

} // namespace TimeKinds

} // namespace vantile
