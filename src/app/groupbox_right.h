#pragma once

#include <QGroupBox>

class QButtonGroup;
class QListWidget;
class QPushButton;
class QRadioButton;

// Right-hand column of the search window: model filter, search and exit.
class GroupBox_right : public QGroupBox
{
    Q_OBJECT
public:
    GroupBox_right(QWidget *parent, QListWidget *list);

    QRadioButton *radioAll() const { return m_radios[0]; }
    QRadioButton *radio(int index) const { return m_radios[index]; }
    QPushButton *searchButton() const { return m_btnScan; }
    QPushButton *exitButton() const { return m_btnExit; }

signals:
    void btnScan_clicked();
    void btnGrp_clicked(int id);
    void btn5120_clicked();

public slots:
    void on_btnScan_clicked();
    void on_btnGrp_clicked(int id);
    void on_btn5120_clicked();
    void on_Radiobtn_checked(bool checked);

private:
    QButtonGroup *m_group = nullptr;
    QPushButton *m_btnScan = nullptr;
    QPushButton *m_btnExit = nullptr;
    QRadioButton *m_radios[5] = {};
    QListWidget *m_list = nullptr;
};
