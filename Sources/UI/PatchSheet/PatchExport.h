// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <thread>

#include <QObject>
#include <QString>
#include <QTimer>

#include "UI/PatchSheet/PatchSheetDialog.h"
#include "UI/Widgets/ActionSet.h"

class ArtNetNodeModel;
class DeviceManager;
class OperatorBoxes;
class OperatorNotices;
class QAction;
class QProgressDialog;
class QSettings;
class SettingsBlock;
struct PatchSheet;

/// File, Export Patch: asks how and where, copies what the document says, and lets a thread of its
/// own write it, so that no frame waits. Editing goes on meanwhile; what is exported is the patch
/// as it was. What takes longer than half a second shows how far it is, and can be cancelled.
class PatchExport : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        ArtNetNodeModel& nodes;
        SettingsBlock& settings;
        OperatorBoxes& boxes;
        OperatorNotices& notices;
        QWidget& window; ///< owns the action, and is the parent of the boxes
    };
    /// All parts outlive this object.
    explicit PatchExport(const Parts& parts);
    /// Waits for an export that is under way: the operator wanted it.
    ~PatchExport() override;

    void SetDocument(const QString& mappingFilePath) { mappingFile_ = mappingFilePath; }
    // What the operator chose last.
    void Read(const QSettings& store);
    void Write(QSettings& store) const;

    /// False while an export is under way. The window is then closed at its end, unless it failed.
    [[nodiscard]] bool MayClose();

public slots:
    void ActionExportPatch();

signals:
    /// The file is on the disk.
    void exported(const QString& path);

private:
    [[nodiscard]] bool AskChoice(QString& title);
    [[nodiscard]] QString AskFile();
    void Start(PatchSheet sheet, const QString& file);
    void ShowProgress();
    /// `fault` says why there is no file; empty when there is one, or when it was cancelled.
    void End(const QString& file, const QString& fault, bool cancelled);

    Parts parts_;
    ActionSet actions_;
    QAction* action_;
    QString mappingFile_;
    PatchExportChoice choice_;
    QString title_; ///< that the operator gave to the document of titleOf_
    QString titleOf_;
    QTimer progressTimer_;
    std::unique_ptr<QProgressDialog> progress_;
    std::atomic<int> percent_ = 0;
    bool closesAfter_ = false; ///< the window, when the export under way has ended
    std::jthread writer_;      ///< one at a time
};
