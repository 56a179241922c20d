#pragma once

#include <QString>
#include <QWidget>
#include <memory>

class QPushButton;
class UnitControl;

namespace Ui {
class F1QWidget;
}

// The RVX5370's F1 strip: six keys that flash when pressed (they tell the unit nothing) and
// the unit's address.
class F1QWidget : public QWidget
{
    Q_OBJECT
public:
    static constexpr int KeyWaitMs = 200;

    // `model` is the panel's link; the strip keeps it for its keys but sends nothing today.
    F1QWidget(QWidget *parent, UnitControl *model);
    ~F1QWidget() override;

    void getDevIP(QString ip);

    // Keys and lamps: plain members, not slots, so the form's name-based hookup does not
    // connect a key a second time beside the typed connections.
    void on_btn_disk_clicked();
    void on_btn_leuel_clicked();
    void on_btn_rate_add_clicked();
    void on_btn_rate_sub_clicked();
    void on_btn_addr_add_clicked();
    void on_btn_addr_sub_clicked();
    void my_Style_btnDisk(bool lit);
    void my_Style_btnLeuel(bool lit);
    void my_Style_btnRateADD(bool lit);
    void my_Style_btnRateSUB(bool lit);
    void my_Style_btnAddrADD(bool lit);
    void my_Style_btnAddrSUB(bool lit);

private:
    void flash(void (F1QWidget::*lamp)(bool));

    std::unique_ptr<Ui::F1QWidget> ui;
    [[maybe_unused]] UnitControl *m_link;
};
