#pragma once
// SerialStamp's window: an installed font or a picture strip, its size,
// the text and background colours, the first icon number and the name; a
// preview of the whole run; and writing it into a project's Icon/ folder.

#include "build/DigitMaker.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QFontComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

class SerialStampWindow : public QWidget
{
    Q_OBJECT
public:
    explicit SerialStampWindow(QWidget *parent = nullptr);

private slots:
    void remake();
    void chooseStrip();
    void writeToProject();

private:
    QPushButton *colourButton(QRgb *target);
    void showColour(QPushButton *button, QRgb rgb);

    QComboBox *m_source = nullptr;
    QFontComboBox *m_family = nullptr;
    QSpinBox *m_size = nullptr;
    QCheckBox *m_bold = nullptr;
    QLineEdit *m_strip = nullptr;
    QSpinBox *m_cells = nullptr;
    QPushButton *m_colorButton = nullptr;
    QCheckBox *m_transparent = nullptr;
    QPushButton *m_backgroundButton = nullptr;
    QSpinBox *m_first = nullptr;
    QLineEdit *m_name = nullptr;
    QLabel *m_preview = nullptr;
    QLabel *m_status = nullptr;
    QRgb m_color = qRgb(0, 0, 0);
    QRgb m_background = qRgb(255, 255, 255);
    QImage m_stripImage;
    vantile::DigitMaker::Run m_run;
};
