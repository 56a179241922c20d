#include "delay.h"

#include <QEventLoop>
#include <QTimer>

void Delay_MSec(int ms)
{
    if (ms <= 0)
        return;
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}
