#include "audio.h"

#include "SwitcherData/unitcontrol.h"
#include "common/keysheet.h"
#include "rvx3220styles.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>

namespace {

QLabel *caption(const char *text, QWidget *parent, const QRect &where)
{
    auto *label = new QLabel(QString::fromLatin1(text), parent);
    label->setStyleSheet(QString::fromLatin1(RVX3220Styles::Caption));
    label->setGeometry(where);
    return label;
}

QComboBox *sourceList(QWidget *parent, const QRect &where)
{
    auto *box = new QComboBox(parent);
    box->setStyleSheet(QString::fromLatin1(RVX3220Styles::ComboBox));
    for (const char *name : RVX3220Styles::AudioSources)
        box->addItem(QString::fromLatin1(name));
    box->setCurrentIndex(-1);
    box->setGeometry(where);
    return box;
}

QSpinBox *volumeBox(QWidget *parent, const QRect &where)
{
    auto *box = new QSpinBox(parent);
    box->setStyleSheet(QString::fromLatin1(RVX3220Styles::SpinBox));
    box->setRange(0, 100);
    box->setValue(60);
    box->setGeometry(where);
    return box;
}

} // namespace

AUDIO::AUDIO(QWidget *parent, UnitControl *link) : QWidget(parent), m_link(link)
{
    auto *frame = new QGroupBox(QString::fromLatin1(RVX3220Styles::AudioTitle), this);
    frame->setStyleSheet(QString::fromLatin1(RVX3220Styles::GroupBox));
    frame->setGeometry(0, 0, 320, 220);

    m_ch1 = sourceList(frame, QRect(12, 30, 104, 26));
    caption(RVX3220Styles::Ch1VolCaption, frame, QRect(124, 30, 70, 26));
    m_ch1Vol = volumeBox(frame, QRect(200, 30, 105, 26));
    m_ch2 = sourceList(frame, QRect(12, 66, 104, 26));
    caption(RVX3220Styles::Ch2VolCaption, frame, QRect(124, 66, 70, 26));
    m_ch2Vol = volumeBox(frame, QRect(200, 66, 105, 26));

    caption(RVX3220Styles::AudioModeCaption, frame, QRect(14, 104, 80, 22));
    m_mode = caption("", frame, QRect(96, 104, 70, 22));
    m_modeGroup = new QButtonGroup(this);
    auto *afv = new QPushButton(frame);
    afv->setObjectName(QStringLiteral("AFV"));
    afv->setGeometry(16, 136, 60, 60);
    setKeySheet(afv, KeySheet::borderImage(RVX3220Styles::AfvUnlit));
    auto *mix = new QPushButton(frame);
    mix->setObjectName(QStringLiteral("MIX"));
    mix->setGeometry(92, 136, 60, 60);
    setKeySheet(mix, KeySheet::borderImage(RVX3220Styles::MixUnlit));
    m_modeGroup->addButton(afv, 1);
    m_modeGroup->addButton(mix, 2);

    caption(RVX3220Styles::PgmOutCaption, frame, QRect(180, 118, 120, 22));
    m_pgmOut = new QComboBox(frame);
    m_pgmOut->setStyleSheet(QString::fromLatin1(RVX3220Styles::ComboBox));
    for (const char *name : RVX3220Styles::OutputFormats)
        m_pgmOut->addItem(QString::fromLatin1(name));
    m_pgmOut->setGeometry(180, 146, 125, 26);

    connect(m_ch1, qOverload<int>(&QComboBox::currentIndexChanged), this, &AUDIO::setboxch1);
    connect(m_ch2, qOverload<int>(&QComboBox::currentIndexChanged), this, &AUDIO::setboxch2);
    connect(m_ch1Vol, qOverload<int>(&QSpinBox::valueChanged), this, &AUDIO::setboxch1_vol);
    connect(m_ch2Vol, qOverload<int>(&QSpinBox::valueChanged), this, &AUDIO::setboxch2_vol);
    connect(m_pgmOut, qOverload<int>(&QComboBox::currentIndexChanged), this, &AUDIO::setboxPGM_OUT);
    connect(m_modeGroup, &QButtonGroup::idClicked, this, &AUDIO::on_btnGrp_clicked);
}

void AUDIO::setboxch1(int index)
{
    m_ch1Index = index;
    m_link->source(1, index);
}

void AUDIO::setboxch2(int index)
{
    m_ch2Index = index;
    m_link->source(2, index);
}

void AUDIO::warnNoSource()
{
    QMessageBox::warning(this, QString::fromLatin1(RVX3220Styles::WarningTitle),
                         QString::fromLatin1(RVX3220Styles::ChooseCh1Source), QMessageBox::Yes);
}

void AUDIO::setboxch1_vol(int v)
{
    if (m_ch1->currentIndex() == -1) {
        warnNoSource();
        return;
    }
    m_link->level(1, v, m_ch1Index);
}

void AUDIO::setboxch2_vol(int v)
{
    if (m_ch2->currentIndex() == -1) {
        warnNoSource();
        return;
    }
    m_link->level(2, v, m_ch2Index);
}

void AUDIO::setboxPGM_OUT(int index)
{
    m_link->format(index);
}

void AUDIO::setStyle(int id)
{
    if (id == 1) {
        m_mode->setText(QString::fromLatin1(RVX3220Styles::ModeFollow));
        setKeySheet(m_modeGroup->button(1), KeySheet::borderImage(RVX3220Styles::AfvLit));
        setKeySheet(m_modeGroup->button(2), KeySheet::borderImage(RVX3220Styles::MixUnlit));
    } else if (id == 2) {
        m_mode->setText(QString::fromLatin1(RVX3220Styles::ModeMixing));
        setKeySheet(m_modeGroup->button(1), KeySheet::borderImage(RVX3220Styles::AfvUnlit));
        setKeySheet(m_modeGroup->button(2), KeySheet::borderImage(RVX3220Styles::MixLit));
    }
}

void AUDIO::on_btnGrp_clicked(int id)
{
    setStyle(id);
    if (id == 1)
        m_link->audioMode(false);
    else if (id == 2)
        m_link->audioMode(true);
}
