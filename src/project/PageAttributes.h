#pragma once
// The page's own attributes: the "Page:" line that leads a page file.

#include <QString>
#include <QStringList>

namespace vantile {

struct PageAttributes {
    QString name;
    int x = 0, y = 0, w = 0, h = 0; // read-only rows: the background's size
    QString pageImage;              // picture in Picture/, empty for a plain colour
    QString pageColor = QStringLiteral("RGBColor(0,0,0)");
    QString leftPage;
    quint16 leftReturn = 0;
    QString rightPage;
    quint16 rightReturn = 0;
    QString topPage;
    quint16 topReturn = 0;
    QString bottomPage;
    quint16 bottomReturn = 0;
    QString slideEffect = QStringLiteral("Disable");
    qint32 slideAreaTop = 0;
    qint32 slideAreaBottom = 0;
    QString reportToHost = QStringLiteral("Disable");

    // The page's rows of the parameter table, in row order.
    enum class Editor : quint8 { Text, ReadOnly, Hex, Decimal, PagePicture, Color, PageRef, Switch };
    struct Row {
        const char *key;
        const char *zh; // the Chinese label; the English label is the key
        Editor editor;
    };
    static const QList<Row> &rows();
    // The value texts of the rows, in row order.
    QStringList values() const;
    // Takes edited values back (row order); numbers go through the lenient
    // readers: return values as hexadecimal, bounds by their digits.
    // X, Y, W and H are read-only and stay.
    void applyValues(const QStringList &values);

    static bool isPageLine(const QString &line) { return line.startsWith(QLatin1String("Page:")); }

    // Fills the fields the line holds; empty text fields and missing fields
    // keep what stands. Return values read as hexadecimal, bounds as digits.
    void parse(const QString &line);
    QString toLine() const;
};

} // namespace vantile
