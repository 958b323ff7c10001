#pragma once

#include "state/Keychain.h"

/// The key of the repositories and those that it has replaced, in the secret store.
///
/// No key that may open a version is ever lost from the store, even when a write is refused or the
/// program ends between two writes: a value is copied before it is overwritten. There is one
/// previous key, which the user can go back to; older ones are kept for good under accounts of
/// their own ("repository-key-earlier-1" and so on), where the keyring's own program shows them.
namespace RepositoryKeys {

/// Makes `key` the key in use, and `replaced` the previous key unless that is empty. On failure the
/// key in use stays, and so does a previous one. Fails also when the stored values can't be read,
/// as they could be lost unnoticed.
tl::expected<void, KeychainError> install(const QString &key, const QString &replaced);

/// The key to go back to, absent when there is none: the previous key, or the newest of the older
/// ones when an interrupted installation has left the key in use in the previous one's place.
tl::expected<std::optional<QString>, KeychainError> previous();

} // namespace RepositoryKeys
