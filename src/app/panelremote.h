#pragma once

#include "live/remotetarget.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class PanelKeys;
class UnitLink;

// The open panel as a remote drives it: its keys by stable name, clicked as the operator clicks
// them, its T-bar and its link's state request.
class PanelRemote : public RemoteTarget
{
public:
    PanelRemote(QWidget *panel, UnitLink *link, const QString &modelName);

    QString modelName() const override { return m_model; }
    QString unitAddress() const override;
    int inputCount() const override;
    QStringList keyNames() const override;
    bool hasKey(const QString &name) const override;
    bool pressKey(const QString &name) override;
    std::optional<bool> keyLit(const QString &name) const override;
    bool setFader(double f) override;
    bool requestState() override;

    // The labels of the programme row's keys, as the panel shows them (the tally's texts).
    QStringList inputLabels() const;
    // The T-bar's place from 0 to 1, or -1 without one.
    double faderPosition() const;

private:
    PanelKeys *keys() const;

    QPointer<QWidget> m_panel;
    QPointer<UnitLink> m_link;
    QString m_model;
};
