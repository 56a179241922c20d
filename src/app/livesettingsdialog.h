#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSettings;
class QSpinBox;

// The live features' settings (OSC remote, tally targets, state following, panels side by
// side, the MQTT broker), read from and written to the settings on OK. They take effect at the next start.
class LiveSettingsDialog : public QDialog
{
    Q_OBJECT
public:
    explicit LiveSettingsDialog(QSettings &settings, QWidget *parent = nullptr);

    void accept() override;

private:
    QSettings &m_settings;
    QSpinBox *m_oscPort;
    QLineEdit *m_oscBind;
    QPlainTextEdit *m_tslTargets;
    QSpinBox *m_follow;
    QCheckBox *m_sideBySide;
    QLineEdit *m_mqttUrl;
    QLineEdit *m_mqttCa;
    QLineEdit *m_mqttPasswordFile;
    QLineEdit *m_station;
    QLabel *m_error;
};
