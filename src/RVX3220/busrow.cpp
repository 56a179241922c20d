#include "busrow.h"

#include "common/keysheet.h"
#include "rvx3220styles.h"

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>

BusRow::BusRow(QWidget *parent, UnitControl *link, const char *caption, const char *const *lit)
    : QWidget(parent), m_link(link), m_litPictures(lit), m_group(new QButtonGroup(this)),
      m_caption(new QLabel(QString::fromLatin1(caption), this))
{
    m_caption->setStyleSheet(QString::fromLatin1(RVX3220Styles::Caption));
    m_caption->setGeometry(0, 20, 60, 63);
    m_caption->setAlignment(Qt::AlignCenter);
    for (int id = 1; id <= 6; ++id) {
        auto *key = new QPushButton(this);
        key->setObjectName(QStringLiteral("input%1").arg(id));
        key->setGeometry(80 + (id - 1) * 88, 20, 66, 63);
        key->setCursor(Qt::PointingHandCursor);
        m_group->addButton(key, id);
    }
    initbtnStyle();
    connect(m_group, &QButtonGroup::idClicked, this, [this](int id) { on_btnGrp_clicked(quint8(id)); });
}

void BusRow::initbtnStyle()
{
    for (int id = 1; id <= 6; ++id)
        setKeySheet(m_group->button(id), KeySheet::borderImage(RVX3220Styles::BusUnlit[id - 1]));
}

void BusRow::setStyle(quint8 id)
{
    initbtnStyle();
    if (id >= 1 && id <= 6)
        lightInput(id);
    const bool changed = m_lit != id;
    m_lit = id;
    if (changed)
        emit litChanged(id);
}

void BusRow::lightKey(int id)
{
    setKeySheet(m_group->button(id), KeySheet::borderImage(m_litPictures[id - 1]));
}

void BusRow::on_btnGrp_clicked(quint8 id)
{
    setStyle(id);
    sendInput(id);
}
