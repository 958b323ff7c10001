#pragma once

#include "model/KeyedListModel.h"
#include "ui/summary/OverviewTexts.h"
#include "ui/summary/ProtectionChecks.h"
#include "ui/summary/Situation.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// The texts and values of overview, sidebar and tray panel, made again whenever the model changes,
/// and each minute. Signals are emitted only for values that differ, so that a run, which is read
/// each second, updates only what is about the run.
class Summary : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppModel *model READ model WRITE setModel NOTIFY modelChanged REQUIRED FINAL)

    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)
    Q_PROPERTY(QString currentFile READ currentFile NOTIFY changed FINAL)
    Q_PROPERTY(OverviewTexts::Action action READ action NOTIFY changed FINAL)
    Q_PROPERTY(QString actionLabel READ actionLabel NOTIFY changed FINAL)

    Q_PROPERTY(QString notice READ notice NOTIFY changed FINAL)

    Q_PROPERTY(QString dialValue READ dialValue NOTIFY changed FINAL)
    Q_PROPERTY(QString dialCaption READ dialCaption NOTIFY changed FINAL)
    Q_PROPERTY(double percent READ percent NOTIFY changed FINAL)
    Q_PROPERTY(QList<bool> litTicks READ litTicks NOTIFY ticksChanged FINAL)
    Q_PROPERTY(double nowFraction READ nowFraction NOTIFY changed FINAL)

    Q_PROPERTY(KeyedListModel *checkRows READ checkRows CONSTANT FINAL)
    Q_PROPERTY(QString badge READ badge NOTIFY checksChanged FINAL)
    Q_PROPERTY(bool protectedWell READ isProtectedWell NOTIFY checksChanged FINAL)

    Q_PROPERTY(bool running READ isRunning NOTIFY changed FINAL)
    Q_PROPERTY(QString sidebarState READ sidebarState NOTIFY changed FINAL)
    Q_PROPERTY(Tones::Tone sidebarTone READ sidebarTone NOTIFY changed FINAL)
    Q_PROPERTY(QString panelEyebrow READ panelEyebrow NOTIFY changed FINAL)
    Q_PROPERTY(QString panelHeadline READ panelHeadline NOTIFY changed FINAL)
    Q_PROPERTY(QString panelDetail READ panelDetail NOTIFY changed FINAL)

    Q_PROPERTY(KeyedListModel *destinationRows READ destinationRows CONSTANT FINAL)
    Q_PROPERTY(KeyedListModel *panelRows READ panelRows CONSTANT FINAL)

public:
    explicit Summary(QObject *parent = nullptr);

    [[nodiscard]] AppModel *model() const { return m_model; }
    void setModel(AppModel *model);

    [[nodiscard]] QString title() const { return m_values.title; }
    [[nodiscard]] QString detail() const { return m_values.detail; }
    [[nodiscard]] QString currentFile() const { return m_values.currentFile; }
    [[nodiscard]] OverviewTexts::Action action() const { return m_values.action; }
    [[nodiscard]] QString actionLabel() const;
    [[nodiscard]] QString notice() const { return m_values.notice; }

    [[nodiscard]] QString dialValue() const { return m_values.dialValue; }
    [[nodiscard]] QString dialCaption() const { return m_values.dialCaption; }
    /// The progress of the run from 0 to 1, unchecked; 0 when nothing runs.
    [[nodiscard]] double percent() const { return m_values.percent; }
    /// Whether each tick of the dial is lit.
    [[nodiscard]] QList<bool> litTicks() const { return m_litTicks; }
    /// Where the current time is on the dial, clockwise from 0 at the top to 1.
    [[nodiscard]] double nowFraction() const { return m_values.nowFraction; }

    [[nodiscard]] QList<ProtectionChecks::Check> checks() const { return m_checks; }
    /// The same for QML.
    [[nodiscard]] KeyedListModel *checkRows() { return &m_checkRows; }
    [[nodiscard]] QString badge() const;
    [[nodiscard]] bool isProtectedWell() const;

    /// Whether a run is in progress; false while it is only being launched.
    [[nodiscard]] bool isRunning() const { return m_values.running; }
    [[nodiscard]] QString sidebarState() const { return m_values.sidebarState; }
    [[nodiscard]] Tone sidebarTone() const { return m_values.sidebarTone; }
    [[nodiscard]] QString panelEyebrow() const { return m_values.panelEyebrow; }
    [[nodiscard]] QString panelHeadline() const { return m_values.panelHeadline; }
    [[nodiscard]] QString panelDetail() const { return m_values.panelDetail; }

    /// A DestinationState for each destination, in their order; none without a model.
    [[nodiscard]] KeyedListModel *destinationRows() { return &m_destinationRows; }
    /// Those of them that the tray panel has.
    [[nodiscard]] KeyedListModel *panelRows() { return &m_panelRows; }

    /// Performs the action of the large button.
    Q_INVOKABLE void act();
    /// Opens the place where the check of that id is put right; nothing if there is none.
    Q_INVOKABLE void remedy(const QString &id);

Q_SIGNALS:
    void modelChanged();
    /// litTicks has changed. Emitted before changed(), so that the drawing code can compare
    /// `percent` with the value that it has seen last.
    void ticksChanged();
    void checksChanged();
    /// Any of the other values has changed.
    void changed();

private:
    /// The values that changed() reports.
    struct Values
    {
        QString title;
        QString detail;
        QString currentFile;
        OverviewTexts::Action action = OverviewTexts::Action::Choose;
        QString notice;
        QString dialValue;
        QString dialCaption;
        double percent = 0;
        double nowFraction = 0;
        bool running = false;
        QString sidebarState;
        Tone sidebarTone = Tone::Off;
        QString panelEyebrow;
        QString panelHeadline;
        QString panelDetail;

        bool operator==(const Values &) const = default;
    };

    void update();
    void updateDestinations();
    void updateRun();
    void publish();
    [[nodiscard]] Values values() const;
    [[nodiscard]] QList<bool> ticks() const;

    QPointer<AppModel> m_model;
    Situation m_situation;
    QSet<int> m_versionTicks; ///< the ticks of the versions of the last 24 hours
    Values m_values;
    QList<bool> m_litTicks;
    QList<ProtectionChecks::Check> m_checks;
    KeyedListModel m_checkRows{QMetaType::fromType<ProtectionChecks::Check>(), "id"};
    KeyedListModel m_destinationRows{QMetaType::fromType<DestinationState>(), "id"};
    KeyedListModel m_panelRows{QMetaType::fromType<DestinationState>(), "id"};
};
