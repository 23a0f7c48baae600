#include "SerialStampWindow.h"

#include "project/MediaFiles.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace vantile;

SerialStampWindow::SerialStampWindow(QWidget *parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("SerialStamp"));
    auto *form = new QFormLayout;
    m_source = new QComboBox;
    m_source->addItems({tr("Installed font"), tr("Picture strip")});
    m_family = new QFontComboBox;
    m_family->setCurrentFont(QFont(QStringLiteral("DejaVu Sans")));
    m_size = new QSpinBox;
    m_size->setRange(4, 255);
    m_size->setValue(32);
    m_bold = new QCheckBox(tr("Bold"));
    m_strip = new QLineEdit;
    m_strip->setReadOnly(true);
    auto *stripButton = new QPushButton(tr("Choose..."));
    auto *stripRow = new QHBoxLayout;
    stripRow->addWidget(m_strip, 1);
    stripRow->addWidget(stripButton);
    m_cells = new QSpinBox;
    m_cells->setRange(DigitMaker::kDigits, DigitMaker::signs().size());
    m_colorButton = colourButton(&m_color);
    m_transparent = new QCheckBox(tr("Transparent"));
    m_transparent->setChecked(true);
    m_backgroundButton = colourButton(&m_background);
    auto *backgroundRow = new QHBoxLayout;
    backgroundRow->addWidget(m_transparent);
    backgroundRow->addWidget(m_backgroundButton, 1);
    m_first = new QSpinBox;
    m_first->setRange(0, 9999);
    m_name = new QLineEdit(QStringLiteral("digit"));
    form->addRow(tr("Digits from"), m_source);
    form->addRow(tr("Font"), m_family);
    form->addRow(tr("Size (pixels)"), m_size);
    form->addRow(QString(), m_bold);
    form->addRow(tr("Picture strip"), stripRow);
    form->addRow(tr("Cells of the strip"), m_cells);
    form->addRow(tr("Text colour"), m_colorButton);
    form->addRow(tr("Background"), backgroundRow);
    form->addRow(tr("First icon number"), m_first);
    form->addRow(tr("Name"), m_name);

    m_preview = new QLabel;
    m_preview->setMinimumHeight(80);
    m_preview->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_status = new QLabel;
    m_status->setWordWrap(true);
    auto *write = new QPushButton(tr("Write into a project..."));

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_preview);
    layout->addWidget(m_status);
    layout->addWidget(write, 0, Qt::AlignRight);

    connect(m_source, qOverload<int>(&QComboBox::currentIndexChanged), this, &SerialStampWindow::remake);
    connect(m_family, &QFontComboBox::currentFontChanged, this, &SerialStampWindow::remake);
    connect(m_size, qOverload<int>(&QSpinBox::valueChanged), this, &SerialStampWindow::remake);
    connect(m_bold, &QCheckBox::toggled, this, &SerialStampWindow::remake);
    connect(stripButton, &QPushButton::clicked, this, &SerialStampWindow::chooseStrip);
    connect(m_cells, qOverload<int>(&QSpinBox::valueChanged), this, &SerialStampWindow::remake);
    connect(m_transparent, &QCheckBox::toggled, this, &SerialStampWindow::remake);
    connect(m_first, qOverload<int>(&QSpinBox::valueChanged), this, &SerialStampWindow::remake);
    connect(m_name, &QLineEdit::textChanged, this, &SerialStampWindow::remake);
    connect(write, &QPushButton::clicked, this, &SerialStampWindow::writeToProject);
    remake();
}

QPushButton *SerialStampWindow::colourButton(QRgb *target)
{
    auto *button = new QPushButton;
    showColour(button, *target);
    connect(button, &QPushButton::clicked, this, [this, button, target] {
        const QColor c = QColorDialog::getColor(QColor(*target), this);
        if (!c.isValid())
            return;
        *target = c.rgb();
        showColour(button, *target);
        remake();
    });
    return button;
}

