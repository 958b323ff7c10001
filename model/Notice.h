#pragma once

#include <QObject>
#include <QString>

/// A line that reports a result. An empty text: there is nothing to report.
struct Notice
{
    Q_GADGET
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(bool warning MEMBER warning FINAL)

public:
    QString text;
    bool warning = false;

    bool operator==(const Notice &) const = default;
};
