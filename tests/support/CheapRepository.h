#pragma once

#include <QString>

/// Repositories of restic that open at once.
///
/// A key file of a repository holds the keys of its data, encrypted under what scrypt makes of the
/// password, and says how much work that is to be. restic chooses half a second of it, which each
/// of its starts takes again. Here it is next to nothing, and everything else is as restic has it.
namespace CheapRepository {

/// Makes an empty repository for `password` in a folder that need not be there yet, in place of
/// `restic init`; false when that couldn't be done.
bool make(const QString &folder, const QString &password);

} // namespace CheapRepository
