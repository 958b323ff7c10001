#pragma once

#include <QLatin1String>
#include <QVariant>

/// Small things that the window remembers for this user from one start to the next, beside the
/// settings. Written to disk before the call returns.
namespace UserDefaults {

/// Sizes of the source folders, a map from path to bytes.
inline constexpr QLatin1String sourceSizes("sourceSizes");
/// The action to resume when the user comes back from the system's settings.
inline constexpr QLatin1String pendingAction("pendingAction");
/// When the user was sent there.
inline constexpr QLatin1String pendingActionDate("pendingActionDate");

/// Invalid when there is none.
QVariant value(QLatin1String key);
void set(QLatin1String key, const QVariant &value);
void remove(QLatin1String key);

} // namespace UserDefaults
