#include "widgets/WidgetLine.h"
#include "widgets/KindRegistry.h"
#include "widgets/LineGrammar.h"
#include "widgets/WordTables.h"

namespace vantile {

namespace WidgetLine {

namespace {

// A plain text field can't hold the separators of the line; an edit that
// types them would shift every later field, so they are left out.
QString withoutSeparators(QString text)
{
    text.remove(QLatin1Char(','));
    text.remove(QLatin1Char(';'));
    text.remove(QLatin1Char('\r'));
    text.remove(QLatin1Char('\n'));
    return text;
}

bool hasDigit(const QString &text)
{
    for (QChar c : text) {
        if (c.unicode() >= '0' && c.unicode() <= '9')
            return true;
    }
    return false;
}

QString unalias(const FieldDef &f, const QString &text)
{
    for (const WordAlias *a = f.aliases; a && a->oldWord; ++a) {
        if (text == QLatin1String(a->oldWord))
            return QLatin1String(a->newWord);
    }
    return text;
}

// The line form of what was typed (or chosen) in a row.
QString cellToLineText(const FieldDef &f, const QString &cell)
{
    switch (f.codec) {
    case Codec::Decimal:
    case Codec::Hex16:
    case Codec::Hex16OrNone:
    case Codec::Hex24:
    case Codec::Switch:
        return cell;
    case Codec::HexText:
        return LineGrammar::toHexText(cell);
    case Codec::SwitchBit:
        return LineGrammar::isEnable(unalias(f, cell)) ? QStringLiteral("1") : QStringLiteral("0");
    case Codec::WordNumber:
        if (f.table && f.table->contains(cell))
            return QString::number(f.table->valueOf(cell));
        if (hasDigit(cell))
            return QString::number(LineGrammar::readDecimal(cell));
        return QString::number(f.table ? f.table->noMatch : 0);
    case Codec::Entry:
        return cell.trimmed();
    case Codec::FontRef: {
        const int id = LineGrammar::fontNumber(cell);
        return QString::number(id >= 0 ? qint64(id) : LineGrammar::readDecimal(cell));
    }
    default:
        return withoutSeparators(cell);
    }
}

} // namespace

FieldValue readLineText(const FieldDef &f, const QString &lineText)
{
    const QString text = unalias(f, lineText);
    FieldValue v;
    switch (f.codec) {
    case Codec::Decimal:
    case Codec::WordNumber:
    case Codec::FontRef:
        v.number = cutToWidth(LineGrammar::readDecimal(text), f.width);
        break;
    case Codec::Hex16:
        v.number = cutToWidth(LineGrammar::readHex(text), f.width);
        break;
    case Codec::Hex16OrNone:
        v.number = cutToWidth(LineGrammar::readHexOrNone(text), f.width);
        break;
    case Codec::Hex24:
        v.number = LineGrammar::readHex(text) & 0xFFFFFF;
        break;
    case Codec::HexText:
        v.text = LineGrammar::fromHexText(text);
        break;
    case Codec::Switch:
        v.number = LineGrammar::isEnable(text) ? 1 : 0;
        break;
    case Codec::SwitchBit:
        v.number = LineGrammar::readDecimal(text) != 0 ? 1 : 0;
        break;
    default:
        v.text = text;
        break;
    }
    return v;
}

QString lineText(const FieldDef &f, const FieldValue &v)
{
    switch (f.codec) {
    case Codec::Decimal:
    case Codec::WordNumber:
    case Codec::FontRef:
        return QString::number(v.number);
    case Codec::Hex16:
    case Codec::Hex16OrNone:
        return LineGrammar::hex16(quint32(v.number));
    case Codec::Hex24:
        return LineGrammar::hex24(quint32(v.number));
    case Codec::HexText:
        return LineGrammar::toHexText(v.text);
    case Codec::Switch:
        return LineGrammar::switchWord(v.number != 0);
    case Codec::SwitchBit:
        return v.number != 0 ? QStringLiteral("1") : QStringLiteral("0");
    case Codec::Entry: {
        // an empty entry is the word NULL; any other ends with its ";"
        const QString t = v.text.trimmed();
        if (t.isEmpty() || t == QLatin1String("NULL"))
            return QStringLiteral("NULL");
        return t.endsWith(QLatin1Char(';')) ? t : t + QLatin1Char(';');
    }
    default:
        return withoutSeparators(v.text);
    }
}

QString rowText(const FieldDef &f, const FieldValue &v, const RowContext &ctx)
{
    switch (f.codec) {
    case Codec::Switch:
    case Codec::SwitchBit:
        return LineGrammar::switchWord(v.number != 0);
    case Codec::HexText:
        return v.text;
    case Codec::WordNumber: {
        // A number without a word (encoding 5) shows as the number.
        const QString w = f.table ? f.table->wordOf(int(v.number)) : QString();
        return w.isEmpty() ? QString::number(v.number) : w;
    }
    case Codec::FontRef: {
        const QString file = ctx.fontFileName ? ctx.fontFileName(int(v.number)) : QString();
        return file.isEmpty() ? QStringLiteral("%1").arg(v.number, 2, 10, QLatin1Char('0')) : file;
    }
    default:
        return lineText(f, v);
    }
}

ParseStatus parse(const QString &line, EditBuffer &out)
{
    return parse(line, WidgetKinds::kindOfLine(line), out);
}

ParseStatus parse(const QString &line, WidgetKind kind, EditBuffer &out)
{
    out = EditBuffer(kind);
    if (kind == WidgetKind::None)
        return ParseStatus::NotAWidget;
    const LineGrammar::Parts parts = LineGrammar::split(line);
    out.setObjectName(parts.objectName);
    out.setRawLine(line);
    if (!out.hasSchema())
        return ParseStatus::NoSchema;
    out.resetToDefaults();
    const KindDef &def = *out.definition();
    const QStringList fields = def.splitFields ? def.splitFields(line) : parts.fields;
    for (int i = 0; i < def.fieldCount; ++i) {
        const FieldDef &f = def.fields[i];
        if (f.inLine() && !f.fixed && f.linePos < fields.size())
            out.setValue(i, readLineText(f, fields[f.linePos]));
    }
    return ParseStatus::Ok;
}

QString write(const EditBuffer &widget)
{
    if (!widget.hasSchema())
        return widget.rawLine();
    const KindDef &def = *widget.definition();
    QStringList fields;
    for (int i = 0; i < def.lineFieldCount(); ++i)
        fields.append(QString());
    for (int i = 0; i < def.fieldCount; ++i) {
        const FieldDef &f = def.fields[i];
        if (f.inLine())
            fields[f.linePos] = lineText(f, widget.value(i));
    }
    return LineGrammar::join(widget.objectName(), fields);
}

EditBuffer createNew(WidgetKind kind, quint32 index, const QRect &dropRect)
{
    EditBuffer b(kind);
    b.setObjectName(WidgetKinds::objectName(kind, index));
    b.resetToDefaults();
    // a static text shares the label's slots and object names, but is called by its own word
    if (kind == WidgetKind::Statictext && b.has("name"))
        b.setText("name", QStringLiteral("Statictext_") + QString::number(index));
    b.setRect(dropRect);
    if (b.hasSchema() && b.definition()->fitToDrop)
        b.definition()->fitToDrop(b);
    return b;
}

QStringList headerLabels(int language)
{
    int n = 0;
    const LabelEntry *common = commonLabels(&n);
    QStringList headers;
    for (int i = 0; i < n; ++i) {
        const QLatin1String key(common[i].key);
        if (key == QLatin1String("Parameter") || key == QLatin1String("Data"))
            headers.append(QString::fromUtf8(language == 1 ? common[i].zh : common[i].en));
    }
    return headers;
}

QVector<TableRow> tableRows(const EditBuffer &widget, int language, const RowContext &ctx)
{
    QVector<TableRow> rows;
    if (!widget.hasSchema())
        return rows;
    const KindDef &def = *widget.definition();
    for (int r = 0; r < def.rowCount(); ++r) {
        const FieldDef *f = def.atRow(r);
        if (!f)
            continue;
        const QString key = QString::fromUtf8(f->key);
        rows.append({def.label(key, language), rowText(*f, widget.value(def.indexOf(f->key)), ctx)});
    }
    return rows;
}

bool rowShown(const EditBuffer &widget, int row)
{
    const KindDef *def = widget.definition();
    const FieldDef *f = def ? def->atRow(row) : nullptr;
    if (!f || !f->shownWhileSet)
        return true;
    return quint16(widget.number(f->shownWhileSet)) != 0xFFFF;
}

bool applyEdit(EditBuffer &widget, const QStringList &cells, const QSize &pagePicture)
{
    if (!widget.hasSchema())
        return false;
    const EditBuffer before = widget;
    const KindDef &def = *widget.definition();
    for (int i = 0; i < def.fieldCount; ++i) {
        const FieldDef &f = def.fields[i];
        if (f.hasRow() && f.row < cells.size())
            widget.setValue(i, readLineText(f, cellToLineText(f, cells[f.row])));
    }

    if (widget.isLocked())
        widget.setRect(before.rect());

    if (pagePicture.width() > 0) {
        const int pw = pagePicture.width();
        if (widget.w() > pw)
            widget.setW(pw);
        if (widget.w() + widget.x() > pw)
            widget.setX(pw - widget.w());
    }
    if (pagePicture.height() > 0) {
        const int ph = pagePicture.height();
        if (widget.h() > ph)
            widget.setH(ph);
        if (widget.h() + widget.y() > ph)
            widget.setY(ph - widget.h());
    }

    if (def.applyRule)
        def.applyRule(widget, before, pagePicture);
    return true;
}

bool storeLine(QStringList &pageLines, const EditBuffer &widget)
{
    const QString head = widget.objectName() + QLatin1Char(':');
    const QString line = write(widget);
    for (QString &l : pageLines) {
        if (l.startsWith(head)) {
            l = line;
            return true;
        }
    }
    pageLines.append(line);
    return false;
}

} // namespace WidgetLine

} // namespace vantile
