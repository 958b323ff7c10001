#pragma once

#include <QString>

/// The text that the person reads for an Italian source text, which is also the key of the look-up;
/// the source text itself when no translation is loaded. Mark the argument with
/// QT_TRANSLATE_NOOP("Vellomar", …) where it isn't a literal in the call.
QString localized(const char *italian);
