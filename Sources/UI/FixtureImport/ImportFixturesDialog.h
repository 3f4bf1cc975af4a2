// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <vector>

#include <QTimer>

#include "FixtureImport/ImportPlan.h"
#include "UI/Dialogs/FixedDialog.h"
#include "UI/FixtureImport/ImportReading.h"

class ImportAnswers;
class ImportDetails;
class ImportTreeModel;
class OperatorBoxes;
class QComboBox;
class QDialogButtonBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QMimeData;
class QProgressBar;
class QPushButton;
class QTreeView;
class QVBoxLayout;

/// The files and folders that are dropped or pasted; those of other machines are not among them.
[[nodiscard]] QStringList LocalPaths(const QMimeData& data);

/// Asks for fixture files, several at once; an empty list when the operator cancels.
[[nodiscard]] QStringList AskForFixtureFiles(OperatorBoxes& boxes, QWidget* parent);

/// Shows what is in fixture files and folders of them, and lets the operator choose what comes into
/// the library. It changes nothing: whoever opened it imports what is chosen.
class ImportFixturesDialog : public FixedDialog
{
    Q_OBJECT

public:
    /// `boxes` outlives the dialog.
    ImportFixturesDialog(FixtureImport::ImportPlan::Library library, OperatorBoxes& boxes,
                         QWidget* parent);
    ~ImportFixturesDialog() override;

    /// Files and folders in addition to those that are shown. Reading goes on while the dialog is
    /// open.
    void Read(const QStringList& paths);

    [[nodiscard]] std::vector<FixtureImport::ImportPlan::Wanted> Chosen() const;
    /// From the first call on the import is under way, and nothing can be changed any more.
    void ShowImported(int done, int all);
    [[nodiscard]] bool IsReading() const { return reading_.IsReading(); }
    /// For a dialog that the end of the program has closed; as ImportReading says.
    void StopReadingAndWait() { reading_.StopAndWait(); }

signals:
    /// The operator wants what is chosen. The dialog stays open until Finish.
    void importRequested();
    /// The operator wants what has been imported so far to be taken back. The dialog stays open
    /// until Finish.
    void takeBackRequested();

public slots:
    void accept() override;
    /// Closes the dialog when nothing is read any more, or what was imported is taken back.
    void reject() override;
    /// What importRequested or takeBackRequested asked for is done.
    void Finish();

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    [[nodiscard]] QHBoxLayout* MakeSearchRow();
    [[nodiscard]] QHBoxLayout* MakeLists();
    [[nodiscard]] QHBoxLayout* MakeChoiceRow();
    [[nodiscard]] QHBoxLayout* MakeStatusRow();
    void MakeTree();
    QPushButton* AddButton(QHBoxLayout& row, const char* objectName, const QString& text);
    void AddFiles();
    void AddFolder();
    void ShowProgress();
    void EndReading();
    void Freeze();
    void StartCancelling();
    void Search();
    void ExpandRows();
    void ShowCurrent();
    void ShowCounts();
    bool SearchKey(int key);

    FixtureImport::ImportPlan plan_;
    ImportReading reading_;
    OperatorBoxes& boxes_;
    ImportTreeModel* model_;
    QLineEdit* search_ = nullptr;
    QComboBox* show_ = nullptr;
    QTreeView* tree_ = nullptr;
    ImportDetails* details_ = nullptr;
    ImportAnswers* answerAll_ = nullptr;
    QLabel* countLabel_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QDialogButtonBox* buttons_ = nullptr;
    QPushButton* import_ = nullptr;
    QTimer progressTimer_;
    std::set<const FixtureImport::PlanNode*> expanded_; ///< without a search
    bool wasSearching_ = false;
    enum class Stage
    {
        Choosing, ///< also while files are read
        Importing,
        Cancelling ///< until reading or importing has come to its end
    };
    Stage stage_ = Stage::Choosing;
};
