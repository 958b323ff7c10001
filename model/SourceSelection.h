#pragma once

#include "model/Measurement.h"
#include "model/Settings.h"
#include "model/World.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

/// What goes into the backups: the source folders and what is left out of them, as the user changes
/// them, and their sizes.
class SourceSelection final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Measurement *measurement READ measurement CONSTANT FINAL)
    Q_PROPERTY(QString refusal READ refusal NOTIFY refusalChanged FINAL)
    Q_PROPERTY(QString excludeError READ excludeError NOTIFY excludeErrorChanged FINAL)
    Q_PROPERTY(QStringList wrongExcludes READ wrongExcludes NOTIFY wrongExcludesChanged FINAL)

public:
    /// `settings` and `measurement` outlive this.
    SourceSelection(World world, Settings &settings, Measurement &measurement,
                    QObject *parent = nullptr);

    [[nodiscard]] Measurement *measurement() const { return &m_measurement; }
    /// Why what was dropped last isn't a source now; empty when nothing was refused.
    [[nodiscard]] const QString &refusal() const { return m_refusal; }
    /// Why the exclusion that was typed last wasn't added; empty when it was.
    [[nodiscard]] const QString &excludeError() const { return m_excludeError; }
    /// Exclusions of the settings that restic refuses, in their order: every backup fails.
    [[nodiscard]] const QStringList &wrongExcludes() const { return m_wrongExcludes; }

    /// Has the user choose folders, which become sources.
    void add();
    /// What was dropped becomes sources; what is no folder is refused.
    void addDropped(const QList<QUrl> &things);
    void remove(const QString &path);
    /// Adds what was typed, without the blanks around it. Nothing and one that stands there already
    /// change nothing; one that restic refuses isn't added.
    void addExclude(const QString &typed);
    void removeExclude(const QString &pattern);
    void restoreDefaultExcludes();
    /// What was refused isn't on show any longer.
    Q_INVOKABLE void forgetRefusals();

Q_SIGNALS:
    void refusalChanged();
    void excludeErrorChanged();
    void wrongExcludesChanged();
    /// What was typed is among the exclusions now.
    void excludeTaken();

private:
    void append(const QStringList &folders);
    void setRefusal(const QString &refusal);
    void setExcludeError(const QString &error);
    void look();

    const World m_world;
    Settings &m_settings;
    Measurement &m_measurement;
    QString m_refusal;
    QString m_excludeError;
    QStringList m_wrongExcludes;
};
