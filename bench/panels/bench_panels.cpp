// The panels under the benchmark of panelbench.cpp, and the program's command line:
//
//   bench_panels PANEL         loopback: the stand-in unit is a socket of this process
//   bench_panels PANEL restyle loopback, only the paths that restyle keys (no CPU figures)
//   bench_panels PANEL lab     across the lab's veth pair, run as the command of lab/lab.sh;
//                              the stand-in unit is a copy of this program in the unit namespace
//   bench_panels floor         no panel: Qt's cost of the sheet swaps a moving reply asks for
//   bench_panels unit MAIN HIS OPERATOR
//                              that copy: reports each arrival on stdout, sends on request
//
// PANEL is one of the panels with buses: rvx3210, rvx3210s, rvx3210p, rvx3210-2021 (the
// RVX3210 family's types, one panel with its own model name each), rvx3410, rvx3220,
// rvx5310, rvx5370, rvx5350. Run only inside tests/netns-run.sh or lab/lab.sh (see run.sh):
// it opens sockets.
#include "RVX3210/below_widget.h"
#include "RVX3210/plane_top.h"
#include "RVX3210/rvx3210styles.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3210/upper_widget.h"
#include "RVX3220/pgm.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3410/rvx3410styles.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX3410/rvx_3410_upper_widget.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX5350/rvx5350.h"
#include "RVX5370/rvx5370.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "common/keysheet.h"
#include "common/pictureiconengine.h"
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

QByteArray record(const char *atRest, uint8_t pgm, uint8_t pvw, uint8_t rate)
{
    QByteArray r = QByteArray::fromHex(atRest);
    r[PgmAt] = char(pgm);
    r[PvwAt] = char(pvw);
    r[RateAt] = char(rate);
    return r;
}

// The RVX3210 family paints a lit key with its red picture. RVX3210UI is the panel of the
// RVX3210, RVX3210S, RVX3210P and RVX3210(2021); the launcher tells it the unit's type, which
// names the model in its title bar.
template <class Panel> class Rvx3210FrameRig : public PanelRig
{
public:
    QWidget *panel() override { return &m_panel; }
    ReportingLink *link() override { return m_panel.link(); }
    void bind(const QString &unitIp, const QString &hisIp) override
    {
        m_panel.DevTypeID(unitIp, 0xA5, 0xFF, hisIp, 0xE0, 0xFF);
    }
    bool pgmLit(int input) const override
    {
        return m_panel.lowerRow()->pgmGroup()->button(input)->styleSheet().contains(
            QStringLiteral(":/images/red/png/%1.png").arg(input));
    }
    QAbstractButton *pgmKey(int input) const override
    {
        return m_panel.lowerRow()->pgmGroup()->button(input);
    }
    QPushButton *cutKey() const override { return m_panel.lowerRow()->btnCut(); }
    QPushButton *ftbKey() const override { return m_panel.upperRow()->btnFTB(); }
    QPushButton *autoKey() const override { return m_panel.lowerRow()->btnAuto(); }

protected:
    Panel m_panel;
};

class Rvx3210Rig : public Rvx3210FrameRig<RVX3210UI>
{
public:
    explicit Rvx3210Rig(int childType) { m_panel.titleBar()->setDev_Child_Type(childType); }
    QByteArray stateRecord(uint8_t pgm, uint8_t rate) const override
    {
        // 26 bytes: MIX, CH1 IN1 at 50, CH2 IN2 at 50, mix, 1080P60, the rest off or zero.
        return record("0102000332043201000000000002000000000000000700000000", pgm, 2, rate);
    }
};

// The RVX3410 sends the RVX3210 record and three bytes more (recording, streaming, rotation).
class Rvx3410Rig : public Rvx3210FrameRig<RVX3410UI>
{
public:
    QByteArray stateRecord(uint8_t pgm, uint8_t rate) const override
    {
        // 29 bytes: as the RVX3210's, and REC, PAUSE, STREAM and ROTATE off.
        return record("0102000332043201000000000002000000000000000700000000000000", pgm, 2, rate);
    }
    int settleMs() const override { return Rvx3410Styles::DelayedReadMs + 300; }
};

// The RVX3220 reports no state: its lamps follow the operator's keys, stretched pictures.
class Rvx3220Rig : public PanelRig
{
public:
    QWidget *panel() override { return &m_panel; }
    ReportingLink *link() override { return nullptr; }
    bool reportsState() const override { return false; }
    void bind(const QString &unitIp, const QString &) override { m_panel.DevTypeID(unitIp, 0xA5, 0xFF); }
    QByteArray stateRecord(uint8_t, uint8_t) const override { return {}; }
    bool pgmLit(int input) const override
    {
        return m_panel.pgm()->buttonGroup()->button(input)->styleSheet().contains(
            QStringLiteral(":/images/red/%1.bmp").arg(input));
    }
    QAbstractButton *pgmKey(int input) const override { return m_panel.pgm()->buttonGroup()->button(input); }
    QPushButton *cutKey() const override { return m_panel.cutButton(); }
    QPushButton *ftbKey() const override { return nullptr; }
    QPushButton *autoKey() const override { return m_panel.autoButton(); }

private:
    RVX3220UI m_panel;
};

