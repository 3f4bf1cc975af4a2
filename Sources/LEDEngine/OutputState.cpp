// SPDX-License-Identifier: MIT
#include "LEDEngine/OutputState.h"

#include "Log/Log.h"

const char* OutputStateText(OutputState state)
{
    switch (state) {
    case OutputState::Disabled:
        return "Disabled state";
    case OutputState::UsingLocalSocket:
        return "Using local socket state";
    case OutputState::DetermineSocketType:
        return "Determine socket type state";
    case OutputState::RebindRemoteSocket:
        return "Rebind remote socket state";
    case OutputState::RegisteringToRemoteSocket:
        return "Registering to remote socket state";
    case OutputState::SynchronizingRemoteDeviceList:
        return "Synchronizing remote device list state";
    case OutputState::UsingRemoteSocket:
        return "Using remote socket state";
    }
    ZEN_LOG_ERROR("Unknown ArtNetOutput state");
    return "Unknown ArtNetOutput state";
}
