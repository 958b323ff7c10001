#pragma once

/// Makes sure that the environment of this process names the user's home folder, by which settings,
/// tools and libraries find their files. Where it names none, as in some jobs of the system, it
/// gets the one of the password database. False when there is none either. To be called only while
/// the process has a single thread.
bool findHomeFolder();
