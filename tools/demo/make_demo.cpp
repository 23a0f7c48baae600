// vantile-make-demo: writes the demo project into a directory.
//
//   vantile-make-demo <directory>
//
// The project is "demo": demo.uiprj (page list), demo.ini (settings, two
// languages), the nine project folders, the page pictures in Picture/,
// the digit pictures of a picture number and the widgets' pictures (gauge
// rings, bar tracks, a knob, a lamp) in Icon/, all drawn here, a spinner
// in Gif/ written by a small GIF writer, the widgets of each page in
// Plugin/, three bitmap fonts in FontBin/ made by our font maker from
// installed families, a key beep in WavBin/, the static text table and the
// language tables. Text on the pictures uses a built-in 5x7 dot font; the
// widgets' texts use the fonts. Every run gives the same bytes.

#include <cmath>

#include "build/FontFile.h"
#include "build/FontMaker.h"
#include "build/PageChecks.h"
#include "project/PageList.h"
#include "project/ProjectSettings.h"
#include "project/TextFiles.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetKinds.h"
#include "widgets/WidgetLine.h"
#include "widgets/WriteAddress.h"

#include <QBuffer>
#include <QConicalGradient>
#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QSet>
#include <QTime>
#include <QtMath>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>

using namespace vantile;

namespace {

const int W = 800;
const int H = 480;

// ---------------------------------------------------------------------------
// 5x7 dot font: seven rows of five cells, '#' lit.

struct Glyph {
    char ch;
    const char *rows[7];
};

const Glyph kGlyphs[] = {
    {'0', {" ### ", "#   #", "#  ##", "# # #", "##  #", "#   #", " ### "}},
    {'1', {"  #  ", " ##  ", "  #  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'2', {" ### ", "#   #", "    #", "   # ", "  #  ", " #   ", "#####"}},
    {'3', {"#####", "   # ", "  #  ", "   # ", "    #", "#   #", " ### "}},
    {'4', {"   # ", "  ## ", " # # ", "#  # ", "#####", "   # ", "   # "}},
    {'5', {"#####", "#    ", "#### ", "    #", "    #", "#   #", " ### "}},
    {'6', {"  ## ", " #   ", "#    ", "#### ", "#   #", "#   #", " ### "}},
    {'7', {"#####", "    #", "   # ", "  #  ", " #   ", " #   ", " #   "}},
    {'8', {" ### ", "#   #", "#   #", " ### ", "#   #", "#   #", " ### "}},
    {'9', {" ### ", "#   #", "#   #", " ####", "    #", "   # ", " ##  "}},
    {'A', {" ### ", "#   #", "#   #", "#####", "#   #", "#   #", "#   #"}},
    {'B', {"#### ", "#   #", "#   #", "#### ", "#   #", "#   #", "#### "}},
    {'C', {" ### ", "#   #", "#    ", "#    ", "#    ", "#   #", " ### "}},
    {'D', {"#### ", "#   #", "#   #", "#   #", "#   #", "#   #", "#### "}},
    {'E', {"#####", "#    ", "#    ", "#### ", "#    ", "#    ", "#####"}},
    {'F', {"#####", "#    ", "#    ", "#### ", "#    ", "#    ", "#    "}},
    {'G', {" ### ", "#   #", "#    ", "# ###", "#   #", "#   #", " ####"}},
    {'H', {"#   #", "#   #", "#   #", "#####", "#   #", "#   #", "#   #"}},
    {'I', {" ### ", "  #  ", "  #  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'J', {"  ###", "   # ", "   # ", "   # ", "   # ", "#  # ", " ##  "}},
    {'K', {"#   #", "#  # ", "# #  ", "##   ", "# #  ", "#  # ", "#   #"}},
    {'L', {"#    ", "#    ", "#    ", "#    ", "#    ", "#    ", "#####"}},
    {'M', {"#   #", "## ##", "# # #", "# # #", "#   #", "#   #", "#   #"}},
    {'N', {"#   #", "#   #", "##  #", "# # #", "#  ##", "#   #", "#   #"}},
    {'O', {" ### ", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "}},
    {'P', {"#### ", "#   #", "#   #", "#### ", "#    ", "#    ", "#    "}},
    {'Q', {" ### ", "#   #", "#   #", "#   #", "# # #", "#  # ", " ## #"}},
    {'R', {"#### ", "#   #", "#   #", "#### ", "# #  ", "#  # ", "#   #"}},
    {'S', {" ####", "#    ", "#    ", " ### ", "    #", "    #", "#### "}},
    {'T', {"#####", "  #  ", "  #  ", "  #  ", "  #  ", "  #  ", "  #  "}},
    {'U', {"#   #", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "}},
    {'V', {"#   #", "#   #", "#   #", "#   #", "#   #", " # # ", "  #  "}},
    {'W', {"#   #", "#   #", "#   #", "# # #", "# # #", "# # #", " # # "}},
    {'X', {"#   #", "#   #", " # # ", "  #  ", " # # ", "#   #", "#   #"}},
    {'Y', {"#   #", "#   #", " # # ", "  #  ", "  #  ", "  #  ", "  #  "}},
    {'Z', {"#####", "    #", "   # ", "  #  ", " #   ", "#    ", "#####"}},
    {'.', {"     ", "     ", "     ", "     ", "     ", " ##  ", " ##  "}},
    {':', {"     ", " ##  ", " ##  ", "     ", " ##  ", " ##  ", "     "}},
    {'-', {"     ", "     ", "     ", "#####", "     ", "     ", "     "}},
    {'+', {"     ", "  #  ", "  #  ", "#####", "  #  ", "  #  ", "     "}},
    {'%', {"##   ", "##  #", "   # ", "  #  ", " #   ", "#  ##", "   ##"}},
    {'/', {"     ", "    #", "   # ", "  #  ", " #   ", "#    ", "     "}},
    {'<', {"   # ", "  #  ", " #   ", "#    ", " #   ", "  #  ", "   # "}},
    {'>', {" #   ", "  #  ", "   # ", "    #", "   # ", "  #  ", " #   "}},
};

const Glyph *glyphFor(QChar c)
{
    const char ch = char(c.toUpper().toLatin1());
    for (const Glyph &g : kGlyphs)
        if (g.ch == ch)
            return &g;
    return nullptr; // blank
}

int textWidth(const QString &text, int scale)
{
    return text.isEmpty() ? 0 : (text.size() * 6 - 1) * scale;
}

int textHeight(int scale) { return 7 * scale; }

enum class Align { Left, Center, Right };

// Draws text with its top edge at y; x is the left edge, the centre or the
// right edge by align. Cells are drawn without smoothing, so edges are crisp.
void drawText(QPainter &p, int x, int y, const QString &text, int scale, const QColor &color,
              Align align = Align::Left)
{
    const int w = textWidth(text, scale);
    if (align == Align::Center)
        x -= w / 2;
    else if (align == Align::Right)
        x -= w;
    p.save();
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(Qt::NoPen);
    p.setBrush(color);
    for (int i = 0; i < text.size(); ++i) {
        const Glyph *g = glyphFor(text[i]);
        if (!g)
            continue;
        const int gx = x + i * 6 * scale;
        for (int row = 0; row < 7; ++row)
            for (int col = 0; col < 5; ++col)
                if (g->rows[row][col] == '#')
                    p.drawRect(gx + col * scale, y + row * scale, scale, scale);
    }
    p.restore();
}

// Text centred in a rectangle.
void drawTextIn(QPainter &p, const QRect &r, const QString &text, int scale, const QColor &color)
{
    drawText(p, r.center().x() + 1, r.top() + (r.height() - textHeight(scale)) / 2, text, scale, color,
             Align::Center);
}

// ---------------------------------------------------------------------------
// Shapes shared by the pages.

QColor shade(const QColor &c, int factor) // >100 lighter, <100 darker
{
    return factor >= 100 ? c.lighter(factor) : c.darker(10000 / factor);
}

// A soft shadow made of a few widening, faint rounded rectangles.
void softShadow(QPainter &p, const QRectF &r, qreal radius, int strength)
{
    p.save();
    p.setPen(Qt::NoPen);
    for (int i = 6; i >= 1; --i) {
        p.setBrush(QColor(0, 0, 0, strength / (i + 1)));
        p.drawRoundedRect(r.adjusted(-i, -i + 3, i, i + 3), radius + i, radius + i);
    }
    p.restore();
}

// A button or tile: shadow, vertical gradient of the base colour, a thin
// light edge at the top.
void drawButton(QPainter &p, const QRect &r, const QColor &base, qreal radius, int shadow = 120)
{
    softShadow(p, r, radius, shadow);
    QLinearGradient g(r.topLeft(), r.bottomLeft());
    g.setColorAt(0, shade(base, 125));
    g.setColorAt(0.5, base);
    g.setColorAt(1, shade(base, 75));
    p.setPen(QPen(shade(base, 60), 1));
    p.setBrush(g);
    p.drawRoundedRect(QRectF(r).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    p.setPen(QPen(QColor(255, 255, 255, 70), 1));
    p.drawLine(QPointF(r.left() + radius, r.top() + 1.5), QPointF(r.right() - radius, r.top() + 1.5));
}

// A frame where a number or text widget will sit.
void drawField(QPainter &p, const QRect &r, const QColor &fill, const QColor &border)
{
    p.setPen(QPen(border, 1.2));
    p.setBrush(fill);
    p.drawRoundedRect(QRectF(r).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
}

// The title bar of every page: a dark gradient band, an accent line, a
// round mark and a frame for the clock. The title is a label widget.
void drawHeader(QPainter &p, const QColor &accent)
{
    const QRect bar(0, 0, W, 52);
    QLinearGradient g(bar.topLeft(), bar.bottomLeft());
    g.setColorAt(0, QColor(0x1f, 0x33, 0x4d));
    g.setColorAt(1, QColor(0x12, 0x20, 0x32));
    p.fillRect(bar, g);
    QLinearGradient line(0, 0, W, 0);
    line.setColorAt(0, accent);
    line.setColorAt(0.6, shade(accent, 60));
    line.setColorAt(1, QColor(0x12, 0x20, 0x32));
    p.fillRect(QRect(0, 50, W, 2), line);

    p.setPen(QPen(accent, 3));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(30, 26), 12, 12);
    p.setPen(Qt::NoPen);
    p.setBrush(accent);
    p.drawEllipse(QPointF(30, 26), 5, 5);

    drawField(p, QRect(620, 11, 164, 30), QColor(0x0c, 0x16, 0x22), QColor(0x35, 0x50, 0x70));
    // small status dots left of the clock
    const QColor dots[3] = {QColor(0x2e, 0xcc, 0x71), QColor(0xf1, 0xc4, 0x0f), QColor(0x55, 0x6b, 0x82)};
    for (int i = 0; i < 3; ++i) {
        p.setPen(Qt::NoPen);
        p.setBrush(dots[i]);
        p.drawEllipse(QPointF(560 + i * 18, 26), 5, 5);
    }
}

// ---------------------------------------------------------------------------
// Page 0: a dashboard with three round gauges, four action tiles and a tab bar.

struct GaugeLook {
    int centreX;
    QColor colour;
    const char *label, *unit;
};

const GaugeLook kGauges[3] = {{150, QColor(0x00, 0xc8, 0xf0), "TEMPERATURE", "C"},
                              {400, QColor(0x2e, 0xd5, 0x73), "PRESSURE", "BAR"},
                              {650, QColor(0xff, 0x9f, 0x1c), "FLOW", "L/MIN"}};

const QRect kLamp(744, 296, 20, 20); // the alarm lamp, right above the ALARM tile

QImage drawLamp(bool on)
{
    QImage img(kLamp.size(), QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QPointF c(kLamp.width() / 2.0, kLamp.height() / 2.0);
    QRadialGradient g(c - QPointF(2, 2), kLamp.width() / 2.0);
    g.setColorAt(0, on ? QColor(0xff, 0xf0, 0x9a) : QColor(0x6a, 0x4c, 0x18));
    g.setColorAt(0.6, on ? QColor(0xff, 0xb0, 0x1c) : QColor(0x4a, 0x32, 0x0c));
    g.setColorAt(1, on ? QColor(0xd6, 0x6a, 0x0c) : QColor(0x2c, 0x1e, 0x08));
    p.setPen(QPen(on ? QColor(0xff, 0xd2, 0x60) : QColor(0x5a, 0x44, 0x1c), 1));
    p.setBrush(g);
    p.drawEllipse(c, kLamp.width() / 2.0 - 1, kLamp.height() / 2.0 - 1);
    return img;
}

// The gauges' rings are pictures of rProgress widgets (Icon/), drawn over
// the bezel: a track of 270 degrees with its gap at the bottom, and the
// same ring in the gauge's colour, which the panel shows up to the value.
const int kGaugeY = 172;
const qreal kRingRadius = 80;
const int kRingBox = 176; // the icons' size, centred on the gauge

QImage drawRing(const QColor *color)
{
    QImage img(kRingBox, kRingBox, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QPointF c(kRingBox / 2.0, kRingBox / 2.0);
    const QRectF arcRect(c.x() - kRingRadius, c.y() - kRingRadius, 2 * kRingRadius, 2 * kRingRadius);
    QPen pen(QColor(0x22, 0x34, 0x4a), 14, Qt::SolidLine, Qt::RoundCap);
    if (color) { // a sweep from dark to the full colour
        QConicalGradient sweep(c, 225);
        sweep.setColorAt(0, *color);
        sweep.setColorAt(0.75, shade(*color, 45));
        sweep.setColorAt(1, *color);
        pen.setBrush(QBrush(sweep));
    }
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawArc(arcRect, 225 * 16, -270 * 16); // from 225 degrees clockwise
    return img;
}

void drawGauge(QPainter &p, const QPointF &c, const QColor &color, const QString &label, const QString &unit)
{
    const qreal rBezel = 98;

    // bezel
    QRadialGradient bezel(c, rBezel);
    bezel.setColorAt(0, QColor(0x1b, 0x2d, 0x42));
    bezel.setColorAt(0.85, QColor(0x12, 0x1f, 0x2e));
    bezel.setColorAt(1, QColor(0x0c, 0x15, 0x20));
    p.setPen(QPen(QColor(0x2c, 0x48, 0x66), 2));
    p.setBrush(bezel);
    p.drawEllipse(c, rBezel, rBezel);

    // ticks inside the ring: 11 major, 4 minor between
    for (int i = 0; i <= 50; ++i) {
        const qreal a = qDegreesToRadians(225.0 - 270.0 * i / 50);
        const bool major = i % 5 == 0;
        const qreal r1 = major ? 58 : 63;
        const qreal r2 = 68;
        p.setPen(QPen(major ? QColor(0xb8, 0xc7, 0xd6) : QColor(0x4a, 0x60, 0x78), major ? 2 : 1));
        p.drawLine(QPointF(c.x() + r1 * qCos(a), c.y() - r1 * qSin(a)),
                   QPointF(c.x() + r2 * qCos(a), c.y() - r2 * qSin(a)));
    }

    // centre: a readout frame for the number widget, the unit below it
    drawField(p, QRect(int(c.x()) - 38, int(c.y()) - 16, 76, 30), QColor(0x08, 0x10, 0x19),
              shade(color, 70));
    drawText(p, int(c.x()) + 1, int(c.y()) + 26, unit, 2, QColor(0x8a, 0xa0, 0xb6), Align::Center);
    drawText(p, int(c.x()) + 1, int(c.y() + rBezel) + 12, label, 2, QColor(0xd6, 0xe2, 0xee),
             Align::Center);
}

void drawIconPlay(QPainter &p, const QPointF &c)
{
    QPainterPath t;
    t.moveTo(c + QPointF(-7, -10));
    t.lineTo(c + QPointF(11, 0));
    t.lineTo(c + QPointF(-7, 10));
    t.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawPath(t);
}

void drawIconStop(QPainter &p, const QPointF &c)
{
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(c.x() - 9, c.y() - 9, 18, 18), 3, 3);
}

void drawIconReset(QPainter &p, const QPointF &c)
{
    p.setPen(QPen(Qt::white, 3.5, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(c.x() - 10, c.y() - 10, 20, 20), 60 * 16, 280 * 16);
    QPainterPath head;
    head.moveTo(c + QPointF(4, -15));
    head.lineTo(c + QPointF(12, -8));
    head.lineTo(c + QPointF(2, -5));
    head.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawPath(head);
}

void drawIconWarning(QPainter &p, const QPointF &c, const QColor &ink)
{
    QPainterPath t;
    t.moveTo(c + QPointF(0, -12));
    t.lineTo(c + QPointF(12, 10));
    t.lineTo(c + QPointF(-12, 10));
    t.closeSubpath();
    p.setPen(QPen(Qt::white, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::white);
    p.drawPath(t);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRect(QRectF(c.x() - 1.5, c.y() - 5, 3, 9));
    p.drawRect(QRectF(c.x() - 1.5, c.y() + 6, 3, 2.5));
}

void drawTabBar(QPainter &p, const QStringList &tabs, int active, const QColor &accent)
{
    const QRect bar(0, 424, W, 56);
    QLinearGradient g(bar.topLeft(), bar.bottomLeft());
    g.setColorAt(0, QColor(0x10, 0x1b, 0x28));
    g.setColorAt(1, QColor(0x08, 0x0f, 0x17));
    p.fillRect(bar, g);
    p.fillRect(QRect(0, 424, W, 1), QColor(0x2a, 0x3f, 0x57));
    const int tw = W / tabs.size();
    for (int i = 0; i < tabs.size(); ++i) {
        const QRect r(i * tw, 425, i == tabs.size() - 1 ? W - i * tw : tw, 55);
        if (i == active) {
            QLinearGradient a(r.topLeft(), r.bottomLeft());
            a.setColorAt(0, QColor(accent.red(), accent.green(), accent.blue(), 60));
            a.setColorAt(1, QColor(accent.red(), accent.green(), accent.blue(), 10));
            p.fillRect(r, a);
            p.fillRect(QRect(r.left() + 30, 476, r.width() - 60, 4), accent);
        }
        if (i > 0)
            p.fillRect(QRect(r.left(), 436, 1, 32), QColor(0x2a, 0x3f, 0x57));
        drawTextIn(p, r.adjusted(0, 0, 0, -4), tabs[i], 2,
                   i == active ? QColor(0xf0, 0xf6, 0xfc) : QColor(0x7d, 0x92, 0xa8));
    }
}

QImage drawHome()
{
    QImage img(W, H, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);

    QLinearGradient bg(0, 0, 0, H);
    bg.setColorAt(0, QColor(0x0b, 0x16, 0x22));
    bg.setColorAt(1, QColor(0x17, 0x28, 0x3c));
    p.fillRect(img.rect(), bg);
    QRadialGradient glow(QPointF(620, 140), 420);
    glow.setColorAt(0, QColor(0x28, 0x6e, 0xaa, 70));
    glow.setColorAt(1, QColor(0x28, 0x6e, 0xaa, 0));
    p.fillRect(img.rect(), glow);

    const QColor accent(0x00, 0xb4, 0xd8);
    drawHeader(p, accent);

    for (const GaugeLook &g : kGauges)
        drawGauge(p, QPointF(g.centreX, kGaugeY), g.colour, QLatin1String(g.label), QLatin1String(g.unit));
    // the ALARM tile's lamp (a bit icon) sits in a dark socket above the tile
    p.setPen(QPen(QColor(0x2c, 0x48, 0x66), 1.5));
    p.setBrush(QColor(0x08, 0x10, 0x19));
    p.drawEllipse(QRectF(kLamp).adjusted(-2.5, -2.5, 2.5, 2.5));

    struct Tile {
        const char *label;
        QColor color;
        int icon;
    };
    const Tile tiles[4] = {{"START", QColor(0x1e, 0x9e, 0x58), 0},
                           {"STOP", QColor(0xc0, 0x39, 0x2b), 1},
                           {"RESET", QColor(0x3b, 0x5b, 0x80), 2},
                           {"ALARM", QColor(0xd6, 0x8a, 0x0c), 3}};
    for (int i = 0; i < 4; ++i) {
        const QRect r(30 + i * 190, 322, 170, 78);
        drawButton(p, r, tiles[i].color, 12);
        const QPointF ic(r.left() + 36, r.center().y() + 1);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0, 0, 0, 50));
        p.drawEllipse(ic, 21, 21);
        switch (tiles[i].icon) {
        case 0: drawIconPlay(p, ic); break;
        case 1: drawIconStop(p, ic); break;
        case 2: drawIconReset(p, ic); break;
        default: drawIconWarning(p, ic, tiles[i].color); break;
        }
        drawText(p, r.left() + 66, r.center().y() - 9, QString::fromLatin1(tiles[i].label), 3,
                 Qt::white);
    }

    drawTabBar(p, {QStringLiteral("HOME"), QStringLiteral("SETTINGS"), QStringLiteral("TREND")}, 0,
               accent);
    return img;
}

// ---------------------------------------------------------------------------
// Page 1: settings, a light page with a side menu, sliders, switches, a list box.

void drawCard(QPainter &p, const QRect &r, const QString &title, const QColor &accent)
{
    softShadow(p, r, 10, 60);
    p.setPen(QPen(QColor(0xd0, 0xd8, 0xe1), 1));
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(r).adjusted(0.5, 0.5, -0.5, -0.5), 10, 10);
    p.setPen(Qt::NoPen);
    p.setBrush(accent);
    p.drawRoundedRect(QRectF(r.left() + 16, r.top() + 14, 4, 16), 2, 2);
    drawText(p, r.left() + 28, r.top() + 16, title, 2, QColor(0x3a, 0x4b, 0x5e));
    p.fillRect(QRect(r.left() + 16, r.top() + 40, r.width() - 32, 1), QColor(0xe3, 0xe8, 0xee));
}

// The two tracks of the display card: the brightness slider and the sleep
// time's progress bar. The page shows only their scale marks; the tracks
// themselves are the widgets' pictures in Icon/.
const QColor kSettingsAccent(0x25, 0x86, 0xd9);
const QRect kBrightnessTrack(236, 152, 360, 10);
const QRect kSleepTrack(236, 210, 360, 10);
const QSize kKnob(22, 22);
const QRect kSleepMinus(604, 199, 28, 28); // the adjust buttons either side of the sleep time
const QRect kSleepPlus(740, 199, 28, 28);

// A track picture: the empty track, or the whole track filled.
QImage drawTrack(bool filled)
{
    QImage img(kBrightnessTrack.size(), QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(Qt::NoPen);
    QLinearGradient g(0, 0, img.width(), 0);
    g.setColorAt(0, filled ? shade(kSettingsAccent, 130) : QColor(0xd5, 0xdd, 0xe6));
    g.setColorAt(1, filled ? kSettingsAccent : QColor(0xd5, 0xdd, 0xe6));
    p.setBrush(g);
    const qreal r = img.height() / 2.0;
    p.drawRoundedRect(QRectF(img.rect()), r, r);
    return img;
}

QImage drawKnob()
{
    QImage img(kKnob, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QPointF c(kKnob.width() / 2.0, kKnob.height() / 2.0);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 45));
    p.drawEllipse(c + QPointF(0, 1), 10.5, 10.5);
    p.setPen(QPen(kSettingsAccent, 2));
    p.setBrush(Qt::white);
    p.drawEllipse(c, 9, 9);
    return img;
}

void drawScaleMarks(QPainter &p, const QRect &track)
{
    for (int i = 0; i <= 10; ++i) {
        const qreal x = track.left() + track.width() * i / 10.0;
        p.fillRect(QRectF(x - 0.5, track.bottom() + 8, 1, i % 5 == 0 ? 7 : 4), QColor(0xa9, 0xb6, 0xc4));
    }
}

void drawSwitch(QPainter &p, const QPointF &topLeft, bool on, const QColor &accent)
{
    const QRectF r(topLeft, QSizeF(62, 30));
    p.setPen(Qt::NoPen);
    p.setBrush(on ? accent : QColor(0xc3, 0xcc, 0xd6));
    p.drawRoundedRect(r, 15, 15);
    const QPointF knob = on ? QPointF(r.right() - 15, r.center().y()) : QPointF(r.left() + 15, r.center().y());
    p.setBrush(QColor(0, 0, 0, 40));
    p.drawEllipse(knob + QPointF(0, 1.5), 12, 12);
    p.setBrush(Qt::white);
    p.drawEllipse(knob, 12, 12);
}

QImage drawSettings()
{
    QImage img(W, H, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);

    QLinearGradient bg(0, 0, 0, H);
    bg.setColorAt(0, QColor(0xee, 0xf2, 0xf6));
    bg.setColorAt(1, QColor(0xd9, 0xe0, 0xe8));
    p.fillRect(img.rect(), bg);

    const QColor accent = kSettingsAccent;
    drawHeader(p, accent);

    // side menu
    const QRect side(0, 52, 190, H - 52);
    QLinearGradient sg(side.topLeft(), side.topRight());
    sg.setColorAt(0, QColor(0x22, 0x30, 0x3f));
    sg.setColorAt(1, QColor(0x1c, 0x28, 0x35));
    p.fillRect(side, sg);
    const char *items[] = {"DISPLAY", "SOUND", "NETWORK", "SYSTEM", "ABOUT"};
    for (int i = 0; i < 5; ++i) {
        const QRect r(0, 68 + i * 58, 190, 50);
        if (i == 0) {
            p.fillRect(r, QColor(0x2f, 0x44, 0x5a));
            p.fillRect(QRect(0, r.top(), 5, r.height()), accent);
        }
        p.setPen(QPen(i == 0 ? accent : QColor(0x6d, 0x83, 0x99), 2.5));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QPointF(32, r.center().y() + 0.5), 8, 8);
        drawText(p, 54, r.center().y() - 6, QString::fromLatin1(items[i]), 2,
                 i == 0 ? QColor(0xf2, 0xf6, 0xfa) : QColor(0xa8, 0xb7, 0xc6));
    }
    // the version line below the menu is a static text widget

    // display card: the brightness slider and the sleep time's bar, with
    // value frames; - and + buttons either side of the sleep time
    const QColor frameFill(0xf5, 0xf8, 0xfb);
    const QColor frameBorder(0xb9, 0xc6, 0xd3);
    drawCard(p, QRect(212, 70, 566, 168), QStringLiteral("DISPLAY"), accent);
    drawText(p, 236, 128, QStringLiteral("BRIGHTNESS"), 2, QColor(0x55, 0x66, 0x78));
    drawScaleMarks(p, kBrightnessTrack);
    drawField(p, QRect(640, 138, 92, 34), frameFill, frameBorder);
    drawText(p, 236, 186, QStringLiteral("SLEEP AFTER"), 2, QColor(0x55, 0x66, 0x78));
    drawScaleMarks(p, kSleepTrack);
    drawField(p, QRect(640, 196, 92, 34), frameFill, frameBorder);
    drawButton(p, kSleepMinus, QColor(0x7c, 0x8c, 0x9d), 6, 40);
    drawTextIn(p, kSleepMinus, QStringLiteral("-"), 2, Qt::white);
    drawButton(p, kSleepPlus, accent, 6, 40);
    drawTextIn(p, kSleepPlus, QStringLiteral("+"), 2, Qt::white);

    // sound card: two switches
    drawCard(p, QRect(212, 254, 275, 150), QStringLiteral("SOUND"), accent);
    drawText(p, 236, 312, QStringLiteral("KEY BEEP"), 2, QColor(0x55, 0x66, 0x78));
    drawSwitch(p, QPointF(402, 304), true, QColor(0x2e, 0xb8, 0x6b));
    drawText(p, 236, 362, QStringLiteral("ALARM TONE"), 2, QColor(0x55, 0x66, 0x78));
    drawSwitch(p, QPointF(402, 354), false, QColor(0x2e, 0xb8, 0x6b));

    // serial card: a list box with its drop mark
    drawCard(p, QRect(503, 254, 275, 150), QStringLiteral("SERIAL PORT"), accent);
    drawText(p, 527, 306, QStringLiteral("BAUD RATE"), 2, QColor(0x55, 0x66, 0x78));
    const QRect box(527, 330, 228, 38);
    drawField(p, box, frameFill, frameBorder);
    QPainterPath chevron;
    chevron.moveTo(box.right() - 28, box.center().y() - 3);
    chevron.lineTo(box.right() - 20, box.center().y() + 5);
    chevron.lineTo(box.right() - 12, box.center().y() - 3);
    p.setPen(QPen(QColor(0x5b, 0x6f, 0x84), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(chevron);

    // save / back
    drawButton(p, QRect(520, 420, 120, 44), accent, 8, 50);
    drawTextIn(p, QRect(520, 420, 120, 44), QStringLiteral("SAVE"), 2, Qt::white);
    drawButton(p, QRect(658, 420, 120, 44), QColor(0x7c, 0x8c, 0x9d), 8, 50);
    drawTextIn(p, QRect(658, 420, 120, 44), QStringLiteral("BACK"), 2, Qt::white);
    return img;
}

// ---------------------------------------------------------------------------
// Page 2: trend, a chart area with grid, axis labels, a target band and limits.

QImage drawTrend()
{
    QImage img(W, H, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);

    QLinearGradient bg(0, 0, 0, H);
    bg.setColorAt(0, QColor(0x0e, 0x15, 0x1d));
    bg.setColorAt(1, QColor(0x15, 0x1f, 0x2a));
    p.fillRect(img.rect(), bg);

    const QColor accent(0x9b, 0x59, 0xd6);
    drawHeader(p, accent);

    const QRect chart(70, 74, 684, 300); // 12 x 5 divisions of 57 x 60
    softShadow(p, chart, 6, 90);
    QLinearGradient cg(chart.topLeft(), chart.bottomLeft());
    cg.setColorAt(0, QColor(0x0a, 0x11, 0x18));
    cg.setColorAt(1, QColor(0x0d, 0x16, 0x20));
    p.setPen(Qt::NoPen);
    p.setBrush(cg);
    p.drawRect(chart);

    auto yOf = [&](qreal v) { return chart.bottom() + 1 - chart.height() * v / 100.0; };
    auto xOf = [&](qreal i) { return chart.left() + chart.width() * i / 12.0; };

    // target band 40..60
    p.fillRect(QRectF(chart.left(), yOf(60), chart.width(), yOf(40) - yOf(60)), QColor(0x2e, 0xcc, 0x71, 28));

    // grid
    p.setRenderHint(QPainter::Antialiasing, false);
    for (int i = 1; i < 12; ++i)
        p.fillRect(QRectF(xOf(i), chart.top(), 1, chart.height()), QColor(0x1e, 0x2c, 0x3b));
    for (int v = 20; v < 100; v += 20)
        p.fillRect(QRectF(chart.left(), yOf(v), chart.width(), 1), QColor(0x1e, 0x2c, 0x3b));
    p.setRenderHint(QPainter::Antialiasing, true);

    // limit lines
    QPen hi(QColor(0xe7, 0x4c, 0x3c), 1.5, Qt::DashLine);
    p.setPen(hi);
    p.drawLine(QPointF(chart.left(), yOf(85)), QPointF(chart.right(), yOf(85)));
    QPen lo(QColor(0xf3, 0x9c, 0x12), 1.5, Qt::DashLine);
    p.setPen(lo);
    p.drawLine(QPointF(chart.left(), yOf(15)), QPointF(chart.right(), yOf(15)));
    drawText(p, chart.right() - 6, int(yOf(85)) - 14, QStringLiteral("HI"), 2, QColor(0xe7, 0x4c, 0x3c),
             Align::Right);
    drawText(p, chart.right() - 6, int(yOf(15)) + 5, QStringLiteral("LO"), 2, QColor(0xf3, 0x9c, 0x12),
             Align::Right);

    // frame
    p.setPen(QPen(QColor(0x34, 0x4a, 0x61), 1.5));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(chart).adjusted(0.5, 0.5, -0.5, -0.5));

    // axis labels
    const QColor axis(0x8a, 0x9d, 0xb1);
    for (int v = 0; v <= 100; v += 20)
        drawText(p, chart.left() - 8, int(yOf(v)) - 7, QString::number(v), 2, axis, Align::Right);
    for (int h = 0; h <= 24; h += 4) {
        const int x = int(xOf(h / 2));
        p.fillRect(QRect(x, chart.bottom() + 1, 1, 6), axis);
        drawText(p, x + 1, chart.bottom() + 11, QStringLiteral("%1:00").arg(h, 2, 10, QLatin1Char('0')), 2, axis,
                 Align::Center);
    }

    // legend and paging buttons
    struct Entry {
        const char *label;
        QColor color;
    };
    const Entry legend[3] = {{"TEMP", QColor(0x00, 0xc8, 0xf0)},
                             {"HUMIDITY", QColor(0x2e, 0xd5, 0x73)},
                             {"SETPOINT", QColor(0xff, 0x9f, 0x1c)}};
    int x = 70;
    for (const Entry &e : legend) {
        p.setPen(Qt::NoPen);
        p.setBrush(e.color);
        p.drawRoundedRect(QRectF(x, 432, 26, 6), 3, 3);
        drawText(p, x + 36, 428, QString::fromLatin1(e.label), 2, QColor(0xc9, 0xd6, 0xe3));
        x += 36 + textWidth(QString::fromLatin1(e.label), 2) + 40;
    }
    drawButton(p, QRect(584, 414, 76, 44), QColor(0x34, 0x49, 0x5e), 8);
    drawTextIn(p, QRect(584, 414, 76, 44), QStringLiteral("<"), 3, Qt::white);
    drawButton(p, QRect(678, 414, 76, 44), QColor(0x34, 0x49, 0x5e), 8);
    drawTextIn(p, QRect(678, 414, 76, 44), QStringLiteral(">"), 3, Qt::white);
    return img;
}

// ---------------------------------------------------------------------------
// Icon/: the ten digit pictures of the standby page's picture number, a dot
// matrix in the style of the pictures' own lettering. Numbered by the icon
// rule, four digits first: 0000 shows "0", ..., 0009 shows "9".

const int kDigitW = 48;
const int kDigitH = 72;
const int kDigitPitch = 8;

QImage drawDigit(int digit)
{
    QImage img(kDigitW, kDigitH, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(Qt::NoPen);
    const Glyph *g = glyphFor(QLatin1Char(char('0' + digit)));
    const int left = (kDigitW - 5 * kDigitPitch) / 2;
    const int top = (kDigitH - 7 * kDigitPitch) / 2;
    for (int row = 0; row < 7; ++row) {
        for (int col = 0; col < 5; ++col) {
            const QRectF cell(left + col * kDigitPitch + 0.5, top + row * kDigitPitch + 0.5, kDigitPitch - 1,
                              kDigitPitch - 1);
            const bool lit = g->rows[row][col] == '#';
            p.setBrush(lit ? QColor(0x00, 0xc8, 0xf0) : QColor(0x2c, 0x48, 0x66, 90));
            p.drawRoundedRect(cell, 2, 2);
        }
    }
    return img;
}

QString digitIcon(int digit)
{
    return QStringLiteral("%1_digit%2.png").arg(digit, 4, 10, QLatin1Char('0')).arg(digit);
}

// The header clock (an RTC widget) in the frame at the right of every
// title bar: eight glyphs of 15 x 21, lit dots of 2 x 2 on a pitch of 3.
const QSize kSmallGlyph(15, 21);
const QRect kHeaderClock(620 + (164 - 8 * 15) / 2, 11 + (30 - 21) / 2, 8 * 15, 21);

QImage drawSmallGlyph(QChar c)
{
    QImage img(kSmallGlyph, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x9f, 0xe8, 0xff));
    const Glyph *g = glyphFor(c);
    for (int row = 0; row < 7; ++row)
        for (int col = 0; col < 5; ++col)
            if (g && g->rows[row][col] == '#')
                p.drawRect(col * 3, row * 3, 2, 2);
    return img;
}

// The standby page's analog clock: a dial of 150 x 150 with a bezel, twelve
// marks and four numerals; the panel draws the hands over it.
const int kClockSide = 150;

QImage drawClockFace()
{
    QImage img(kClockSide, kClockSide, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QPointF c(kClockSide / 2.0, kClockSide / 2.0);
    QRadialGradient face(c, kClockSide / 2.0);
    face.setColorAt(0, QColor(0x1c, 0x2c, 0x3e));
    face.setColorAt(1, QColor(0x0e, 0x18, 0x24));
    p.setPen(QPen(QColor(0x00, 0xc8, 0xf0), 3));
    p.setBrush(face);
    p.drawEllipse(c, kClockSide / 2.0 - 3, kClockSide / 2.0 - 3);
    for (int i = 0; i < 12; ++i) {
        const qreal a = qDegreesToRadians(30.0 * i);
        const qreal inner = i % 3 == 0 ? 56 : 61;
        p.setPen(QPen(i % 3 == 0 ? QColor(0xe8, 0xf1, 0xfa) : QColor(0x6a, 0x86, 0xa4), i % 3 == 0 ? 3 : 2));
        p.drawLine(c + QPointF(inner * std::sin(a), -inner * std::cos(a)),
                   c + QPointF(67 * std::sin(a), -67 * std::cos(a)));
    }
    const int ch = kClockSide / 2;
    drawText(p, ch, 22, QStringLiteral("12"), 2, QColor(0x8a, 0xa0, 0xb6), Align::Center);
    drawText(p, ch, kClockSide - 22 - textHeight(2), QStringLiteral("6"), 2, QColor(0x8a, 0xa0, 0xb6), Align::Center);
    drawText(p, 24, ch - textHeight(2) / 2, QStringLiteral("9"), 2, QColor(0x8a, 0xa0, 0xb6));
    drawText(p, kClockSide - 24, ch - textHeight(2) / 2, QStringLiteral("3"), 2, QColor(0x8a, 0xa0, 0xb6), Align::Right);
    return img;
}

QImage drawClockCap()
{
    QImage img(12, 12, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(QPen(QColor(0x0e, 0x18, 0x24), 1));
    p.setBrush(QColor(0xff, 0x9f, 0x1c));
    p.drawEllipse(QRectF(1, 1, 10, 10));
    return img;
}

// ---------------------------------------------------------------------------
// Page 4: the keyboard page of the settings page's keypad, a full page with
// a value field and twelve keys; the keys are kbkey widgets.
const QRect kKeypadField(221, 66, 358, 54);
const QSize kKey(110, 64);
const char *const kKeyCaps[12] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "<", "0", "OK"};

QRect keyRect(int i) { return QRect(221 + (i % 3) * (kKey.width() + 14), 140 + (i / 3) * (kKey.height() + 12), kKey.width(), kKey.height()); }

QImage drawKeypadPage()
{
    QImage img(W, H, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    QLinearGradient bg(0, 0, 0, H);
    bg.setColorAt(0, QColor(0x10, 0x1a, 0x26));
    bg.setColorAt(1, QColor(0x18, 0x26, 0x36));
    p.fillRect(img.rect(), bg);
    const QColor accent(0x25, 0x86, 0xd9);
    drawHeader(p, accent);
    drawText(p, 56, 19, QStringLiteral("ENTER VALUE"), 2, QColor(0xe8, 0xf1, 0xfa));
    drawField(p, kKeypadField, QColor(0x0a, 0x11, 0x18), accent);
    drawText(p, kKeypadField.right() - 10, kKeypadField.bottom() - 12, QStringLiteral("0-100 S"), 1,
             QColor(0x6a, 0x86, 0xa4), Align::Right);
    for (int i = 0; i < 12; ++i) {
        const QColor base = i == 11 ? QColor(0x2e, 0xa0, 0x5c) : i == 9 ? QColor(0x8a, 0x3a, 0x3a) : QColor(0x2c, 0x40, 0x58);
        drawButton(p, keyRect(i), base, 10);
        drawTextIn(p, keyRect(i), QLatin1String(kKeyCaps[i]), 4, QColor(0xf4, 0xf8, 0xfc));
    }
    return img;
}

// ---------------------------------------------------------------------------
// Messages and failures of the generator.

[[noreturn]] void fail(const QString &why)
{
    std::fprintf(stderr, "vantile-make-demo: %s\n", qPrintable(why));
    std::exit(1);
}

// ---------------------------------------------------------------------------
// Icon/: the widgets' pictures after the digits, numbered on from 0010.

QString iconFile(int number, const char *name)
{
    return QStringLiteral("%1_%2.png").arg(number, 4, 10, QLatin1Char('0')).arg(QLatin1String(name));
}

enum : int {
    kRingTrackIcon = 10, // 10: the gauges' track, 11..13: the three rings
    kTrackIcon = 14,
    kTrackFillIcon,
    kKnobIcon,
    kLampOffIcon,
    kLampOnIcon,
    kClockFaceIcon,  // 19: the standby clock's dial, 20: its centre cap
    kClockCapIcon,
    kSmallDigitIcon, // 21..33: the header clock's 0-9, minus, point and colon
    kLastIcon = kSmallDigitIcon + 12,
};

// The header clock's glyphs in the order of a time picture run.
const char kSmallGlyphs[] = "0123456789-.:";

const char *const kRingNames[3] = {"ring_temperature", "ring_pressure", "ring_flow"};

QString iconRef(int number)
{
    switch (number) {
    case kRingTrackIcon: return iconFile(number, "ring_track");
    case kRingTrackIcon + 1:
    case kRingTrackIcon + 2:
    case kRingTrackIcon + 3: return iconFile(number, kRingNames[number - kRingTrackIcon - 1]);
    case kTrackIcon: return iconFile(number, "track");
    case kTrackFillIcon: return iconFile(number, "track_fill");
    case kKnobIcon: return iconFile(number, "slider_knob");
    case kLampOffIcon: return iconFile(number, "lamp_off");
    case kLampOnIcon: return iconFile(number, "lamp_on");
    case kClockFaceIcon: return iconFile(number, "clock_face");
    case kClockCapIcon: return iconFile(number, "clock_cap");
    default:
        if (number >= kSmallDigitIcon)
            return iconFile(number, qPrintable(QStringLiteral("time_%1").arg(number - kSmallDigitIcon)));
        return digitIcon(number);
    }
}

QImage drawIcon(int number)
{
    switch (number) {
    case kRingTrackIcon: return drawRing(nullptr);
    case kRingTrackIcon + 1:
    case kRingTrackIcon + 2:
    case kRingTrackIcon + 3: return drawRing(&kGauges[number - kRingTrackIcon - 1].colour);
    case kTrackIcon: return drawTrack(false);
    case kTrackFillIcon: return drawTrack(true);
    case kKnobIcon: return drawKnob();
    case kLampOffIcon: return drawLamp(false);
    case kLampOnIcon: return drawLamp(true);
    case kClockFaceIcon: return drawClockFace();
    case kClockCapIcon: return drawClockCap();
    default:
        if (number >= kSmallDigitIcon)
            return drawSmallGlyph(QLatin1Char(kSmallGlyphs[number - kSmallDigitIcon]));
        return drawDigit(number);
    }
}

// ---------------------------------------------------------------------------
// Gif/: a busy spinner for the standby page, eight dots on a circle with a
// bright head and a fading tail, turning one dot a frame. Written by the
// small GIF writer below: one 16-colour table, a frame of palette indices
// each, looping for ever.

const int kSpinSize = 32;
const int kSpinFrames = 8;
const int kSpinDelay = 8; // in 10 ms
const QColor kStandbyColour(18, 30, 44);
const QColor kSpinColour(0x00, 0xc8, 0xf0);
const QString kSpinnerGif = QStringLiteral("0000_spinner.gif");

// Index 0 is the page colour; 1 (the dimmest tail) .. 8 (the head) run to the full colour.
QVector<QRgb> spinnerPalette()
{
    QVector<QRgb> palette(16, qRgb(0, 0, 0));
    palette[0] = kStandbyColour.rgb();
    for (int level = 1; level <= 8; ++level) {
        const double t = 0.15 + 0.85 * (level - 1) / 7.0;
        auto mix = [t](int from, int to) { return int(std::lround(from + (to - from) * t)); };
        palette[level] = qRgb(mix(kStandbyColour.red(), kSpinColour.red()),
                              mix(kStandbyColour.green(), kSpinColour.green()),
                              mix(kStandbyColour.blue(), kSpinColour.blue()));
    }
    return palette;
}

// Dot d sits at 45 degrees x d clockwise from the top, 11 pixels out, radius
// 3; in frame f the head is dot f.
QByteArray spinnerFrame(int frame)
{
    QByteArray indices(kSpinSize * kSpinSize, '\0');
    for (int dot = 0; dot < kSpinFrames; ++dot) {
        const double a = qDegreesToRadians(45.0 * dot);
        const double cx = 16 + 11 * std::sin(a), cy = 16 - 11 * std::cos(a);
        const int level = 8 - (frame - dot + kSpinFrames) % kSpinFrames;
        for (int y = 0; y < kSpinSize; ++y)
            for (int x = 0; x < kSpinSize; ++x)
                if ((x - cx) * (x - cx) + (y - cy) * (y - cy) <= 3.2 * 3.2)
                    indices[y * kSpinSize + x] = char(level);
    }
    return indices;
}

// Image data for 4-bit indices: every index as a code of its own, with a
// clear code before the decoder's table could grow to the next code width,
// so every code stays 5 bits wide. Bits go low first, in blocks of up to
// 255 bytes.
QByteArray gifImageData(const QByteArray &indices)
{
    const int minCodeSize = 4, clear = 1 << minCodeSize, end = clear + 1, width = minCodeSize + 1;
    const int run = clear - 3;
    QByteArray packed;
    quint32 acc = 0;
    int bits = 0;
    auto put = [&](int code) {
        acc |= quint32(code) << bits;
        for (bits += width; bits >= 8; bits -= 8, acc >>= 8)
            packed.append(char(acc & 0xFF));
    };
    for (int i = 0; i < indices.size(); ++i) {
        if (i % run == 0)
            put(clear);
        put(uchar(indices[i]));
    }
    put(end);
    if (bits > 0)
        packed.append(char(acc & 0xFF));
    QByteArray out(1, char(minCodeSize));
    for (int at = 0; at < packed.size(); at += 255) {
        const QByteArray block = packed.mid(at, 255);
        out.append(char(block.size())).append(block);
    }
    return out.append('\0');
}

QByteArray spinnerGif()
{
    QByteArray g("GIF89a");
    auto u16 = [&g](int v) { g.append(char(v & 0xFF)).append(char((v >> 8) & 0xFF)); };
    u16(kSpinSize);
    u16(kSpinSize);
    g.append(char(0xF3)).append('\0').append('\0'); // a table of 16 colours, 8-bit resolution
    for (QRgb c : spinnerPalette())
        g.append(char(qRed(c))).append(char(qGreen(c))).append(char(qBlue(c)));
    g.append("\x21\xFF\x0BNETSCAPE2.0\x03\x01", 16).append(2, '\0').append('\0'); // loop for ever
    for (int f = 0; f < kSpinFrames; ++f) {
        g.append("\x21\xF9\x04\x04", 4); // control: keep the frame, no transparency
        u16(kSpinDelay);
        g.append(2, '\0');
        g.append('\x2C');
        u16(0);
        u16(0);
        u16(kSpinSize);
        u16(kSpinSize);
        g.append('\0');
        g.append(gifImageData(spinnerFrame(f)));
    }
    return g.append('\x3B');
}

// Reads the spinner back as the build does and compares every pixel.
void checkSpinner(const QByteArray &gif)
{
    QBuffer buffer;
    buffer.setData(gif);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "gif");
    const QVector<QRgb> palette = spinnerPalette();
    for (int f = 0; f < kSpinFrames; ++f) {
        const QImage img = reader.read().convertToFormat(QImage::Format_RGB32);
        const QByteArray indices = spinnerFrame(f);
        bool same = img.size() == QSize(kSpinSize, kSpinSize);
        for (int i = 0; same && i < indices.size(); ++i)
            same = (img.pixel(i % kSpinSize, i / kSpinSize) & 0xFFFFFF) == (palette[indices[i]] & 0xFFFFFF);
        if (!same)
            fail(QStringLiteral("the spinner's frame %1 does not read back as written").arg(f));
    }
}

// ---------------------------------------------------------------------------
// FontBin/: bitmap fonts made by our font maker from installed families.

struct DemoFont {
    int id;
    const char *name;   // the file is NN_<name>Font.bin
    const char *family; // an installed family (Debian: fonts-dejavu-core, fonts-noto-cjk)
    int pixelSize;
    int bits;           // depth
    bool bold;
    bool chinese;       // GB2312, else ASCII
};

enum : int { kBodyFont = 0, kReadoutFont = 1, kTextFont = 2 };

const DemoFont kFonts[] = {
    {kBodyFont, "DejaVuSans18", "DejaVu Sans", 18, 4, false, false},
    {kReadoutFont, "DejaVuSansBold24", "DejaVu Sans", 24, 4, true, false},
    {kTextFont, "NotoSansSC20", "Noto Sans CJK SC", 20, 1, false, true},
};

// A GB2312 font runs from 0x20 to the highest code of the Chinese texts:
// every code between has its record, but only ASCII and the characters of
// `chinese` get a glyph; the others are left empty, which keeps the file
// to what the demo shows (and compresses to almost nothing).
QByteArray makeFont(const DemoFont &f, const QString &chinese)
{
    if (!QFontDatabase().families().contains(QLatin1String(f.family)))
        fail(QStringLiteral("the font family \"%1\" is not installed").arg(QLatin1String(f.family)));
    FontMaker::Options o;
    o.family = QLatin1String(f.family);
    o.pixelSize = f.pixelSize;
    o.depthBits = f.bits;
    o.bold = f.bold;
    QSet<int> shown;
    for (int c = FontFile::kAsciiFirst; c < FontFile::kAsciiFirst + FontFile::kAsciiCount; ++c)
        shown.insert(c);
    if (f.chinese) {
        o.encoding = QStringLiteral("GB2312");
        for (int code : FontFile::codesOf(chinese, 0)) {
            if (code < 0x80)
                continue;
            if (FontMaker::characterOf(code, 0).isEmpty())
                fail(QStringLiteral("code 0x%1 of the Chinese texts is no GB2312 character").arg(code, 0, 16));
            shown.insert(code);
            o.lastCode = qMax(o.lastCode, code);
        }
    }
    QString error;
    QByteArray bytes = FontMaker::make(o, &error);
    FontFile::Header h;
    if (bytes.isEmpty() || !FontFile::Header::parse(bytes, &h))
        fail(QStringLiteral("font %1: %2").arg(QLatin1String(f.name), error));
    for (int code = h.firstCode; code <= h.lastCode; ++code) {
        const qint64 at = h.recordOffset(code);
        if (!shown.contains(code) && at >= 0)
            std::memset(bytes.data() + at, 0, size_t(h.recordBytes()));
    }
    return bytes;
}

// ---------------------------------------------------------------------------
// Plugin/: the widgets of each page, made as the designer makes them: a
// new widget of the kind at its rectangle, the next free write address for
// the kinds that take one, then the rows the user would edit. Every line
// comes from the widget model, never from a hand-written string.

// The project's two languages: 0 English (the widgets' own texts), 1 Chinese.
struct Words {
    const char *en;
    const char *zh;
};

const Words kHomeTitle = {"HOME", "主页"};
const Words kSettingsTitle = {"SETTINGS", "设置"};
const Words kTrendTitle = {"TREND", "趋势"};
const Words kStandbyTitle = {"STANDBY", "待机"};
const Words kRunHours = {"RUN HOURS", "运行小时"};
const Words kTicker = {"SYSTEM READY - TOUCH HERE TO WAKE IT UP", "系统就绪，触摸此处唤醒"};
// Constant_text.csv: entry 1, shown by the settings page's static text.
const Words kVersion = {"Firmware V1.00", "固件版本 V1.00"};

const Words *const kAllWords[] = {&kHomeTitle, &kSettingsTitle, &kTrendTitle, &kStandbyTitle,
                                  &kRunHours,  &kTicker,        &kVersion};

// Alignment numbers of the label and number kinds.
enum : int { kLeft = 0, kMiddle = 1 };

const quint32 kFirstWriteAddress = 0x1000;

QString pageRef(int row) { return QStringLiteral("Page") + PageList::pageId(row); }

// The keyboard page stands behind the standby page.
const int kKeypadRow = 4;
const char *const kWebAddress = "https://vantile.example/demo";

class PageMaker
{
public:
    PageMaker(quint32 &nextAddress, const QVector<FontFile::Header> &fonts)
        : m_next(nextAddress), m_fonts(fonts)
    {
    }

    // A dropped widget: the lowest free slot of its kind (labels and static
    // texts share theirs) and, for the kinds that take one, the next address.
    EditBuffer &add(WidgetKind kind, const QRect &r)
    {
        int &slot = m_slots[QLatin1String(WidgetKinds::info(kind).prefix)];
        m_widgets.push_back(WidgetLine::createNew(kind, quint32(slot++), r));
        EditBuffer &b = m_widgets.back();
        if (const int step = WriteAddress::dropStep(kind)) {
            quint32 at = m_next;
            WriteAddress::assign(b, at);
            m_next += quint32(step);
        }
        return b;
    }

    // A field set as its line holds it ("Enable", "0x00C8F0", "Middle", "1").
    static void set(EditBuffer &b, const char *key, const QString &lineForm)
    {
        const KindDef *def = b.definition();
        const int i = def ? def->indexOf(key) : -1;
        if (i < 0)
            fail(b.objectName() + QStringLiteral(" has no field ") + QLatin1String(key));
        b.setValue(i, WidgetLine::readLineText(def->fields[i], lineForm));
    }
    static void set(EditBuffer &b, const char *key, qint64 value) { set(b, key, QString::number(value)); }

    int fontWidth(int id) const { return m_fonts.at(id).width; }

    void useFont(EditBuffer &b, int id) const
    {
        const FontFile::Header &h = m_fonts.at(id);
        set(b, "fontID", id);
        set(b, "fontWidth", h.width);
        if (b.has("fontHeight"))
            set(b, "fontHeight", h.height);
        set(b, "encoding", h.encoding());
    }

    EditBuffer &label(const QRect &r, int font, const char *colour, int alignment, const QString &text)
    {
        EditBuffer &b = add(WidgetKind::Label, r);
        useFont(b, font);
        set(b, "fontColor", QLatin1String(colour));
        set(b, "alignment", alignment);
        set(b, "defaultText", text);
        return b;
    }

    // A label in both languages: its own text is the first, the language
    // table holds both.
    EditBuffer &label(const QRect &r, const char *colour, int alignment, const Words &words)
    {
        EditBuffer &b = label(r, kTextFont, colour, alignment, QString::fromUtf8(words.en));
        translate(b, words);
        return b;
    }

    // The page's title in the header band, where the pictures leave room.
    void title(const Words &words) { label(QRect(56, 14, 300, 24), "0xE8F1FA", kLeft, words); }

    EditBuffer &number(const QRect &r, int font, const char *colour, int digits, int decimals, const char *value,
                       const char *unit = "")
    {
        EditBuffer &b = add(WidgetKind::Number, r);
        useFont(b, font);
        set(b, "fontColor", QLatin1String(colour));
        set(b, "alignment", kMiddle);
        set(b, "integerDigit", digits);
        set(b, "decimalDigit", decimals);
        set(b, "defaultNumber", QLatin1String(value));
        set(b, "unitSymbol", QLatin1String(unit));
        set(b, "unitSymbol_length", qint64(qstrlen(unit)));
        return b;
    }

    // A button that reports `code` to the host (0: reports nothing) and
    // goes to page `gotoRow` on release (-1: stays).
    EditBuffer &button(const QRect &r, quint16 code, int gotoRow = -1)
    {
        EditBuffer &b = add(WidgetKind::Button, r);
        if (code) {
            set(b, "returnValue", LineGrammar::hex16(code));
            set(b, "reportToHost", QStringLiteral("Enable"));
        }
        if (gotoRow >= 0)
            set(b, "pageGoto", pageRef(gotoRow));
        return b;
    }

    // The user points a widget at the variable another widget shows.
    static void share(EditBuffer &b, const EditBuffer &owner)
    {
        set(b, "writeAddr", LineGrammar::hex16(quint32(owner.number("writeAddr"))));
    }

    void translate(EditBuffer &b, const Words &words)
    {
        set(b, "multi-language", 1);
        m_languageRows << QStringList{b.objectName(), LineGrammar::hex16(quint32(b.number("writeAddr"))),
                                      QString::number(b.number("wordLength")), QString::fromUtf8(words.en),
                                      QString::fromUtf8(words.zh)}
                              .join(QLatin1Char(','));
    }

    // The page file's lines with the overlap groups a build would give them,
    // so that building the demo leaves its page files as they are.
    QStringList lines(int chipIndex) const
    {
        QStringList lines;
        for (const EditBuffer &b : m_widgets)
            lines << WidgetLine::write(b);
        return PageChecks::assignGroups(lines, chipIndex);
    }

    // MultiLanguage/PageNNNN.csv: key, WriteAddr, WordLength, one text per language.
    QStringList languageRows() const { return m_languageRows; }

private:
    quint32 &m_next;
    const QVector<FontFile::Header> &m_fonts;
    std::deque<EditBuffer> m_widgets; // references stay valid while pages grow
    QHash<QString, int> m_slots;
    QStringList m_languageRows;
};

// The clock in each title bar's frame: hours, minutes and seconds from the
// small glyphs.
void headerClock(PageMaker &m)
{
    EditBuffer &rtc = m.add(WidgetKind::RTC, kHeaderClock);
    PageMaker::set(rtc, "firstIcon", iconRef(kSmallDigitIcon));
    PageMaker::set(rtc, "lastIcon", iconRef(kLastIcon));
    PageMaker::set(rtc, "displayFormat", QStringLiteral("HH:MM:SS"));
}

// Page 0: each gauge's ring and the readout in its frame on one variable,
// the four action tiles with the alarm lamp, the tabs.
void makeHome(PageMaker &m)
{
    m.title(kHomeTitle);
    headerClock(m);
    const struct {
        const char *colour;
        int digits, decimals;
        const char *value;
        int full, now; // the ring's scale in the readout's units (tenths)
    } gauges[3] = {{"0x00C8F0", 3, 1, "62.0", 1000, 620},
                   {"0x2ED573", 2, 1, "4.5", 100, 45},
                   {"0xFF9F1C", 3, 1, "81.0", 1000, 810}};
    for (int i = 0; i < 3; ++i) {
        const auto &g = gauges[i];
        const int x = kGauges[i].centreX;
        // the ring's 270 degrees, counted clockwise from the bottom: 45 to 315
        EditBuffer &ring = m.add(WidgetKind::RProgress,
                                 QRect(x - kRingBox / 2, kGaugeY - kRingBox / 2, kRingBox, kRingBox));
        PageMaker::set(ring, "background", iconRef(kRingTrackIcon));
        PageMaker::set(ring, "foreground", iconRef(kRingTrackIcon + 1 + i));
        PageMaker::set(ring, "maxValue", g.full);
        PageMaker::set(ring, "defaultValue", g.now);
        PageMaker::set(ring, "startAngle", 45);
        PageMaker::set(ring, "finalAngle", 315);
        // the frame is 76 x 30 about (x, 172)
        EditBuffer &readout = m.number(QRect(x - 36, 159, 72, 24), kReadoutFont, g.colour, g.digits, g.decimals,
                                       g.value);
        PageMaker::share(readout, ring);
    }
    for (int i = 0; i < 4; ++i) // START, STOP, RESET, ALARM report 1 to 4
        m.button(QRect(30 + i * 190, 322, 170, 78), quint16(i + 1));
    EditBuffer &lamp = m.add(WidgetKind::BitIcon, kLamp); // bit 0: the alarm is on
    PageMaker::set(lamp, "offStateIcon", iconRef(kLampOffIcon));
    PageMaker::set(lamp, "onStateIcon", iconRef(kLampOnIcon));
    m.button(QRect(266, 425, 266, 55), 0, 1); // SETTINGS tab
    m.button(QRect(532, 425, 268, 55), 0, 2); // TREND tab
}

// Page 1: the brightness slider and the sleep time's bar with their
// numbers, - and + for the sleep time, the baud rate, the version, the
// switches.
void makeSettings(PageMaker &m)
{
    m.title(kSettingsTitle);
    headerClock(m);
    EditBuffer &brightness = m.number(QRect(644, 144, 84, 22), kBodyFont, "0x3A4B5E", 3, 0, "70", "%");
    EditBuffer &sleep = m.number(QRect(644, 202, 84, 22), kBodyFont, "0x3A4B5E", 3, 0, "35", "s");

    // the knob rides on the track; the touch area is the track's row
    EditBuffer &slider = m.add(WidgetKind::Slider, kBrightnessTrack);
    PageMaker::share(slider, brightness);
    const QRect touch = kBrightnessTrack.adjusted(-kKnob.width() / 2, -12, kKnob.width() / 2, 12);
    PageMaker::set(slider, "touch_X", touch.x());
    PageMaker::set(slider, "touch_Y", touch.y());
    PageMaker::set(slider, "touch_W", touch.width());
    PageMaker::set(slider, "touch_H", touch.height());
    PageMaker::set(slider, "defaultValue", 70);
    PageMaker::set(slider, "bar_X", kBrightnessTrack.x());
    PageMaker::set(slider, "bar_Y", kBrightnessTrack.y());
    PageMaker::set(slider, "barIcon", iconRef(kTrackFillIcon));
    PageMaker::set(slider, "slideButton", iconRef(kKnobIcon));
    PageMaker::set(slider, "background", iconRef(kTrackIcon));

    EditBuffer &bar = m.add(WidgetKind::Progress, kSleepTrack);
    PageMaker::share(bar, sleep);
    PageMaker::set(bar, "bar_X", kSleepTrack.x());
    PageMaker::set(bar, "bar_Y", kSleepTrack.y());
    PageMaker::set(bar, "barIcon", iconRef(kTrackFillIcon));
    PageMaker::set(bar, "defaultValue", 35);
    PageMaker::set(bar, "background", iconRef(kTrackIcon));

    for (const QRect &r : {kSleepMinus, kSleepPlus}) { // 5 s a touch, held: on and on, 0 to 100
        EditBuffer &adj = m.add(WidgetKind::VarAdj, r);
        PageMaker::share(adj, sleep);
        PageMaker::set(adj, "adjStep", 5);
        PageMaker::set(adj, "gradation", r == kSleepMinus ? QStringLiteral("-") : QStringLiteral("+"));
        PageMaker::set(adj, "cyclicalCounting", QStringLiteral("Stop"));
        PageMaker::set(adj, "longPress", QStringLiteral("Repeat"));
    }
    // a touch on the sleep time opens the keyboard page: 0 to 100, three digits
    EditBuffer &keypad = m.add(WidgetKind::Keypad, QRect(644, 199, 84, 28));
    PageMaker::share(keypad, sleep);
    PageMaker::set(keypad, "input_X", kKeypadField.x() + 14);
    PageMaker::set(keypad, "input_Y", kKeypadField.y() + 14);
    PageMaker::set(keypad, "input_Max", 100);
    PageMaker::set(keypad, "input_Min", 0);
    PageMaker::set(keypad, "inputLimit", QStringLiteral("true"));
    PageMaker::set(keypad, "integerDigit", 3);
    PageMaker::set(keypad, "fontID", kReadoutFont);
    PageMaker::set(keypad, "fontWidth", m.fontWidth(kReadoutFont));
    PageMaker::set(keypad, "fontColor", QStringLiteral("0xE8F1FA"));
    PageMaker::set(keypad, "cursorColor", QStringLiteral("White"));
    PageMaker::set(keypad, "pageID", pageRef(kKeypadRow));
    PageMaker::set(keypad, "backgroundPage", pageRef(1));

    m.label(QRect(541, 339, 170, 20), kBodyFont, "0x3A4B5E", kLeft, QStringLiteral("115200"));

    EditBuffer &version = m.add(WidgetKind::Statictext, QRect(10, 437, 170, 22));
    m.useFont(version, kBodyFont);
    PageMaker::set(version, "fontColor", QStringLiteral("0x8A9DB1"));
    PageMaker::set(version, "alignment", kMiddle);
    PageMaker::set(version, "Constant_Num", 1);
    PageMaker::set(version, "defaultText", QString::fromUtf8(kVersion.en));

    m.button(QRect(402, 304, 62, 30), 0x0011); // KEY BEEP switch
    m.button(QRect(402, 354, 62, 30), 0x0012); // ALARM TONE switch
    m.button(QRect(520, 420, 120, 44), 0x0010); // SAVE
    m.button(QRect(658, 420, 120, 44), 0, 0);   // BACK to the home page
}

// Page 2: the two channels' curves over the chart, on a scale of 0 to 100
// with the reference line at 50 (the chart is 300 rows high from row 74),
// and the paging buttons below the chart.
void makeTrend(PageMaker &m)
{
    m.title(kTrendTitle);
    headerClock(m);
    const QRect chart(70, 74, 684, 300);
    const char *colours[2] = {"0x00C8F0", "0x2ED573"}; // TEMP, HUMIDITY of the legend
    for (int channel = 0; channel < 2; ++channel) {
        EditBuffer &curve = m.add(WidgetKind::Curve, chart);
        PageMaker::set(curve, "channel", channel);
        PageMaker::set(curve, "lineColor", QLatin1String(colours[channel]));
        PageMaker::set(curve, "lineWidth", 2);
        PageMaker::set(curve, "x_Spacing(Pixels)", QStringLiteral("6"));
        PageMaker::set(curve, "maxData", QStringLiteral("100"));
        PageMaker::set(curve, "minData", QStringLiteral("0"));
        PageMaker::set(curve, "y_ReferenceLine", chart.bottom() + 1 - chart.height() / 2);
        PageMaker::set(curve, "y_ReferenceLine_referenceValue", 50);
    }
    m.button(QRect(584, 414, 76, 44), 0, 0); // "<" home
    m.button(QRect(678, 414, 76, 44), 0, 3); // ">" standby
}

// Page 3, a plain colour: the run hours in digit pictures, and a scrolling
// line in a band that is a button back to the home page.
void makeStandby(PageMaker &m)
{
    m.label(QRect(250, 96, 300, 24), "0xE8F1FA", kMiddle, kStandbyTitle);
    m.label(QRect(250, 170, 300, 24), "0x8AA0B6", kMiddle, kRunHours);

    EditBuffer &hours = m.add(WidgetKind::PngNumber, QRect(280, 204, 5 * kDigitW, kDigitH));
    PageMaker::set(hours, "integerDigit", 5);
    PageMaker::set(hours, "dataType", QStringLiteral("ushort"));
    PageMaker::set(hours, "alignment", QStringLiteral("Middle"));
    PageMaker::set(hours, "firstIcon", digitIcon(0));
    PageMaker::set(hours, "lastIcon", digitIcon(9));
    PageMaker::set(hours, "defaultNumber", QStringLiteral("1280"));

    EditBuffer &ticker = m.add(WidgetKind::TextRoll, QRect(0, 400, W, 28));
    m.useFont(ticker, kTextFont);
    PageMaker::set(ticker, "fontColor", QStringLiteral("0xE8F1FA"));
    PageMaker::set(ticker, "backgroundColor", QStringLiteral("0x0C1620"));
    PageMaker::set(ticker, "interval", 5);
    PageMaker::set(ticker, "defaultText", QString::fromUtf8(kTicker.en));
    m.translate(ticker, kTicker);

    m.button(QRect(0, 384, W, 60), 0, 0);

    EditBuffer &spinner = m.add(WidgetKind::Gif, QRect((W - kSpinSize) / 2, 310, kSpinSize, kSpinSize));
    PageMaker::set(spinner, "gifName", kSpinnerGif);
    PageMaker::set(spinner, "interval(10ms)", kSpinDelay); // as the file's own frames

    // the time on a dial at the left; the panel draws the hands
    EditBuffer &clock = m.add(WidgetKind::Clock, QRect(60, 130, kClockSide, kClockSide));
    PageMaker::set(clock, "background", iconRef(kClockFaceIcon));
    PageMaker::set(clock, "centerIcon", iconRef(kClockCapIcon));
    const struct {
        const char *hand;
        int longEnd, shortEnd, width;
        const char *colour;
    } hands[3] = {{"hour", 38, 8, 6, "0xE8F1FA"}, {"minute", 54, 10, 4, "0xE8F1FA"}, {"second", 60, 14, 2, "0xFF9F1C"}};
    for (const auto &h : hands) {
        PageMaker::set(clock, qPrintable(QLatin1String(h.hand) + QStringLiteral("Hand_L")), h.longEnd);
        PageMaker::set(clock, qPrintable(QLatin1String(h.hand) + QStringLiteral("Hand_S")), h.shortEnd);
        PageMaker::set(clock, qPrintable(QLatin1String(h.hand) + QStringLiteral("Hand_W")), h.width);
        PageMaker::set(clock, qPrintable(QLatin1String(h.hand) + QStringLiteral("HandColor")), QLatin1String(h.colour));
    }

    // the project's web address as a QR code of 2 x 50 pixels at the right
    EditBuffer &qr = m.add(WidgetKind::QRCode, QRect(620, 140, 100, 100));
    PageMaker::set(qr, "size(50pixels)", 2);
    PageMaker::set(qr, "content", QLatin1String(kWebAddress));
}

// Page 4: the keyboard page; the keys enter digits, "<" takes one back
// (backspace) and "OK" ends the entry (carriage return).
void makeKeypad(PageMaker &m)
{
    for (int i = 0; i < 12; ++i) {
        EditBuffer &key = m.add(WidgetKind::KBKey, keyRect(i));
        const char cap = kKeyCaps[i][0];
        const quint16 code = i == 9 ? 0x08 : i == 11 ? 0x0D : quint16(cap);
        PageMaker::set(key, "keyCode", LineGrammar::hex16(code));
    }
}

// ---------------------------------------------------------------------------
// Writing.

QByteArray encodeImage(const QImage &img, const char *format, int quality)
{
    QByteArray bytes;
    QBuffer buf(&bytes);
    buf.open(QIODevice::WriteOnly);
    if (!img.save(&buf, format, quality))
        return QByteArray();
    return bytes;
}

// WavBin/: a short key beep, 1 kHz for 0.1 s, as a plain WAV file (16-bit
// mono at 8000 Hz), with a soft start and end. The build carries it as it is.
QByteArray beepWav()
{
    const int rate = 8000, samples = 800;
    QByteArray pcm;
    for (int i = 0; i < samples; ++i) {
        const double fade = qMin(1.0, qMin(i, samples - 1 - i) / 80.0);
        const qint16 v = qint16(std::lround(12000.0 * fade * std::sin(2.0 * M_PI * 1000.0 * i / rate)));
        pcm.append(char(v & 0xFF)).append(char((v >> 8) & 0xFF));
    }
    QByteArray wav;
    auto u32 = [&wav](quint32 v) { for (int i = 0; i < 4; ++i) wav.append(char(v >> (8 * i))); };
    auto u16 = [&wav](quint16 v) { wav.append(char(v & 0xFF)).append(char(v >> 8)); };
    wav.append("RIFF");
    u32(quint32(36 + pcm.size()));
    wav.append("WAVEfmt ");
    u32(16);
    u16(1); // PCM
    u16(1); // mono
    u32(rate);
    u32(rate * 2);
    u16(2);
    u16(16);
    wav.append("data");
    u32(quint32(pcm.size()));
    return wav + pcm;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QString error;
    if (!TextFiles::writeAtomically(path, bytes, &error)) {
        std::fprintf(stderr, "vantile-make-demo: cannot write %s: %s\n", qPrintable(path), qPrintable(error));
        return false;
    }
    return true;
}

struct PicturePage {
    const char *file;   // four digits, "_", a name
    const char *name;   // shown in the page table
    QImage (*draw)();
    const char *format;
    int quality;        // PNG: 0 is the strongest compression
};

const PicturePage kPictures[] = {
    {"0000_home.png", "Home", drawHome, "PNG", 0},
    {"0001_settings.png", "Settings", drawSettings, "PNG", 0},
    {"0002_trend.jpg", "Trend", drawTrend, "JPEG", 90},
};

// FontBin/LICENSE-fonts.txt
const char kFontLicence[] =
    "The font files in this folder are bitmap renderings of outline fonts,\n"
    "made by Vantile's font maker (tools/demo/make_demo.cpp, through\n"
    "src/build/FontMaker) from the fonts installed by Debian's packages.\n"
    "Only the characters the demo shows carry glyphs.\n"
    "\n"
    "00_DejaVuSans18Font.bin, 01_DejaVuSansBold24Font.bin\n"
    "  rendered from DejaVu Sans and DejaVu Sans Bold (package fonts-dejavu-core).\n"
    "  Copyright (c) 2003 by Bitstream, Inc. All Rights Reserved. Bitstream Vera\n"
    "  is a trademark of Bitstream, Inc. DejaVu changes are in public domain.\n"
    "  Licence: the Bitstream Vera font licence (\"bitstream-vera\"), under which\n"
    "  the DejaVu fonts are distributed; its text is in\n"
    "  /usr/share/doc/fonts-dejavu-core/copyright.\n"
    "\n"
    "02_NotoSansSC20Font.bin\n"
    "  rendered from Noto Sans CJK SC (package fonts-noto-cjk).\n"
    "  Copyright 2010-2012, Google Corporation.\n"
    "  Licence: SIL Open Font License, Version 1.1 (\"SIL-1.1\"); its text is in\n"
    "  /usr/share/doc/fonts-noto-cjk/copyright.\n";

const char *const kFolders[] = {"Picture", "FontBin", "Gif",   "Icon",         "Music",
                                "Plugin",  "Video",   "WavBin", "MultiLanguage"};

} // namespace

int main(int argc, char *argv[])
{
    // the fonts are rendered by Qt's font engine, which needs no display
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 2 || args[1].startsWith(QLatin1Char('-'))) {
        std::fprintf(stderr, "usage: vantile-make-demo <directory>\n"
                             "Writes the demo project (demo.uiprj, demo.ini, folders, pictures, fonts, pages).\n");
        return 2;
    }
    QDir dir(args[1]);
    if (!dir.mkpath(QStringLiteral(".")))
        fail(QStringLiteral("cannot make ") + args[1]);
    for (const char *f : kFolders) {
        if (!dir.mkpath(QString::fromLatin1(f)))
            fail(QStringLiteral("cannot make %1/%2").arg(args[1], QLatin1String(f)));
    }
    auto write = [&dir](const QString &name, const QByteArray &bytes) {
        if (!writeFile(dir.filePath(name), bytes))
            std::exit(1);
    };

    // pictures and their page lines
    QStringList lines;
    int row = 0;
    for (const PicturePage &pp : kPictures) {
        const QImage img = pp.draw();
        const QByteArray bytes = encodeImage(img, pp.format, pp.quality);
        if (bytes.isEmpty())
            fail(QStringLiteral("cannot encode %1 as %2").arg(QLatin1String(pp.file), QLatin1String(pp.format)));
        write(QStringLiteral("Picture/") + QString::fromLatin1(pp.file), bytes);
        PageInfo info;
        info.isColor = false;
        info.image = QString::fromLatin1(pp.file);
        info.name = QString::fromLatin1(pp.name);
        info.color = QLatin1String(PageList::kBlackColor);
        lines << info.toLine(row++);
    }

    // one plain-colour page
    {
        PageInfo info;
        info.isColor = true;
        info.color = PageList::rgbColorText(18, 30, 44);
        info.background = info.color;
        info.name = QStringLiteral("Standby");
        lines << info.toLine(row++);
    }
    // the keyboard page, after it
    {
        write(QStringLiteral("Picture/0004_keypad.png"), encodeImage(drawKeypadPage(), "PNG", 0));
        PageInfo info;
        info.isColor = false;
        info.image = QStringLiteral("0004_keypad.png");
        info.name = QStringLiteral("Keypad");
        info.color = QLatin1String(PageList::kBlackColor);
        if (row != kKeypadRow)
            fail(QStringLiteral("the keyboard page must be page %1").arg(kKeypadRow));
        lines << info.toLine(row++);
    }
    write(QStringLiteral("demo.uiprj"), TextFiles::encodePlain(lines));

    // the digit pictures of the picture number, then the widgets' pictures
    for (int n = 0; n <= kLastIcon; ++n)
        write(QStringLiteral("Icon/") + iconRef(n), encodeImage(drawIcon(n), "PNG", 0));
    const QByteArray spinner = spinnerGif();
    checkSpinner(spinner);
    write(QStringLiteral("Gif/") + kSpinnerGif, spinner);

    // the fonts, and their headers for the widgets' font rows
    QString chinese;
    for (const Words *w : kAllWords)
        chinese += QString::fromUtf8(w->zh);
    QVector<FontFile::Header> fonts;
    for (const DemoFont &f : kFonts) {
        const QByteArray bytes = makeFont(f, chinese);
        FontFile::Header h;
        FontFile::Header::parse(bytes, &h);
        fonts << h;
        write(QStringLiteral("FontBin/") + FontMaker::fileName(f.id, QLatin1String(f.name)), bytes);
    }
    write(QStringLiteral("FontBin/LICENSE-fonts.txt"), QByteArray(kFontLicence));
    write(QStringLiteral("WavBin/0000_BeepWav.bin"), beepWav());

    // settings: a 800 x 480 panel on chip index 3, two languages
    ProjectSettings s;
    s.applyChip(3);
    s.xsize = QStringLiteral("800");
    s.ysize = QStringLiteral("480");
    s.baudrate = 4;  // 115200
    s.devNum = QStringLiteral("1");
    s.flashSize = 3; // 16MB
    s.blon = QStringLiteral("63");
    s.blsp = QStringLiteral("10");
    s.kptm = QStringLiteral("30");
    s.volume = QStringLiteral("10");
    s.keyBeep = true;
    s.startPage = 0;
    s.languageNum = QStringLiteral("2");
    s.geData = QStringLiteral("0");
    s.compileDateTime = QDateTime(QDate(2025, 1, 1), QTime(8, 0, 0));
    write(QStringLiteral("demo.ini"), s.toIni());

    // the widgets of each page and, for its texts in two languages, its language table
    void (*const makers[])(PageMaker &) = {makeHome, makeSettings, makeTrend, makeStandby, makeKeypad};
    static_assert(sizeof(makers) / sizeof(makers[0]) == sizeof(kPictures) / sizeof(kPictures[0]) + 2,
                  "one maker for each page");
    quint32 nextAddress = kFirstWriteAddress;
    for (int i = 0; i < lines.size(); ++i) {
        PageMaker maker(nextAddress, fonts);
        makers[i](maker);
        const QString page = QStringLiteral("Page") + PageList::pageId(i);
        write(QStringLiteral("Plugin/") + page + QStringLiteral(".cfg"),
              TextFiles::encodePlain(maker.lines(s.panelType)));
        write(QStringLiteral("MultiLanguage/") + page + QStringLiteral(".csv"),
              TextFiles::encodePlain(maker.languageRows()));
    }
    write(QStringLiteral("MultiLanguage/TableHeader.txt"),
          TextFiles::encodePlain({QStringLiteral("defaultLanguage,Language1")}));

    // the static texts: number, then text, colour and font for each language
    const QString version = QStringList{QStringLiteral("1"),
                                        LineGrammar::toHexText(QString::fromUtf8(kVersion.en)),
                                        QStringLiteral("0X8A9DB1"), QString::number(kBodyFont),
                                        LineGrammar::toHexText(QString::fromUtf8(kVersion.zh)),
                                        QStringLiteral("0X8A9DB1"), QString::number(kTextFont)}
                                .join(QLatin1Char(','));
    write(QStringLiteral("Constant_text.csv"), TextFiles::encodePlain({version}));
    // a build leaves its lists (*.csv, ignored above this folder) and the
    // language block beside the project's own files
    write(QStringLiteral(".gitignore"), QByteArrayLiteral("!/Constant_text.csv\n"
                                                          "/MultiLanguage/MultiLanguage.bin\n"
                                                          "/MultiLanguage/MultiLanguage.tmp\n"));

    // git keeps no empty folders: a marker in each folder left empty
    for (const char *f : kFolders) {
        QDir sub(dir.filePath(QString::fromLatin1(f)));
        const QStringList entries = sub.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
        if (entries.isEmpty())
            write(QString::fromLatin1(f) + QStringLiteral("/.gitkeep"), QByteArray());
    }

    std::printf("demo project written to %s (%d pages)\n", qPrintable(QDir::cleanPath(dir.absolutePath())),
                int(lines.size()));
    return 0;
}