void SerialStampWindow::showColour(QPushButton *button, QRgb rgb)
{
    button->setText(QStringLiteral("0x") + QString::number(rgb & 0xFFFFFFu, 16).rightJustified(6, QLatin1Char('0')).toUpper());
    QPixmap swatch(16, 16);
    swatch.fill(QColor(rgb));
    button->setIcon(QIcon(swatch));
}

void SerialStampWindow::chooseStrip()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Picture strip"), QString(),
                                                      tr("Pictures (*.png *.bmp *.jpg *.jpeg)"));
    if (path.isEmpty())
        return;
    QString error;
    m_stripImage = MediaFiles::readPicture(path, QSize(), &error);
    m_strip->setText(path);
    m_source->setCurrentIndex(1);
    if (m_stripImage.isNull())
        m_status->setText(path + QStringLiteral(": ") + error);
    remake();
}

void SerialStampWindow::remake()
{
    const bool fromStrip = m_source->currentIndex() == 1;
    m_family->setEnabled(!fromStrip);
    m_size->setEnabled(!fromStrip);
    m_bold->setEnabled(!fromStrip);
    m_colorButton->setEnabled(!fromStrip);
    m_cells->setEnabled(fromStrip);
    m_backgroundButton->setEnabled(!m_transparent->isChecked());

    DigitMaker::Options o;
    o.family = m_family->currentFont().family();
    o.pixelSize = m_size->value();
    o.bold = m_bold->isChecked();
    o.color = m_color;
    o.transparent = m_transparent->isChecked();
    o.background = m_background;
    o.first = m_first->value();
    o.name = m_name->text();
    if (fromStrip && m_stripImage.isNull()) {
        m_run = DigitMaker::Run();
        m_preview->clear();
        m_status->setText(tr("Choose a picture strip of equal cells."));
        return;
    }
    m_run = fromStrip ? DigitMaker::cutStrip(m_stripImage, o, m_cells->value()) : DigitMaker::render(o);
    if (!m_run.ok()) {
        m_preview->clear();
        m_status->setText(m_run.error);
        return;
    }
    // the run on a checkerboard, so that transparency shows
    const QImage run = DigitMaker::sheet(m_run);
    QImage shown(run.size(), QImage::Format_ARGB32_Premultiplied);
    {
        QPainter p(&shown);
        for (int y = 0; y < shown.height(); y += 8)
            for (int x = 0; x < shown.width(); x += 8)
                p.fillRect(x, y, 8, 8, ((x + y) / 8) % 2 ? QColor(204, 204, 204) : QColor(255, 255, 255));
        p.drawImage(0, 0, run);
    }
    m_preview->setPixmap(QPixmap::fromImage(shown));
    m_status->setText(tr("%1 pictures of %2 x %3 pixels: %4 to %5")
                          .arg(m_run.pictures.size())
                          .arg(m_run.cellSize().width())
                          .arg(m_run.cellSize().height())
                          .arg(m_run.pictures.first().fileName, m_run.pictures.last().fileName));
}

void SerialStampWindow::writeToProject()
{
    if (!m_run.ok())
        return;
    const QString project = QFileDialog::getExistingDirectory(this, tr("The project's folder"));
    if (project.isEmpty())
        return;
    const QString dir = project + QStringLiteral("/Icon");
    const QStringList others = DigitMaker::clashes(m_run, dir);
    if (!others.isEmpty()) {
        const auto answer = QMessageBox::question(
            this, QStringLiteral("SerialStamp"),
            tr("Icon/ already holds pictures with these numbers:\n%1\nReplace them?").arg(others.join(QLatin1Char('\n'))));
        if (answer != QMessageBox::Yes)
            return;
        for (const QString &f : others)
            QFile::remove(dir + QLatin1Char('/') + f);
    }
    QString error;
    m_status->setText(DigitMaker::write(m_run, dir, &error) ? tr("Written: %1").arg(dir) : error);
}
