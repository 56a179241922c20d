#pragma once

#include <QString>
#include <QWidget>
#include <memory>

class QPushButton;
class RVX5ALL_workdata;

namespace Ui {
class RVX5120;
}

// The RVX5120's front panel as a picture: every key is drawn dark and nothing is wired, so
// the panel opens without a unit and never talks to one. It still holds a link of its own,
// unbound, for the day its keys are given work.
class RVX5120 : public QWidget
{
    Q_OBJECT
public:
    explicit RVX5120(QWidget *parent = nullptr);
    ~RVX5120() override;

    RVX5ALL_workdata *link() const { return m_link; }

    void on_Style_btnAfv(bool lit);
    void on_Style_btnMute(bool lit);
    void on_Style_btnCH1(bool lit);
    void on_Style_btnCH2(bool lit);
    void on_Style_btnMix(bool lit);
    void on_Style_btnFADE(bool lit);
    void on_Style_btnWipe(bool lit);
    void on_Style_btnPip(bool lit);
    void on_Style_btnPop(bool lit);
    void on_Style_btnStill(bool lit);
    void on_Style_btnRate(bool lit);
    void on_Style_btnReso(bool lit);
    void on_Style_btnReset(bool lit);

private:
    void initUpper();
    void initBootom();
    void lamp(QPushButton *key, bool lit);

    std::unique_ptr<Ui::RVX5120> ui;
    RVX5ALL_workdata *m_link = nullptr;
    const QString m_dark;
    const QString m_lit;
};
