#include "ServiceLog.h"

#include <QMutex>
#include <QMutexLocker>
#include <cstdio>

void ServiceLog::line(const QString& text)
{
    static QMutex mutex;
    const QByteArray bytes = text.toUtf8();
    const QMutexLocker lock(&mutex);
    std::fprintf(stderr, "%s\n", bytes.constData());
    std::fflush(stderr);
}
