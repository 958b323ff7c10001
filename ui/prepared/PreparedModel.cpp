#include "ui/prepared/PreparedModel.h"

#include "ui/prepared/PreparedStates.h"

#include <utility>

PreparedModel::PreparedModel(QObject *parent)
    : QObject(parent)
    , m_shown(PreparedStates::state(m_state))
    , m_model(m_desktop, m_shown)
{
}

void PreparedModel::setState(const QString &state)
{
    if (m_state == state) {
        return;
    }
    m_state = state;
    m_shown = PreparedStates::state(state);
    m_desktop->fullDiskAccess = m_shown.fullDiskAccess;
    m_model.show(m_shown);
    Q_EMIT stateChanged();
}

QStringList PreparedModel::states()
{
    return PreparedStates::names();
}

QStringList PreparedModel::takeAsked()
{
    return std::exchange(m_desktop->asked, {});
}

void PreparedModel::setPercent(double percent)
{
    if (m_shown.status) {
        m_shown.status->percent = percent;
        m_model.show(m_shown);
    }
}

void PreparedModel::setKitNotice(const QString &text, bool warning)
{
    m_shown.kitNotice = Notice{text, warning};
    m_model.show(m_shown);
}

void PreparedModel::setKeyError(const QString &text)
{
    m_shown.keyError = text;
    m_model.show(m_shown);
}
