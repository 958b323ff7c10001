#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <sys/resource.h>

/// Raises the core size limit of this process and its children as far as it may.
inline void allowCores()
{
    rlimit limit = {};
    ::getrlimit(RLIMIT_CORE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_CORE, &limit);
}

/// How many bytes of its memory a process may leave behind when it crashes, in the words of /proc:
/// "0", "1", "unlimited". At 1 Linux writes no file, and starts no program to take it either.
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
