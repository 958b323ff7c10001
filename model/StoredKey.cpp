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
    if (*stored) {
        found.key = **stored;
    } else {
        const auto made = Keychain::loadOrCreate(Keychain::repositoryKey);
        if (!made) {
            found.error = made.error().message();
            return found;
        }
        found.key = *made;
        found.isNew = true;
    }
    const auto previous = Keychain::read(Keychain::previousRepositoryKey);
    if (previous) {
        found.hasPrevious = previous->has_value();
    } else {
        found.error = previous.error().message();
    }
    return found;
}
