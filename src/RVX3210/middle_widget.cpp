#include "middle_widget.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/unitcontrol.h"
#include "common/keysheet.h"
#include "common/lampkey.h"
#include "common/unitstateguard.h"
#include "rvx3210styles.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace S = Rvx3210Styles;

namespace {

// Transition keys by group id 1-6: MIX, FADE, UP, DOWN, LEFT, RIGHT.
constexpr const char *TransOff[] = {S::MixOff, S::FadeOff, S::UpOff, S::DownOff, S::LeftOff, S::RightOff};
constexpr const char *TransOn[] = {S::MixOn, S::FadeOn, S::UpOn, S::DownOn, S::LeftOn, S::RightOn};

QLabel *caption(const char *text, QWidget *parent, const char *style = S::Caption)
{
    auto *label = new QLabel(QString::fromLatin1(text), parent);
    label->setStyleSheet(QString::fromLatin1(style));
    return label;
}

} // namespace

Middle_widget::Middle_widget(QWidget *parent, UnitControl *link) : QWidget(parent), m_link(link)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::MiddleBackground));

    // Audio block.
    m_btnAFV = makeKey(S::AfvOff, 55);
    m_btnMIX = makeKey(S::MixOff, 55);
    auto makeSource = [this] {
        auto *list = new QComboBox(this);
        list->setMinimumSize(90, 24);
        list->setStyleSheet(QString::fromLatin1(S::Inputs));
        for (const char *item : S::SourceItems)
            list->addItem(QString::fromLatin1(item));
        // Nothing is chosen until the operator or the unit picks a source.
        list->setCurrentIndex(-1);
        return list;
    };
    auto makeVolume = [this] {
        auto *spin = new QSpinBox(this);
        spin->setMinimumSize(70, 24);
        spin->setStyleSheet(QString::fromLatin1(S::Inputs));
        spin->setRange(0, 100);
        spin->setSingleStep(5);
        spin->setValue(50);
        return spin;
    };
    m_ch1 = makeSource();
    m_ch2 = makeSource();
    m_ch1Vol = makeVolume();
    m_ch2Vol = makeVolume();

    auto *audio = new QGridLayout;
    audio->setHorizontalSpacing(8);
    audio->addWidget(caption(S::AudioHead, this, S::SectionHead), 0, 0, 1, 4);
    auto *keys = new QHBoxLayout;
    keys->addWidget(m_btnAFV);
    keys->addWidget(m_btnMIX);
    keys->addStretch(1);
    audio->addLayout(keys, 1, 0, 1, 4);
    audio->addWidget(caption(S::Ch1, this), 2, 0);
    audio->addWidget(m_ch1, 2, 1);
    audio->addWidget(caption(S::Ch1Vol, this), 2, 2);
    audio->addWidget(m_ch1Vol, 2, 3);
    audio->addWidget(caption(S::Ch2, this), 3, 0);
    audio->addWidget(m_ch2, 3, 1);
    audio->addWidget(caption(S::Ch2Vol, this), 3, 2);
    audio->addWidget(m_ch2Vol, 3, 3);

    // Transitions.
    m_trans = new QButtonGroup(this);
    auto *transKeys = new QGridLayout;
    for (int id = 1; id <= 6; ++id) {
        QPushButton *key = makeKey(TransOff[id - 1], id <= 2 ? 55 : 50);
        m_trans->addButton(key, id);
    }
    // MIX and FADE on the left, the four wipe directions as a cross beside them.
    transKeys->addWidget(m_trans->button(1), 0, 0, 2, 1, Qt::AlignCenter);
    transKeys->addWidget(m_trans->button(2), 2, 0, 2, 1, Qt::AlignCenter);
    transKeys->addWidget(m_trans->button(3), 0, 2, 2, 1, Qt::AlignCenter);
    transKeys->addWidget(m_trans->button(5), 1, 1, 2, 1, Qt::AlignCenter);
    transKeys->addWidget(m_trans->button(6), 1, 3, 2, 1, Qt::AlignCenter);
    transKeys->addWidget(m_trans->button(4), 2, 2, 2, 1, Qt::AlignCenter);
    auto *transitions = new QVBoxLayout;
    transitions->addWidget(caption(S::TransitionsHead, this, S::SectionHead));
    transitions->addLayout(transKeys);

    // PIP and STILL.
    m_btnPIP = makeLampKey(S::PipOn, S::PipOff);
    m_btnSTILL = makeLampKey(S::StillOn, S::StillOff);
    auto *func = new QVBoxLayout;
    func->addWidget(caption(S::FuncHead, this, S::SectionHead));
    func->addWidget(m_btnPIP);
    func->addWidget(m_btnSTILL);
    func->addStretch(1);

    m_row = new QHBoxLayout(this);
    QHBoxLayout *row = m_row;
    row->setContentsMargins(10, 4, 10, 4);
    row->setSpacing(24);
    row->addLayout(audio, 3);
    row->addLayout(transitions, 2);
    row->addLayout(func, 1);

    connect(m_btnAFV, &QPushButton::clicked, this, &Middle_widget::on_btnclicked_AFV);
    connect(m_btnMIX, &QPushButton::clicked, this, &Middle_widget::on_btnclicked_MIX);
    connect(m_ch1, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Middle_widget::on_Coboxch1_IndexChanged);
    connect(m_ch2, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Middle_widget::on_Coboxch2_IndexChanged);
    connect(m_ch1Vol, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &Middle_widget::on_SpinBoxch1_valueChanged);
    connect(m_ch2Vol, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &Middle_widget::on_SpinBoxch2_valueChanged);
    connect(m_trans, &QButtonGroup::idClicked, this, &Middle_widget::on_btnGrp_clicked);
    connect(m_btnPIP, &QPushButton::clicked, this, &Middle_widget::on_btnclicked_PIP);
    connect(m_btnSTILL, &QPushButton::clicked, this, &Middle_widget::on_btnclicked_STILL);
}

