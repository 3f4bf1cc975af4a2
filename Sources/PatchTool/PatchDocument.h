// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"

/// A mapping document as the program would open it: with the user's library, or the program's own
/// where the user has none, and the fixtures that the document carries. Nothing is written.
class PatchDocument
{
public:
    /// Reads the file. A sentence that says why when it can't be read, else empty.
    [[nodiscard]] QString Load(const QString& path);

    [[nodiscard]] const MappedDeviceModel& Document() const { return document_; }
    /// The user's library, to check the document against, with the document's fixtures that it
    /// lacks: the program adds those when it opens the document.
    [[nodiscard]] const DeviceModel& Library() const { return library_; }
    /// Those that the document names.
    [[nodiscard]] const ArtNetNodeModel& Nodes() const { return nodes_; }
    /// Elements and manual nodes of the file that can't be read, for people; empty without any.
    [[nodiscard]] const QString& Losses() const { return losses_; }

private:
    DeviceModel library_;
    MappedDeviceModel document_;
    ArtNetNodeModel nodes_;
    QString losses_;
};
