#pragma once

#include "model/AppModel.h"
#include "model/Background.h"
#include "model/Delivery.h"
#include "tests/support/EventLoop.h"

#include <QCoreApplication>

/// Waits until a model's keyring has answered; false when it never did.
inline bool comesUp(const AppModel &model)
{
    return eventuallyInLoop([&model] { return !model.isStarting(); });
}

/// Waits until the settings are saved, and all background work has ended and been delivered.
/// `model` may be null.
inline void settle(AppModel *model)
{
    // A delivery may start more work, and change settings.
    for (int round = 0; round < 2; ++round) {
        if (model != nullptr) {
            model->settings()->flush([](const AppConfig &) {});
        }
        do {
            Background::waitForAll();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        } while (model != nullptr && !model->findChildren<Delivery *>().isEmpty());
    }
    // The last delivery may have started work that is delivered to nobody.
    Background::waitForAll();
}
