#include "model/DiskAccess.h"

#include "model/UserDefaults.h"
#include "platform/Clock.h"

#include <QDateTime>

#include <utility>

namespace {

using GatedAction = DiskAccess::GatedAction;

QString rawValue(GatedAction action)
{
    return action == GatedAction::Measure ? QStringLiteral("measure") : QStringLiteral("backup");
}

GatedAction gatedAction(const QString &rawValue)
{
    if (rawValue == QLatin1String("backup")) {
        return GatedAction::Backup;
    }
    return rawValue == QLatin1String("measure") ? GatedAction::Measure : GatedAction::None;
}

/// The action that was kept in the user defaults.
struct Kept
{
    GatedAction action = GatedAction::None;
    QDateTime date;
};

/// Whether the user went to the system's settings so long ago that the action would surprise them.
bool hasExpired(const QDateTime &date)
{
    static constexpr qint64 patienceMilliseconds = qint64{900} * 1000;
    return !date.isValid() || date.msecsTo(Clock::now()) >= patienceMilliseconds;
}

} // namespace

DiskAccess::DiskAccess(World world, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
{
}

void DiskAccess::setRequest(GatedAction action)
{
    if (m_request != action) {
        m_request = action;
        Q_EMIT requestChanged();
    }
}

void DiskAccess::check(const std::function<void()> &done)
{
    m_world.background.run(
        this, [desktop = m_world.desktop] { return desktop->hasFullDiskAccess(); },
        [this, done](bool isGranted) {
            if (std::exchange(m_isGranted, isGranted) != isGranted) {
                Q_EMIT grantedChanged();
            }
            if (done) {
                done();
            }
        });
}

void DiskAccess::keep(GatedAction action)
{
    m_world.background.runInOrder(Background::Lane::Settings,
                                  [defaults = m_world.defaults, action, now = Clock::now()] {
                                      defaults->set(UserDefaults::pendingAction, rawValue(action));
                                      defaults->set(UserDefaults::pendingActionDate, now);
                                  });
}

void DiskAccess::resume()
{
    m_world.background.runInOrder(
        Background::Lane::Settings, this,
        [defaults = m_world.defaults] {
            return Kept{gatedAction(defaults->value(UserDefaults::pendingAction).toString()),
                        defaults->value(UserDefaults::pendingActionDate).toDateTime()};
        },
        [this](const Kept &kept) {
            if (kept.action == GatedAction::None) {
                return;
            }
            if (hasExpired(kept.date)) {
                forget();
                return;
            }
            check([this, action = kept.action] {
                if (m_isGranted) {
                    forget();
                    setRequest(GatedAction::None);
                    Q_EMIT resumed(action);
                }
            });
        });
}

void DiskAccess::forget()
{
    m_world.background.runInOrder(Background::Lane::Settings, [defaults = m_world.defaults] {
        defaults->remove(UserDefaults::pendingAction);
    });
}
