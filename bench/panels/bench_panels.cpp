// The panels under the benchmark of panelbench.cpp, and the program's command line:
//
//   bench_panels PANEL         loopback: the stand-in unit is a socket of this process
//   bench_panels PANEL lab     across the lab's veth pair, run as the command of lab/lab.sh;
//                              the stand-in unit is a copy of this program in the unit namespace
//   bench_panels unit MAIN HIS OPERATOR
//                              that copy: reports each arrival on stdout, sends on request
//
// PANEL is rvx3210 or rvx5310. Run only inside tests/netns-run.sh or lab/lab.sh (see run.sh):
// it opens sockets.
#include "RVX3210/below_widget.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3210/upper_widget.h"
#include "RVX5310/rvx5310dialog.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "common/keysheet.h"
#include "panelbench.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QLoggingCategory>
#include <QPushButton>
#include <cstdio>
#include <cstring>

namespace {

// Offsets of the state record both families share.
constexpr int PgmAt = 0;
constexpr int PvwAt = 1;
constexpr int RateAt = 20;

QByteArray record(const char *atRest, uint8_t pgm, uint8_t rate)
{
    QByteArray r = QByteArray::fromHex(atRest);
    r[PgmAt] = char(pgm);
    r[PvwAt] = char(2);
    r[RateAt] = char(rate);
    return r;
}

// The RVX3210 family paints a lit key with its red picture.
class Rvx3210Rig : public PanelRig
{
public:
    QWidget *panel() override { return &m_panel; }
    ReportingLink *link() override { return m_panel.link(); }
    void bind(const QString &unitIp, const QString &hisIp) override
    {
        m_panel.DevTypeID(unitIp, 0xA5, 0xFF, hisIp, 0xE0, 0xFF);
    }
    QByteArray stateRecord(uint8_t pgm, uint8_t rate) const override
    {
        // 26 bytes: MIX, CH1 IN1 at 50, CH2 IN2 at 50, mix, 1080P60, the rest off or zero.
        return record("0102000332043201000000000002000000000000000700000000", pgm, rate);
    }
    bool pgmLit(int input) const override
    {
        return m_panel.lowerRow()->pgmGroup()->button(input)->styleSheet().contains(
            QStringLiteral(":/images/red/png/%1.png").arg(input));
    }
    QPushButton *cutKey() const override { return m_panel.lowerRow()->btnCut(); }
    QPushButton *ftbKey() const override { return m_panel.upperRow()->btnFTB(); }
    QPushButton *autoKey() const override { return m_panel.lowerRow()->btnAuto(); }

private:
    RVX3210UI m_panel;
};

// The 8000 series lights a key with a red gradient.
class Rvx5310Rig : public PanelRig
{
public:
    QWidget *panel() override { return &m_panel; }
    ReportingLink *link() override { return m_panel.link(); }
    void bind(const QString &unitIp, const QString &hisIp) override
    {
        m_panel.DevTypeID(unitIp, 0xA5, 0xFF, hisIp, 0xE0, 0xFF);
    }
    QByteArray stateRecord(uint8_t pgm, uint8_t rate) const override
    {
        // 25 bytes: MIX, CH1 IN1 at 50, CH2 IN2 at 60, FADE, wipe U, PIP off, border 0/0/2,
        // size L at 0/0, 1080P60, the rest off.
        return record("0102010332043c020200000000020200000000000007000000", pgm, rate);
    }
    bool pgmLit(int input) const override
    {
        return key("btn_pgm" + QString::number(input))->styleSheet() == QLatin1String(KeySheet::GradientRed);
    }
    QPushButton *cutKey() const override { return key(QStringLiteral("btn_cut")); }
    QPushButton *ftbKey() const override { return key(QStringLiteral("btn_ftb")); }
    QPushButton *autoKey() const override { return key(QStringLiteral("btn_auto")); }

private:
    QPushButton *key(const QString &name) const { return m_panel.findChild<QPushButton *>(name); }

    RVX5310Dialog m_panel;
};

} // namespace

std::unique_ptr<PanelRig> makeRig(const QString &name)
{
    if (name == QLatin1String("rvx3210"))
        return std::make_unique<Rvx3210Rig>();
    if (name == QLatin1String("rvx5310"))
        return std::make_unique<Rvx5310Rig>();
    return nullptr;
}

int main(int argc, char **argv)
{
    if (argc == 5 && std::strcmp(argv[1], "unit") == 0)
        return runUnit(argv[2], argv[3], argv[4]);
    const bool lab = argc == 3 && std::strcmp(argv[2], "lab") == 0;
    if (argc != 2 && !lab) {
        std::fprintf(stderr, "usage: %s rvx3210|rvx5310 [lab] | unit MAIN HIS OPERATOR\n", argv[0]);
        return 2;
    }
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const std::unique_ptr<PanelRig> rig = makeRig(QString::fromLatin1(argv[1]));
    if (!rig) {
        std::fprintf(stderr, "no panel named %s\n", argv[1]);
        return 2;
    }
    return lab ? runLab(*rig) : runLoopback(*rig);
}
