#include "model/StoredKey.h"

#include "state/Keychain.h"

StoredKey StoredKey::load()
{
    StoredKey found;
    const auto stored = Keychain::read(Keychain::repositoryKey);
    if (!stored) {
        found.error = stored.error().message();
        return found;
    }
    found.key = stored->value_or(QString());
    found.isMissing = !*stored;
    const auto previous = Keychain::read(Keychain::previousRepositoryKey);
    if (previous) {
        found.hasPrevious = previous->has_value();
    } else {
        found.error = previous.error().message();
    }
    return found;
}

StoredKey StoredKey::make()
{
    const auto made = Keychain::loadOrCreate(Keychain::repositoryKey);
    if (!made) {
        StoredKey none;
        none.error = made.error().message();
        return none;
    }
    return load();
}
