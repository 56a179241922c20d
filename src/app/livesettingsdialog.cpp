#include "livesettingsdialog.h"

#include "live/liveoptions.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSettings>
#include <QSpinBox>
#include <QVBoxLayout>

LiveSettingsDialog::LiveSettingsDialog(QSettings &settings, QWidget *parent)
    : QDialog(parent), m_settings(settings), m_oscPort(new QSpinBox), m_oscBind(new QLineEdit),
      m_tslTargets(new QPlainTextEdit), m_follow(new QSpinBox),
      m_sideBySide(new QCheckBox(tr("Open each unit in a window of its own"))), m_mqttUrl(new QLineEdit),
      m_mqttCa(new QLineEdit), m_mqttPasswordFile(new QLineEdit), m_station(new QLineEdit),
      m_error(new QLabel)
{
    setWindowTitle(tr("Live settings"));
    const LiveOptions options = LiveOptions::load(settings);
    m_oscPort->setObjectName(QStringLiteral("oscPort"));
    m_oscPort->setRange(0, 65535);
    m_oscPort->setSpecialValueText(tr("off"));
    m_oscPort->setValue(options.oscPort);
    m_oscBind->setObjectName(QStringLiteral("oscBind"));
    m_oscBind->setText(options.oscBind);
    m_tslTargets->setObjectName(QStringLiteral("tslTargets"));
    m_tslTargets->setPlaceholderText(tr("one HOST:PORT a line"));
    m_tslTargets->setPlainText(options.tslTargets.join(QLatin1Char('\n')));
    m_follow->setObjectName(QStringLiteral("follow"));
    m_follow->setRange(0, LiveOptions::MaxFollowMs);
    m_follow->setSuffix(tr(" ms"));
    m_follow->setSpecialValueText(tr("off"));
    m_follow->setValue(options.followMs);
    m_sideBySide->setObjectName(QStringLiteral("sideBySide"));
    m_sideBySide->setChecked(options.sideBySide);
    m_mqttUrl->setObjectName(QStringLiteral("mqttUrl"));
    m_mqttUrl->setPlaceholderText(tr("off, or mqtt://[user@]host[:port]"));
    m_mqttUrl->setText(options.mqttUrl);
    m_mqttCa->setObjectName(QStringLiteral("mqttCa"));
    m_mqttCa->setPlaceholderText(tr("for mqtts://"));
    m_mqttCa->setText(options.mqttCa);
    m_mqttPasswordFile->setObjectName(QStringLiteral("mqttPasswordFile"));
    m_mqttPasswordFile->setPlaceholderText(tr("else $KOVA_MQTT_PASSWORD"));
    m_mqttPasswordFile->setText(options.mqttPasswordFile);
    m_station->setObjectName(QStringLiteral("station"));
    m_station->setPlaceholderText(LiveOptions().stationName());
    m_station->setText(options.station);
    m_error->setObjectName(QStringLiteral("error"));
    m_error->setWordWrap(true);

    auto *form = new QFormLayout;
    form->addRow(tr("OSC port"), m_oscPort);
    form->addRow(tr("OSC address"), m_oscBind);
    form->addRow(tr("Tally targets"), m_tslTargets);
    form->addRow(tr("Follow state"), m_follow);
    form->addRow(m_sideBySide);
    form->addRow(tr("MQTT broker"), m_mqttUrl);
    form->addRow(tr("MQTT CA file"), m_mqttCa);
    form->addRow(tr("MQTT password file"), m_mqttPasswordFile);
    form->addRow(tr("Station"), m_station);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &LiveSettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &LiveSettingsDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_error);
    layout->addWidget(buttons);
}

void LiveSettingsDialog::accept()
{
    // The same checks as the command line's, so what is saved always loads.
    LiveOptions options;
    QString error = options.setOscPort(QString::number(m_oscPort->value()));
    if (error.isEmpty())
        error = options.setOscBind(m_oscBind->text());
    const QStringList lines = m_tslTargets->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines)
        if (error.isEmpty() && !line.trimmed().isEmpty())
            error = options.addTslTarget(line);
    if (error.isEmpty())
        error = options.setFollowMs(QString::number(m_follow->value()));
    options.sideBySide = m_sideBySide->isChecked();
    if (error.isEmpty())
        error = options.setMqttUrl(m_mqttUrl->text());
    if (error.isEmpty())
        error = options.setStation(m_station->text());
    options.mqttCa = m_mqttCa->text().trimmed();
    options.mqttPasswordFile = m_mqttPasswordFile->text().trimmed();
    m_error->setText(error);
    if (!error.isEmpty())
        return;
    options.save(m_settings);
    m_settings.sync();
    QDialog::accept();
}
