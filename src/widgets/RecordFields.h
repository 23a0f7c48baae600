#pragma once
// Small readers and writers that the kinds' record writers share: a field
// as a record word, an icon reference, a word's number, the rotated corner
// or point, the parameter block into variable memory, and the rule that a
// run of pictures ends after it begins.

#include "widgets/EditBuffer.h"
#include "widgets/Records.h"

#include <QByteArray>
#include <QSize>

namespace vantile {

namespace RecordFields {

// A numeric field cut to a record word.
quint16 u16(const EditBuffer &b, const char *key);
// An icon field as the record holds it: its number, 0xFFFF for none.
quint16 icon(const EditBuffer &b, const char *key);
// The number of a word field by its table (0 without a table).
int wordValue(const EditBuffer &b, const char *key);
// X and Y of the widget's rectangle as the panel sees it.
void appendTopLeft(QByteArray &out, const EditBuffer &b, const RecordContext &ctx);
// A point on the page's picture, turned with it.
void appendPoint(QByteArray &out, int x, int y, const RecordContext &ctx);
// The usual parameter block of a display record (byte 4 as the count, the
// p bytes from 5) at the widget's parameterAddr.
void storeBlock(const EditBuffer &b, const RecordContext &ctx, const QByteArray &record, int p);

// A last picture chosen at or before the first is dropped.
void keepRunOrdered(EditBuffer &b, const EditBuffer &before, const char *firstKey, const char *lastKey);
// The same for firstIcon / lastIcon, as a kind's apply rule.
void keepIconRunOrdered(EditBuffer &b, const EditBuffer &before, const QSize &pagePicture);

} // namespace RecordFields

} // namespace vantile
