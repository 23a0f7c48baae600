#include "widgets/WriteAddress.h"

#include "widgets/WidgetLine.h"

namespace vantile {
namespace WriteAddress {

void scan(const QStringList &lines, quint32 &next)
{
    for (const QString &line : lines) {
        EditBuffer w;
        if (WidgetLine::parse(line, w) != ParseStatus::Ok)
            continue;
        const KindDef *def = w.definition();
        for (int i = 0; i < def->fieldCount; ++i) {
            if (!def->fields[i].writeAddress)
                continue;
            const quint32 a = quint32(w.value(i).number);
            if (a < kSystemRange && a >= next)
                next = a + 1;
        }
    }
}

int assign(EditBuffer &widget, quint32 &next)
{
    const KindDef *def = widget.definition();
    if (!def)
        return 0;
    int taken = 0;
    for (int i = 0; i < def->fieldCount; ++i) {
        if (!def->fields[i].writeAddress || widget.value(i).number == 0xFFFF)
            continue;
        FieldValue v = widget.value(i);
        v.number = next & 0xFFFF;
        widget.setValue(i, v);
        ++next;
        ++taken;
    }
    return taken;
}

int dropStep(WidgetKind kind)
{
    switch (kind) {
    case WidgetKind::Label: return 20;
    case WidgetKind::TextRoll: return 32;
    case WidgetKind::Number:
    case WidgetKind::PngNumber: return 4;
    case WidgetKind::Icon:
    case WidgetKind::BitIcon:
    case WidgetKind::Gif:
    case WidgetKind::VarAdj:
    case WidgetKind::AutoVar:
    case WidgetKind::Slider:
    case WidgetKind::Progress:
    case WidgetKind::RProgress:
    case WidgetKind::RTouch:
    case WidgetKind::Needle:
    case WidgetKind::Camera:
    case WidgetKind::SlMenu:
    case WidgetKind::SlideMenuPro: return 1;
    case WidgetKind::QRCode: return 32; // the words of its 64 bytes of text
    default: return 0;
    }
}

} // namespace WriteAddress
} // namespace vantile
