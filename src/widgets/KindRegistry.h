#pragma once
// The one dispatcher table: for each kind, its field description and its
// writers, or nothing while the kind isn't described yet.

#include "widgets/FieldSchema.h"

#include <QByteArray>
#include <QString>

namespace vantile {

struct RecordContext;

namespace KindRegistry {

// The description of a kind; nullptr when it has none yet.
const KindDef *definition(WidgetKind kind);
bool hasSchema(WidgetKind kind);
// "no schema for kind <word>"
QString noSchemaMessage(WidgetKind kind);

// Parses a line and appends its binary record; returns the bytes added.
// 0 for a line that isn't a widget or a kind without a record writer.
int writeRecord(QByteArray &out, const QString &line, const RecordContext &ctx);
// The form of the record for the file of Vice pages (six display kinds).
int writeViceRecord(QByteArray &out, const QString &line, const RecordContext &ctx);

} // namespace KindRegistry

} // namespace vantile
