#pragma once

#include "SwitcherData/unitaddress.h"
#include "SwitcherData/unitlink.h"
#include "SwitcherData/unitmodel.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVector>
#include <QWidget>
#include <cstdint>

class GroupBox_right;
class QLabel;
class QListWidget;
class SWITCHER_DATA;

// The start window: searches the network, lists the units that answered under the chosen
// model filter and opens the panel that fits a double-clicked unit.
class showsearch : public QWidget
{
    Q_OBJECT
public:
    explicit showsearch(QWidget *parent = nullptr);

    // How long --open waits for a unit to answer the search before saying it did not.
    static constexpr int OpenWaitMs = 5000;

    QListWidget *deviceList() const { return m_list; }
    GroupBox_right *groupBox() const { return m_groupBox; }
    SWITCHER_DATA *link() const { return m_link; }

public slots:
    void m_on_SendCMD_Scan();
    void m_on_ReceiveDatagram();
    void m_on_Radbtn_select(int id);
    void setBtnall();
    void setBtn3210();
    void setBtn3220();
    void setliswidget_ItemAlignment();
    void m_on_liswidget_clicked();

    void set3210UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d);
    void set3410UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d);
    void set3220UI(QString ip, uint8_t a, uint8_t b);
    void set5310UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d);
    void set5370UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d);
    void set5350UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d);
    void set5120UI();
    void showSearchPage();

    // Opens the panel of a model for a unit as the search found it: the launchers above take
    // the same boards as text.
    void openPanel(PanelKind panel, const UnitAddress &unit, const UnitAddress &his);

    // The live features' settings (OSC remote, tally, followed state), from Ctrl+, on this
    // window; the window's own layout has no key for them.
    void showLiveSettings();

    // Each unit's panel in a window of its own: the search window stays up, a unit already
    // open is raised instead of opened again, and a panel's return or close key closes that
    // panel alone. Off, one panel is open at a time in the search window's place.
    void setSideBySide(bool on) { m_sideBySide = on; }
    bool sideBySide() const { return m_sideBySide; }
    // Opens the panels of the units at these addresses as soon as the search finds them, as a
    // double-click would, numbered in this order. One that has not answered within OpenWaitMs
    // is reported on stderr and in this window.
    void openWhenFound(const QStringList &addresses);
    // The open panel of the unit at this dotted address (side by side), or nullptr.
    QWidget *openPanelOf(const QString &address) const;
    // The note this window shows under its list (units that did not answer), empty if none.
    QString note() const;

signals:
    // A panel of `kind` is about to show, bound through `link` to a unit of that child type;
    // `number` counts the open units from 1 in the order their panels opened.
    void panelOpened(QWidget *panel, UnitLink *link, PanelKind kind, uint8_t childType, int number);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    // Side by side: numbers, names and shows the panel beside the others and returns true.
    // Otherwise announces it as the only one and returns false; the launcher goes on.
    bool presentBeside(QWidget *panel, UnitLink *link, PanelKind kind, const UnitAddress &unit);
    int takeNumber(const UnitAddress &unit) const;
    void placeBeside(QWidget *panel);
    void openAwaited();
    void showNote(const QString &text);
    void open3210(const UnitAddress &unit, const UnitAddress &his);
    void open3410(const UnitAddress &unit, const UnitAddress &his);
    void open3220(const UnitAddress &unit);
    void open5310(const UnitAddress &unit, const UnitAddress &his);
    void open5370(const UnitAddress &unit, const UnitAddress &his);
    void open5350(const UnitAddress &unit, const UnitAddress &his);
    void init();
    void init2();
    // Refills the list with every record the filter admits (model label or name, then the
    // address), then sorts and centres it.
    void rebuild(int filter);
    // Brings the "all" list up to date with the records that arrived since it was built:
    // a burst of replies adds its items once instead of rebuilding the list per reply.
    void appendNewRecords();

    QWidget *m_titleBar = nullptr;
    QListWidget *m_list = nullptr;
    GroupBox_right *m_groupBox = nullptr;
    SWITCHER_DATA *m_link = nullptr;
    // Records 0..m_listedAll-1 are shown in the "all" form; -1 when the list shows
    // anything else, so the next reply rebuilds it whole.
    int m_listedAll = -1;
    bool m_updatePending = false;

    bool m_sideBySide = false;
    struct OpenPanel
    {
        int number;
        quint32 ip;
        QPointer<QWidget> panel;
    };
    QVector<OpenPanel> m_open;
    struct Awaited
    {
        QString address;
        int number;
        qint64 seenAt; // ms on m_awaitClock when its main board first answered, -1 before
    };
    QVector<Awaited> m_awaited;
    QElapsedTimer m_awaitClock;
    QTimer m_awaitTick;
    QLabel *m_note = nullptr;
};
