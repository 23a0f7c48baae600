#include "editors/DialogWdgVar.h"

#include "project/ProjectSettings.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>

namespace vantile {

DialogWdgVar::DialogWdgVar(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("DialogWdgVar"));
    checkBox_AutoAddr = new QCheckBox(this);
    checkBox_AutoAddr->setObjectName(QStringLiteral("checkBox_AutoAddr"));
    checkBox_AutoAddr->setLayoutDirection(Qt::RightToLeft);
    m_addressLabel = new QLabel(this);
    lineEdit = new QLineEdit(this);
    lineEdit->setObjectName(QStringLiteral("lineEdit"));
    lineEdit->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("^0[xX][0-9A-Fa-f]{1,4}$")), lineEdit));
    pushButton_OK = new QPushButton(this);
    pushButton_OK->setObjectName(QStringLiteral("pushButton_OK"));
    pushButton_Cancel = new QPushButton(this);
    pushButton_Cancel->setObjectName(QStringLiteral("pushButton_Cancel"));

    auto *grid = new QGridLayout(this);
    grid->addWidget(checkBox_AutoAddr, 0, 0, 1, 2);
    grid->addWidget(m_addressLabel, 1, 0);
    grid->addWidget(lineEdit, 1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(pushButton_OK);
    buttons->addWidget(pushButton_Cancel);
    grid->addLayout(buttons, 2, 0, 1, 2);
    retranslate();
    QMetaObject::connectSlotsByName(this);
}

void DialogWdgVar::retranslate()
{
    setWindowTitle(tr("WriteAddr Setting"));
    checkBox_AutoAddr->setText(tr("Paste Auto Address: "));
    m_addressLabel->setText(tr("New WriteAddr:"));
    pushButton_OK->setText(tr("OK"));
    pushButton_Cancel->setText(tr("Cancel"));
}

void DialogWdgVar::setNextAddress(quint32 address)
{
    lineEdit->setText(QStringLiteral("0x") + QStringLiteral("%1").arg(address & 0xFFFF, 4, 16, QLatin1Char('0')).toUpper());
}

void DialogWdgVar::VarAddr_Update_from_MainWindow(int autoAddressMode)
{
    checkBox_AutoAddr->setChecked(autoAddressMode != 0);
}

void DialogWdgVar::on_pushButton_OK_clicked()
{
    const quint32 next = IniValue::hexadecimal(lineEdit->text().toLatin1());
    emit WriteAddr_Update_to_MainWindow(checkBox_AutoAddr->isChecked(), next);
    hide();
    emit Background_mask_Close_Signal_wdgvar();
}

void DialogWdgVar::on_pushButton_Cancel_clicked()
{
    hide();
    emit Background_mask_Close_Signal_wdgvar();
}

void DialogWdgVar::closeEvent(QCloseEvent *event)
{
    emit Background_mask_Close_Signal_wdgvar();
    QDialog::closeEvent(event);
}

} // namespace vantile
