#pragma once

#include "platform/linux/GlibPointer.h"
#include "platform/linux/Patience.h"

#include <gio/gio.h>

/// A service on a bus, for calls that share one time limit. To be used on one thread.
///
/// Made with GIO and not with Qt's D-Bus: libsecret brings GIO into every process anyway, and a run
/// without a window should load one D-Bus library, not two. A libsecret without GIO would change
/// that.
class BusService
{
public:
    /// Where the calls go.
    struct Address
    {
        const char *name;
        const char *path;
        const char *interface;
    };

    enum class Connection {
        shared, ///< the one that the whole process shares
        own, ///< one for this object; it is closed with the object, which withdraws open requests
    };

    /// Connects. The patience must outlive this object.
    BusService(GBusType bus, const Address &address, const Patience &patience,
               Connection connection = Connection::shared);
    ~BusService();
    BusService(const BusService &) = delete;
    BusService &operator=(const BusService &) = delete;
    BusService(BusService &&) = delete;
    BusService &operator=(BusService &&) = delete;

    /// Calls a method and waits for its reply; `replyType` is a D-Bus signature. Takes ownership of
    /// the arguments. Empty when there is no such reply; `error` then has the reason, which may be
    /// that there is no bus.
    GVariantPointer call(const char *method, GVariant *arguments, const char *replyType,
                         GErrorPointer *error = nullptr);

    /// The name of this process on the bus; null where there is no bus.
    [[nodiscard]] const char *ownName() const;

private:
    GObjectPointer<GDBusConnection> m_bus;
    GErrorPointer m_failure; ///< why there is no bus
    Address m_address;
    const Patience &m_patience;
    Connection m_connection;
};

/// The connection to a bus that the whole process shares; null where there is no bus. By default
/// GLib ends the program when the bus goes, as at a log-out during a backup: not with this one.
GObjectPointer<GDBusConnection> sharedBus(GBusType bus, GCancellable *cancellable, GError **error);
