#include "platform/OwnerAuthentication.h"

#include "platform/linux/GlibPointer.h"

#include <gio/gio.h>

#include <limits>
#include <memory>
#include <utility>

#include <tl/expected.hpp>

namespace {

struct GlibTextFree
{
    void operator()(gchar *text) const { g_free(text); }
};
using GlibText = std::unique_ptr<gchar, GlibTextFree>;

// polkit may have to be started first.
constexpr int patienceForPolkit = 10000; // milliseconds

/// What polkit says of an action.
struct Verdict
{
    bool authorized = false;
    bool challenge = false; ///< the person would have to log in, and wasn't asked
};

/// Why there is no verdict.
enum class Missing {
    authority, ///< there is no polkit here
    action,    ///< there is, and it doesn't know the action
    answer,    ///< whatever else: silence, or an end in the middle
};

constexpr const char *serviceName = "org.freedesktop.PolicyKit1";

bool hasName(const GError *error, const char *name)
{
    const GlibText own(g_dbus_error_get_remote_error(error));
    return g_strcmp0(own.get(), name) == 0;
}

// Only what is said in so many words counts. A bus or a service that is there and doesn't answer
// may be kept from it by whoever wants the key.
bool saysThereIsNoAuthority(const GError *error)
{
    return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_FOUND) != FALSE || // not even a bus
           hasName(error, "org.freedesktop.DBus.Error.ServiceUnknown") ||
           hasName(error, "org.freedesktop.systemd1.UnitMasked");
}

/// The authority on the system bus, over a connection of its own: closing it takes an open question
/// back.
class Authority
{
public:
    explicit Authority(GCancellable *cancellable)
        : m_cancellable(cancellable)
    {
        const GlibText address(
            g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, m_cancellable, nullptr));
        GError *error = nullptr;
        if (address) {
            constexpr int flags = G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                  G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION;
            m_bus.reset(g_dbus_connection_new_for_address_sync(
                address.get(), static_cast<GDBusConnectionFlags>(flags), nullptr, m_cancellable,
                &error));
        }
        const GErrorPointer failure(error);
        m_isAbsent = failure && saysThereIsNoAuthority(failure.get());
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

    tl::expected<Verdict, Missing> check(const char *action, Manner manner,
                                         int patienceMilliseconds)
    {
        if (!m_bus) {
            return tl::unexpected(m_isAbsent ? Missing::authority : Missing::answer);
        }
        // Known by its name on the bus, a process can't be taken for another one.
        GVariantBuilder subject;
        g_variant_builder_init(&subject, G_VARIANT_TYPE("a{sv}"));
        g_variant_builder_add(&subject, "{sv}", "name",
                              g_variant_new_string(g_dbus_connection_get_unique_name(m_bus.get())));
        GError *error = nullptr;
        const GVariantPointer reply =
            call("CheckAuthorization",
                 g_variant_new("((sa{sv})sa{ss}us)", "system-bus-name", &subject, action, nullptr,
                               static_cast<guint32>(manner), ""),
                 "((bba{ss}))", patienceMilliseconds, &error);
        if (!reply) {
            const GErrorPointer failure(error);
            return tl::unexpected(missingFor(failure.get(), action));
        }
        gboolean authorized = FALSE;
        gboolean challenge = FALSE;
        g_variant_get(reply.get(), "((bb@a{ss}))", &authorized, &challenge, nullptr);
        return Verdict{.authorized = authorized != FALSE, .challenge = challenge != FALSE};
    }

private:
    Missing missingFor(const GError *error, const char *action)
    {
        if (saysThereIsNoAuthority(error)) {
            return Missing::authority;
        }
        // The error for an action that it doesn't know is the one for much else.
        return hasName(error, "org.freedesktop.PolicyKit1.Error.Failed") && lacks(action)
                   ? Missing::action
                   : Missing::answer;
    }

    /// Whether the authority lists what it knows, and the action isn't among it.
    bool lacks(const char *action)
    {
        const GVariantPointer reply = call("EnumerateActions", g_variant_new("(s)", ""),
                                           "(a(ssssssuuua{ss}))", patienceForPolkit, nullptr);
        if (!reply) {
            return false;
        }
        const GVariantPointer actions(g_variant_get_child_value(reply.get(), 0));
        for (gsize i = 0; i < g_variant_n_children(actions.get()); ++i) {
            const GVariantPointer known(g_variant_get_child_value(actions.get(), i));
            const GVariantPointer id(g_variant_get_child_value(known.get(), 0));
            if (g_strcmp0(g_variant_get_string(id.get(), nullptr), action) == 0) {
                return false;
            }
        }
        return true;
    }

    GVariantPointer call(const char *method, GVariant *arguments, const char *answer,
                         int patienceMilliseconds, GError **error)
    {
        return GVariantPointer(g_dbus_connection_call_sync(
            m_bus.get(), serviceName, "/org/freedesktop/PolicyKit1/Authority",
            "org.freedesktop.PolicyKit1.Authority", method, arguments, G_VARIANT_TYPE(answer),
            G_DBUS_CALL_FLAGS_NONE, patienceMilliseconds, m_cancellable, error));
    }

    GCancellable *m_cancellable;
    GObjectPointer<GDBusConnection> m_bus;
    bool m_isAbsent = false; ///< there isn't even a bus
};

OwnerLogin loginFor(const char *action, GCancellable *cancellable)
{
    Authority authority(cancellable);
    // Asked silently first: only there does a missing verdict mean that nobody can give one.
    const auto before = authority.check(action, Authority::Manner::silent, patienceForPolkit);
    if (g_cancellable_is_cancelled(cancellable) != FALSE) {
        return OwnerLogin::refused;
    }
    if (!before) {
        return before.error() == Missing::answer ? OwnerLogin::refused : OwnerLogin::impossible;
    }
    if (before->authorized || !before->challenge) {
        return before->authorized ? OwnerLogin::granted : OwnerLogin::refused;
    }
    const auto verdict =
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

void OwnerAuthentication::ask(OwnerReason reason, Answer answer)
{
    m_question = std::jthread(
        [action = Polkit::action(reason), answer = std::move(answer)](const std::stop_token &stop) {
            const GObjectPointer<GCancellable> cancellable(g_cancellable_new());
            const std::stop_callback cancel(
                stop, [&cancellable] { g_cancellable_cancel(cancellable.get()); });
            answer(loginFor(action, cancellable.get()));
        });
}

const char *Polkit::action(OwnerReason reason)
{
    switch (reason) {
    case OwnerReason::showKey:
        return "it.vellomar.key.show";
    case OwnerReason::copyKey:
        return "it.vellomar.key.copy";
    case OwnerReason::replaceKey:
        break;
    }
    return "it.vellomar.key.replace";
}
