#include "app/Prompts.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QMenu>
#include <QPushButton>

namespace vantile {
namespace Prompts {

namespace {
bool g_installed = false;
Responder g_responder;
QList<PromptRecord> g_records;

QString blue(const QString &text)
{
    return QStringLiteral("<font color='blue'>") + text.toHtmlEscaped().replace(QLatin1Char('\n'), "<br>")
           + QStringLiteral("</font>");
}

void styleBox(QMessageBox &box)
{
    QFont f = box.font();
    f.setPixelSize(18);
    box.setFont(f);
    box.setTextFormat(Qt::RichText);
}
} // namespace

void message(QWidget *parent, const QString &title, const QString &text, const QString &detail)
{
    if (g_installed) {
        g_records.append({QStringLiteral("message"), title, text, detail});
        return;
    }
    QMessageBox box(parent);
    box.setWindowTitle(title);
    box.setText(blue(text));
    box.setInformativeText(detail.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")));
    styleBox(box);
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

QMessageBox::StandardButton question(QWidget *parent, const QString &title, const QString &text,
                                     QList<QMessageBox::StandardButton> buttons,
                                     const QStringList &buttonTexts, QMessageBox::Icon icon, const QString &detail)
{
    if (g_installed) {
        const PromptRecord rec{QStringLiteral("question"), title, text, detail};
        g_records.append(rec);
        QMessageBox::StandardButton b = g_responder.answer ? g_responder.answer(rec) : QMessageBox::NoButton;
        if (b == QMessageBox::NoButton && !buttons.isEmpty())
            b = buttons.first();
        return b;
    }
    QMessageBox box(parent);
    box.setWindowTitle(title);
    box.setText(blue(text));
    box.setInformativeText(detail.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")));
    box.setIcon(icon);
    styleBox(box);
    for (int i = 0; i < buttons.size(); ++i) {
        QPushButton *pb = box.addButton(buttons[i]);
        if (i < buttonTexts.size() && pb)
            pb->setText(buttonTexts[i]);
    }
    box.exec();
    QAbstractButton *clicked = box.clickedButton();
    if (!clicked)
        return QMessageBox::NoButton;
    return box.standardButton(clicked);
}

QString openFile(QWidget *parent, const QString &title, const QString &dir, const QString &filter)
{
    if (g_installed) {
        const PromptRecord rec{QStringLiteral("open"), title, filter};
        g_records.append(rec);
        return g_responder.file ? g_responder.file(rec) : QString();
    }
    return QFileDialog::getOpenFileName(parent, title, dir, filter);
}

QString saveFile(QWidget *parent, const QString &title, const QString &dir, const QString &filter)
{
    if (g_installed) {
        const PromptRecord rec{QStringLiteral("save"), title, filter};
        g_records.append(rec);
        return g_responder.file ? g_responder.file(rec) : QString();
    }
    return QFileDialog::getSaveFileName(parent, title, dir, filter);
}

QString chooseWord(QWidget *parent, const QStringList &words, const QPoint &globalPos)
{
    if (g_installed) {
        g_records.append({QStringLiteral("menu"), QString(), words.join(QLatin1Char('|'))});
        return g_responder.word ? g_responder.word(words) : QString();
    }
    QMenu menu(parent);
    for (const QString &w : words)
        menu.addAction(w);
    QAction *chosen = menu.exec(globalPos);
    return chosen ? chosen->text() : QString();
}

QColor chooseColor(QWidget *parent, const QColor &initial, const QString &title)
{
    if (g_installed) {
        g_records.append({QStringLiteral("color"), title, initial.name()});
        return g_responder.color ? g_responder.color(initial) : QColor();
    }
    return QColorDialog::getColor(initial, parent, title);
}

void installResponder(const Responder &r)
{
    g_installed = true;
    g_responder = r;
    g_records.clear();
}

void removeResponder()
{
    g_installed = false;
    g_responder = Responder();
}

QList<PromptRecord> &recorded()
{
    return g_records;
}

} // namespace Prompts
} // namespace vantile
