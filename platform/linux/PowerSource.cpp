#include "platform/PowerSource.h"

#include "platform/linux/GlibPointer.h"

#include <gio/gio.h>

bool runsOnBattery()
{
    // UPower answers at once or not at all; a run must not wait for it.
    static constexpr int patienceMilliseconds = 3000;

    const GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
    if (!bus) {
        return false;
    }
    // GLib would end the whole program with the bus.
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    const GVariantPointer reply(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.UPower", "/org/freedesktop/UPower",
        "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", "org.freedesktop.UPower", "OnBattery"), G_VARIANT_TYPE("(v)"),
        G_DBUS_CALL_FLAGS_NONE, patienceMilliseconds, nullptr, nullptr));
    if (!reply) {
        return false;
    }
    GVariant *inner = nullptr;
    g_variant_get(reply.get(), "(v)", &inner);
    const GVariantPointer value(inner);
    return g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) != FALSE &&
           g_variant_get_boolean(value.get()) != FALSE;
}
