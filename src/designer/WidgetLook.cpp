#include "designer/WidgetLook.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

namespace vantile {

namespace WidgetLook {

namespace {

using K = WidgetKind;

struct FamilyInfo {
    Family family;
    const char *name;
    QRgb colour;
    WidgetKind kinds[7]; // ended by None
};

// Hues kept apart around the wheel; each bright enough for a dark page and
// deep enough for a light one.
const FamilyInfo kFamilies[kFamilyCount] = {
    {Family::Touch, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Touch and buttons"), qRgb(255, 140, 0),
     {K::Button, K::PopBox, K::VarAdj, K::BatVar, K::AutoVar, K::Encoder, K::None}},
    {Family::Text, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Text and numbers"), qRgb(0, 160, 255),
     {K::Label, K::Statictext, K::TextRoll, K::Number, K::PngNumber, K::None}},
    {Family::Picture, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Icons and gifs"), qRgb(30, 190, 80), {K::Icon, K::BitIcon, K::Gif, K::None}},
    {Family::Gauge, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Bars and gauges"), qRgb(180, 90, 255),
     {K::Slider, K::Progress, K::RProgress, K::RTouch, K::Needle, K::None}},
    {Family::Keyboard, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Keyboards"), qRgb(225, 195, 0), {K::Keypad, K::ENKeyB, K::CNKeyB, K::KBKey, K::None}},
    {Family::Time, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Time"), qRgb(0, 195, 185), {K::RTC, K::Clock, K::UITimer, K::None}},
    {Family::Media, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Media"), qRgb(255, 70, 150), {K::Wav, K::Video, K::Camera, K::QRCode, K::None}},
    {Family::Menu, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Menus"), qRgb(150, 205, 30), {K::SlMenu, K::SlideMenuPro, K::None}},
    {Family::Curve, QT_TRANSLATE_NOOP("vantile::WidgetLook", "Curve"), qRgb(235, 60, 50), {K::Curve, K::None}},
};

const FamilyInfo &infoOf(Family f)
{
    return kFamilies[int(f)];
}

} // namespace

Family family(WidgetKind kind)
{
    for (const FamilyInfo &f : kFamilies)
        for (int i = 0; f.kinds[i] != WidgetKind::None; ++i)
            if (f.kinds[i] == kind)
                return f.family;
    return Family::Touch;
}

QColor colour(Family f)
{
    return QColor(infoOf(f).colour);
}

const char *familyName(Family f)
{
    return infoOf(f).name;
}

QVector<WidgetKind> kinds(Family f)
{
    QVector<WidgetKind> out;
    for (int i = 0; infoOf(f).kinds[i] != WidgetKind::None; ++i)
        out << infoOf(f).kinds[i];
    return out;
}

namespace {

QString styleWithFill(WidgetKind kind, int fillAlpha)
{
    const QColor c = colour(family(kind));
    const QString rgb = QStringLiteral("%1, %2, %3").arg(c.red()).arg(c.green()).arg(c.blue());
    return QStringLiteral("background-color: rgba(%1, %2);border: 1px solid rgba(%1, 230);").arg(rgb).arg(fillAlpha);
}

} // namespace

QString style(WidgetKind kind)
{
    return styleWithFill(kind, 64);
}

QString style(const EditBuffer &widget)
{
    // A large widget (a chart, a menu over half the page) is tinted more
    // lightly, so that the page's picture under it still reads.
    constexpr qint64 kFullTintArea = 40000;
    const qint64 area = qint64(qMax(0, int(widget.w()))) * qMax(0, int(widget.h()));
    const int alpha = area <= kFullTintArea ? 64 : int(qMax<qint64>(20, 64 * kFullTintArea / area));
    return styleWithFill(widget.kind(), alpha);
}

void paintNameTag(QPainter &painter, const QRect &inside, const QString &text)
{
    if (text.isEmpty() || inside.width() < 4 || inside.height() < 4)
        return;
    painter.save();
    QFont f = painter.font();
    f.setPixelSize(10);
    f.setBold(false);
    painter.setFont(f);
    const QFontMetrics fm(f);
    const int padding = 2;
    const QString shown = fm.elidedText(text, Qt::ElideRight, inside.width() - 2 * padding);
    const int stripW = qMin(inside.width(), fm.horizontalAdvance(shown) + 2 * padding);
    const int stripH = qMin(inside.height(), fm.height() + 1);
    const QRect strip(inside.topLeft(), QSize(stripW, stripH));
    painter.setClipRect(inside);
    painter.fillRect(strip, QColor(0, 0, 0, 190));
    painter.setPen(QColor(255, 255, 255));
    painter.drawText(strip.adjusted(padding, 0, -padding, 0), Qt::AlignLeft | Qt::AlignVCenter, shown);
    painter.restore();
}

} // namespace WidgetLook

} // namespace vantile
