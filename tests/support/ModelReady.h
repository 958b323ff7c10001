#pragma once

#include "model/AppModel.h"
#include "model/Background.h"
#include "tests/support/EventLoop.h"

#include <QCoreApplication>
#include <QFutureWatcher>

/// Lets a model come up to where its keyring has answered; false when it never did.
inline bool comesUp(const AppModel &model)
{
    return eventuallyInLoop([&model] { return !model.isStarting(); });
}

/// Lets everything under way come to its end and be delivered. `model` may be gone.
inline void settle(const AppModel *model)
{
    // What is delivered may make more work.
    do {
        Background::waitForAll();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (model != nullptr && !model->findChildren<QFutureWatcherBase *>().isEmpty());
}
