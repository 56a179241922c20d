#pragma once

#include <QWidget>
#include <memory>

class QComboBox;
class UnitControl;

namespace Ui {
class Resobody;
}

// The RVX5310's output format list. A choice goes to the unit at once; the unit's reported
// format selects its entry, and when that differs from the shown one the list's change goes
// back to the unit as a choice would (the unit expects that echo).
class Resobody : public QWidget
{
    Q_OBJECT
public:
    Resobody(QWidget *parent, UnitControl *model);
    ~Resobody() override;

    QComboBox *formatList() const;

    // The unit's format code (1080P60 is 0x07, ...); a code of no format changes nothing.
    void setPGMState(int code);

public slots:
    // The list position goes out, not the format's code.
    void coboxIndexChanged_PGMOUT(int index);

private:
    std::unique_ptr<Ui::Resobody> ui;
    UnitControl *m_link;
};