// The 8000 series lights a key with a red gradient.
template <class Panel> class Series8000Rig : public PanelRig
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
        return record("0102010332043c020200000000020200000000000007000000", pgm, 2, rate);
    }
    bool pgmLit(int input) const override
    {
        return pgmKey(input)->styleSheet() == QLatin1String(KeySheet::GradientRed);
    }
    QAbstractButton *pgmKey(int input) const override { return key("btn_pgm" + QString::number(input)); }
    QPushButton *cutKey() const override { return key(QStringLiteral("btn_cut")); }
    QPushButton *ftbKey() const override { return key(QStringLiteral("btn_ftb")); }
    QPushButton *autoKey() const override { return key(QStringLiteral("btn_auto")); }

protected:
    QPushButton *key(const QString &name) const { return m_panel.template findChild<QPushButton *>(name); }

    Panel m_panel;
};

// The RVX5350 has two inputs in place of the PGM and PVW rows, no CUT and no FTB: a reply
// that moves two keys puts the other input on air.
class Rvx5350Rig : public Series8000Rig<RVX5350>
{
public:
    QByteArray stateRecord(uint8_t pgm, uint8_t rate) const override
    {
        // 25 bytes: MIX, CH1 IN1 at 50, CH2 IN2 at 60, FADE, wipe L, PIP off, size S at 0/0,
        // 1080P60, the rest off.
        return record("0100010332043c020000000000020000000000000007000000", pgm, 0, rate);
    }
    std::pair<int, int> movingInputs() const override { return {1, 2}; }
    QAbstractButton *pgmKey(int input) const override
    {
        return m_panel.template findChild<QAbstractButton *>("btn_in" + QString::number(input));
    }
    bool pgmLit(int input) const override
    {
        return pgmKey(input)->styleSheet() == QLatin1String(KeySheet::GradientRed);
    }
    QPushButton *cutKey() const override { return nullptr; }
    QPushButton *ftbKey() const override { return nullptr; }
};

} // namespace

std::unique_ptr<PanelRig> makeRig(const QString &name)
{
    // The RVX3210 family's types, as the search reply gives them.
    if (name == QLatin1String("rvx3210"))
        return std::make_unique<Rvx3210Rig>(0x21);
    if (name == QLatin1String("rvx3210s"))
        return std::make_unique<Rvx3210Rig>(0x24);
    if (name == QLatin1String("rvx3210-2021"))
        return std::make_unique<Rvx3210Rig>(0x25);
    if (name == QLatin1String("rvx3210p"))
        return std::make_unique<Rvx3210Rig>(0x26);
    if (name == QLatin1String("rvx3410"))
        return std::make_unique<Rvx3410Rig>();
    if (name == QLatin1String("rvx3220"))
        return std::make_unique<Rvx3220Rig>();
    if (name == QLatin1String("rvx5310"))
        return std::make_unique<Series8000Rig<RVX5310Dialog>>();
    if (name == QLatin1String("rvx5370"))
        return std::make_unique<Series8000Rig<RVX5370>>();
    if (name == QLatin1String("rvx5350"))
        return std::make_unique<Rvx5350Rig>();
    return nullptr;
}

int main(int argc, char **argv)
{
    if (argc == 5 && std::strcmp(argv[1], "unit") == 0)
        return runUnit(argv[2], argv[3], argv[4]);
    const bool lab = argc == 3 && std::strcmp(argv[2], "lab") == 0;
    const bool restyle = argc == 3 && std::strcmp(argv[2], "restyle") == 0;
    if (argc != 2 && !lab && !restyle) {
        std::fprintf(stderr, "usage: %s PANEL [lab|restyle] | unit MAIN HIS OPERATOR\n", argv[0]);
        return 2;
    }
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    if (argc == 2 && std::strcmp(argv[1], "floor") == 0) {
        // PGM 3's lamp of the RVX3210 family (a picture on the red base) and of the 8000
        // series (a gradient), through the engine the panels draw pictures with.
        namespace S = Rvx3210Styles;
        PictureIconEngine::install();
        return runFloor({{"RVX3210 family picture sheets", KeySheet::image(S::PgmWhite[2], S::BaseRed),
                          KeySheet::image(S::PgmRed[2], S::BaseRed)},
                         {"8000-series gradient sheets", QString::fromLatin1(KeySheet::GradientOff),
                          QString::fromLatin1(KeySheet::GradientRed)}});
    }
    const std::unique_ptr<PanelRig> rig = makeRig(QString::fromLatin1(argv[1]));
    if (!rig) {
        std::fprintf(stderr, "no panel named %s\n", argv[1]);
        return 2;
    }
    if (lab && !rig->reportsState()) {
        std::fprintf(stderr, "%s reports no state: loopback only\n", argv[1]);
        return 2;
    }
    return lab ? runLab(*rig) : runLoopback(*rig, restyle);
}
