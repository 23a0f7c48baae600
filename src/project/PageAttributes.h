#pragma once
// The page's own attributes: the "Page:" line that leads a page file.

#include <QString>

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

    static bool isPageLine(const QString &line) { return line.startsWith(QLatin1String("Page:")); }

    // Fills the fields the line holds; empty text fields and missing fields
    // keep what stands. Return values read as hexadecimal, bounds as digits.
    void parse(const QString &line);
    QString toLine() const;
};

} // namespace vantile
