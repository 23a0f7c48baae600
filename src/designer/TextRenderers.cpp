#include "designer/TextRenderers.h"

#include "build/FontFile.h"
#include "project/MediaFiles.h"
#include "project/TextFiles.h"
#include "widgets/LineGrammar.h"
#include "widgets/NumberKinds.h"
#include "widgets/WordTables.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QFontMetrics>
#include <QHash>
#include <QPainter>

namespace vantile {

namespace TextRenderers {

namespace {

// No panel is this large; a rectangle above it is a damaged line, not
// something to allocate an image for.
constexpr int kMaxSide = 4096;

// In a pngNumber run the ten digit pictures come first; the two after
// them, when the run has them, are the minus sign and the point.
constexpr int kMinusPicture = 10;
constexpr int kPointPicture = 11;

QColor colourOf(qint64 rgb) { return QColor(QRgb(0xFF000000u | (quint32(rgb) & 0xFFFFFFu))); }

// The alignment number, whether the kind keeps the word or its number.
int alignmentOf(const EditBuffer &w)
{
    const FieldDef *f = w.definition() ? w.definition()->find("alignment") : nullptr;
    if (!f)
        return 0;
    if (f->codec == Codec::Word)
        return WordTables::alignment.valueOf(w.text("alignment"));
    return int(w.number("alignment"));
}

int leftOf(int contentWidth, int boxWidth, int alignClass)
{
    switch (alignClass) {
    case 1:
        return (boxWidth - contentWidth) / 2;
    case 2:
        return boxWidth - contentWidth;
    default:
        return 0;
    }
}

QImage blankImage(const EditBuffer &w)
{
    if (w.w() <= 0 || w.h() <= 0 || w.w() > kMaxSide || w.h() > kMaxSide)
        return QImage();
    QImage image(w.w(), w.h(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

// Fonts are read whole; a page of labels shares a few of them, so the
// last ones read are kept while their file stays the same: same size,
// time and header (a file rewritten within the clock's resolution).
struct CachedFont {
    qint64 size = -1;
    QDateTime modified;
    QByteArray head;
    FontFile::Font font;
    QString reason;
};

QByteArray headOf(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.read(FontFile::kHeaderSize) : QByteArray();
}

bool loadFont(const QString &path, FontFile::Font *font, QString *reason)
{
    static QHash<QString, CachedFont> cache;
    const QFileInfo info(path);
    const QByteArray head = info.isFile() ? headOf(path) : QByteArray();
    auto it = cache.find(path);
    if (it == cache.end() || it->size != info.size() || it->modified != info.lastModified() || it->head != head) {
        if (cache.size() >= 16)
            cache.clear();
        CachedFont entry;
        entry.size = info.size();
        entry.modified = info.lastModified();
        entry.head = head;
        entry.font.open(path, &entry.reason);
        it = cache.insert(path, entry);
    }
    *font = it->font;
    *reason = it->reason;
    return font->isValid();
}

// The font of an id, ready to draw: invalid when FontBin/ has no such file
// (silently) or the file is no font (with *problem, naming `who`).
FontFile::Font fontById(int fontId, const QString &projectDir, const QString &who, QString *problem)
{
    FontFile::Font font;
    const QString path = fontFilePath(projectDir, fontId);
    if (path.isEmpty())
        return font;
    QString reason;
    if (!loadFont(path, &font, &reason) && problem)
        *problem = who + QStringLiteral(": font ") + QStringLiteral("FontBin/") + QFileInfo(path).fileName()
                   + QStringLiteral(" can't be drawn: ") + reason;
    return font;
}

FontFile::Font widgetFont(const EditBuffer &w, const QString &projectDir, QString *problem)
{
    return fontById(int(w.number("fontID")), projectDir, w.objectName(), problem);
}

// Lines of text in the font, one under the other from the top, each placed
// by the alignment class. Bitmap fonts copy their glyphs in the colour;
// fonts of encodings 5, 6 and 9 are drawn by the system with the family
// of their header at the character height.
void drawLines(QImage &image, const FontFile::Font &font, const QStringList &lines, const QColor &colour,
               int alignClass)
{
    const FontFile::Header &h = font.header();
    if (h.height <= 0)
        return;
    QPainter p(&image);
    if (FontFile::hasFamily(h.encoding())) {
        QFont f;
        if (!h.family.isEmpty())
            f.setFamily(h.family);
        f.setPixelSize(h.height);
        f.setWeight((h.style & FontFile::Bold) ? 75 : QFont::Normal);
        f.setItalic(h.style & FontFile::Italic);
        f.setUnderline(h.style & FontFile::Underline);
        p.setFont(f);
        p.setPen(colour);
        const QFontMetrics metrics(f);
        for (int i = 0; i < lines.size(); ++i) {
            const int x = leftOf(metrics.horizontalAdvance(lines[i]), image.width(), alignClass);
            p.drawText(QPoint(x, i * h.height + metrics.ascent()), lines[i]);
        }
        return;
    }
    for (int i = 0; i < lines.size(); ++i) {
        const QImage line = FontFile::drawCodes(font, FontFile::codesOf(lines[i], h.encoding()), colour.rgb());
        if (line.isNull())
            continue;
        // an empty line is a one-pixel transparent image: nothing shows
        p.drawImage(leftOf(line.width(), image.width(), alignClass), i * h.height, line);
    }
}

QStringList splitLines(const QString &text)
{
    QString t = text;
    t.remove(QLatin1Char('\r'));
    return t.split(QLatin1Char('\n'));
}

// Text in a widget's font over an optional background; null when there is
// no font to draw with, or nothing at all would show.
QImage textImage(const EditBuffer &w, const QString &projectDir, const QString &text, const QColor &colour,
                 int alignClass, const QColor &background, QString *problem)
{
    const FontFile::Font font = widgetFont(w, projectDir, problem);
    if (!font.isValid() || (text.isEmpty() && !background.isValid()))
        return QImage();
    QImage image = blankImage(w);
    if (image.isNull())
        return image;
    if (background.isValid())
        image.fill(background);
    drawLines(image, font, splitLines(text), colour, alignClass);
    return image;
}

QString iconPathOf(const QStringList &icons, const QString &projectDir, int number)
{
    for (const QString &name : icons)
        if (LineGrammar::iconNumber(name) == number)
            return MediaFiles::pathIn(projectDir, QStringLiteral("Icon/"), name);
    return QString();
}

} // namespace

QString fontFilePath(const QString &projectDir, int fontId)
{
    const QDir dir(projectDir + QStringLiteral("FontBin"));
    for (const QString &name : dir.entryList(QDir::Files, QDir::Name))
        if (LineGrammar::fontNumber(name) == fontId)
            return dir.filePath(name);
    return QString();
}

// A Statictext's defaultText follows its entry of Constant_text.csv: the
// designer refreshes it when the page loads and when the table changes.
QString labelText(const EditBuffer &w)
{
    return w.text("defaultText");
}

qint64 valueAsStored(qint64 value, int dataType)
{
    if (dataType & 0x40)
        return (value >> (dataType & 0x0F)) & 1;
    int bits = 16;
    switch ((dataType & 0x3F) % 8) {
    case 0:
    case 4:
        bits = 8;
        break;
    case 2:
        bits = 32;
        break;
    case 3:
        return value;
    default:
        break;
    }
    const quint64 u = quint64(value) & ((quint64(1) << bits) - 1);
    if ((dataType & 0x80) && (u >> (bits - 1)))
        return qint64(u) - (qint64(1) << bits);
    return qint64(u);
}

QString numberText(qint64 value, int integerDigit, int decimalDigit, bool leadingZero)
{
    const int decimals = qBound(0, decimalDigit, 18);
    quint64 scale = 1;
    for (int i = 0; i < decimals; ++i)
        scale *= 10u;
    const bool negative = value < 0;
    const quint64 magnitude = negative ? 0u - quint64(value) : quint64(value);

    const int places = qMax(1, integerDigit);
    QString whole = QString::number(magnitude / scale).right(places);
    if (leadingZero) {
        whole = whole.rightJustified(places, QLatin1Char('0'));
    } else {
        while (whole.size() > 1 && whole.startsWith(QLatin1Char('0')))
            whole.remove(0, 1);
    }
    QString text = negative ? QStringLiteral("-") + whole : whole;
    if (decimals > 0)
        text += QLatin1Char('.') + QString::number(magnitude % scale).rightJustified(decimals, QLatin1Char('0'));
    return text;
}

QImage renderLabel(const EditBuffer &w, const QString &projectDir, QString *problem)
{
    QString text = labelText(w);
    if (w.isOn("passwordMode"))
        text = QString(text.toUcs4().size(), QLatin1Char('*'));
    const QColor background = w.isOn("backgroundColor") ? colourOf(w.number("background_Color")) : QColor();
    return textImage(w, projectDir, text, colourOf(w.number("fontColor")), alignmentClass(alignmentOf(w)),
                     background, problem);
}

QImage renderTextRoll(const EditBuffer &w, const QString &projectDir, QString *problem)
{
    // a scrolling text starts at the left edge; a still one is placed
    const int alignClass = w.isOn("scrollMode") ? 0 : alignmentClass(alignmentOf(w));
    const QColor background = w.isOn("transparency") ? QColor() : colourOf(w.number("backgroundColor"));
    return textImage(w, projectDir, w.text("defaultText"), colourOf(w.number("fontColor")), alignClass, background,
                     problem);
}

static QString shownDigits(const EditBuffer &w)
{
    const int decimals = int(w.number("decimalDigit"));
    const qint64 value = NumberKinds::defaultValue(w.text("defaultNumber"), decimals);
    const int dataType = WordTables::dataType.valueOf(w.text("dataType"));
    return numberText(valueAsStored(value, dataType), int(w.number("integerDigit")), decimals,
                      w.isOn("leadingZero"));
}

QImage renderNumber(const EditBuffer &w, const QString &projectDir, QString *problem)
{
    // the panel shows as many bytes of the unit as the record holds
    const int unitBytes = int(w.number("unitSymbol_length"));
    const QString unit = QString::fromLatin1(w.text("unitSymbol").toLatin1().left(unitBytes));
    return textImage(w, projectDir, shownDigits(w) + unit, colourOf(w.number("fontColor")),
                     alignmentClass(alignmentOf(w)), QColor(), problem);
}

QImage renderPngNumber(const EditBuffer &w, const QString &projectDir, QString *problem)
{
    const QImage run = digitRun(shownDigits(w), LineGrammar::iconNumber(w.text("firstIcon")),
                                LineGrammar::iconNumber(w.text("lastIcon")), projectDir, w.objectName(), problem);
    if (run.isNull())
        return run;
    QImage image = blankImage(w);
    if (image.isNull())
        return image;
    QPainter p(&image);
    p.drawImage(leftOf(run.width(), image.width(), alignmentClass(alignmentOf(w))), 0, run);
    return image;
}

QImage digitRun(const QString &text, int first, int last, const QString &projectDir, const QString &who,
                QString *problem)
{
    if (first < 0)
        return QImage();
    const QStringList icons = QDir(projectDir + QStringLiteral("Icon")).entryList(QDir::Files, QDir::Name);
    QHash<int, QImage> pictures; // by offset in the run
    QVector<QImage> run;
    int width = 0;
    int height = 0;
    for (const QChar c : text) {
        const int offset = c.isDigit()                 ? c.digitValue()
                           : c == QLatin1Char('-')     ? kMinusPicture
                           : c == QLatin1Char('.')     ? kPointPicture
                                                       : -1;
        if (offset < 0 || (last > first && first + offset > last))
            continue; // the run has no picture for it
        if (!pictures.contains(offset)) {
            const QString path = iconPathOf(icons, projectDir, first + offset);
            QString error;
            pictures.insert(offset, path.isEmpty() ? QImage() : MediaFiles::readPicture(path, QSize(), &error));
            if (!error.isEmpty() && problem)
                *problem = who + QStringLiteral(": ") + error;
        }
        const QImage &picture = pictures[offset];
        if (picture.isNull())
            continue;
        run.append(picture);
        width += picture.width();
        height = qMax(height, picture.height());
    }
    if (run.isEmpty() || width > kMaxSide || height > kMaxSide)
        return QImage();
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    int x = 0;
    for (const QImage &picture : run) {
        p.drawImage(x, 0, picture);
        x += picture.width();
    }
    return image;
}

QImage fontRun(const QString &text, int fontId, const QColor &colour, const QString &projectDir, const QString &who,
               QString *problem)
{
    const FontFile::Font font = fontById(fontId, projectDir, who, problem);
    const FontFile::Header &h = font.header();
    if (!font.isValid() || text.isEmpty() || h.height <= 0)
        return QImage();
    int width = 0;
    if (FontFile::hasFamily(h.encoding())) {
        QFont f;
        if (!h.family.isEmpty())
            f.setFamily(h.family);
        f.setPixelSize(h.height);
        width = QFontMetrics(f).horizontalAdvance(text);
    } else {
        width = FontFile::drawCodes(font, FontFile::codesOf(text, h.encoding()), colour.rgb()).width();
    }
    if (width <= 0 || width > kMaxSide)
        return QImage();
    QImage image(width, h.height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    drawLines(image, font, {text}, colour, 0);
    return image;
}

} // namespace TextRenderers

} // namespace vantile
