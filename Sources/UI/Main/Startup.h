// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class OperatorBoxes;

/// The platform services, with the key of the host's mode, while it lives. The registry stays
/// behind: nothing holds on to it.
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
