#include "GlyphForgeWindow.h"

#include "build/FontFile.h"
#include "build/FontMaker.h"
#include "project/TextFiles.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace vantile;

namespace {
// The usual code ranges of each encoding: printable ASCII, or the
// two-byte area of the national sets.
const char *defaultRange(const QString &encoding)
{
    if (encoding == QLatin1String("GB2312"))
        return "0x20-0xF7FE";
    if (encoding == QLatin1String("GBK"))
        return "0x20-0xFEFE";
    if (encoding == QLatin1String("BIG5"))
        return "0x20-0xF9FE";
    if (encoding == QLatin1String("Unicode"))
        return "0x20-0x9FA5";
    return "0x20-0x7E";
}
} // namespace

GlyphForgeWindow::GlyphForgeWindow(QWidget *parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("GlyphForge"));
    auto *form = new QFormLayout;
    m_family = new QFontComboBox;
    m_family->setCurrentFont(QFont(QStringLiteral("DejaVu Sans")));
    m_size = new QSpinBox;
    m_size->setRange(4, 255);
    m_size->setValue(24);
    m_depth = new QComboBox;
    m_depth->addItems({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("4"), QStringLiteral("8")});
    m_encoding = new QComboBox;
    m_encoding->addItems(FontMaker::encodingNames());
    m_range = new QLineEdit(QLatin1String(defaultRange(QStringLiteral("ASCII"))));
    m_bold = new QCheckBox(tr("Bold"));
    m_id = new QSpinBox;
    m_id->setRange(0, 63);
    m_name = new QLineEdit(QStringLiteral("Sans24"));
    m_sample = new QLineEdit(QStringLiteral("Vantile 0123456789 ABC abc"));
    form->addRow(tr("Font"), m_family);
    form->addRow(tr("Size (pixels)"), m_size);
    form->addRow(tr("Bits a pixel"), m_depth);
    form->addRow(tr("Encoding"), m_encoding);
    form->addRow(tr("Codes"), m_range);
    form->addRow(QString(), m_bold);
    form->addRow(tr("Font id"), m_id);
    form->addRow(tr("Name"), m_name);
    form->addRow(tr("Preview text"), m_sample);

    m_preview = new QLabel;
    m_preview->setMinimumHeight(80);
    m_preview->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_preview->setStyleSheet(QStringLiteral("background: white; border: 1px solid gray;"));
    m_status = new QLabel;
    auto *write = new QPushButton(tr("Write into a project..."));

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_preview);
    layout->addWidget(m_status);
    layout->addWidget(write, 0, Qt::AlignRight);

    connect(m_encoding, &QComboBox::currentTextChanged, this, [this](const QString &e) {
        m_range->setText(QLatin1String(defaultRange(e)));
        remake();
    });
    connect(m_family, &QFontComboBox::currentFontChanged, this, &GlyphForgeWindow::remake);
    connect(m_size, qOverload<int>(&QSpinBox::valueChanged), this, &GlyphForgeWindow::remake);
    connect(m_depth, &QComboBox::currentTextChanged, this, &GlyphForgeWindow::remake);
    connect(m_range, &QLineEdit::editingFinished, this, &GlyphForgeWindow::remake);
    connect(m_bold, &QCheckBox::toggled, this, &GlyphForgeWindow::remake);
    connect(m_sample, &QLineEdit::textChanged, this, &GlyphForgeWindow::remake);
    connect(write, &QPushButton::clicked, this, &GlyphForgeWindow::writeToProject);
    remake();
}

void GlyphForgeWindow::remake()
{
    FontMaker::Options o;
    o.family = m_family->currentFont().family();
    o.pixelSize = m_size->value();
    o.depthBits = m_depth->currentText().toInt();
    o.encoding = m_encoding->currentText();
    o.bold = m_bold->isChecked();
    const QStringList range = m_range->text().split(QLatin1Char('-'));
    o.firstCode = range.value(0).trimmed().toInt(nullptr, 0);
    o.lastCode = range.value(1, range.value(0)).trimmed().toInt(nullptr, 0);
    QString error;
    m_font = FontMaker::make(o, &error);
    if (m_font.isEmpty()) {
        m_status->setText(error);
        m_preview->clear();
        return;
    }
    // the preview is drawn from the file just made, as the designer will draw it
    FontFile::Font font;
    font.load(m_font);
    const QImage text = FontFile::drawCodes(font, FontFile::codesOf(m_sample->text(), font.header().encoding()),
                                            qRgb(0, 0, 0));
    m_preview->setPixmap(QPixmap::fromImage(text));
    m_status->setText(tr("%1 x %2 pixels, %3 bytes").arg(font.header().width).arg(font.header().height)
                          .arg(m_font.size()));
}

void GlyphForgeWindow::writeToProject()
{
    if (m_font.isEmpty())
        return;
    const QString dir = QFileDialog::getExistingDirectory(this, tr("The project's folder"));
    if (dir.isEmpty())
        return;
    QDir(dir).mkpath(QStringLiteral("FontBin"));
    const QString path = dir + QStringLiteral("/FontBin/") + FontMaker::fileName(m_id->value(), m_name->text());
    QString error;
    m_status->setText(TextFiles::writeAtomically(path, m_font, &error) ? tr("Written: %1").arg(path)
                                                                         : path + QStringLiteral(": ") + error);
}
