#pragma once

#include "state/Keychain.h"

/// The key of the repositories and those that it has replaced, in the secret store.
///
/// No key that may open a version is ever gone from the store: not when a write is refused, not
/// when the program ends between two of them. Whatever is about to be overwritten stands somewhere
/// else before that. There is one previous key, which the user can go back to; what has no room
/// left beside it is kept for good under accounts of its own ("repository-key-earlier-1" and so
/// on), where the keyring's own program shows it.
namespace RepositoryKeys {

/// Makes a key the one in use, and the one that it replaces the previous one unless that is empty.
/// On failure the key in use stays, and the previous one too where there was any. Refused also
/// when what is stored can't be read, as it would be lost unseen.
tl::expected<void, KeychainError> install(const QString &key, const QString &replaced);

/// The key to go back to, absent when there is none. That is the previous one, or, where a stop
/// amid an installation has left the key in use there, the newest of those kept.
tl::expected<std::optional<QString>, KeychainError> previous();

} // namespace RepositoryKeys
