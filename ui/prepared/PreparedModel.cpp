#include "ui/prepared/PreparedModel.h"

#include "ui/prepared/PreparedStates.h"

#include <utility>

PreparedModel::PreparedModel(QObject *parent)
    : QObject(parent)
    , m_world(PreparedStates::state(m_state))
    , m_model(m_world.model())
{
}

void PreparedModel::setState(const QString &state)
{
    if (m_state == state) {
        return;
    }
    m_state = state;
    m_world = PreparedWorld(PreparedStates::state(state));
    // Destroyed after the signal, when nothing shows it any more.
    const std::unique_ptr<AppModel> former = std::exchange(m_model, m_world.model());
    m_model->setSection(former->section());
    m_model->kit()->setShowing(former->kit()->isShowing());
    Q_EMIT stateChanged();
}

QStringList PreparedModel::states()
{
    return PreparedStates::names();
}

QStringList PreparedModel::sourcesStates()
{
    return PreparedStates::sourcesNames();
}

QStringList PreparedModel::destinationsStates()
{
    return PreparedStates::destinationsNames();
}

void PreparedModel::chooseFolders(const QStringList &folders)
{
    m_world.desktop().folders = folders;
}

void PreparedModel::finish()
{
    m_world.finish();
}

void PreparedModel::setConnectionError(const QString &error)
{
    m_world.state().drive.error = error;
    m_world.state().server.error = error;
}

void PreparedModel::holdConnections()
{
    m_world.state().drive.connecting = true;
    m_world.state().server.connecting = true;
}

void PreparedModel::setDriveQuota(qint64 used, qint64 total)
{
    m_world.state().drive.quota = Rclone::Quota{.used = used, .total = total};
}

QString PreparedModel::secret() const
{
    return m_world.secret();
}

QStringList PreparedModel::takeAsked()
{
    return std::exchange(m_world.desktop().asked, {});
}

void PreparedModel::giveAccess()
{
    m_world.desktop().fullDiskAccess = true;
}

void PreparedModel::giveKey()
{
    m_world.state().key = PreparedStates::state(QStringLiteral("fresh")).key;
    m_world.state().keyError.reset();
    m_model->key()->read([] {});
}

void PreparedModel::setPercent(double percent)
{
    if (m_world.state().status) {
        m_world.state().status->percent = percent;
        m_model->run()->look();
    }
}

void PreparedModel::setKitNotice(const QString &text, bool warning)
{
    m_world.state().kitNotice = Notice{text, warning};
    m_world.meetKitNotice(*m_model);
}

void PreparedModel::setKeyError(const QString &text)
{
    m_world.state().keyError = text;
    m_world.meetKeyError(*m_model);
}
