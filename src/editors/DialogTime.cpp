#include "editors/DialogTime.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace vantile {

DialogTime::DialogTime(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("DialogTime"));
    checkBox_Time = new QCheckBox(this);
    checkBox_Time->setObjectName(QStringLiteral("checkBox_Time"));
    dateTimeEdit = new QDateTimeEdit(this);
    dateTimeEdit->setObjectName(QStringLiteral("dateTimeEdit"));
    dateTimeEdit->setDisplayFormat(QStringLiteral("yyyy/M/d H:mm:ss"));
    dateTimeEdit->setCalendarPopup(true);
    pushButton_OK = new QPushButton(this);
    pushButton_OK->setObjectName(QStringLiteral("pushButton_OK"));

    auto *layout = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    row->addWidget(checkBox_Time);
    row->addWidget(dateTimeEdit, 1);
    layout->addLayout(row);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(pushButton_OK);
    layout->addLayout(buttons);
    retranslate();
    QMetaObject::connectSlotsByName(this);
    on_checkBox_Time_toggled(false);
}

void DialogTime::retranslate()
{
    setWindowTitle(tr("File Timestamp"));
    checkBox_Time->setText(tr("Fixed Timestamp"));
    pushButton_OK->setText(tr("OK"));
}

void DialogTime::Time_Update_from_MainWindow(bool fixed, const QDateTime &time)
{
    checkBox_Time->setChecked(fixed);
    on_checkBox_Time_toggled(fixed);
    // whole seconds: the settings file and the image hold no more
    QDateTime t = time.isValid() ? time : QDateTime::currentDateTime();
    t.setTime(QTime(t.time().hour(), t.time().minute(), t.time().second()));
    dateTimeEdit->setDateTime(t);
}

void DialogTime::on_checkBox_Time_toggled(bool checked)
{
    dateTimeEdit->setEnabled(checked);
}

void DialogTime::on_pushButton_OK_clicked()
{
    emit Time_Update_to_MainWindow(checkBox_Time->isChecked(), dateTimeEdit->dateTime());
    hide();
    emit Background_mask_Close_Signal_list();
}

} // namespace vantile
