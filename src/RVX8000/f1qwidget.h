#pragma once

#include "keystrip.h"

#include <memory>

class UnitControl;

namespace Ui {
class F1QWidget;
}

// The RVX5370's F1 strip: six keys that flash when pressed (they tell the unit nothing) and
// the unit's address.
class F1QWidget : public KeyStrip
{
    Q_OBJECT
public:
    // `model` is the panel's link; the strip keeps it for its keys but sends nothing today.
    F1QWidget(QWidget *parent, UnitControl *model);
    ~F1QWidget() override;

private:
    std::unique_ptr<Ui::F1QWidget> ui;
    [[maybe_unused]] UnitControl *m_link;
};
