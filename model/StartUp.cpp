#include "model/AppModel.h"

#include "engine/Scheduler.h"
#include "model/Background.h"
#include "model/PreviewFolder.h"
#include "state/ConfigStore.h"

#include <QTimer>

// How the model comes up. The keyring may wait for the user, and it comes first: what follows
// needs the key. All of that goes on behind a window that is already there.

void AppModel::begin()
{
    readKey([this] {
        Background().run(
            this,
            [] {
                PreviewFolder::remove();
                OneShotSecret::removeStale();
                return true;
            },
            [this](bool) { goOn(); });
    });
}

void AppModel::goOn()
{
    // Here, where these files are written: what another thread took for abandoned may be new.
    ConfigStore::removeAbandoned();
    Rclone::removeAbandonedHostKeys();
    Background().run([] { Rclone::pinServerIfNeeded(); });
    syncSchedule();
    checkPermissions();
    poll();
    assign(m_isStarting, false, &AppModel::startingChanged);
    refreshAll();
    readConnections();

    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &AppModel::poll);
    timer->start(std::chrono::seconds(1));

    resumePendingAction();
}

void AppModel::syncSchedule()
{
    // The system's tools take their time. They are asked in the order of the changes.
    Background().runInOrder(Background::Lane::Schedule,
                            [config = m_config] { Scheduler::sync(config); });
}
