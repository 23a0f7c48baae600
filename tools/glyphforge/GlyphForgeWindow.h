#pragma once
// GlyphForge's window: an installed font, its pixel size, depth, encoding
// and code range; a preview drawn from the font file itself; and writing
// NN_<name>Font.bin into a project's FontBin/ folder.

#include <QByteArray>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QFontComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

class GlyphForgeWindow : public QWidget
{
    Q_OBJECT
public:
    explicit GlyphForgeWindow(QWidget *parent = nullptr);

private slots:
    void remake();
    void writeToProject();

private:
    QFontComboBox *m_family = nullptr;
    QSpinBox *m_size = nullptr;
    QComboBox *m_depth = nullptr;
    QComboBox *m_encoding = nullptr;
    QLineEdit *m_range = nullptr;
    QCheckBox *m_bold = nullptr;
    QSpinBox *m_id = nullptr;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_sample = nullptr;
    QLabel *m_preview = nullptr;
    QLabel *m_status = nullptr;
    QByteArray m_font;
};
