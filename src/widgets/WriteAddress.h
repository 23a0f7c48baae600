#pragma once
// The project's running write address: the next free variable address a
// new or pasted widget takes. Addresses from 0x7000 up belong to the
// system, and 0xFFFF means none: neither ever counts.

#include "widgets/EditBuffer.h"

#include <QStringList>

namespace vantile {

namespace WriteAddress {

constexpr quint32 kSystemRange = 0x7000;

// Raises `next` past every write address in the lines: an address A at or
// below 0x6FFF that is not below `next` makes it A + 1.
void scan(const QStringList &lines, quint32 &next);

// Gives the widget's write-address fields `next`, one after the other,
// skipping fields that hold 0xFFFF (unused). Returns how many were taken.
int assign(EditBuffer &widget, quint32 &next);

// How far a drop of the kind advances the counter (0: the kind takes none).
int dropStep(WidgetKind kind);

} // namespace WriteAddress

} // namespace vantile
