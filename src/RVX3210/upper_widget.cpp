#include "upper_widget.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/unitcontrol.h"
#include "common/keyflash.h"
#include "common/keysheet.h"
#include "common/lampkey.h"
#include "common/titlebarstyles.h"
#include "rvx3210styles.h"

#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <initializer_list>

namespace S = Rvx3210Styles;

Upper_Widget::Upper_Widget(QWidget *parent, UnitControl *link) : Upper_Widget(parent, link, KeysOnly{})
{
    m_btnClose = makeKey(TitleBarStyles::CloseKey);
    connect(m_btnClose, &QPushButton::clicked, this, &Upper_Widget::on_btnclicked_close);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 10, 4);
    row->setSpacing(10);
    for (QPushButton *key :
         std::initializer_list<QPushButton *>{m_btnFTB, m_btnF1, m_btnF2, m_btnF3, m_btnF7})
        row->addWidget(key);
    row->addStretch(1);
    for (QPushButton *key : {m_btnRead, m_btnReturn, m_btnClose})
        row->addWidget(key);
}

Upper_Widget::Upper_Widget(QWidget *parent, UnitControl *link, KeysOnly) : QWidget(parent), m_link(link)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::RowBackground));

    m_btnFTB = makeKey(S::FTBOff);
    m_btnF1 = makeKey(S::F1Off);
    m_btnF2 = makeKey(S::F2Off);
    m_btnF3 = makeLampKey(S::F3On, S::F3Off);
    m_btnF7 = makeLampKey(S::F7On, S::F7Off);
    m_btnRead = makeKey(S::ReadState);
    m_btnReturn = makeKey(S::Return);

    m_blink = new QTimer(this);
    m_blink->setInterval(S::FtbBlinkMs);
    connect(m_blink, &QTimer::timeout, this, &Upper_Widget::on_timerour_FTB);

    connect(m_btnFTB, &QPushButton::clicked, this, &Upper_Widget::on_btnclicked_FTB);
    connect(m_btnF1, &QPushButton::clicked, this, &Upper_Widget::on_btnclicked_F1);
    connect(m_btnF2, &QPushButton::clicked, this, &Upper_Widget::on_btnclicked_F2);
    connect(m_btnF3, &QPushButton::clicked, this, &Upper_Widget::on_btnclicked_F3);
    connect(m_btnF7, &QPushButton::clicked, this, &Upper_Widget::on_btnclicked_F7);
    connect(m_btnRead, &QPushButton::clicked, this, &Upper_Widget::on_btnclicked_Read3210data);
    connect(m_btnReturn, &QPushButton::clicked, this, &Upper_Widget::on_btnclicked_retrun);
}

QPushButton *Upper_Widget::makeKey(const char *style)
{
    auto *key = new QPushButton(this);
    key->setFixedSize(55, 55);
    key->setFocusPolicy(Qt::NoFocus);
    key->setStyleSheet(KeySheet::text(style));
    return key;
}

LampKey *Upper_Widget::makeLampKey(const char *lit, const char *unlit)
{
    auto *key = new LampKey(this);
    key->setFixedSize(55, 55);
    key->setFocusPolicy(Qt::NoFocus);
    key->setSheets(lit, unlit);
    return key;
}

bool Upper_Widget::f3On() const
{
    return m_btnF3->isLit();
}

bool Upper_Widget::f7On() const
{
    return m_btnF7->isLit();
}

void Upper_Widget::on_btnclicked_FTB()
{
    if (!m_ftbOn) {
        m_blink->start(S::FtbBlinkMs);
        m_ftbOn = true;
    } else {
        m_ftbOn = false;
        on_Style_btnFTB(false);
        m_blink->stop();
    }
    m_link->ftb();
}

void Upper_Widget::on_timerour_FTB()
{
    on_Style_btnFTB(m_ftbPhase);
    m_ftbPhase = !m_ftbPhase;
}

