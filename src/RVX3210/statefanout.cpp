#include "statefanout.h"

#include "rvx3210log.h"

void StateFanout::dump(const QByteArray &d)
{
    qCDebug(lcRvx3210) << "data" << d.toHex(' ');
    const int n = qMin(int(d.size()), RecordSize);
    for (int i = 0; i < n; ++i)
        qCDebug(lcRvx3210, "%-15s%02x", Labels[i], unsigned(at(d, i)));
}
