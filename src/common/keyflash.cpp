#include "keyflash.h"

#include "delay.h"

#include <QPointer>

bool flashKey(QObject *owner, int waitMs, const std::function<void(bool lit)> &lamp,
              const std::function<void()> &beforeWait, const std::function<void()> &afterWait)
{
    const QPointer<QObject> alive(owner);
    lamp(true);
    if (beforeWait)
        beforeWait();
    Delay_MSec(waitMs);
    if (!alive)
        return false;
    if (afterWait)
        afterWait();
    lamp(false);
    return true;
}
