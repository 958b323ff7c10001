#include "platform/linux/BusService.h"

#include <limits>
#include <utility>

namespace {

GObjectPointer<GDBusConnection> ownBus(GBusType bus, GCancellable *cancellable, GError **error)
{
    GObjectPointer<GDBusConnection> connection;
    if (gchar *address = g_dbus_address_get_for_bus_sync(bus, cancellable, error)) {
        constexpr int flags = G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION;
        connection.reset(g_dbus_connection_new_for_address_sync(
            address, static_cast<GDBusConnectionFlags>(flags), nullptr, cancellable, error));
        g_free(address);
    }
    return connection;
}

} // namespace

GObjectPointer<GDBusConnection> sharedBus(GBusType bus, GCancellable *cancellable, GError **error)
{
    GObjectPointer<GDBusConnection> connection(g_bus_get_sync(bus, cancellable, error));
    if (connection) {
        g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
    }
    return connection;
}

BusService::BusService(GBusType bus, const Address &address, const Patience &patience,
                       Connection connection)
    : m_address(address)
    , m_patience(patience)
    , m_connection(connection)
{
    GError *error = nullptr;
    const auto connected = connection == Connection::own ? ownBus : sharedBus;
    m_bus = connected(bus, patience.cancellable(), &error);
    m_failure.reset(error);
}

BusService::~BusService()
{
    if (m_bus && m_connection == Connection::own) {
        g_dbus_connection_close_sync(m_bus.get(), nullptr, nullptr);
    }
}

GVariantPointer BusService::call(const char *method, GVariant *arguments, const char *replyType,
                                 GErrorPointer *error)
{
    const GVariantPointer owned(arguments != nullptr ? g_variant_ref_sink(arguments) : nullptr);
    GError *failure = nullptr;
    GVariantPointer reply;
    if (m_bus) {
        // Only the patience limits the wait; D-Bus would have a second limit of its own.
        reply.reset(g_dbus_connection_call_sync(
            m_bus.get(), m_address.name, m_address.path, m_address.interface, method, owned.get(),
            G_VARIANT_TYPE(replyType), G_DBUS_CALL_FLAGS_NONE, std::numeric_limits<int>::max(),
            m_patience.cancellable(), &failure));
    } else if (m_failure) {
        failure = g_error_copy(m_failure.get());
    }
    GErrorPointer owner(failure);
    if (error != nullptr) {
        *error = std::move(owner);
    }
    return reply;
}

const char *BusService::ownName() const
{
    return m_bus ? g_dbus_connection_get_unique_name(m_bus.get()) : nullptr;
}
