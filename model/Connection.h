#pragma once

#include "tools/Rclone.h"

#include <QObject>
#include <QString>

#include <optional>

/// What is known of the account on a remote place. Absent texts are empty.
struct Connection
{
    Q_GADGET
    Q_PROPERTY(bool connected MEMBER connected FINAL)
    Q_PROPERTY(bool connecting MEMBER connecting FINAL)
    Q_PROPERTY(QString error MEMBER error FINAL)
    Q_PROPERTY(bool hasQuota READ hasQuota FINAL)
    Q_PROPERTY(Rclone::Quota quota READ quotaOrNone FINAL)
    Q_PROPERTY(QString versioning MEMBER versioning FINAL)

public:
    bool connected = false;             ///< an account is set up
    bool connecting = false;            ///< a connection is being made
    QString error;                      ///< why the last one failed, as it is shown
    std::optional<Rclone::Quota> quota; ///< absent when the place doesn't report it
    QString versioning;                 ///< rclone's word for the versioning of an S3 bucket

    bool operator==(const Connection &) const = default;

    [[nodiscard]] bool hasQuota() const { return quota.has_value(); }
    [[nodiscard]] Rclone::Quota quotaOrNone() const { return quota.value_or(Rclone::Quota()); }
};
