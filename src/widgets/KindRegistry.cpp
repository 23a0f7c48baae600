#include "widgets/KindRegistry.h"
#include "widgets/ButtonKinds.h"
#include "widgets/TextKinds.h"
#include "widgets/EditBuffer.h"
#include "widgets/GaugeKinds.h"
#include "widgets/IconKinds.h"
#include "widgets/KeyboardKinds.h"
#include "widgets/MediaKinds.h"
#include "widgets/MenuKinds.h"
#include "widgets/CurveKinds.h"
#include "widgets/NumberKinds.h"
#include "widgets/Records.h"
#include "widgets/TimeKinds.h"
#include "widgets/VariableKinds.h"
#include "widgets/WidgetLine.h"

#include <array>

namespace vantile {

namespace KindRegistry {

namespace {

// Every described kind, once. A new kind's unit adds its KindDef here.
const KindDef *const kDescribed[] = {
    &ButtonKinds::button,
    &ButtonKinds::popBox,
    &ButtonKinds::kbKey,
    &TextKinds::label,
    &TextKinds::staticText,
    &TextKinds::textRoll,
    &NumberKinds::number,
    &NumberKinds::pngNumber,
    &VariableKinds::varAdj,
    &VariableKinds::batVar,
    &VariableKinds::autoVar,
    &VariableKinds::encoder,
    &GaugeKinds::slider,
    &GaugeKinds::progress,
    &GaugeKinds::rProgress,
    &GaugeKinds::rTouch,
    &GaugeKinds::needle,
    &IconKinds::icon,
    &IconKinds::bitIcon,
    &IconKinds::gif,
    &KeyboardKinds::keypad,
    &KeyboardKinds::enkeyB,
    &KeyboardKinds::cnkeyB,
    &TimeKinds::rtc,
    &TimeKinds::analogClock,
    &TimeKinds::uitimer,
    &MediaKinds::wav,
    &MediaKinds::video,
    &MediaKinds::camera,
    &MediaKinds::qrcode,
    &MenuKinds::slMenu,
    &MenuKinds::slideMenuPro,
    &CurveKinds::curve,
};

const std::array<const KindDef *, kWidgetKindCount> &byKind()
{
    static const std::array<const KindDef *, kWidgetKindCount> table = [] {
        std::array<const KindDef *, kWidgetKindCount> t{};
        for (const KindDef *s : kDescribed)
            t[kindIndex(s->kind)] = s;
        return t;
    }();
    return table;
}

int write(QByteArray &out, const QString &line, const RecordContext &ctx, bool vice)
{
    const WidgetKind kind = WidgetKinds::kindOfLine(line);
    const KindDef *s = definition(kind);
    const RecordWriter writer = s ? (vice ? s->writeViceRecord : s->writeRecord) : nullptr;
    if (!writer)
        return 0;
    EditBuffer widget;
    WidgetLine::parse(line, kind, widget);
    return writer(out, widget, ctx);
}

} // namespace

const KindDef *definition(WidgetKind kind)
{
    const int i = kindIndex(kind);
    if (i < 0 || i >= kWidgetKindCount)
        return nullptr;
    return byKind()[i];
}

bool hasSchema(WidgetKind kind)
{
    return definition(kind) != nullptr;
}

QString noSchemaMessage(WidgetKind kind)
{
    return QStringLiteral("no schema for kind ") + QLatin1String(WidgetKinds::info(kind).word);
}

int writeRecord(QByteArray &out, const QString &line, const RecordContext &ctx)
{
    return write(out, line, ctx, false);
}

int writeViceRecord(QByteArray &out, const QString &line, const RecordContext &ctx)
{
    return write(out, line, ctx, true);
}

} // namespace KindRegistry

} // namespace vantile
