#pragma once

#include "state/Texts.h"

inline QString localized(const char *italian)
{
    return Texts::tr(italian);
}
