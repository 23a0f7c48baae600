#pragma once
// The kinds that change variables without showing them: varAdj (steps a
// variable), batVar (writes up to eight variables; the old word
// comboButton), autoVar (a variable that counts by itself) and encoder (a
// rotary encoder with sixteen action entries).

#include "widgets/FieldSchema.h"

namespace vantile {

namespace VariableKinds {

extern const KindDef varAdj;
extern const KindDef batVar;
extern const KindDef autoVar;
extern const KindDef encoder;

// A line of an earlier version in today's form: a comboButton line becomes
// a batVar line (its fields read at the batVar places, the pairs it lacks
// 0xFFFF). Any other line comes back as it is.
QString upgradeOldLine(const QString &line);

// The fields after ":" of an encoder line: writeAddr, X, Y, W, H, name, the
// sixteen entries (an entry keeps its commas and its ";"), lockState. Lines
// with fewer entries get "NULL" for the missing ones.
QStringList splitEncoderLine(const QString &line);

// An encoder entry keeps its fields in the order of the action list's rows:
//   1: 1, reportToHost, pageGoto, 8 x (address, value)
//   2: 2, reportToHost, writeAddr, minValue, maxValue, adjStep, gradation, loop
//   3: 3, reportToHost, writeAddr, minValue, maxValue, adjStep
//   4: 4, then for single click, double click and long press: page,
//      (double click and long press: time in 50 ms), report, 8 x (address, value)
// The entry of a new action of a mode; empty outside 1..4.
QString defaultEntry(int mode);
// The mode of an entry, 0 for "NULL" or anything not 1..4.
int entryMode(const QString &entry);

// The action list dialog keeps its own order: the report switch of modes 2
// and 3 last, and one address pair for each click group of mode 4. These
// turn an entry of the line into the dialog's form, and the dialog's
// answer back; the pairs the dialog doesn't show are kept from `previous`.
QString toDialogEntry(const QString &lineEntry);
QString fromDialogEntry(const QString &dialogEntry, const QString &previous);

} // namespace VariableKinds

} // namespace vantile
