#include "f1strip.h"

#include "common/keyflash.h"
#include "common/keysheet.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

struct KeyName
{
    const char *object;
    const char *text;
};
constexpr KeyName Keys[] = {{"btn_disk", "DISK"},      {"btn_leuel", "LEUEL"},    {"btn_rate_add", "RATE+"},
                            {"btn_rate_sub", "RATE-"}, {"btn_addr_add", "ADDR+"}, {"btn_addr_sub", "ADDR-"}};

} // namespace

F1Strip::F1Strip(QWidget *parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("Form"));
    auto *grid = new QGridLayout(this);
    grid->setSpacing(10);
    int at = 0;
    for (const KeyName &name : Keys) {
        auto *key = new QPushButton(QString::fromLatin1(name.text), this);
        key->setObjectName(QString::fromLatin1(name.object));
        key->setMinimumSize(80, 36);
        key->setFocusPolicy(Qt::NoFocus);
        key->setAutoDefault(false);
        setKeySheet(key, QString::fromLatin1(KeySheet::GradientOff));
        connect(key, &QPushButton::clicked, this, [this, key] {
            lightWaitActUnlight(
                this, KeyWaitMs,
                [key](bool lit) { setLamp(key, lit, KeySheet::GradientGreen, KeySheet::GradientOff); },
                nullptr);
        });
        grid->addWidget(key, at / 3, at % 3);
        ++at;
    }
    m_ip = new QLabel(QStringLiteral("IP:0.0.0.0"), this);
    m_ip->setObjectName(QStringLiteral("label_IP"));
    m_ip->setStyleSheet(QStringLiteral("color:white"));
    grid->addWidget(m_ip, 2, 0, 1, 3);
}

void F1Strip::getDevIP(QString ip)
{
    m_ip->setText(QStringLiteral("IP:") + ip);
}
