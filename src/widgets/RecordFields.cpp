#include "widgets/RecordFields.h"

#include "widgets/FieldSchema.h"
#include "widgets/LineGrammar.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace RecordFields {

quint16 u16(const EditBuffer &b, const char *key)
{
    return quint16(b.number(key));
}

quint16 icon(const EditBuffer &b, const char *key)
{
    return LineGrammar::refField(LineGrammar::iconNumber(b.text(key)));
}

int wordValue(const EditBuffer &b, const char *key)
{
    const FieldDef *f = b.definition() ? b.definition()->find(key) : nullptr;
    return f && f->table ? f->table->valueOf(b.text(key)) : 0;
}

void appendTopLeft(QByteArray &out, const EditBuffer &b, const RecordContext &ctx)
{
    const Rect16 r = ctx.rotate(b.x(), b.y(), b.w(), b.h());
    Records::appendU16(out, r.x);
    Records::appendU16(out, r.y);
}

void appendPoint(QByteArray &out, int x, int y, const RecordContext &ctx)
{
    const QSize e = Records::pictureExtents(ctx.rotation, ctx.rectPicture());
    const Point16 p = Records::rotatePoint(ctx.rotation, x, y, e.width(), e.height());
    Records::appendU16(out, p.x);
    Records::appendU16(out, p.y);
}

void storeBlock(const EditBuffer &b, const RecordContext &ctx, const QByteArray &record, int p)
{
    if (ctx.variables)
        ctx.variables->storeRecordBlock(b.name(), WidgetKinds::parameterWord(b.kind()), u16(b, "parameterAddr"),
                                        record, p, ctx.errorText);
}

void keepRunOrdered(EditBuffer &b, const EditBuffer &before, const char *firstKey, const char *lastKey)
{
    const QString last = b.text(lastKey);
    if (last == before.text(lastKey))
        return;
    const int first = LineGrammar::iconNumber(b.text(firstKey));
    const int lastNumber = LineGrammar::iconNumber(last);
    if (first >= 0 && lastNumber >= 0 && lastNumber <= first)
        b.setText(lastKey, before.text(lastKey));
}

void keepIconRunOrdered(EditBuffer &b, const EditBuffer &before, const QSize &)
{
    keepRunOrdered(b, before, "firstIcon", "lastIcon");
}

} // namespace RecordFields

} // namespace vantile
