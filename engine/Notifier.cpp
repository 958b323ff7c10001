#include "engine/Notifier.h"

#include "platform/Notifications.h"
#include "state/Paths.h"

namespace {

constexpr auto patience = std::chrono::seconds(3);

} // namespace

void Notifier::send(const QString &title, const QString &body)
{
    const std::optional<QString> resources = Paths::resources();
    postNotification({.title = title,
                      .body = body,
                      .icon = resources ? *resources + QLatin1String("/vellomar.svg") : QString()},
                     patience);
}

void Notifier::requestPermission()
{
    requestNotificationPermission(patience);
}