void Upper_Widget::set_FTB_Style(uint8_t s)
{
    if (s == 0) {
        m_ftbOn = false;
        on_Style_btnFTB(false);
        m_blink->stop();
    } else if (s == 1) {
        // Restarting an already running blink keeps its phase.
        m_ftbOn = true;
        m_blink->start(S::FtbBlinkMs);
    }
}

void Upper_Widget::on_btnclicked_F1()
{
    QDialog dlg(this);
    dlg.setObjectName(QString::fromLatin1(S::SubDialogName));
    dlg.setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    dlg.setAttribute(Qt::WA_StyledBackground);
    dlg.setStyleSheet(QString::fromLatin1(S::F1Dialog));

    auto *label = new QLabel(QString::fromLatin1(S::PgmOutLabel), &dlg);
    label->setFixedSize(90, 20);
    label->setStyleSheet(QString::fromLatin1(S::Caption));
    auto *list = new QComboBox(&dlg);
    list->setObjectName(QStringLiteral("PGMOUT"));
    list->setStyleSheet(QString::fromLatin1(S::Inputs));
    for (const char *item : S::PgmOutItems)
        list->addItem(QString::fromLatin1(item));
    list->setCurrentIndex(m_outIndex);
    auto *close = new QPushButton(&dlg);
    close->setFixedSize(30, 28);
    close->setStyleSheet(QString::fromLatin1(TitleBarStyles::CloseKey));

    auto *top = new QHBoxLayout;
    top->addStretch(1);
    top->addWidget(close);
    auto *body = new QHBoxLayout;
    body->addWidget(label);
    body->addWidget(list, 1);
    auto *col = new QVBoxLayout(&dlg);
    col->addLayout(top);
    col->addLayout(body);
    dlg.resize(260, 90);

    // Connected after the stored index is shown, so opening the dialog sends nothing.
    connect(list, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Upper_Widget::on_coboxIndexChanged_PGMOUT);
    connect(close, &QPushButton::clicked, &dlg, &QDialog::reject);
    dlg.exec();
}

void Upper_Widget::on_coboxIndexChanged_PGMOUT(int index)
{
    // The list index goes out as it is; the unit reports other codes back (set_F1_Style).
    m_outIndex = index;
    m_link->format(index);
}

void Upper_Widget::set_F1_Style(uint8_t code)
{
    // The unit reports the format's code, not the list position it was sent; a code outside
    // the table leaves the choice as it was.
    const int index = Protocol::outputFormatIndex(code);
    if (index >= 0)
        m_outIndex = index;
}

void Upper_Widget::on_btnclicked_F2()
{
    flashKey(
        this, S::F2FlashMs, [this](bool lit) { on_Style_btnF2(lit); }, [this] { m_link->f2(); }, nullptr);
}

void Upper_Widget::on_btnclicked_F3()
{
    m_btnF3->toggle();
    m_link->mute();
}

void Upper_Widget::set_F3_Style(uint8_t s)
{
    if (s == 0 || s == 0xFF)
        m_btnF3->setLit(s == 0xFF);
}

void Upper_Widget::on_btnclicked_F7()
{
    m_btnF7->toggle();
    m_link->f7();
}

void Upper_Widget::on_btnclicked_Read3210data()
{
    m_link->readState();
}

void Upper_Widget::on_btnclicked_close()
{
    window()->close();
}

void Upper_Widget::on_btnclicked_retrun()
{
    emit on_Singnals_returnloginwin();
}

void Upper_Widget::on_Style_btnFTB(bool on)
{
    setKeySheet(m_btnFTB, KeySheet::text(on ? S::FTBOn : S::FTBOff));
}

void Upper_Widget::on_Style_btnF1(bool on)
{
    setKeySheet(m_btnF1, KeySheet::text(on ? S::F1On : S::F1Off));
}

void Upper_Widget::on_Style_btnF2(bool on)
{
    setKeySheet(m_btnF2, KeySheet::text(on ? S::F2On : S::F2Off));
}

void Upper_Widget::on_Style_btnF3(bool on)
{
    m_btnF3->showLamp(on);
}

void Upper_Widget::on_Style_btnF7(bool on)
{
    m_btnF7->showLamp(on);
}
