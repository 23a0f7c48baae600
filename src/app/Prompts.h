#pragma once
// Every message box and file dialog of the designer goes through here.
// The designer shows real boxes; tests install a responder that records
// what was asked and answers without a window.

#include <QColor>
#include <QMessageBox>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <functional>

class QWidget;

namespace vantile {

struct PromptRecord {
    QString kind;   // "message", "question", "open", "save"
    QString title;
    QString text;   // the message (plain, without the colour markup) or the filter
    QString detail; // the box's detail text (which file, and why)
};

namespace Prompts {

// The one message box helper: title, message in blue, 18 px font, one button.
// A detail, when given, is shown under the message (the file and the
// system's reason for a failed read or write).
void message(QWidget *parent, const QString &title, const QString &text, const QString &detail = QString());

// A question with the given buttons; returns the button pressed.
// buttonTexts, when given, relabel the buttons in order.
QMessageBox::StandardButton question(QWidget *parent, const QString &title, const QString &text,
                                     QList<QMessageBox::StandardButton> buttons,
                                     const QStringList &buttonTexts = {},
                                     QMessageBox::Icon icon = QMessageBox::Question,
                                     const QString &detail = QString());

QString openFile(QWidget *parent, const QString &title, const QString &dir, const QString &filter);
QString saveFile(QWidget *parent, const QString &title, const QString &dir, const QString &filter);

// A pop-up menu of words at a global position; empty when dismissed.
QString chooseWord(QWidget *parent, const QStringList &words, const QPoint &globalPos);
// The colour dialog; an invalid colour when cancelled.
QColor chooseColor(QWidget *parent, const QColor &initial, const QString &title);

// --- for tests ---------------------------------------------------------
struct Responder {
    // Answer to a question; return NoButton to take the first button.
    std::function<QMessageBox::StandardButton(const PromptRecord &)> answer;
    // Path to return from a file dialog; empty means cancelled.
    std::function<QString(const PromptRecord &)> file;
    // Word chosen from a pop-up menu (empty: dismissed).
    std::function<QString(const QStringList &)> word;
    // Colour chosen in the colour dialog (invalid: cancelled).
    std::function<QColor(const QColor &)> color;
};
void installResponder(const Responder &r); // every prompt is then recorded, never shown
void removeResponder();
QList<PromptRecord> &recorded();

} // namespace Prompts

} // namespace vantile
