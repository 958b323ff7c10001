#pragma once

#include "state/DestinationID.h"
#include "state/EngineState.h"

/// The memory of an engine that has pruned and verified every destination at a moment, so that
/// neither is due for a week.
inline EngineState choresDone(const QDateTime &moment)
{
    EngineState state;
    for (const DestinationID destination : allDestinations) {
        state.lastPrune.insert(rawValue(destination), moment);
        state.lastCheck.insert(rawValue(destination), moment);
    }
    return state;
}
