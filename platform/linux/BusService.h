#pragma once

#include "platform/linux/GlibPointer.h"
#include "platform/linux/Patience.h"

#include <gio/gio.h>

/// A service on a bus, for calls that wait no longer than one patience. Belongs to one thread.
///
/// By GIO and not by Qt's D-Bus: libsecret brings GIO into every process anyway, and a run without
/// a window is to carry one D-Bus library, not two. That ends with a libsecret that doesn't use
/// GIO.
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
        shared, ///< the one of all in this process
        own,    ///< one for this object; closing it with the object takes back what it has asked
    };

    /// Connects. The patience must outlive this object.
    BusService(GBusType bus, const Address &address, const Patience &patience,
               Connection connection = Connection::shared);
    ~BusService();
    BusService(const BusService &) = delete;
    BusService &operator=(const BusService &) = delete;
    BusService(BusService &&) = delete;
    BusService &operator=(BusService &&) = delete;

    /// Calls a method and waits for its reply, of the type given in D-Bus's own letters. Takes the
    /// arguments over. Empty when there is no such reply; `error` then has the reason, which may be
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

/// The connection to a bus that all of this process shares; null where there is none. GLib would
/// end the whole program with the bus, as at a log-out in mid-backup: this connection doesn't.
GObjectPointer<GDBusConnection> sharedBus(GBusType bus, GCancellable *cancellable, GError **error);
