#pragma once

#include <QString>

/// Repositories of restic that open at once.
///
/// The key file of a repository holds the keys of its data, encrypted by scrypt with the password,
/// and says how much work scrypt does. restic chooses half a second, which each of its starts takes
/// again. Here it is next to nothing; everything else is as restic does it.
namespace CheapRepository {

/// Makes an empty repository for `password` in a folder that need not exist yet, in place of
/// `restic init`; false when that couldn't be done.
bool make(const QString &folder, const QString &password);

} // namespace CheapRepository
