#pragma once
// The build's mirror of the panel's variable memory: word address A at
// bytes 2A and 2A+1, high byte first. Widgets put their first values and
// their parameter blocks here; what doesn't fit is reported, not stored.

#include <QByteArray>
#include <QString>

namespace vantile {

class VariableImage
{
public:
    static constexpr int kSpace = 65536;       // bytes
    static constexpr int kMasterSpace = 49152; // with Modbus master mode

    explicit VariableImage(bool masterMode = false);

    int limit() const { return m_bytes.size(); } // VarSpaceMax
    const QByteArray &bytes() const { return m_bytes; }
    void clear() { m_bytes.fill(0); }

    // The first value of a widget's variable, bytes in the order they go to
    // memory. Refused, with the message in errorText, when
    // 2 x writeAddr + 1 reaches the limit; bytes beyond the limit are dropped.
    bool storeValue(const QString &widgetName, quint16 writeAddr, const QByteArray &value,
                    QString *errorText);
    bool storeWord(const QString &widgetName, quint16 writeAddr, quint16 value, QString *errorText);

    // A parameter block: the count byte at 2 x parameterAddr and the P bytes
    // of `data` after it. parameterAddr 0xFFFF stores nothing and is no
    // fault. Refused, with the message, when 2 x parameterAddr + P reaches
    // the limit. `word` is the kind's word of the message.
    bool storeParameterBlock(const QString &widgetName, const QString &word, quint16 parameterAddr,
                             quint8 count, const QByteArray &data, QString *errorText);
    // The usual block of a display record: its byte 4 as the count and the
    // P bytes from offset 5.
    bool storeRecordBlock(const QString &widgetName, const QString &word, quint16 parameterAddr,
                          const QByteArray &record, int p, QString *errorText);

    // The messages, each ended by a line break.
    static QString writeAddressMessage(const QString &widgetName);
    static QString parameterMessage(const QString &widgetName, const QString &word);

private:
    void put(int at, const QByteArray &data);

    QByteArray m_bytes;
};

} // namespace vantile
