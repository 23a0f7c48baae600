#pragma once
// What the text and number kinds show: their picture at panel size
// (W x H), made from the parsed widget and the project's FontBin/, Icon/
// and Constant_text.csv. Qt Gui only, no widgets: the canvas scales these
// by its zoom, and anything else that draws a page (a panel emulator) can
// take them as they are.
//
// A renderer gives a null image when the widget has nothing of its own to
// show (no font file, no digit pictures, an empty text, an empty or
// absurdly large rectangle); the canvas then shows the kind's family look.

#include "widgets/EditBuffer.h"

#include <QColor>
#include <QImage>
#include <QString>

namespace vantile {

namespace TextRenderers {

// A renderer of one kind. `problem`, when given, receives why a file the
// widget names could not be used (a damaged font, an unreadable digit
// picture); a file that simply isn't there is no problem, only nothing
// to draw.
using Renderer = QImage (*)(const EditBuffer &widget, const QString &projectDir, QString *problem);

QImage renderLabel(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderTextRoll(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderNumber(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);
QImage renderPngNumber(const EditBuffer &widget, const QString &projectDir, QString *problem = nullptr);

// A number's text drawn from a run of pictures of Icon/, `first` to
// `last`: the digits 0-9 first, then the minus sign and the point when the
// run has them. Characters without a picture are left out; null when no
// picture shows. `who` names the widget in *problem.
QImage digitRun(const QString &text, int first, int last, const QString &projectDir, const QString &who,
                QString *problem = nullptr);
// One line of text in the font of `fontId`, at the text's own size; null
// without a usable font or text.
QImage fontRun(const QString &text, int fontId, const QColor &colour, const QString &projectDir, const QString &who,
               QString *problem = nullptr);

// The first file of FontBin/ (in name order) whose two-digit number is
// the font id; empty when there is none.
QString fontFilePath(const QString &projectDir, int fontId);

// The text a label or Statictext shows, before password stars: a
// Statictext's entry Constant_Num of Constant_text.csv (first language)
// when the project has that entry, else the widget's defaultText.
QString labelText(const EditBuffer &widget, const QString &projectDir);

// The value as the panel reads it back from variable memory in the form
// of a data type value: cut to the type's width, sign-extended for the
// signed types, one bit for the bit types.
qint64 valueAsStored(qint64 value, int dataType);

// The digits a number shows for a value that carries `decimalDigit`
// digits behind the point: the integer part is cut to its lowest
// `integerDigit` digits (at least one), padded with zeros to that many
// when `leadingZero`; a negative value gets "-" in front.
// (1230, 3, 2, false) gives "12.30"; (7, 3, 0, true) gives "007".
QString numberText(qint64 value, int integerDigit, int decimalDigit, bool leadingZero);

// The horizontal class of an alignment number: 0 left, 1 centre, 2 right
// (the T- and B- forms place like their plain word).
inline int alignmentClass(int alignment) { return alignment >= 0 && alignment <= 8 ? alignment % 3 : 0; }

} // namespace TextRenderers

} // namespace vantile
