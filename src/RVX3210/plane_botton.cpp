#include "plane_botton.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/reportinglink.h"
#include "common/ipv4field.h"
#include "common/panelclose.h"
#include "common/titlebarstyles.h"
#include "rvx3210styles.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace S = Rvx3210Styles;

Plane_Botton::Plane_Botton(QWidget *parent, ReportingLink *link) : QWidget(parent), m_link(link)
{
    setObjectName(QString::fromLatin1(S::BottomName));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::Bottom));
    setFixedHeight(40);

    m_version = new QLabel(QString::fromLatin1(S::Version), this);
    m_version->setStyleSheet(QString::fromLatin1(S::VersionStyle));
    m_btnSet = new QPushButton(QString::fromLatin1(S::SetKey), this);
    m_btnSet->setFixedSize(60, 26);
    m_btnSet->setStyleSheet(QString::fromLatin1(S::DialogText));
    m_btnClose = new QPushButton(this);
    m_btnClose->setFixedSize(30, 28);
    m_btnClose->setStyleSheet(QString::fromLatin1(TitleBarStyles::CloseKey));

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 10, 4);
    row->addWidget(m_version);
    row->addStretch(1);
    row->addWidget(m_btnSet);
    row->addWidget(m_btnClose);

    initDialog();

    connect(m_btnSet, &QPushButton::clicked, this, &Plane_Botton::on_btnclicked_Set);
    // Like the title bar's close key: the whole program ends (a panel that only hid itself
    // would leave no window behind).
    connect(m_btnClose, &QPushButton::clicked, this, [this] { PanelClose::closeKeyClicked(m_btnClose); });
    connect(m_link, &ReportingLink::hisAddressesReported, this, &Plane_Botton::on_ToShow_HisInfo);
    connect(m_link, &ReportingLink::streamUrlReported, this, &Plane_Botton::on_ToShow_HisUrl);
}

void Plane_Botton::initDialog()
{
    m_dlg = new QDialog(this);
    m_dlg->setObjectName(QString::fromLatin1(S::SubDialogName));
    m_dlg->setWindowTitle(QString::fromLatin1(S::SetDialogTitle));
    m_dlg->setAttribute(Qt::WA_StyledBackground);
    // The dialog carries its own sheet alone; the look of the fields and keys goes on the groups.
    m_dlg->setStyleSheet(QString::fromLatin1(S::SetDialog));
    const QString groupSheet = QString::fromLatin1(S::DialogText) + QString::fromLatin1(S::Inputs);

    auto label = [this](const char *text) { return new QLabel(QString::fromLatin1(text), m_dlg); };
    auto addressEdit = [this] {
        auto *edit = new QLineEdit(m_dlg);
        edit->setMinimumSize(150, 24);
        takeIpv4Only(edit);
        return edit;
    };
    auto key = [this](const char *text) { return new QPushButton(QString::fromLatin1(text), m_dlg); };

    // Frameless like the panel, so the dialog carries its own title and close key.
    m_dlg->setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    auto *title = new QLabel(QString::fromLatin1(S::SetDialogTitle), m_dlg);
    title->setStyleSheet(QString::fromLatin1(S::DialogTitleStyle));
    title->setAlignment(Qt::AlignCenter);
    auto *close = new QPushButton(m_dlg);
    close->setFixedSize(30, 28);
    close->setStyleSheet(QString::fromLatin1(TitleBarStyles::CloseKey));
    auto *titleRow = new QHBoxLayout;
    titleRow->addSpacing(30);
    titleRow->addWidget(title, 1);
    titleRow->addWidget(close);

    // Main board.
    auto *mainBox = new QGroupBox(m_dlg);
    mainBox->setStyleSheet(groupSheet);
    m_devIp = addressEdit();
    m_btnSetDevIp = key(S::SetIp);
    auto *mainGrid = new QGridLayout(mainBox);
    mainGrid->addWidget(label(S::IpAddr), 0, 0);
    mainGrid->addWidget(m_devIp, 0, 1);
    mainGrid->addWidget(m_btnSetDevIp, 0, 2);

    // HIS board.
    auto *hisBox = new QGroupBox(m_dlg);
    hisBox->setStyleSheet(groupSheet);
    m_hisIp = addressEdit();
    m_hisSubnet = addressEdit();
    m_hisGateway = addressEdit();
    m_hisDns = addressEdit();
    m_btnReadHis = key(S::ReadStaus);
    m_btnSetHisIp = key(S::SetIp);
    m_btnSetDns = key(S::SetDns);
    auto *hisGrid = new QGridLayout(hisBox);
    hisGrid->addWidget(label(S::IpAddr), 0, 0);
    hisGrid->addWidget(m_hisIp, 0, 1);
    hisGrid->addWidget(m_btnReadHis, 0, 2);
    hisGrid->addWidget(label(S::Subnet), 1, 0);
    hisGrid->addWidget(m_hisSubnet, 1, 1);
    hisGrid->addWidget(label(S::Gateway), 2, 0);
    hisGrid->addWidget(m_hisGateway, 2, 1);
    hisGrid->addWidget(m_btnSetHisIp, 2, 2);
    hisGrid->addWidget(label(S::Dns), 3, 0);
    hisGrid->addWidget(m_hisDns, 3, 1);
    hisGrid->addWidget(m_btnSetDns, 3, 2);

    // Streaming URL slots of the HIS board.
    auto *urlBox = new QGroupBox(m_dlg);
    urlBox->setStyleSheet(groupSheet);
    m_urlIndex = new QComboBox(m_dlg);
    for (int i = 0; i < S::UrlSlots; ++i)
        m_urlIndex->addItem(QString::number(i));
    m_urlIndex->setCurrentIndex(-1);
    m_otherName = new QLineEdit(m_dlg);
    m_url = new QLineEdit(m_dlg);
    m_url->setMinimumWidth(300);
    m_btnSetUrl = key(S::SetUrl);
    m_btnReadUrl = key(S::ReadUrl);
    auto *urlGrid = new QGridLayout(urlBox);
    urlGrid->addWidget(label(S::Index), 0, 0);
    urlGrid->addWidget(m_urlIndex, 0, 1);
    urlGrid->addWidget(m_btnReadUrl, 0, 2);
    urlGrid->addWidget(label(S::OtherName), 1, 0);
    urlGrid->addWidget(m_otherName, 1, 1);
    urlGrid->addWidget(label(S::Url), 2, 0);
    urlGrid->addWidget(m_url, 2, 1);
    urlGrid->addWidget(m_btnSetUrl, 2, 2);

    auto *col = new QVBoxLayout(m_dlg);
    col->setContentsMargins(14, 10, 14, 14);
    col->addLayout(titleRow);
    col->addWidget(mainBox);
    col->addWidget(hisBox);
    col->addWidget(urlBox);

    connect(close, &QPushButton::clicked, m_dlg, &QDialog::reject);
    connect(m_btnSetDevIp, &QPushButton::clicked, this, &Plane_Botton::on_btnclicked_SetDevIP);
    connect(m_btnReadHis, &QPushButton::clicked, this, &Plane_Botton::on_btnclicked_ReadHis);
    connect(m_btnSetHisIp, &QPushButton::clicked, this, &Plane_Botton::on_btnclicked_SetHisIP);
    connect(m_btnSetDns, &QPushButton::clicked, this, &Plane_Botton::on_btnclicked_SetDNS);
    connect(m_btnReadUrl, &QPushButton::clicked, this, &Plane_Botton::on_btnclicked_ReadUrl);
    connect(m_btnSetUrl, &QPushButton::clicked, this, &Plane_Botton::on_btnclicked_SetUrl);
}

