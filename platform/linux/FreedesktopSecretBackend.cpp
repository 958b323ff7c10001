#include "platform/linux/FreedesktopSecretBackend.h"

#include "platform/linux/BusService.h"

#include <libsecret/secret.h>

#include <functional>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace {

constexpr std::int32_t good = 0;

// Items are found by these two attributes alone, whichever program stored them. Those that we store
// carry our name.
const SecretSchema *schema()
{
    static const SecretSchema ours = {"it.vellomar.app",
                                      SECRET_SCHEMA_DONT_MATCH_NAME,
                                      {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                       {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                       {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                      0,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      nullptr};
    return &ours;
}

// The code for what GLib left in an error pointer. Each source of errors counts from 0 or 1; the
// thousands keep the sources apart.
std::int32_t failure(GError *taken)
{
    const GErrorPointer error(taken);
    if (!error) {
        return SECRET_ERROR_PROTOCOL;
    }
    if (error->domain == SECRET_ERROR) {
        return error->code;
    }
    if (error->domain == G_IO_ERROR) {
        return 1000 + error->code;
    }
    if (error->domain == G_DBUS_ERROR) {
        return 2000 + error->code;
    }
    return 3000 + error->code;
}

struct SecretValueUnref
{
    void operator()(SecretValue *value) const { secret_value_unref(value); }
};
using SecretValuePointer = std::unique_ptr<SecretValue, SecretValueUnref>;

struct ObjectListFree
{
    void operator()(GList *list) const { g_list_free_full(list, g_object_unref); }
};
using ObjectList = std::unique_ptr<GList, ObjectListFree>;

SecretValuePointer secretValue(const QByteArray &bytes)
{
    return SecretValuePointer(secret_value_new(bytes.constData(), bytes.size(), "text/plain"));
}

GHashTablePointer attributes(const QString &service, const QString &account)
{
    return GHashTablePointer(secret_attributes_build(schema(), "service",
                                                     service.toUtf8().constData(), "account",
                                                     account.toUtf8().constData(), nullptr));
}

// One operation on the store, with a connection of its own. It may be used only while status() is
// good.
class Operation
{
public:
    explicit Operation(GCancellable *given)
        : m_cancellable(given)
    {
        GError *error = nullptr;
        // libsecret uses this connection too.
        if (!sharedBus(G_BUS_TYPE_SESSION, cancellable(), &error)) {
            m_status = failure(error);
            return;
        }
        m_service.reset(secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_NONE,
                                                 cancellable(), &error));
        if (!m_service) {
            m_status = failure(error);
        }
    }

    [[nodiscard]] std::int32_t status() const { return m_status; }
    [[nodiscard]] GCancellable *cancellable() const { return m_cancellable; }

    // Finds an item, unlocks what is needed for that, and keeps it in item().
    std::int32_t find(const QString &service, const QString &account)
    {
        const std::int32_t found = search(service, account);
        if (found != SecretBackend::itemNotFound) {
            return found;
        }
        // A locked collection may hide even the names of its items. Only an unlocked one can say
        // that an item isn't there; otherwise a new key could replace an old one.
        ObjectList locked;
        const std::int32_t listed = listLocked(locked);
        if (listed != good) {
            return listed;
        }
        const std::int32_t opened = locked ? unlock(locked.get()) : good;
        // Also when it is open: it may have been opened since the first search.
        return opened == good ? search(service, account) : opened;
    }

    [[nodiscard]] SecretItem *item() const { return m_item.get(); }

    // Gives the found item a new value.
    std::int32_t replace(const QByteArray &bytes)
    {
        GError *error = nullptr;
        const gboolean done =
            secret_item_set_secret_sync(item(), secretValue(bytes).get(), cancellable(), &error);
        return done != FALSE ? good : failure(error);
    }

    std::int32_t store(const QString &service, const QString &account, const QByteArray &bytes)
    {
        GError *error = nullptr;
        const QByteArray label = "Vellomar: " + account.toUtf8();
        const gboolean done =
            secret_service_store_sync(m_service.get(), schema(), attributes(service, account).get(),
                                      SECRET_COLLECTION_DEFAULT, label.constData(),
                                      secretValue(bytes).get(), cancellable(), &error);
        return done != FALSE ? good : failure(error);
    }

private:
    std::int32_t search(const QString &service, const QString &account)
    {
        GError *error = nullptr;
        const auto flags =
            static_cast<SecretSearchFlags>(SECRET_SEARCH_UNLOCK | SECRET_SEARCH_LOAD_SECRETS);
        const ObjectList matches(secret_service_search_sync(m_service.get(), schema(),
                                                            attributes(service, account).get(),
                                                            flags, cancellable(), &error));
        if (error != nullptr) {
            return failure(error);
        }
        if (!matches) {
            return SecretBackend::itemNotFound;
        }
        m_item.reset(SECRET_ITEM(g_object_ref(matches->data)));
        return secret_item_get_locked(m_item.get()) != FALSE ? std::int32_t{SECRET_ERROR_IS_LOCKED}
                                                             : good;
    }

    // The collections that could hide an item of ours: the default one, which ours are stored in,
    // or all of them when there is no default one.
    std::int32_t listLocked(ObjectList &locked)
    {
        GError *error = nullptr;
        SecretCollection *standard =
            secret_collection_for_alias_sync(m_service.get(), SECRET_COLLECTION_DEFAULT,
                                             SECRET_COLLECTION_NONE, cancellable(), &error);
        if (error != nullptr) {
            return failure(error);
        }
        ObjectList candidates;
        if (standard != nullptr) {
            candidates.reset(g_list_append(nullptr, standard));
        } else if (secret_service_load_collections_sync(m_service.get(), cancellable(), &error) ==
                   FALSE) {
            return failure(error);
        } else {
            candidates.reset(secret_service_get_collections(m_service.get()));
        }
        for (GList *each = candidates.get(); each != nullptr; each = each->next) {
            if (secret_collection_get_locked(SECRET_COLLECTION(each->data)) != FALSE) {
                locked.reset(g_list_append(locked.release(), g_object_ref(each->data)));
            }
        }
        return good;
    }

    std::int32_t unlock(GList *locked)
    {
        GError *error = nullptr;
        const gint unlocked =
            secret_service_unlock_sync(m_service.get(), locked, cancellable(), nullptr, &error);
        if (error != nullptr) {
            return failure(error);
        }
        const bool all = unlocked == static_cast<gint>(g_list_length(locked));
        return all ? good : std::int32_t{SECRET_ERROR_IS_LOCKED};
    }

    GCancellable *m_cancellable;
    GObjectPointer<SecretService> m_service;
    GObjectPointer<SecretItem> m_item;
    std::int32_t m_status = good;
};

using Match = SecretBackend::Match;

// Runs an operation on a thread of its own and waits for it, at most `patience` and a little
// longer, in which it can close its dialog. Patience can't do this, as libsecret 0.20 waits for
// ever when the service dies meanwhile (gnome-keyring 42 does): the thread is then left behind. A
// libsecret that gives up where its service has gone would make this needless.
Match withPatience(std::chrono::milliseconds patience,
                   const std::function<Match(Operation &)> &work)
{
    static constexpr auto grace = std::chrono::seconds(5);
    const std::shared_ptr<GCancellable> cancellable(g_cancellable_new(), GObjectUnref());
    std::packaged_task<Match()> task([cancellable, work]() -> Match {
        Operation operation(cancellable.get());
        return operation.status() == good ? work(operation)
                                          : Match{operation.status(), std::nullopt};
    });
    std::future<Match> result = task.get_future();
    std::thread thread(std::move(task));
    if (result.wait_for(patience) != std::future_status::ready) {
        g_cancellable_cancel(cancellable.get());
        if (result.wait_for(grace) != std::future_status::ready) {
            thread.detach();
            return {1000 + G_IO_ERROR_TIMED_OUT, std::nullopt};
        }
    }
    thread.join();
    return result.get();
}

} // namespace

FreedesktopSecretBackend::FreedesktopSecretBackend(std::chrono::milliseconds patience)
    : m_patience(patience)
{
}

SecretBackend::Match FreedesktopSecretBackend::copyMatching(const QString &service,
                                                            const QString &account)
{
    return withPatience(m_patience, [service, account](Operation &operation) -> Match {
        const std::int32_t found = operation.find(service, account);
        if (found != good) {
            return {found, std::nullopt};
        }
        const SecretValuePointer value(secret_item_get_secret(operation.item()));
        if (!value) {
            return {SECRET_ERROR_IS_LOCKED, std::nullopt};
        }
        gsize length = 0;
        const gchar *bytes = secret_value_get(value.get(), &length);
        return {good, QByteArray(bytes, static_cast<qsizetype>(length))};
    });
}

std::int32_t FreedesktopSecretBackend::update(const QString &service, const QString &account,
                                              const QByteArray &value)
{
    const auto replace = [service, account, value](Operation &operation) -> Match {
        const std::int32_t found = operation.find(service, account);
        return {found == good ? operation.replace(value) : found, std::nullopt};
    };
    return withPatience(m_patience, replace).status;
}

std::int32_t FreedesktopSecretBackend::add(const QString &service, const QString &account,
                                           const QByteArray &value)
{
    const auto store = [service, account, value](Operation &operation) -> Match {
        return {operation.store(service, account, value), std::nullopt};
    };
    return withPatience(m_patience, store).status;
}
