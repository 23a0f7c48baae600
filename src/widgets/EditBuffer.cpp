#include "widgets/EditBuffer.h"
#include "widgets/KindRegistry.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetLine.h"

namespace vantile {

qint64 cutToWidth(qint64 value, NumWidth width)
{
    switch (width) {
    case NumWidth::S16:
        return qint16(value);
    case NumWidth::U16:
        return quint16(value);
    case NumWidth::U8:
        return quint8(value);
    case NumWidth::S32:
        return qint32(value);
    case NumWidth::U32:
        return quint32(value);
    }
    return value;
}

EditBuffer::EditBuffer(WidgetKind kind)
    : m_kind(kind)
    , m_def(KindRegistry::definition(kind))
{
    if (m_def)
        m_values.resize(m_def->fieldCount);
    resetToDefaults();
}

void EditBuffer::setObjectName(const QString &name)
{
    m_objectName = name;
    m_index = LineGrammar::indexOfName(name);
}

void EditBuffer::resetToDefaults()
{
    if (!m_def)
        return;
    for (int i = 0; i < m_def->fieldCount; ++i) {
        const FieldDef &f = m_def->fields[i];
        m_values[i] = f.defaultText ? WidgetLine::readLineText(f, QString::fromUtf8(f.defaultText))
                                    : WidgetLine::readLineText(f, m_objectName);
    }
}

bool EditBuffer::has(const char *key) const
{
    return m_def && m_def->indexOf(key) >= 0;
}

qint64 EditBuffer::number(const char *key) const
{
    const int i = m_def ? m_def->indexOf(key) : -1;
    return i < 0 ? 0 : m_values[i].number;
}

QString EditBuffer::text(const char *key) const
{
    const int i = m_def ? m_def->indexOf(key) : -1;
    return i < 0 ? QString() : m_values[i].text;
}

void EditBuffer::setNumber(const char *key, qint64 value)
{
    const int i = m_def ? m_def->indexOf(key) : -1;
    if (i < 0)
        return;
    FieldValue v = m_values[i];
    v.number = value;
    setValue(i, v);
}

void EditBuffer::setText(const char *key, const QString &value)
{
    const int i = m_def ? m_def->indexOf(key) : -1;
    if (i < 0)
        return;
    FieldValue v = m_values[i];
    v.text = value;
    setValue(i, v);
}

void EditBuffer::setValue(int fieldIndex, const FieldValue &v)
{
    if (!m_def || fieldIndex < 0 || fieldIndex >= m_values.size())
        return;
    const FieldDef &f = m_def->fields[fieldIndex];
    FieldValue &slot = m_values[fieldIndex];
    slot = v;
    switch (f.codec) {
    case Codec::Switch:
    case Codec::SwitchBit:
        slot.number = v.number != 0 ? 1 : 0;
        break;
    case Codec::Hex24:
        slot.number = v.number & 0xFFFFFF;
        break;
    default:
        if (f.isNumeric())
            slot.number = cutToWidth(v.number, f.width);
        break;
    }
}

void EditBuffer::setRect(const QRect &r)
{
    setX(r.x());
    setY(r.y());
    setW(r.width());
    setH(r.height());
}

bool operator==(const EditBuffer &a, const EditBuffer &b)
{
    if (a.m_kind != b.m_kind || a.m_objectName != b.m_objectName)
        return false;
    if (!a.m_def)
        return a.m_rawLine == b.m_rawLine;
    return a.m_values == b.m_values;
}

} // namespace vantile