void Plane_Botton::fillFromLink()
{
    m_devIp->setText(m_link->on_DevIP());
    m_hisIp->setText(m_link->on_HIS_IP());
    m_hisSubnet->setText(m_link->on_HIS_Subnet());
    m_hisGateway->setText(m_link->on_HIS_Gateway());
    m_hisDns->setText(m_link->on_HIS_DNS());
}

void Plane_Botton::on_btnclicked_Set()
{
    fillFromLink();
    m_dlg->exec();
}

void Plane_Botton::warn(const char *text)
{
    QMessageBox::warning(m_dlg, QString::fromLatin1(S::WarningTitle), QString::fromLatin1(text));
}

void Plane_Botton::on_btnclicked_SetDevIP()
{
    const QString text = m_devIp->text();
    if (text.isEmpty()) {
        warn(S::TextEmpty);
        return;
    }
    // An address of other than four numbers sends nothing.
    m_link->setAddress(text);
}

void Plane_Botton::on_btnclicked_ReadHis()
{
    m_link->readHis();
}

void Plane_Botton::on_btnclicked_SetHisIP()
{
    // Only three whole addresses go out.
    m_link->hisAddress(m_hisIp->text(), m_hisSubnet->text(), m_hisGateway->text());
}

void Plane_Botton::on_btnclicked_SetDNS()
{
    m_link->hisDns(m_hisDns->text());
}

void Plane_Botton::on_btnclicked_ReadUrl()
{
    // Only with a slot chosen.
    m_link->readUrl(m_urlIndex->currentIndex());
}

void Plane_Botton::on_btnclicked_SetUrl()
{
    const QByteArray name = m_otherName->text().toLatin1();
    const QByteArray url = m_url->text().toLatin1();
    if (name.size() > Protocol::UrlNameMax) {
        warn(S::OtherNameErrors);
        return;
    }
    if (url.size() > Protocol::UrlMax) {
        warn(S::UrlErrors);
        return;
    }
    // Only with a slot chosen, as for the read.
    m_link->url(m_urlIndex->currentIndex(), name, url);
}

void Plane_Botton::on_ToShow_HisInfo(const HisAddresses &addresses)
{
    QLineEdit *const edits[] = {m_hisIp, m_hisSubnet, m_hisGateway, m_hisDns};
    const QString *const texts[] = {&addresses.ip, &addresses.subnet, &addresses.gateway, &addresses.dns};
    for (int i = 0; i < 4; ++i) {
        if (!texts[i]->isNull())
            edits[i]->setText(*texts[i]);
    }
}

void Plane_Botton::on_ToShow_HisUrl(const StreamUrl &url)
{
    if (!url.name.isNull())
        m_otherName->setText(url.name);
    if (!url.url.isNull())
        m_url->setText(url.url);
}
