#include "designer/MediaRenderers.h"

#include "widgets/MediaKinds.h"

#include <QPainter>

#include <qrcodegen.hpp>

#include <exception>

namespace vantile {

namespace MediaRenderers {

int moduleStart(int i, int n, int side)
{
    return n > 0 ? int(qint64(i) * side / n) : 0;
}

QImage renderQrcode(const EditBuffer &widget, const QString &, QString *problem)
{
    const int side = int(widget.number(MediaKinds::kSizeKey)) * MediaKinds::kSizeStep;
    if (widget.w() <= 0 || widget.h() <= 0 || side <= 0)
        return QImage();
    const QByteArray text = widget.text("content").toUtf8();
    try {
        const qrcodegen::QrCode code = qrcodegen::QrCode::encodeText(text.constData(), qrcodegen::QrCode::Ecc::LOW);
        const int n = code.getSize();
        QImage image(widget.w(), widget.h(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter p(&image);
        for (int y = 0; y < n; ++y) {
            const int top = moduleStart(y, n, side);
            const int height = moduleStart(y + 1, n, side) - top;
            for (int x = 0; x < n; ++x) {
                if (!code.getModule(x, y))
                    continue;
                const int left = moduleStart(x, n, side);
                p.fillRect(left, top, moduleStart(x + 1, n, side) - left, height, Qt::black);
            }
        }
        return image;
    } catch (const std::exception &) {
        // only a text beyond the largest code's capacity gets here
        if (problem)
            *problem = widget.name() + QStringLiteral(": the content is too long for a QR code");
        return QImage();
    }
}

} // namespace MediaRenderers

} // namespace vantile
