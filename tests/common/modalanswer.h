#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>
#include <functional>

// While it lives, answers every modal window from inside its own event loop. Message boxes are
// recorded ("title|text") and answered Yes; any other modal window goes to `other` (once),
// which must close it.
class ModalWatch
{
public:
    explicit ModalWatch(std::function<void(QWidget *)> other = nullptr) : m_other(std::move(other))
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { answer(); });
        m_timer.start();
    }

    QStringList boxes;

private:
    void answer()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            boxes << box->windowTitle() + QLatin1Char('|') + box->text();
            box->done(QMessageBox::Yes);
        } else if (m_other) {
            auto other = m_other;
            m_other = nullptr;
            other(modal);
        } else {
            modal->close();
        }
    }

    QTimer m_timer;
    std::function<void(QWidget *)> m_other;
};
