#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <sys/resource.h>

/// Lets this process, and what it starts, leave as large a core as may be.
inline void allowCores()
{
    rlimit limit = {};
    ::getrlimit(RLIMIT_CORE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_CORE, &limit);
}

/// How many bytes of its memory a process may leave behind when it crashes, in the words of /proc:
/// "0", "1", "unlimited". At 1 Linux writes no file, and starts nobody to take it either.
inline QByteArray coreLimit(qint64 process)
{
    QFile limits(QStringLiteral("/proc/%1/limits").arg(process));
    if (limits.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : limits.readAll().split('\n')) {
            if (line.startsWith("Max core file size")) {
                return line.mid(26).simplified().split(' ').first();
            }
        }
    }
    return {};
}
