#pragma once
// The two touch kinds the user swipes: slmenu, a strip of pictures that
// slides and sets a value, and slidemenuPro, a framed area that scrolls
// another page (its Vice page) and of which a page holds at most one.

#include "widgets/FieldSchema.h"

#include <QSize>

namespace vantile {

namespace MenuKinds {

extern const KindDef slMenu;
extern const KindDef slideMenuPro;

// The direction words of the menus' rows, as the editor offers them.
extern const char *const kSlideWords[];

// The direction byte of a menu's record. Bit 0: the movement is horizontal
// on the panel (so it turns over at rotation 1 and 3). Bit 7: for slmenu
// "no loop", for slidemenuPro "loop"; each firmware routine reads its own
// sense. Words: "Vertical-Loop", "Vertical", "Horizontal-Loop", anything
// else is a horizontal slide without a loop.
quint8 directionByte(WidgetKind kind, const QString &word, int rotation);

// True when the word slides sideways on the page as designed.
bool slidesHorizontally(const QString &word);

// The size of one frame of a slidemenuPro: its frameWidth and frameHeigth
// rows, each of them that is 0 taken from `vicePicture`, the picture of the
// page it scrolls.
QSize frameSize(const EditBuffer &menu, const QSize &vicePicture);

} // namespace MenuKinds

} // namespace vantile
