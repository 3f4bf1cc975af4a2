// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "Model/SavedVersions.h"
#include "UI/Dialogs/FixedDialog.h"

class LayoutPicture;
class QFormLayout;
class QLabel;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;
struct DocumentSummary;

/// The saved versions of the document, to look at and to take one back. Pictures and numbers come
/// while it is open: reading a version takes longer than a frame may wait.
class VersionsDialog : public FixedDialog
{
    Q_OBJECT

public:
    /// `versions` outlives the dialog.
    explicit VersionsDialog(SavedVersions& versions, QWidget* parent = nullptr);

    /// The file of the version to take back, when the dialog was accepted.
    [[nodiscard]] QString GetPath() const;

private:
    [[nodiscard]] QHBoxLayout* MakeVersions();
    QLabel* AddDetail(QFormLayout& form, const char* name, const QString& text);
    void AddButtons(QVBoxLayout& layout, bool withTakeBack);
    void Fill(SavedVersions& versions, const std::vector<SavedVersions::Version>& list);
    void TakeSummary(const QString& path, const std::shared_ptr<const DocumentSummary>& summary);
    void ShowCurrent();

    QLabel* hintLabel = nullptr;
    // Null when there is no version.
    QTreeWidget* versionList = nullptr;
    LayoutPicture* layoutPicture = nullptr;
    QLabel* canvasLabel = nullptr;
    QLabel* networkLabel = nullptr;
    QLabel* universesLabel = nullptr;
    QLabel* fixturesLabel = nullptr;
    QPushButton* takeBackButton = nullptr;
    /// By path; null for a version that can't be read.
    std::map<QString, std::shared_ptr<const DocumentSummary>> summaries_;
};
