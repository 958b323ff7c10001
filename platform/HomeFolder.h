#pragma once

/// Sees to it that the environment of this process names the user's home folder, by which settings,
/// tools and libraries find their files: where it names none, as in some jobs of the system, the
/// one of the password database takes its place. False when there is none either. Only while the
/// process has a single thread.
bool findHomeFolder();
