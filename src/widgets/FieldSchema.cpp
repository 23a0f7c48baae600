#include "widgets/FieldSchema.h"

#include <cstring>

namespace vantile {

namespace {

const LabelEntry kCommonLabels[] = {
    {"Parameter", "Parameter", "参数"},
    {"Data", "Data", "数据"},
    {"name", "name", "控件名称"},
    {"X", "X", "X坐标"},
    {"Y", "Y", "Y坐标"},
    {"W", "W", "宽度"},
    {"H", "H", "高度"},
};

} // namespace

bool FieldDef::isNumeric() const
{
    switch (codec) {
    case Codec::Decimal:
    case Codec::Hex16:
    case Codec::Hex16OrNone:
    case Codec::Hex24:
    case Codec::Switch:
    case Codec::SwitchBit:
    case Codec::WordNumber:
    case Codec::FontRef:
        return true;
    default:
        return false;
    }
}

QString FieldDef::englishLabel() const
{
    return QString::fromUtf8(en ? en : key);
}

QString FieldDef::chineseLabel() const
{
    return zh ? QString::fromUtf8(zh) : englishLabel();
}

QStringList FieldDef::menuChoices() const
{
    QStringList list;
    for (const char *const *w = menuWords; w && *w; ++w)
        list.append(QString::fromUtf8(*w));
    return list;
}

const LabelEntry *commonLabels(int *count)
{
    if (count)
        *count = int(sizeof kCommonLabels / sizeof kCommonLabels[0]);
    return kCommonLabels;
}

int KindDef::indexOf(const char *key) const
{
    for (int i = 0; i < fieldCount; ++i) {
        if (std::strcmp(fields[i].key, key) == 0)
            return i;
    }
    return -1;
}

const FieldDef *KindDef::find(const char *key) const
{
    const int i = indexOf(key);
    return i < 0 ? nullptr : &fields[i];
}

const FieldDef *KindDef::atRow(int row) const
{
    for (int i = 0; i < fieldCount; ++i) {
        if (fields[i].row == row)
            return &fields[i];
    }
    return nullptr;
}

const FieldDef *KindDef::atLine(int linePos) const
{
    for (int i = 0; i < fieldCount; ++i) {
        if (fields[i].linePos == linePos)
            return &fields[i];
    }
    return nullptr;
}

int KindDef::rowCount() const
{
    int n = 0;
    for (int i = 0; i < fieldCount; ++i)
        n = qMax(n, fields[i].row + 1);
    return n;
}

int KindDef::lineFieldCount() const
{
    int n = 0;
    for (int i = 0; i < fieldCount; ++i)
        n = qMax(n, fields[i].linePos + 1);
    return n;
}

LabelTable KindDef::labels() const
{
    // Built at first use, then kept for the session.
    static QHash<int, LabelTable> built;
    auto it = built.find(kindIndex(kind));
    if (it != built.end())
        return *it;

    LabelTable t;
    int n = 0;
    const LabelEntry *common = commonLabels(&n);
    for (int i = 0; i < n; ++i)
        t.insert(QString::fromUtf8(common[i].key),
                 {QString::fromUtf8(common[i].en), QString::fromUtf8(common[i].zh)});
    for (int i = 0; i < fieldCount; ++i) {
        if (fields[i].zh)
            t.insert(QString::fromUtf8(fields[i].key), {fields[i].englishLabel(), fields[i].chineseLabel()});
    }
    for (int i = 0; i < extraLabelCount; ++i)
        t.insert(QString::fromUtf8(extraLabels[i].key),
                 {QString::fromUtf8(extraLabels[i].en), QString::fromUtf8(extraLabels[i].zh)});
    built.insert(kindIndex(kind), t);
    return t;
}

QString KindDef::label(const QString &key, int language) const
{
    const QStringList l = labels().value(key);
    if (l.isEmpty())
        return key;
    return l.value(language == 1 ? 1 : 0);
}

} // namespace vantile
