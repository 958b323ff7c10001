#include "tools/ChildEnvironment.h"

#include <algorithm>
#include <array>
#include <optional>

#include <unistd.h>

namespace {

/// Beginnings of variables that a tool of ours would take for its options, or that were meant for
/// the start of this program alone.
constexpr std::array leftOut{
    QByteArrayView("RESTIC_"),
    QByteArrayView("RCLONE_"),
    QByteArrayView("SYSTEMD_"),
    QByteArrayView("SYSTEMCTL_"),
    QByteArrayView("XDG_ACTIVATION_TOKEN"),
    QByteArrayView("DESKTOP_STARTUP_ID"),
};

/// The tools' variables that only say how this machine reaches the network, or where a tool keeps
/// its own files.
constexpr std::array ofMachine{
    QByteArrayView("RCLONE_CA_CERT"),         QByteArrayView("RCLONE_CACHE_DIR"),
    QByteArrayView("RCLONE_CLIENT_CERT"),     QByteArrayView("RCLONE_CLIENT_KEY"),
    QByteArrayView("RCLONE_CLIENT_PASS"),     QByteArrayView("RCLONE_DRIVE_AUTH_URL"),
    QByteArrayView("RCLONE_DRIVE_TOKEN_URL"), QByteArrayView("RCLONE_HTTP_PROXY"),
    QByteArrayView("RCLONE_SFTP_HTTP_PROXY"), QByteArrayView("RCLONE_SFTP_SOCKS_PROXY"),
    QByteArrayView("RCLONE_TEMP_DIR"),        QByteArrayView("RESTIC_CACHE_DIR"),
};

bool isForChildren(QByteArrayView name)
{
    return std::find(ofMachine.begin(), ofMachine.end(), name) != ofMachine.end() ||
           std::none_of(leftOut.begin(), leftOut.end(),
                        [name](QByteArrayView prefix) { return name.startsWith(prefix); });
}

/// The name of an entry; empty when the entry isn't NAME=value.
QByteArray nameOf(const QByteArray &entry)
{
    return entry.first(qMax(entry.indexOf('='), qsizetype{0}));
}

QList<QByteArray> current()
{
    QList<QByteArray> entries;
    for (char **entry = environ; *entry != nullptr; ++entry) {
        const QByteArray text(*entry);
        if (isForChildren(nameOf(text))) {
            entries.append(text);
        }
    }
    return entries;
}

std::optional<QList<QByteArray>> &kept()
{
    static std::optional<QList<QByteArray>> copy;
    return copy;
}

} // namespace

void ChildEnvironment::keep()
{
    kept() = current();
}

QList<QByteArray> ChildEnvironment::with(const QMap<QString, QString> &changes)
{
    QList<QByteArray> entries = kept() ? *kept() : current();
    entries.removeIf([&changes](const QByteArray &entry) {
        return changes.contains(QString::fromUtf8(nameOf(entry)));
    });
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        entries.append(change.key().toUtf8() + '=' + change.value().toUtf8());
    }
    return entries;
}
