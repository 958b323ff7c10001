#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

#include <tl/expected.hpp>

/// Why the secret store failed.
struct KeychainError
{
    std::int32_t status = 0; ///< the platform's own result code

    bool operator==(const KeychainError &) const = default;

    /// What the user reads; it contains the code.
    [[nodiscard]] QString message() const;
};

/// The program's keys in the platform's secret store, under the service "it.vellomar.app". They are
/// stored nowhere else on disk. Items are replaced, never removed. Stateless, so any thread and any
/// process may use it; only the window's process may create the repository's key.
namespace Keychain {

/// Encryption key of all repositories.
inline constexpr QLatin1String repositoryKey("repository-key");
/// The repository key that was replaced last.
inline constexpr QLatin1String previousRepositoryKey("repository-key-previous");
/// Password of rclone's encrypted configuration.
inline constexpr QLatin1String rcloneConfigKey("rclone-config-key");

/// The value of an item; absent when there is none. Bytes that aren't UTF-8 are repaired.
tl::expected<std::optional<QString>, KeychainError> read(const QString &account);

/// Replaces an item's value, or adds the item.
tl::expected<void, KeychainError> write(const QString &value, const QString &account);

/// The value of an item, which is made and stored first when there is none.
tl::expected<QString, KeychainError> loadOrCreate(const QString &account);

/// A new key of 32 characters out of 56 that aren't easily confused (about 185.8 bits),
/// drawn without bias from `random`, a source of uniform 64-bit numbers.
QString generateKey(const std::function<quint64()> &random);

} // namespace Keychain
