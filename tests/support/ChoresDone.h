#pragma once

#include "state/DestinationID.h"
#include "state/EngineState.h"

/// The state of an engine that has just pruned and verified every destination: neither is due for
/// a week.
inline EngineState choresDone(const QDateTime &moment)
{
    EngineState state;
    for (const DestinationID destination : allDestinations) {
        state.lastPrune.insert(rawValue(destination), moment);
        state.lastCheck.insert(rawValue(destination), moment);
    }
    return state;
}
