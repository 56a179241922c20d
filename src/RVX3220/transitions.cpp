#include "transitions.h"

#include "SwitcherData/unitcontrol.h"
#include "common/keysheet.h"
#include "rvx3220styles.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QPushButton>

Transitions::Transitions(QWidget *parent, UnitControl *link)
    : QWidget(parent), m_link(link), m_group(new QButtonGroup(this))
{
    auto *frame = new QGroupBox(QStringLiteral("TRANSITION"), this);
    frame->setStyleSheet(QString::fromLatin1(RVX3220Styles::GroupBox));
    frame->setGeometry(0, 0, 250, 220);
    for (int id = 1; id <= 6; ++id) {
        auto *key = new QPushButton(frame);
        key->setObjectName(QString::fromLatin1(RVX3220Styles::EffectNames[id - 1]));
        key->setToolTip(key->objectName());
        key->setGeometry(14 + ((id - 1) % 3) * 78, 40 + ((id - 1) / 3) * 85, 66, 63);
        key->setCursor(Qt::PointingHandCursor);
        setKeySheet(key, KeySheet::borderImage(RVX3220Styles::EffectUnlit[id - 1]));
        m_group->addButton(key, id);
    }
    connect(m_group, &QButtonGroup::idClicked, this, [this](int id) { on_btnGrp_clicked(quint8(id)); });
}

void Transitions::on_btnGrp_clicked(quint8 id)
{
    for (int i = 1; i <= 6; ++i) {
        const char *picture = i == id ? RVX3220Styles::EffectLit[i - 1] : RVX3220Styles::EffectUnlit[i - 1];
        setKeySheet(m_group->button(i), KeySheet::borderImage(picture));
    }
    m_link->transition(UnitControl::Effect(id));
}
