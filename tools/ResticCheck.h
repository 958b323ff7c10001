#pragma once

#include "tools/Restic.h"

#include <optional>

#include <tl/expected.hpp>

/// `restic check`: whether a repository is whole.
namespace ResticCheck {

/// One of several equal parts of a repository's data.
struct Part
{
    int number = 1; ///< from 1 to `count`
    int count = 1;
};

/// Checks the structure of the repository and reads back `part` of its data, none when that is
/// absent. Fails with the user's words for what was found, or for why the check couldn't be made.
tl::expected<void, ResticError> run(const Restic &restic, const std::optional<Part> &part,
                                    ProcessHandle *handle);

} // namespace ResticCheck
