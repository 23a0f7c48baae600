#pragma once
// "Widget adjustment": the rectangle of a picture-bound widget (the bars,
// the rings, the keyboards and the pop-up box) set against its picture on
// the page, with numbers and with the mouse. The preview shows the page's
// picture with the widget's own picture drawn where the panel draws it,
// and the rectangle over both; the line edits, the rectangle and the
// picture move together. The dialog works on a copy of the widget's line
// and sends "objectName:X,Y,W,H" only on OK.

#include "widgets/EditBuffer.h"

#include <QDialog>
#include <QImage>
#include <QPixmap>

class QLabel;
class QLineEdit;
class QPushButton;

namespace vantile {

class Dialog : public QDialog
{
    Q_OBJECT
public:
    explicit Dialog(QWidget *parent = nullptr);
    void retranslate();

    // The eight kinds the dialog adjusts, and the two whose centre it shows.
    static bool knows(WidgetKind kind);
    static bool isRing(WidgetKind kind);

    // The page the widget stands on: the project folder its pictures lie
    // in, and the page's picture at panel size (also the limit of the
    // rectangle, as the parameter table clamps it).
    void setPage(const QString &projectDir, const QImage &pagePicture);

    // The rectangle as it stands now, in panel pixels.
    QRect rectangle() const { return m_rect; }

signals:
    // OK with a changed rectangle: "objectName:X,Y,W,H".
    void Update_to_MainWindow(const QString &text);
    void Background_mask_Close_Signal();

public slots:
    // Opens on the page line of a widget; a line of another kind leaves
    // the dialog empty and OK then sends nothing.
    void Update_from_MainWindow(const QString &line);
    void on_pushButton_clicked();
    void on_pushButton_Cancel_clicked();
    void on_lineEdit_X_editingFinished();
    void on_lineEdit_Y_editingFinished();
    void on_lineEdit_W_editingFinished();
    void on_lineEdit_H_editingFinished();
    void on_lineEdit_CenX_editingFinished();
    void on_lineEdit_CenY_editingFinished();
    void reject() override; // Escape and the window's close: as Cancel

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int readNumber(const QLineEdit *edit) const;
    QRect clamped(QRect r) const;
    void setRect(const QRect &r);
    QImage widgetPicture() const;
    QRect onPreview(const QRect &panel) const;
    void paintPreview();
    bool editable() const;
    void setCursorFor(const QPoint &at);

    QLabel *label_Img;
    QLineEdit *lineEdit_X;
    QLineEdit *lineEdit_Y;
    QLineEdit *lineEdit_W;
    QLineEdit *lineEdit_H;
    QLineEdit *lineEdit_CenX;
    QLineEdit *lineEdit_CenY;
    QLabel *m_labels[6];
    QLabel *m_lockNote;
    QPushButton *pushButton;
    QPushButton *pushButton_Cancel;

    QString m_projectDir;
    QImage m_page;      // the page's picture at panel size
    double m_zoom = 1.0; // preview pixels per panel pixel
    QPixmap m_backdrop; // the page's picture at the preview's zoom
    EditBuffer m_widget; // the copy being adjusted; no schema when empty
    QImage m_ownPicture; // the pop-up box's picture, read once
    QRect m_original;
    QRect m_rect;
    QSize m_fixedSize; // a widget that takes its picture's size can't be resized

    enum class Drag { None, Move, Resize };
    Drag m_drag = Drag::None;
    QPoint m_pressAt;
    QRect m_pressRect;
};

} // namespace vantile
