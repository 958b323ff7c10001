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

/// What overview, sidebar and tray panel say of the present situation, told anew whenever the model
/// changes, and each minute. What comes out the same isn't told of, so that a run, which is seen
/// anew each second, disturbs only what is about the run.
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

    [[nodiscard]] QString title() const { return m_told.title; }
    [[nodiscard]] QString detail() const { return m_told.detail; }
    [[nodiscard]] QString currentFile() const { return m_told.currentFile; }
    [[nodiscard]] OverviewTexts::Action action() const { return m_told.action; }
    [[nodiscard]] QString actionLabel() const;
    [[nodiscard]] QString notice() const { return m_told.notice; }

    [[nodiscard]] QString dialValue() const { return m_told.dialValue; }
    [[nodiscard]] QString dialCaption() const { return m_told.dialCaption; }
    /// Of the run in progress, as it stands; 0 when nothing runs.
    [[nodiscard]] double percent() const { return m_told.percent; }
    /// One for each tick of the dial.
    [[nodiscard]] QList<bool> litTicks() const { return m_litTicks; }
    /// From 0 at the top to 1.
    [[nodiscard]] double nowFraction() const { return m_told.nowFraction; }

    [[nodiscard]] QList<ProtectionChecks::Check> checks() const { return m_checks; }
    /// The same for QML.
    [[nodiscard]] KeyedListModel *checkRows() { return &m_checkRows; }
    [[nodiscard]] QString badge() const;
    [[nodiscard]] bool isProtectedWell() const;

    /// Whether a run is seen; a launch alone is none.
    [[nodiscard]] bool isRunning() const { return m_told.running; }
    [[nodiscard]] QString sidebarState() const { return m_told.sidebarState; }
    [[nodiscard]] Tone sidebarTone() const { return m_told.sidebarTone; }
    [[nodiscard]] QString panelEyebrow() const { return m_told.panelEyebrow; }
    [[nodiscard]] QString panelHeadline() const { return m_told.panelHeadline; }
    [[nodiscard]] QString panelDetail() const { return m_told.panelDetail; }

    /// A DestinationState for each destination, in their order; none without a model.
    [[nodiscard]] KeyedListModel *destinationRows() { return &m_destinationRows; }
    /// Those of them that the tray panel has.
    [[nodiscard]] KeyedListModel *panelRows() { return &m_panelRows; }

    /// Does what the large button says.
    Q_INVOKABLE void act();
    /// Does what a click on the check of that id does; nothing where there is nothing to do.
    Q_INVOKABLE void remedy(const QString &id);

Q_SIGNALS:
    void modelChanged();
    /// Other ticks shine. Comes before changed(), so that who draws them can tell whether that is a
    /// step of the run.
    void ticksChanged();
    void checksChanged();
    /// Any of the other values is another one.
    void changed();

private:
    /// What changes with a run from one second to the next.
    struct Told
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

        bool operator==(const Told &) const = default;
    };

    void update();
    void updateDestinations();
    void updateRun();
    void tell();
    [[nodiscard]] Told told() const;
    [[nodiscard]] QList<bool> ticks() const;

    QPointer<AppModel> m_model;
    Situation m_situation;
    QSet<int> m_halfHours; ///< those of the last day in which a version was made
    Told m_told;
    QList<bool> m_litTicks;
    QList<ProtectionChecks::Check> m_checks;
    KeyedListModel m_checkRows{QMetaType::fromType<ProtectionChecks::Check>(), "id"};
    KeyedListModel m_destinationRows{QMetaType::fromType<DestinationState>(), "id"};
    KeyedListModel m_panelRows{QMetaType::fromType<DestinationState>(), "id"};
};
