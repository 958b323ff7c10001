#pragma once

#include <QString>

#include <optional>

/// What the secret store says of the repositories' key, at one moment.
struct StoredKey
{
    QString key;                  ///< empty when the store didn't give it
    bool isMissing = false;       ///< the store has none
    bool hasPrevious = false;     ///< whether the store has the key before this one, too
    std::optional<QString> error; ///< the sentence to show when the store failed

    /// Asks for it. Waits for the store, which may wait for the user: not for the window's
    /// thread.
    static StoredKey load();
    /// Has the store make one, which mustn't count as confirmed by then. Waits likewise.
    static StoredKey make();
};
