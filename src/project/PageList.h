#pragma once
// The page list: one "PageNNNN:<background>;<name>;<colour>;" line per page.

#include <QString>
#include <QStringList>

namespace vantile {

struct PageInfo {
    int id = -1;          // digits before the first ":"; -1 when none can be read
    QString field1;       // background as written
    bool isColor = true;  // field1 holds "RGBColor"
    QString image;        // picture in Picture/, empty for a plain colour
    QString background;   // "RGBColor(r,g,b)" filling a plain page
    QString name;         // field2, or field1 when empty
    QString color;        // field3, "RGBColor(0,0,0)" when empty or not a colour

    static PageInfo parse(const QString &line);
    // "PageNNNN:" and the three fields, each ended by ";".
    QString toLine(int row) const;
};

namespace PageList {

extern const char *const kBlackColor; // "RGBColor(0,0,0)"

QString pageId(int row);                 // four digits
QString blankLine(int row);              // "PageNNNN:RGBColor(0,0,0);RGBColor(0,0,0);RGBColor(0,0,0);"
QString pictureLine(int row, const QString &file); // file in all three fields

// The page number a picture file belongs to: exactly four digits at the
// start, ended by a non-digit (or "_") within the first five characters.
// -1 for any other name.
int pictureNumber(const QString &fileName);

// Page lines for a picture folder: pages 0 to the highest number found,
// blank pages for the gaps, one file per number (the first by name).
QStringList linesFromPictureFolder(const QString &pictureDir);

// "RGBColor(r,g,b)" to a colour; unreadable parts read as 0.
struct Rgb { int r = 0, g = 0, b = 0; };
Rgb parseRgbColor(const QString &text);
QString rgbColorText(int r, int g, int b);

} // namespace PageList

} // namespace vantile
