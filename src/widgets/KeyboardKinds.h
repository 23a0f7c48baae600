#pragma once
// The keyboard kinds: touch areas that open a keyboard page on the panel
// and put what is typed into a variable. keypad takes a number, enkeyB
// Latin text, cnkeyB Chinese text typed as pinyin. The keyboard itself is
// another page of the project (`pageID`) whose keys are kbkey widgets.
//
// Places on the keyboard turn with the panel like everything else, with
// the keyboard page's picture as the page: the pop-up window is the
// keyboard page's picture laid on the panel at its X, Y, and the input and
// prompt points are points of the keyboard page. A keyboard page that
// doesn't exist counts as one of the size of the page being built.

#include "widgets/FieldSchema.h"

namespace vantile {

namespace KeyboardKinds {

extern const KindDef keypad;
extern const KindDef enkeyB;
extern const KindDef cnkeyB;

} // namespace KeyboardKinds

} // namespace vantile
