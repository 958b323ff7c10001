#include "platform/Notifications.h"

#include "platform/linux/Patience.h"

#include <memory>

namespace {

struct GStringsFree
{
    void operator()(const gchar **strings) const { g_free(strings); }
};

/// A text as D-Bus carries it: it can't hold a null.
QByteArray carried(QString text)
{
    return text.replace(QChar::Null, QChar::ReplacementCharacter).toUtf8();
}

/// The notification service of the session, for calls within one limit of time.
class NotificationService
{
public:
    explicit NotificationService(const Patience &patience)
        : m_patience(patience)
        , m_bus(g_bus_get_sync(G_BUS_TYPE_SESSION, patience.cancellable(), nullptr))
    {
        if (m_bus) {
            // GLib would end the whole program with the bus.
            g_dbus_connection_set_exit_on_close(m_bus.get(), FALSE);
        }
    }

    /// Empty when nobody answers. Takes the arguments over.
    GVariantPointer call(const char *method, GVariant *arguments, const char *replyType)
    {
        const GVariantPointer owned(arguments != nullptr ? g_variant_ref_sink(arguments) : nullptr);
        if (!m_bus) {
            return nullptr;
        }
        return GVariantPointer(g_dbus_connection_call_sync(
            m_bus.get(), "org.freedesktop.Notifications", "/org/freedesktop/Notifications",
            "org.freedesktop.Notifications", method, owned.get(), G_VARIANT_TYPE(replyType),
            G_DBUS_CALL_FLAGS_NONE, -1, m_patience.cancellable(), nullptr));
    }

    /// Whether bodies are read as markup.
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

private:
    const Patience &m_patience;
    GObjectPointer<GDBusConnection> m_bus;
};

} // namespace

bool postNotification(const Notification &notification, std::chrono::milliseconds patience)
{
    const Patience limit(patience);
    NotificationService service(limit);
    // A tool's own words may hold anything; they are meant as they stand.
    const QString body =
        service.readsMarkup() ? notification.body.toHtmlEscaped() : notification.body;

    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&hints, "{sv}", "urgency", g_variant_new_byte(1)); // normal
    g_variant_builder_add(&hints, "{sv}", "suppress-sound", g_variant_new_boolean(TRUE));
    // No desktop entry: a shell that finds the program by it takes the notification away with the
    // process, and a run without a window ends right after.
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
