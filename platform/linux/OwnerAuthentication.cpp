#include "platform/OwnerAuthentication.h"

#include "platform/linux/GlibPointer.h"

#include <gio/gio.h>

#include <array>
#include <limits>
#include <optional>
#include <utility>

namespace {

struct KnownReason
{
    QLatin1String reason;
    const char *action;
};

constexpr std::array knownReasons{
    KnownReason{QLatin1String("mostrare la chiave di cifratura"), "it.vellomar.key.show"},
    KnownReason{QLatin1String("copiare la chiave di cifratura"), "it.vellomar.key.copy"},
    KnownReason{QLatin1String("sostituire la chiave di cifratura"), "it.vellomar.key.replace"},
};

struct GlibTextFree
{
    void operator()(gchar *text) const { g_free(text); }
};

/// What polkit says of an action.
struct Verdict
{
    bool authorized = false;
    bool challenge = false; ///< the person would have to log in, and wasn't asked
};

/// The authority on the system bus, over a connection of its own: closing it takes an open question
/// back.
class Authority
{
public:
    explicit Authority(GCancellable *cancellable)
        : m_cancellable(cancellable)
    {
        const std::unique_ptr<gchar, GlibTextFree> address(
            g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, m_cancellable, nullptr));
        if (address) {
            constexpr int flags = G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                  G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION;
            m_bus.reset(g_dbus_connection_new_for_address_sync(
                address.get(), static_cast<GDBusConnectionFlags>(flags), nullptr, m_cancellable,
                nullptr));
        }
    }
    ~Authority()
    {
        if (m_bus) {
            g_dbus_connection_close_sync(m_bus.get(), nullptr, nullptr);
        }
    }
    Authority(const Authority &) = delete;
    Authority &operator=(const Authority &) = delete;
    Authority(Authority &&) = delete;
    Authority &operator=(Authority &&) = delete;

    enum class Manner : guint32 { silent = 0, asking = 1 };

    /// Absent when there is no verdict.
    std::optional<Verdict> check(const char *action, Manner manner, int patienceMilliseconds)
    {
        if (!m_bus) {
            return std::nullopt;
        }
        // Known by its name on the bus, a process can't be taken for another one.
        GVariantBuilder subject;
        g_variant_builder_init(&subject, G_VARIANT_TYPE("a{sv}"));
        g_variant_builder_add(&subject, "{sv}", "name",
                              g_variant_new_string(g_dbus_connection_get_unique_name(m_bus.get())));
        const GVariantPointer reply(g_dbus_connection_call_sync(
            m_bus.get(), "org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority",
            "org.freedesktop.PolicyKit1.Authority", "CheckAuthorization",
            g_variant_new("((sa{sv})sa{ss}us)", "system-bus-name", &subject, action, nullptr,
                          static_cast<guint32>(manner), ""),
            G_VARIANT_TYPE("((bba{ss}))"), G_DBUS_CALL_FLAGS_NONE, patienceMilliseconds,
            m_cancellable, nullptr));
        if (!reply) {
            return std::nullopt;
        }
        gboolean authorized = FALSE;
        gboolean challenge = FALSE;
        g_variant_get(reply.get(), "((bb@a{ss}))", &authorized, &challenge, nullptr);
        return Verdict{.authorized = authorized != FALSE, .challenge = challenge != FALSE};
    }

private:
    GCancellable *m_cancellable;
    GObjectPointer<GDBusConnection> m_bus;
};

OwnerLogin loginFor(const char *action, GCancellable *cancellable)
{
    // polkit may have to be started first.
    static constexpr int patienceMilliseconds = 10000;

    Authority authority(cancellable);
    // Asked silently first: only there does no verdict mean that there is nobody to give one.
    const std::optional<Verdict> before =
        authority.check(action, Authority::Manner::silent, patienceMilliseconds);
    if (g_cancellable_is_cancelled(cancellable) != FALSE) {
        return OwnerLogin::refused;
    }
    if (!before) {
        return OwnerLogin::impossible;
    }
    if (before->authorized || !before->challenge) {
        return before->authorized ? OwnerLogin::granted : OwnerLogin::refused;
    }
    const std::optional<Verdict> verdict =
        authority.check(action, Authority::Manner::asking, std::numeric_limits<int>::max());
    if (!verdict) {
        return OwnerLogin::refused;
    }
    if (verdict->authorized) {
        return OwnerLogin::granted;
    }
    // Nobody shows the dialog in this session.
    return verdict->challenge ? OwnerLogin::impossible : OwnerLogin::refused;
}

} // namespace

void OwnerAuthentication::ask(const QString &reason, Answer answer)
{
    m_question = std::jthread(
        [action = Polkit::action(reason), answer = std::move(answer)](const std::stop_token &stop) {
            const GObjectPointer<GCancellable> cancellable(g_cancellable_new());
            const std::stop_callback cancel(
                stop, [&cancellable] { g_cancellable_cancel(cancellable.get()); });
            answer(loginFor(action, cancellable.get()));
        });
}

const char *Polkit::action(const QString &reason)
{
    for (const KnownReason &known : knownReasons) {
        if (reason == known.reason) {
            return known.action;
        }
    }
    return "it.vellomar.key.use";
}
