#include "lampkey.h"

#include "keysheet.h"

LampKey::LampKey(QWidget *parent) : QPushButton(parent) {}

void LampKey::setSheets(const QString &lit, const QString &unlit)
{
    m_litSheet = lit;
    m_unlitSheet = unlit;
    showLamp(m_lit);
}

void LampKey::setSheets(const char *lit, const char *unlit)
{
    setSheets(KeySheet::text(lit), KeySheet::text(unlit));
}

void LampKey::setLit(bool lit)
{
    m_lit = lit;
    showLamp(lit);
}

bool LampKey::toggle()
{
    setLit(!m_lit);
    return m_lit;
}

void LampKey::setLitUnshown(bool lit)
{
    m_lit = lit;
}

void LampKey::showLamp(bool lit)
{
    setKeySheet(this, lit ? m_litSheet : m_unlitSheet);
}
