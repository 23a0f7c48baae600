#include "widgets/VariableImage.h"

namespace vantile {

VariableImage::VariableImage(bool masterMode)
    : m_bytes(masterMode ? kMasterSpace : kSpace, '\0')
{
}

void VariableImage::put(int at, const QByteArray &data)
{
    const int n = qMin(data.size(), m_bytes.size() - at);
    for (int i = 0; i < n; ++i)
        m_bytes[at + i] = data[i];
}

bool VariableImage::storeValue(const QString &widgetName, quint16 writeAddr, const QByteArray &value,
                               QString *errorText)
{
    if (2 * int(writeAddr) + 1 >= limit()) {
        if (errorText)
            errorText->append(writeAddressMessage(widgetName));
        return false;
    }
    put(2 * int(writeAddr), value);
    return true;
}

bool VariableImage::storeWord(const QString &widgetName, quint16 writeAddr, quint16 value,
                              QString *errorText)
{
    QByteArray b;
    b.append(char(value >> 8));
    b.append(char(value & 0xFF));
    return storeValue(widgetName, writeAddr, b, errorText);
}

bool VariableImage::storeParameterBlock(const QString &widgetName, const QString &word,
                                        quint16 parameterAddr, quint8 count, const QByteArray &data,
                                        QString *errorText)
{
    if (parameterAddr == 0xFFFF)
        return true;
    const int at = 2 * int(parameterAddr);
    if (at + data.size() >= limit()) {
        if (errorText)
            errorText->append(parameterMessage(widgetName, word));
        return false;
    }
    m_bytes[at] = char(count);
    put(at + 1, data);
    return true;
}

bool VariableImage::storeRecordBlock(const QString &widgetName, const QString &word,
                                     quint16 parameterAddr, const QByteArray &record, int p,
                                     QString *errorText)
{
    const quint8 count = record.size() > 4 ? quint8(record[4]) : 0;
    QByteArray data = record.mid(5, p);
    if (data.size() < p)
        data.append(QByteArray(p - data.size(), '\0'));
    return storeParameterBlock(widgetName, word, parameterAddr, count, data, errorText);
}

QString VariableImage::writeAddressMessage(const QString &widgetName)
{
    return widgetName + QStringLiteral(": write address is more than Max value\n");
}

QString VariableImage::parameterMessage(const QString &widgetName, const QString &word)
{
    return widgetName + QStringLiteral(": ") + word
           + QStringLiteral(" parameterAddr + datas are more than Max value\n");
}

} // namespace vantile
