#include "platform/SecretBackend.h"

#include "platform/linux/Patience.h"

#include <libsecret/secret.h>

#include <atomic>
#include <chrono>

namespace {

// Items are found by their two attributes alone, whichever program stored them; ours carry our
// name.
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

// Failures come from three sources that number theirs from 0 or 1; the thousands keep them apart.
std::int32_t statusOf(const GErrorPointer &error)
{
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

// An unlocking question that nobody answers must not hold a windowless run for ever.
constexpr auto patienceWithPerson = std::chrono::minutes(2);

class SecretService final : public SecretBackend
{
public:
    Match copyMatching(const QString &service, const QString &account) override
    {
        const Patience patience(patienceWithPerson);
        Item item = find(service, account, patience);
        if (item.status != 0) {
            return {item.status, std::nullopt};
        }
        SecretValue *value = secret_item_get_secret(item.object.get());
        if (value == nullptr) {
            return {SECRET_ERROR_IS_LOCKED, std::nullopt};
        }
        gsize length = 0;
        const gchar *bytes = secret_value_get(value, &length);
        QByteArray data(bytes, static_cast<qsizetype>(length));
        secret_value_unref(value);
        return {0, data};
    }

    std::int32_t update(const QString &service, const QString &account,
                        const QByteArray &value) override
    {
        const Patience patience(patienceWithPerson);
        Item item = find(service, account, patience);
        if (item.status != 0) {
            return item.status;
        }
        GError *error = nullptr;
        SecretValue *secret = secret_value_new(value.constData(), value.size(), "text/plain");
        const gboolean done =
            secret_item_set_secret_sync(item.object.get(), secret, patience.cancellable(), &error);
        secret_value_unref(secret);
        const GErrorPointer failure(error);
        return done != FALSE ? 0 : statusOf(failure);
    }

    std::int32_t add(const QString &service, const QString &account,
                     const QByteArray &value) override
    {
        const Patience patience(patienceWithPerson);
        GError *error = nullptr;
        SecretValue *secret = secret_value_new(value.constData(), value.size(), "text/plain");
        const QByteArray label = "Vellomar: " + account.toUtf8();
        const gboolean done = secret_service_store_sync(
            nullptr, schema(), attributes(service, account).get(), SECRET_COLLECTION_DEFAULT,
            label.constData(), secret, patience.cancellable(), &error);
        secret_value_unref(secret);
        const GErrorPointer failure(error);
        return done != FALSE ? 0 : statusOf(failure);
    }

private:
    struct Item
    {
        std::int32_t status = 0;
        GObjectPointer<SecretItem> object; ///< empty unless status is 0
    };

    static GHashTablePointer attributes(const QString &service, const QString &account)
    {
        return GHashTablePointer(secret_attributes_build(schema(), "service",
                                                         service.toUtf8().constData(), "account",
                                                         account.toUtf8().constData(), nullptr));
    }

    static Item find(const QString &service, const QString &account, const Patience &patience)
    {
        Item item = search(service, account, patience);
        if (item.status != itemNotFound) {
            return item;
        }
        // A locked collection may keep even the names of its items to itself: "not there" holds
        // only once it is open, or a new key would be made over an old one.
        const std::int32_t status = openDefaultCollection(patience);
        if (status == collectionWasOpen) {
            return item;
        }
        if (status != 0) {
            return {status, nullptr};
        }
        return search(service, account, patience);
    }

    static Item search(const QString &service, const QString &account, const Patience &patience)
    {
        GError *error = nullptr;
        const auto flags =
            static_cast<SecretSearchFlags>(SECRET_SEARCH_UNLOCK | SECRET_SEARCH_LOAD_SECRETS);
        GList *matches =
            secret_service_search_sync(nullptr, schema(), attributes(service, account).get(), flags,
                                       patience.cancellable(), &error);
        const GErrorPointer failure(error);
        if (failure) {
            return {statusOf(failure), nullptr};
        }
        if (matches == nullptr) {
            return {itemNotFound, nullptr};
        }
        GObjectPointer<SecretItem> item(SECRET_ITEM(g_object_ref(matches->data)));
        g_list_free_full(matches, g_object_unref);
        if (secret_item_get_locked(item.get()) != FALSE) {
            return {SECRET_ERROR_IS_LOCKED, nullptr};
        }
        return {0, std::move(item)};
    }

    static constexpr std::int32_t collectionWasOpen = -1;

    static std::int32_t openDefaultCollection(const Patience &patience)
    {
        GError *error = nullptr;
        const GObjectPointer<SecretCollection> collection(secret_collection_for_alias_sync(
            nullptr, SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, patience.cancellable(),
            &error));
        const GErrorPointer failure(error);
        if (failure) {
            return statusOf(failure);
        }
        if (!collection || secret_collection_get_locked(collection.get()) == FALSE) {
            return collectionWasOpen;
        }
        GList locked{collection.get(), nullptr, nullptr};
        GError *unlockError = nullptr;
        const gint unlocked = secret_service_unlock_sync(nullptr, &locked, patience.cancellable(),
                                                         nullptr, &unlockError);
        const GErrorPointer unlockFailure(unlockError);
        if (unlockFailure) {
            return statusOf(unlockFailure);
        }
        return unlocked > 0 ? 0 : std::int32_t{SECRET_ERROR_IS_LOCKED};
    }
};

SecretService secretService;
std::atomic<SecretBackend *> backendInForce = &secretService;

} // namespace

SecretBackend &SecretBackend::current()
{
    return *backendInForce.load();
}

ScopedSecretBackend::ScopedSecretBackend(SecretBackend &backend)
{
    backendInForce = &backend;
}

ScopedSecretBackend::~ScopedSecretBackend()
{
    backendInForce = &secretService;
}
