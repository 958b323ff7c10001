#include "platform/PowerSource.h"

#include "platform/linux/BusService.h"

bool runsOnBattery()
{
    // UPower answers at once or not at all, and a run must not wait for it.
    const Patience patience(std::chrono::seconds(3));
    BusService power(G_BUS_TYPE_SYSTEM,
                     {.name = "org.freedesktop.UPower",
                      .path = "/org/freedesktop/UPower",
                      .interface = "org.freedesktop.DBus.Properties"},
                     patience);
    const GVariantPointer reply =
        power.call("Get", g_variant_new("(ss)", "org.freedesktop.UPower", "OnBattery"), "(v)");
    if (!reply) {
        return false;
    }
    GVariant *inner = nullptr;
    g_variant_get(reply.get(), "(v)", &inner);
    const GVariantPointer value(inner);
    return g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) != FALSE &&
           g_variant_get_boolean(value.get()) != FALSE;
}
