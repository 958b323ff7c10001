#include "state/RepositoryKeys.h"

#include <QStringList>

namespace {

QString keptAccount(qsizetype number)
{
    return QStringLiteral("repository-key-earlier-%1").arg(number);
}

/// All older keys that are kept, the newest last.
tl::expected<QStringList, KeychainError> allKept()
{
    QStringList kept;
    while (true) {
        const auto next = Keychain::read(keptAccount(kept.size() + 1));
        if (!next) {
            return tl::unexpected(next.error());
        }
        if (!*next) {
            return kept;
        }
        kept.append(**next);
    }
}

tl::expected<void, KeychainError> keep(const QString &key)
{
    const auto kept = allKept();
    if (!kept) {
        return tl::unexpected(kept.error());
    }
    if (kept->contains(key)) {
        return {};
    }
    return Keychain::write(key, keptAccount(kept->size() + 1));
}

} // namespace

tl::expected<void, KeychainError> RepositoryKeys::install(const QString &key,
                                                          const QString &replaced)
{
    const auto stored = Keychain::read(Keychain::repositoryKey);
    if (!stored) {
        return tl::unexpected(stored.error());
    }
    const auto previous = Keychain::read(Keychain::previousRepositoryKey);
    if (!previous) {
        return tl::unexpected(previous.error());
    }
    const bool movesAside = !replaced.isEmpty();
    // The stored key may differ from `replaced`, when the caller couldn't read it.
    if (*stored && *stored != key && *stored != replaced) {
        if (const auto kept = keep(**stored); !kept) {
            return kept;
        }
    }
    if (movesAside && *previous && *previous != replaced && *previous != *stored) {
        if (const auto kept = keep(**previous); !kept) {
            return kept;
        }
    }
    if (movesAside) {
        if (const auto moved = Keychain::write(replaced, Keychain::previousRepositoryKey); !moved) {
            return moved;
        }
    }
    const auto written = Keychain::write(key, Keychain::repositoryKey);
    if (!written && movesAside && *previous) {
        // If this is refused too, the previous key has already been kept above.
        static_cast<void>(Keychain::write(**previous, Keychain::previousRepositoryKey));
    }
    return written;
}

tl::expected<std::optional<QString>, KeychainError> RepositoryKeys::previous()
{
    auto previous = Keychain::read(Keychain::previousRepositoryKey);
    const auto inUse = Keychain::read(Keychain::repositoryKey);
    if (!previous || !inUse || *previous != *inUse) {
        return inUse ? previous : inUse;
    }
    const auto kept = allKept();
    if (!kept) {
        return tl::unexpected(kept.error());
    }
    for (auto key = kept->crbegin(); key != kept->crend(); ++key) {
        if (*key != *inUse) {
            return *key;
        }
    }
    return previous;
}
