#pragma once

#include "model/StoredKey.h"

#include <QString>

#include <memory>
#include <optional>

#include <tl/expected.hpp>

/// The repositories' key in the secret store, as the model uses it. Every call waits for the store,
/// which may wait for its user: not for the window's thread, and one at a time
/// (Background::Lane::Keys). Failures are the sentence to show.
class KeyStore
{
public:
    /// The result of an installation.
    struct Installation
    {
        std::optional<QString> error;    ///< absent on success
        std::optional<bool> hasPrevious; ///< whether there is a previous key; absent when unknown
    };

    /// The one of the platform.
    static std::shared_ptr<KeyStore> real();

    KeyStore() = default;
    virtual ~KeyStore() = default;
    KeyStore(const KeyStore &) = delete;
    KeyStore &operator=(const KeyStore &) = delete;
    KeyStore(KeyStore &&) = delete;
    KeyStore &operator=(KeyStore &&) = delete;

    /// The key in use.
    virtual StoredKey load() = 0;
    /// The same, but makes a key first where there is none. The settings must be marked as
    /// unconfirmed before.
    virtual StoredKey make() = 0;
    /// Makes a key the one in use, and `replaced` the previous one unless that is empty.
    virtual Installation install(const QString &key, const QString &replaced) = 0;
    /// The key to go back to; absent when there is none.
    virtual tl::expected<std::optional<QString>, QString> previous() = 0;
};
