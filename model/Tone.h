#pragma once

#include <QObject>

namespace Tones {
Q_NAMESPACE

/// What a state means to the user; the theme has a colour for each.
enum class Tone { Off, Attention, Wrong, Well };
Q_ENUM_NS(Tone)

} // namespace Tones

using Tones::Tone;
