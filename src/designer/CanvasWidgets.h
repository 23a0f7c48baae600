#pragma once
// The live widgets of the page on the canvas: one plain label per widget
// line, held in the fixed slot tables of the kinds. Lines stay the truth;
// labels are rebuilt from them.

#include "widgets/EditBuffer.h"
#include "widgets/WidgetSlots.h"

#include <QString>

class QLabel;
class QWidget;

namespace vantile {

class CanvasWidgets
{
public:
    // The look of a widget that is neither marked nor the reference: the
    // translucent fill and border of its kind's family (WidgetLook), so that
    // the page's picture shows through and kinds tell apart.
    static QString commonStyle(const QString &objectName);
    // Gives a live label its unmarked look back.
    static void setCommonLook(QLabel *label);

    explicit CanvasWidgets(QLabel *canvas);

    void clear();
    // Builds the label of a widget line. Returns an error text for the log
    // ("Error button index:128", or a damaged font the widget names),
    // empty otherwise; lines of kinds whose
    // fields are not described yet are kept but show nothing.
    QString load(const QString &line, float zoom, const QString &projectDir);
    QLabel *find(const QString &objectName) const;
    // The lowest free slot of the kind's table; -1 when it is full.
    int lowestFree(WidgetKind kind) const;
    int count() const;

    // Marks of a group selection: the slot's selected byte.
    void setMarked(const QString &objectName, bool marked);
    bool isMarked(const QString &objectName) const;
    void clearMarks();

    // Puts the label of a parsed widget at its scaled rectangle and paints
    // its picture, if the kind has one. Returns the picture's size in panel
    // pixels when one was painted (the widget then takes that size). The
    // text and number kinds render at their own size and return none;
    // *problem names a font or picture they could not use.
    QSize paint(QLabel *label, const EditBuffer &widget, float zoom, const QString &projectDir,
                QString *problem = nullptr) const;

    // The picture a kind shows on the canvas: the field that names it and
    // the folder it lies in; empty key for kinds that draw nothing of their own.
    struct PictureField {
        const char *key;
        const char *folder;
    };
    static PictureField pictureField(WidgetKind kind);

    static QRect scaled(const QRect &panel, float zoom);

private:
    QLabel *m_canvas;
    PageSlots<QLabel> m_slots;
};

} // namespace vantile
