#pragma once
// The working record of one widget: its object name and slot index and
// the value of each field of its kind, by field key. Numbers and texts are
// held by the field's codec (FieldSchema.h); the line form is made only
// when a line is written.

#include "widgets/FieldSchema.h"

#include <QRect>
#include <QString>
#include <QVector>

namespace vantile {

struct FieldValue {
    qint64 number = 0; // numeric codecs, switches (1 on), font ids, word numbers
    QString text;      // text codecs, references, words
};

class EditBuffer
{
public:
    EditBuffer() = default;
    // An empty buffer of a kind, its fields at their defaults. A kind with
    // no field description yet gives a buffer without schema.
    explicit EditBuffer(WidgetKind kind);

    WidgetKind kind() const { return m_kind; }
    const KindDef *definition() const { return m_def; }
    bool hasSchema() const { return m_def != nullptr; }

    QString objectName() const { return m_objectName; }
    // Also sets the index from the name's digits.
    void setObjectName(const QString &name);
    quint32 index() const { return m_index; }

    // The line as it was read; a kind without schema is written back as this.
    QString rawLine() const { return m_rawLine; }
    void setRawLine(const QString &line) { m_rawLine = line; }

    // Sets every field to its default; `name` becomes the object name.
    void resetToDefaults();

    // --- fields by key --------------------------------------------------------
    bool has(const char *key) const;
    qint64 number(const char *key) const;
    QString text(const char *key) const;
    bool isOn(const char *key) const { return number(key) != 0; }
    // A number is cut to the field's width; a switch takes 0 or 1.
    void setNumber(const char *key, qint64 value);
    void setText(const char *key, const QString &value);
    void setOn(const char *key, bool on) { setNumber(key, on ? 1 : 0); }

    // By position in the kind's field list.
    const FieldValue &value(int fieldIndex) const { return m_values[fieldIndex]; }
    void setValue(int fieldIndex, const FieldValue &v);

    // --- the parts every kind has ----------------------------------------------
    qint16 x() const { return qint16(number("X")); }
    qint16 y() const { return qint16(number("Y")); }
    qint16 w() const { return qint16(number("W")); }
    qint16 h() const { return qint16(number("H")); }
    void setX(int v) { setNumber("X", v); }
    void setY(int v) { setNumber("Y", v); }
    void setW(int v) { setNumber("W", v); }
    void setH(int v) { setNumber("H", v); }
    QRect rect() const { return QRect(x(), y(), w(), h()); }
    void setRect(const QRect &r);

    QString name() const { return text("name"); }
    void setName(const QString &n) { setText("name", n); }

    bool hasTail() const { return has("tail"); }
    quint16 tail() const { return hasTail() ? quint16(number("tail")) : quint16(0xFFFF); }
    void setTail(quint16 t) { setNumber("tail", t); }

    qint16 lockState() const { return qint16(number("lockState")); }
    void setLockState(int s) { setNumber("lockState", s); }
    bool isLocked() const { return lockState() == 2; }

    friend bool operator==(const EditBuffer &a, const EditBuffer &b);

private:
    WidgetKind m_kind = WidgetKind::None;
    const KindDef *m_def = nullptr;
    QString m_objectName;
    quint32 m_index = 0;
    QString m_rawLine;
    QVector<FieldValue> m_values;
};

inline bool operator==(const FieldValue &a, const FieldValue &b)
{
    return a.number == b.number && a.text == b.text;
}

bool operator==(const EditBuffer &a, const EditBuffer &b);
inline bool operator!=(const EditBuffer &a, const EditBuffer &b) { return !(a == b); }

// Cuts a number to a field width.
qint64 cutToWidth(qint64 value, NumWidth width);

} // namespace vantile