void Middle_widget::addSection(QLayout *section, int stretch)
{
    m_row->addLayout(section, stretch);
}

QPushButton *Middle_widget::makeKey(const char *style, int size)
{
    auto *key = new QPushButton(this);
    key->setFixedSize(size, size);
    key->setFocusPolicy(Qt::NoFocus);
    key->setStyleSheet(KeySheet::text(style));
    return key;
}

LampKey *Middle_widget::makeLampKey(const char *lit, const char *unlit)
{
    auto *key = new LampKey(this);
    key->setFixedSize(55, 55);
    key->setFocusPolicy(Qt::NoFocus);
    key->setSheets(lit, unlit);
    return key;
}

bool Middle_widget::pipOn() const
{
    return m_btnPIP->isLit();
}

bool Middle_widget::stillOn() const
{
    return m_btnSTILL->isLit();
}

void Middle_widget::on_btnclicked_AFV()
{
    set_AFVorMIX_Style(0);
    m_link->audioMode(false);
}

void Middle_widget::on_btnclicked_MIX()
{
    set_AFVorMIX_Style(1);
    m_link->audioMode(true);
}

void Middle_widget::set_AFVorMIX_Style(uint8_t m)
{
    // Each key gets its final picture at once: a key that keeps its look is not restyled (Qt
    // would parse its sheet and build its look again), and a state reply repeats most of what
    // it said before.
    setKeySheet(m_btnAFV, KeySheet::text(m == 0 ? S::AfvOn : S::AfvOff));
    setKeySheet(m_btnMIX, KeySheet::text(m == 1 ? S::MixOn : S::MixOff));
    if (m == 0) {
        // Audio follows video: the sources are the unit's business then.
        m_ch1->setEnabled(false);
        m_ch2->setEnabled(false);
    } else if (m == 1) {
        m_ch1->setEnabled(true);
        m_ch2->setEnabled(true);
    }
}

