#include "widgets/TextEncoding.h"

#include <QTextCodec>

namespace vantile {
namespace TextEncoding {

bool isWide(int encoding)
{
    return encoding == 3 || encoding == 6 || encoding == 9;
}

QByteArray encode(const QString &text, int encoding)
{
    if (isWide(encoding)) {
        QByteArray out;
        out.reserve(text.size() * 2);
        for (QChar c : text) {
            out.append(char(c.unicode() >> 8));
            out.append(char(c.unicode() & 0xFF));
        }
        return out;
    }
    // GBK holds the text; BIG5 is reached from it, as the panel's tools do
    QTextCodec *gbk = QTextCodec::codecForName("GBK");
    const QByteArray bytes = gbk ? gbk->fromUnicode(text) : text.toLatin1();
    if (encoding != 2)
        return bytes;
    QTextCodec *big5 = QTextCodec::codecForName("Big5");
    return big5 && gbk ? big5->fromUnicode(gbk->toUnicode(bytes)) : bytes;
}

} // namespace TextEncoding
} // namespace vantile
