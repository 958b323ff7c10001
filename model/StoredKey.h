#pragma once

#include <QString>

#include <optional>

/// The secret store's answer to the question for the repositories' key.
struct StoredKey
{
    QString key;                  ///< empty when the store didn't give it
    bool isMissing = false;       ///< the store has none
    bool hasPrevious = false;     ///< whether the store has the key before this one, too
    std::optional<QString> error; ///< the sentence to show when the store failed

    /// Asks the store. Waits for it, and it may wait for the user: not for the window's thread.
    static StoredKey load();
    /// The same, but has a key made if there is none. The settings must be marked as unconfirmed
    /// before.
    static StoredKey make();
};
