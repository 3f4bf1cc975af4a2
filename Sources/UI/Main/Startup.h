// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class OperatorBoxes;

/// The steps of the start that need no window.
namespace Startup {

/// Ends the process when mode.xml beside the executable can't be understood.
void ReadApplicationMode();

/// The platform services, with the key of the host's mode.
void InstallServices();
/// Frees them, except for the registry, which nothing holds on to.
void FreeServices();

/// Goes on with the log file of the mode.
void StartLogOfMode();

/// The host's preferences were not found: the operator chooses where the document lies. Ends the
/// process when the operator quits.
[[nodiscard]] QString AskForDocumentPath(OperatorBoxes& boxes);

} // namespace Startup
