#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// A folder that goes into the backup, as its row shows it.
struct SourceRow
{
    Q_GADGET
    QML_VALUE_TYPE(sourceRow)
    Q_PROPERTY(QString path MEMBER path FINAL)
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(QString symbol MEMBER symbol FINAL)
    Q_PROPERTY(QString size MEMBER size FINAL)

public:
    QString path; ///< as it stands in the settings
    QString name;
    QString symbol;
    QString size; ///< empty while it isn't known

    bool operator==(const SourceRow &) const = default;
};

/// What doesn't go into the backup, as its chip shows it.
struct ExcludeRow
{
    Q_GADGET
    QML_VALUE_TYPE(excludeRow)
    Q_PROPERTY(QString pattern MEMBER pattern FINAL)
    Q_PROPERTY(QString fault MEMBER fault FINAL)

public:
    QString pattern; ///< as it stands in the settings
    QString fault;   ///< what is wrong with it; empty when nothing is

    bool operator==(const ExcludeRow &) const = default;
};
