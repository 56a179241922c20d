#include "rvx_3410_middle_widget.h"

#include "SwitcherData/unitcontrol.h"
#include "common/keysheet.h"
#include "rvx3410styles.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace S4 = Rvx3410Styles;

namespace {

using Menu = UnitControl::MenuKey;
constexpr bool Pressed = true;
constexpr bool Released = false;
constexpr int MenuKeySize = 50;

} // namespace

RVX_3410_Middle_widget::RVX_3410_Middle_widget(QWidget *parent, UnitControl *link)
    : Middle_widget(parent, link)
{
    // The first source is shown from the start; nothing is sent for it.
    for (QComboBox *list : {ch1Source(), ch2Source()}) {
        const QSignalBlocker quiet(list);
        list->setCurrentIndex(0);
    }

    m_btnMenuUp = makeKey(S4::MenuUpOff, MenuKeySize);
    m_btnMenu = makeKey(S4::MenuOff, MenuKeySize);
    m_btnMenu->setText(QString::fromLatin1(S4::MenuKeyText));
    m_btnMenuDown = makeKey(S4::MenuDownOff, MenuKeySize);

    auto *menu = new QVBoxLayout;
    menu->setSpacing(4);
    menu->addStretch(1);
    for (QPushButton *key : {m_btnMenuUp, m_btnMenu, m_btnMenuDown})
        menu->addWidget(key, 0, Qt::AlignHCenter);
    menu->addStretch(1);
    addSection(menu, 1);

    connect(m_btnMenuUp, &QPushButton::pressed, this, &RVX_3410_Middle_widget::on_btnpressed_MenuUp);
    connect(m_btnMenuUp, &QPushButton::released, this, &RVX_3410_Middle_widget::on_btnreleased_MenuUp);
    connect(m_btnMenu, &QPushButton::pressed, this, &RVX_3410_Middle_widget::on_btnpressed_Menu);
    connect(m_btnMenu, &QPushButton::released, this, &RVX_3410_Middle_widget::on_btnreleased_Menu);
    connect(m_btnMenuDown, &QPushButton::pressed, this, &RVX_3410_Middle_widget::on_btnpressed_MenuDown);
    connect(m_btnMenuDown, &QPushButton::released, this, &RVX_3410_Middle_widget::on_btnreleased_MenuDown);
}

void RVX_3410_Middle_widget::on_btnpressed_MenuUp()
{
    setKeySheet(m_btnMenuUp, KeySheet::text(S4::MenuUpOn));
    link()->menu(Menu::Up, Pressed);
}

void RVX_3410_Middle_widget::on_btnreleased_MenuUp()
{
    setKeySheet(m_btnMenuUp, KeySheet::text(S4::MenuUpOff));
    link()->menu(Menu::Up, Released);
}

void RVX_3410_Middle_widget::on_btnpressed_Menu()
{
    setKeySheet(m_btnMenu, KeySheet::text(S4::MenuOn));
    link()->menu(Menu::Enter, Pressed);
}

void RVX_3410_Middle_widget::on_btnreleased_Menu()
{
    // The unit acts on the press alone: unlike the arrows, the menu key sends no release.
    setKeySheet(m_btnMenu, KeySheet::text(S4::MenuOff));
}

void RVX_3410_Middle_widget::on_btnpressed_MenuDown()
{
    setKeySheet(m_btnMenuDown, KeySheet::text(S4::MenuDownOn));
    link()->menu(Menu::Down, Pressed);
}

void RVX_3410_Middle_widget::on_btnreleased_MenuDown()
{
    setKeySheet(m_btnMenuDown, KeySheet::text(S4::MenuDownOff));
    link()->menu(Menu::Down, Released);
}
