#pragma once

#include <QString>

/// The folder in the system's temporary folder where previews of saved files are kept for as long
/// as the program runs.
namespace PreviewFolder {

QString path();

/// Removes it with all that it holds. Left alone when it is a link or somebody else's: the
/// temporary folder is everybody's. A failure is dropped.
void remove();

} // namespace PreviewFolder
