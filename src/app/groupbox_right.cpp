#include "groupbox_right.h"

#include "searchstyles.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

GroupBox_right::GroupBox_right(QWidget *parent, QListWidget *list) : QGroupBox(parent), m_list(list)
{
    setStyleSheet(QString::fromLatin1(SearchStyles::GroupBox));

    auto *layout = new QVBoxLayout(this);
    m_group = new QButtonGroup(this);
    const char *const names[5] = {"all", "RVX3210", "RVX3220", "RVX5370", "RVX5120"};
    for (int i = 0; i < 5; ++i) {
        m_radios[i] = new QRadioButton(tr(names[i]), this);
        m_radios[i]->setFixedSize(90, 25);
        layout->addWidget(m_radios[i], 1);
        // The RVX5120 key opens its panel directly and is no filter.
        if (i < 4)
            m_group->addButton(m_radios[i], i);
    }
    layout->addStretch(3);

    // The blanks around the texts are part of them.
    m_btnScan = new QPushButton(tr(" SEARCH"), this);
    m_btnExit = new QPushButton(tr("  Exit "), this);
    for (QPushButton *b : {m_btnScan, m_btnExit}) {
        b->setFixedSize(100, 25);
        b->setStyleSheet(QString::fromLatin1(SearchStyles::PushButton));
        layout->addWidget(b, 1);
    }

    connect(m_group, &QButtonGroup::idClicked, this, &GroupBox_right::on_btnGrp_clicked);
    connect(m_radios[4], &QRadioButton::clicked, this, &GroupBox_right::on_btn5120_clicked);
    connect(m_btnScan, &QPushButton::clicked, this, &GroupBox_right::on_btnScan_clicked);
    connect(m_btnExit, &QPushButton::clicked, this, [] { QCoreApplication::exit(0); });
}

void GroupBox_right::on_btnScan_clicked()
{
    emit btnScan_clicked();
}

void GroupBox_right::on_btnGrp_clicked(int id)
{
    emit btnGrp_clicked(id);
}

void GroupBox_right::on_btn5120_clicked()
{
    emit btn5120_clicked();
}

void GroupBox_right::on_Radiobtn_checked(bool checked)
{
    m_radios[0]->setChecked(checked);
}
