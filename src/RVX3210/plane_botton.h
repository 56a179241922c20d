#pragma once

#include <QWidget>

class QComboBox;
class QDialog;
class QLabel;
class QLineEdit;
class QPushButton;
class ReportingLink;
struct HisAddresses;
struct StreamUrl;

// Bottom strip of the RVX3210-family panels with the "SWITCHER IP" dialog: the main board's
// address, the HIS board's address, mask, gateway and DNS, and the HIS board's URL slots.
class Plane_Botton : public QWidget
{
    Q_OBJECT
public:
    Plane_Botton(QWidget *parent, ReportingLink *link);

    QPushButton *btnSet() const { return m_btnSet; }
    QPushButton *btnClose() const { return m_btnClose; }
    QDialog *setDialog() const { return m_dlg; }
    QLineEdit *devIpEdit() const { return m_devIp; }
    QLineEdit *hisIpEdit() const { return m_hisIp; }
    QLineEdit *hisSubnetEdit() const { return m_hisSubnet; }
    QLineEdit *hisGatewayEdit() const { return m_hisGateway; }
    QLineEdit *hisDnsEdit() const { return m_hisDns; }
    QComboBox *urlIndex() const { return m_urlIndex; }
    QLineEdit *otherNameEdit() const { return m_otherName; }
    QLineEdit *urlEdit() const { return m_url; }
    QPushButton *btnSetDevIp() const { return m_btnSetDevIp; }
    QPushButton *btnReadHis() const { return m_btnReadHis; }
    QPushButton *btnSetHisIp() const { return m_btnSetHisIp; }
    QPushButton *btnSetDns() const { return m_btnSetDns; }
    QPushButton *btnSetUrl() const { return m_btnSetUrl; }
    QPushButton *btnReadUrl() const { return m_btnReadUrl; }

public slots:
    void on_btnclicked_Set();
    void on_btnclicked_SetDevIP();
    void on_btnclicked_ReadHis();
    void on_btnclicked_SetHisIP();
    void on_btnclicked_SetDNS();
    void on_btnclicked_ReadUrl();
    void on_btnclicked_SetUrl();
    // The HIS board's replies as the link decodes them; what a reply stopped short of keeps
    // the text it had.
    void on_ToShow_HisInfo(const HisAddresses &addresses);
    void on_ToShow_HisUrl(const StreamUrl &url);

private:
    void initDialog();
    // Fills the dialog's address fields from what the link object knows now.
    void fillFromLink();
    void warn(const char *text);

    ReportingLink *m_link = nullptr;
    QLabel *m_version = nullptr;
    QPushButton *m_btnSet = nullptr;
    QPushButton *m_btnClose = nullptr;
    QDialog *m_dlg = nullptr;
    QLineEdit *m_devIp = nullptr;
    QLineEdit *m_hisIp = nullptr;
    QLineEdit *m_hisSubnet = nullptr;
    QLineEdit *m_hisGateway = nullptr;
    QLineEdit *m_hisDns = nullptr;
    QComboBox *m_urlIndex = nullptr;
    QLineEdit *m_otherName = nullptr;
    QLineEdit *m_url = nullptr;
    QPushButton *m_btnSetDevIp = nullptr;
    QPushButton *m_btnReadHis = nullptr;
    QPushButton *m_btnSetHisIp = nullptr;
    QPushButton *m_btnSetDns = nullptr;
    QPushButton *m_btnSetUrl = nullptr;
    QPushButton *m_btnReadUrl = nullptr;
};