void Middle_widget::on_Coboxch1_IndexChanged(int index)
{
    m_ch1Index = index;
    if (index >= 0)
        m_link->source(1, index);
}

void Middle_widget::on_Coboxch2_IndexChanged(int index)
{
    m_ch2Index = index;
    if (index >= 0)
        m_link->source(2, index);
}

void Middle_widget::warnNoSource()
{
    if (UnitStateGuard::active())
        return;
    QMessageBox::warning(this, QString::fromLatin1(S::WarningTitle), QString::fromLatin1(S::ChooseCh1Source),
                         QMessageBox::Yes);
}

void Middle_widget::on_SpinBoxch1_valueChanged(int value)
{
    if (m_ch1->currentIndex() == -1) {
        warnNoSource();
        return;
    }
    m_link->level(1, value);
}

void Middle_widget::on_SpinBoxch2_valueChanged(int value)
{
    if (m_ch2->currentIndex() == -1) {
        warnNoSource();
        return;
    }
    m_link->level(2, value);
}

int Middle_widget::sourceIndex(uint8_t code)
{
    // The list shows the sources in the order of the shared table (its first entry is
    // captioned PHONE_IN on this family).
    return Protocol::audioSourceIndex(code);
}

void Middle_widget::set_CH1_Style(uint8_t code)
{
    const int index = sourceIndex(code);
    if (index >= 0)
        m_ch1->setCurrentIndex(index);
}

void Middle_widget::set_CH2_Style(uint8_t code)
{
    const int index = sourceIndex(code);
    if (index >= 0)
        m_ch2->setCurrentIndex(index);
}

void Middle_widget::set_CH1VOL_Style(uint8_t v)
{
    m_ch1Vol->setValue(v);
}

void Middle_widget::set_CH2VOL_Style(uint8_t v)
{
    m_ch2Vol->setValue(v);
}

void Middle_widget::showTransition(int lit)
{
    for (int id = 1; id <= 6; ++id)
        setKeySheet(m_trans->button(id), KeySheet::text(id == lit ? TransOn[id - 1] : TransOff[id - 1]));
}

void Middle_widget::lightTransition(int id)
{
    if (id >= 1 && id <= 6)
        setKeySheet(m_trans->button(id), KeySheet::text(TransOn[id - 1]));
}

void Middle_widget::on_btnGrp_clicked(int id)
{
    showTransition(id);
    m_link->transition(UnitControl::Effect(id));
}

void Middle_widget::set_Trans_Style(uint8_t type, uint8_t wipe)
{
    // MIX and FADE are keys 1 and 2; a wipe lights the key of its direction, or none.
    showTransition(type == 1 || type == 2 ? type : type == 4 ? Protocol::wipeTypeFromReport(wipe) : 0);
}

void Middle_widget::set_Wipe_Style(uint8_t wipe)
{
    // The unit's wipe codes (0 left, 2 up, 4 right, 6 down) name the key ids 3-6 (up, down,
    // left, right) as the 8000 series' do.
    lightTransition(Protocol::wipeTypeFromReport(wipe));
}

void Middle_widget::on_btnclicked_PIP()
{
    const bool on = m_btnPIP->toggle();
    m_link->pip(on);
    emit on_Singnale_btnPIP(on);
}

void Middle_widget::set_PIP_Style(uint8_t s)
{
    if (s > 1)
        return;
    m_btnPIP->setLit(s == 1);
    emit on_Singnale_btnPIP(s == 1);
}

void Middle_widget::on_btnclicked_STILL()
{
    m_btnSTILL->toggle();
    m_link->still();
}

void Middle_widget::set_Stll_Style(uint8_t s)
{
    if (s > 1)
        return;
    m_btnSTILL->setLit(s == 1);
}
