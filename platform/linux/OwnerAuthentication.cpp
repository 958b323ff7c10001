#include "platform/OwnerAuthentication.h"

#include "platform/linux/BusService.h"

#include <memory>
#include <utility>

#include <tl/expected.hpp>

namespace {

struct GlibTextFree
{
    void operator()(gchar *text) const { g_free(text); }
};
using GlibText = std::unique_ptr<gchar, GlibTextFree>;

// Long, as polkit may have to be started first.
constexpr std::chrono::seconds patienceForPolkit(10);

/// What polkit says of an action.
struct Verdict
{
    bool authorized = false;
    bool challenge = false; ///< the user would have to log in, and wasn't asked
};

/// Why there is no verdict.
enum class Missing {
    authority, ///< there is no polkit here
    action,    ///< polkit is there and doesn't know the action
    answer,    ///< anything else: no answer, or the connection ended
};

bool hasName(const GError *error, const char *name)
{
    const GlibText own(error != nullptr ? g_dbus_error_get_remote_error(error) : nullptr);
    return g_strcmp0(own.get(), name) == 0;
}

// Only an explicit answer counts. Where a bus or a service is there and doesn't answer, somebody
// who wants the key may be keeping it from answering.
bool saysThereIsNoAuthority(const GError *error)
{
    return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_FOUND) != FALSE || // no bus either
           hasName(error, "org.freedesktop.DBus.Error.ServiceUnknown") ||
           hasName(error, "org.freedesktop.systemd1.UnitMasked");
}

/// polkit's authority on the system bus, with a connection of its own: closing that withdraws an
/// open request.
class Authority : private BusService
{
public:
    explicit Authority(const Patience &patience)
        : BusService(G_BUS_TYPE_SYSTEM,
                     {.name = "org.freedesktop.PolicyKit1",
                      .path = "/org/freedesktop/PolicyKit1/Authority",
                      .interface = "org.freedesktop.PolicyKit1.Authority"},
                     patience, Connection::own)
    {
    }

    enum class Manner : guint32 { silent = 0, asking = 1 };

    tl::expected<Verdict, Missing> check(const char *action, Manner manner)
    {
        // The name on the bus can't come to stand for a different process, as a process id can.
        // Without a bus there is no name, and the call reports why.
        const char *const name = ownName() != nullptr ? ownName() : "";
        GVariantBuilder subject;
        g_variant_builder_init(&subject, G_VARIANT_TYPE("a{sv}"));
        g_variant_builder_add(&subject, "{sv}", "name", g_variant_new_string(name));
        GErrorPointer error;
        const GVariantPointer reply =
            call("CheckAuthorization",
                 g_variant_new("((sa{sv})sa{ss}us)", "system-bus-name", &subject, action, nullptr,
                               static_cast<guint32>(manner), ""),
                 "((bba{ss}))", &error);
        if (!reply) {
            return tl::unexpected(missingFor(error.get(), action));
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
        // polkit gives the same error for an unknown action as for much else.
        return hasName(error, "org.freedesktop.PolicyKit1.Error.Failed") && lacks(action)
                   ? Missing::action
                   : Missing::answer;
    }

    /// Whether the authority lists its actions and this one isn't among them.
    bool lacks(const char *action)
    {
        const GVariantPointer reply =
            call("EnumerateActions", g_variant_new("(s)", ""), "(a(ssssssuuua{ss}))");
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
};

/// What the authority says; waits for it until the patience or the stop ends that.
tl::expected<Verdict, Missing> verdictOn(const char *action, Authority::Manner manner,
                                         const Patience &patience, const std::stop_token &stop)
{
    const std::stop_callback end(stop, [&patience] { patience.end(); });
    return Authority(patience).check(action, manner);
}

OwnerLogin loginFor(const char *action, const std::stop_token &stop)
{
    // First without a dialog: only then does a missing verdict mean that there can be none.
    const auto before =
        verdictOn(action, Authority::Manner::silent, Patience(patienceForPolkit), stop);
    if (stop.stop_requested()) {
        return OwnerLogin::refused;
    }
    if (!before) {
        return before.error() == Missing::answer ? OwnerLogin::refused : OwnerLogin::impossible;
    }
    if (before->authorized || !before->challenge) {
        return before->authorized ? OwnerLogin::granted : OwnerLogin::refused;
    }
    // Without a limit: the user may take any time.
    const auto verdict = verdictOn(action, Authority::Manner::asking, Patience(std::nullopt), stop);
    if (!verdict) {
        return OwnerLogin::refused;
    }
    if (verdict->authorized) {
        return OwnerLogin::granted;
    }
    // Nothing in this session can show the dialog.
    return verdict->challenge ? OwnerLogin::impossible : OwnerLogin::refused;
}

} // namespace

void OwnerAuthentication::ask(OwnerReason reason, Answer answer)
{
    m_question = std::jthread([action = Polkit::action(reason), answer = std::move(answer)](
                                  const std::stop_token &stop) { answer(loginFor(action, stop)); });
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
