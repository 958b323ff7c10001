#pragma once

#include <QString>

#include <optional>

/// What the secret store says of the repositories' key, at one moment.
struct StoredKey
{
    QString key;                  ///< empty when the store didn't give it
    bool isNew = false;           ///< made just now, as there was none
    bool hasPrevious = false;     ///< whether the store has the key before this one, too
    std::optional<QString> error; ///< the sentence to show when the store failed

    /// Asks for it, and makes one where there is none. Waits for the store, which may wait for the
    /// person: not for the window's thread.
    static StoredKey load();
};
