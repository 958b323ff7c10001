#include "platform/Notifications.h"

#include "platform/linux/BusService.h"

#include <memory>

namespace {

struct GStringsFree
{
    void operator()(const gchar **strings) const { g_free(strings); }
};

/// A text for D-Bus, which allows no null character.
QByteArray carried(QString text)
{
    return text.replace(QChar::Null, QChar::ReplacementCharacter).toUtf8();
}

/// The notification service of the session.
class NotificationService : public BusService
{
public:
    explicit NotificationService(const Patience &patience)
        : BusService(G_BUS_TYPE_SESSION,
                     {.name = "org.freedesktop.Notifications",
                      .path = "/org/freedesktop/Notifications",
                      .interface = "org.freedesktop.Notifications"},
                     patience)
    {
    }

    /// Whether the service reads bodies as markup.
    bool readsMarkup()
    {
        const GVariantPointer reply = call("GetCapabilities", nullptr, "(as)");
        if (!reply) {
            return false;
        }
        const gchar **names = nullptr;
        g_variant_get(reply.get(), "(^a&s)", &names);
        const std::unique_ptr<const gchar *, GStringsFree> owned(names);
        return g_strv_contains(names, "body-markup") != FALSE;
    }
};

} // namespace

bool postNotification(const Notification &notification, std::chrono::milliseconds patience)
{
    const Patience limit(patience);
    NotificationService service(limit);
    // A tool's messages may hold anything, and are plain text.
    const QString body =
        service.readsMarkup() ? notification.body.toHtmlEscaped() : notification.body;

    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&hints, "{sv}", "urgency", g_variant_new_byte(1)); // normal
    g_variant_builder_add(&hints, "{sv}", "suppress-sound", g_variant_new_boolean(TRUE));
    // Without a desktop entry: a shell that finds the program by it removes the notification when
    // the process ends, and a run without a window ends right after this.
    const GVariantPointer reply = service.call(
        "Notify",
        g_variant_new("(susssasa{sv}i)", "Vellomar", 0U, carried(notification.icon).constData(),
                      carried(notification.title).constData(), carried(body).constData(), nullptr,
                      &hints, -1),
        "(u)");
    return reply != nullptr;
}

void requestNotificationPermission(std::chrono::milliseconds patience)
{
    const Patience limit(patience);
    NotificationService(limit).call("GetServerInformation", nullptr, "(ssss)");
}
