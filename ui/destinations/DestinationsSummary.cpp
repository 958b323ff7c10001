#include "ui/destinations/DestinationsSummary.h"

#include <initializer_list>

DestinationsSummary::DestinationsSummary(QObject *parent)
    : QObject(parent)
{
    update();
}

void DestinationsSummary::setModel(AppModel *model)
{
    if (m_model == model) {
        return;
    }
    if (m_model) {
        for (QObject *sender : std::initializer_list<QObject *>{
                 m_model, m_model->localFolder(), m_model->connections(),
                 m_model->sources()->measurement()}) {
            sender->disconnect(this);
        }
    }
    m_model = model;
    if (model != nullptr) {
        listen();
    }
    Q_EMIT modelChanged();
    update();
}

void DestinationsSummary::listen()
{
    // The first of them comes with each change of settings, history and repositories, and with each
    // minute, too.
    connect(m_model, &AppModel::summaryChanged, this, &DestinationsSummary::update);
    connect(m_model->localFolder(), &LocalFolder::changed, this, &DestinationsSummary::update);
    const Connections *connections = m_model->connections();
    connect(connections, &Connections::driveChanged, this, &DestinationsSummary::update);
    connect(connections, &Connections::serverChanged, this, &DestinationsSummary::update);
    const Measurement *measurement = m_model->sources()->measurement();
    connect(measurement, &Measurement::sizesChanged, this, &DestinationsSummary::update);
    connect(measurement, &Measurement::measuringChanged, this, &DestinationsSummary::update);
    connect(measurement, &Measurement::soFarChanged, this, &DestinationsSummary::update);
    connect(m_model, &QObject::destroyed, this, [this] {
        Q_EMIT modelChanged();
        update();
    });
}

void DestinationsSummary::update()
{
    const auto situation = m_model ? DestinationsSituation::of(*m_model) : DestinationsSituation();
    const auto assign = [this](auto &field, const auto &value, auto signal) {
        if (!(field == value)) {
            field = value;
            Q_EMIT(this->*signal)();
        }
    };
    const auto place = [&situation](DestinationID id) {
        return DestinationsTexts::place(id, situation);
    };
    assign(m_space,
           Space{DestinationsTexts::firstBackup(situation), DestinationsTexts::versions(situation),
                 DestinationsTexts::measureLabel(situation)},
           &DestinationsSummary::spaceChanged);
    assign(m_local, Local{place(DestinationID::Local), DestinationsTexts::isDiskAway(situation)},
           &DestinationsSummary::localChanged);
    assign(m_drive, place(DestinationID::Drive), &DestinationsSummary::driveChanged);
    assign(m_server,
           Server{place(DestinationID::Server),
                  DestinationsTexts::bucketVersioning(situation).value_or(Notice())},
           &DestinationsSummary::serverChanged);
    assign(m_form, DestinationsTexts::serverForm(situation.config()),
           &DestinationsSummary::formChanged);
}

DestinationsTexts::Figure DestinationsSummary::versions() const
{
    return m_space.versions.value_or(DestinationsTexts::Figure());
}

QString DestinationsSummary::name(ServerKind kind)
{
    return DestinationsTexts::name(kind);
}
