#include "resobody.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/unitcontrol.h"
#include "ui_resobody.h"

Resobody::Resobody(QWidget *parent, UnitControl *model)
    : QWidget(parent), ui(std::make_unique<Ui::Resobody>()), m_link(model)
{
    ui->setupUi(this);
    for (const Protocol::OutputFormat &format : Protocol::OutputFormats)
        ui->comboBox_pgm_out->addItem(QString::fromLatin1(format.name));
    connect(ui->comboBox_pgm_out, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Resobody::coboxIndexChanged_PGMOUT);
}

Resobody::~Resobody() = default;

QComboBox *Resobody::formatList() const
{
    return ui->comboBox_pgm_out;
}

void Resobody::coboxIndexChanged_PGMOUT(int index)
{
    m_link->format(index);
}

void Resobody::setPGMState(int code)
{
    if (code < 0 || code > 0xFF)
        return;
    const int index = Protocol::outputFormatIndex(uint8_t(code));
    // Not blocked: a new format is sent back as its list position.
    if (index >= 0)
        ui->comboBox_pgm_out->setCurrentIndex(index);
}
