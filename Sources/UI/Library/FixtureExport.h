// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "LibTools/DiskWork.h"

class DeviceManager;
class LEDDeviceListView;
class OperatorBoxes;
class QWidget;

/// Writes fixtures of the user's library to a library file of their own: for another desk, for a
/// colleague, as a copy.
class FixtureExport
{
public:
    struct Parts
    {
        DeviceManager& manager;
        OperatorBoxes& boxes;
        const LEDDeviceListView& view;
        QWidget& window; ///< the parent of the boxes
        DiskWait wait;   ///< keeps the output going while the disk is waited for
    };
    /// All parts outlive this object.
    explicit FixtureExport(Parts parts);

    /// Asks for the file, and writes the selected fixtures as they were before the question; all of
    /// the library if none is selected.
    void Export();

private:
    [[nodiscard]] QString AskFile(const QString& caption);

    Parts parts_;
    QString folder_; ///< of the last export
};
