// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QString>

class DeviceManager;
class DocumentLife;
class UnsavedWork;

/// The line of the status bar that says what of the operator's work is not on the disk, and why. It
/// stays until all of it is, and then shows nothing.
class SaveTroubleLabel : public QLabel
{
    Q_OBJECT

public:
    /// Follows the saves of these. They may end first.
    SaveTroubleLabel(const DocumentLife& document, const DeviceManager& manager,
                     const UnsavedWork& unsavedWork);

private:
    // Each takes the reason, empty when it is well again.
    void ShowMappingTrouble(const QString& reason);
    void ShowCopyTrouble(const QString& reason);
    void ShowLibraryTrouble(const QString& reason);
    void Show();

    QString mapping_;
    QString copy_;
    QString library_;
};
