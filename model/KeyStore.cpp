#include "model/KeyStore.h"

#include "state/RepositoryKeys.h"

namespace {

class PlatformKeyStore final : public KeyStore
{
public:
    StoredKey load() override { return StoredKey::load(); }
    StoredKey make() override { return StoredKey::make(); }

    Installation install(const QString &key, const QString &replaced) override
    {
        const auto installed = RepositoryKeys::install(key, replaced);
        Installation result;
        if (!installed) {
            result.error = installed.error().message();
        }
        if (const auto previous = Keychain::read(Keychain::previousRepositoryKey)) {
            result.hasPrevious = previous->has_value();
        }
        return result;
    }

    tl::expected<std::optional<QString>, QString> previous() override
    {
        return RepositoryKeys::previous().map_error(
            [](const KeychainError &error) { return error.message(); });
    }
};

} // namespace

std::shared_ptr<KeyStore> KeyStore::real()
{
    return std::make_shared<PlatformKeyStore>();
}
