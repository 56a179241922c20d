#pragma once

#include "SwitcherData/unitmodel.h"
#include "SwitcherData/unitstate.h"
#include "SwitcherData/workdata.h"
#include "live/oscremote.h"
#include "live/remotetarget.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <memory>

class UnitLink;

// One unit the hub holds: its link, bound as a panel binds it, what it last reported, and what
// the hub last sent it. Every command, whoever sends it (OSC, MQTT), goes through run() in
// kovactl's words, so there is one vocabulary and one check before anything is sent.
//
// It is also the unit's remote target: the OSC remote's keys become those words ("pgm3" is
// "pgm 3", "pip" is "pip on" or "pip off" by its lamp). A lamp is read from the unit's last
// state where the family reports the field, otherwise from what the hub last sent: the RVX3220
// reports nothing, so the hub's view of it is its own last commands.
class HubUnit : public QObject, public RemoteTarget
{
    Q_OBJECT
public:
    HubUnit(const DevInfo_DATA &record, int number, QObject *parent = nullptr);
    ~HubUnit() override;

    // The unit's ID on the remotes: its main-board address with dashes for dots.
    static QString idOf(const QString &address);

    QString id() const { return m_id; }
    int number() const { return m_number; }
    void setNumber(int number) { m_number = number; }
    QString name() const { return m_name; }
    Family family() const { return m_family; }
    UnitLink *link() const { return m_link.get(); }
    bool reportsState() const;
    bool hisKnown() const { return m_hisKnown; }
    // A newer search record of the unit: binds the HIS board once it has answered.
    void updateRecord(const DevInfo_DATA &record);

    // One command in kovactl's words: an empty text when it went out, else why nothing was sent.
    QString run(const QString &line);
    // Asks for the state where the family can be asked; false (and it is not asked again) where not.
    bool follow();
    bool answering() const { return m_answering; }

    // The state as `kovactl state --json` names it; for a unit that reports none, the buses,
    // effect and keys the hub last sent.
    QJsonObject stateObject() const;
    // The whole state as the OSC remote tells it (model, unit, link and the fields).
    OscFields oscState() const;
    int programme() const;
    int preview() const;
    QStringList inputLabels() const;

    // RemoteTarget
    QString modelName() const override { return m_model; }
    QString unitAddress() const override { return m_address; }
    int inputCount() const override;
    QStringList keyNames() const override;
    bool pressKey(const QString &name) override;
    std::optional<bool> keyLit(const QString &name) const override;
    bool setFader(double f) override;
    bool requestState() override;

signals:
    // Fields of the state that changed, by their OSC names; also after a command changed the
    // hub's own view of a unit that reports nothing.
    void stateChanged(const OscFields &changed);
    void answeringChanged(bool answering);
    // A command was refused: `reason` says why, and nothing was sent.
    void refused(const QString &line, const QString &reason);

private:
    QString lineFor(const QString &key) const;
    void remember(const QString &line);
    void stateReported(const UnitState &state);
    std::optional<int> known(UnitState::Field field, const char *sentName) const;

    QString m_id;
    QString m_address;
    QString m_model;
    QString m_name;
    int m_number;
    Family m_family;
    bool m_hisKnown = false;
    std::unique_ptr<UnitLink> m_link;
    UnitState m_state;
    // What the hub last sent, by kovactl's field names ("pgm", "pip", ...), as numbers.
    QHash<QString, int> m_sent;
    bool m_answering = true;
    bool m_followed = true;
};
