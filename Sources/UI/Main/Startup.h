// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class OperatorBoxes;

/// Installs the platform services, with the registry key of the mode, and frees them at its end.
/// The registry service stays: nothing refers to it.
class ServicesInUse
{
public:
    ServicesInUse();
    ~ServicesInUse();
    ServicesInUse(const ServicesInUse&) = delete;
    ServicesInUse& operator=(const ServicesInUse&) = delete;
};

/// The steps of the start that need no window.
namespace Startup {

/// Ends the process when mode.xml beside the executable can't be understood.
void ReadApplicationMode();

/// Switches to the log file of the mode.
void StartLogOfMode();

/// The host's preferences were not found: the operator chooses where the document lies. Ends the
/// process when the operator quits.
[[nodiscard]] QString AskForDocumentPath(OperatorBoxes& boxes);

} // namespace Startup
