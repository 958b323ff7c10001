#pragma once

#include "model/AppModel.h"
#include "model/Background.h"
#include "tests/support/EventLoop.h"

#include <QCoreApplication>
#include <QFutureWatcher>

/// Waits until a model's keyring has answered; false when it never did.
inline bool comesUp(const AppModel &model)
{
    return eventuallyInLoop([&model] { return !model.isStarting(); });
}

/// Waits until all background work has ended and been delivered. `model` may be null.
inline void settle(const AppModel *model)
{
    // A delivery may start more work.
    do {
        Background::waitForAll();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (model != nullptr && !model->findChildren<QFutureWatcherBase *>().isEmpty());
}
