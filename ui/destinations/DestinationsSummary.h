#pragma once

#include "ui/summary/DestinationsTexts.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// The figures and sentences of the destinations page, made anew whenever the model changes, and
/// each minute. What comes out the same isn't reported.
class DestinationsSummary : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppModel *model READ model WRITE setModel NOTIFY modelChanged REQUIRED FINAL)

    Q_PROPERTY(DestinationsTexts::Figure firstBackup READ firstBackup NOTIFY spaceChanged FINAL)
    Q_PROPERTY(bool hasVersions READ hasVersions NOTIFY spaceChanged FINAL)
    Q_PROPERTY(DestinationsTexts::Figure versions READ versions NOTIFY spaceChanged FINAL)
    Q_PROPERTY(QString measureLabel READ measureLabel NOTIFY spaceChanged FINAL)

    Q_PROPERTY(DestinationsTexts::Place local READ local NOTIFY localChanged FINAL)
    Q_PROPERTY(bool diskAway READ isDiskAway NOTIFY localChanged FINAL)
    Q_PROPERTY(DestinationsTexts::Place drive READ drive NOTIFY driveChanged FINAL)
    Q_PROPERTY(DestinationsTexts::Place server READ server NOTIFY serverChanged FINAL)
    Q_PROPERTY(Notice bucketVersioning READ bucketVersioning NOTIFY serverChanged FINAL)
    Q_PROPERTY(DestinationsTexts::ServerForm form READ form NOTIFY formChanged FINAL)

public:
    explicit DestinationsSummary(QObject *parent = nullptr);

    [[nodiscard]] AppModel *model() const { return m_model; }
    void setModel(AppModel *model);

    [[nodiscard]] DestinationsTexts::Figure firstBackup() const { return m_space.firstBackup; }
    [[nodiscard]] bool hasVersions() const { return m_space.versions.has_value(); }
    /// Empty without hasVersions.
    [[nodiscard]] DestinationsTexts::Figure versions() const;
    [[nodiscard]] QString measureLabel() const { return m_space.measureLabel; }

    [[nodiscard]] DestinationsTexts::Place local() const { return m_local.place; }
    [[nodiscard]] bool isDiskAway() const { return m_local.isDiskAway; }
    [[nodiscard]] DestinationsTexts::Place drive() const { return m_drive; }
    [[nodiscard]] DestinationsTexts::Place server() const { return m_server.place; }
    /// Without a text where there is nothing to say.
    [[nodiscard]] Notice bucketVersioning() const { return m_server.versioning; }
    [[nodiscard]] DestinationsTexts::ServerForm form() const { return m_form; }

    /// The name of a kind of server.
    Q_INVOKABLE static QString name(ServerKinds::ServerKind kind);

Q_SIGNALS:
    void modelChanged();
    void spaceChanged();
    void localChanged();
    void driveChanged();
    void serverChanged();
    void formChanged();

private:
    struct Space
    {
        DestinationsTexts::Figure firstBackup;
        std::optional<DestinationsTexts::Figure> versions;
        QString measureLabel;

        bool operator==(const Space &) const = default;
    };

    struct Local
    {
        DestinationsTexts::Place place;
        bool isDiskAway = false;

        bool operator==(const Local &) const = default;
    };

    struct Server
    {
        DestinationsTexts::Place place;
        Notice versioning;

        bool operator==(const Server &) const = default;
    };

    void listen();
    void update();

    QPointer<AppModel> m_model;
    Space m_space;
    Local m_local;
    DestinationsTexts::Place m_drive;
    Server m_server;
    DestinationsTexts::ServerForm m_form;
};
