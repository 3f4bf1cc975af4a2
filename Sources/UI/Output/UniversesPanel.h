// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include <QTimer>
#include <QWidget>

#include "Model/ElementChanges.h"
#include "UI/Output/BlockMove.h"
#include "UI/Output/UniverseTable.h"
#include "UI/Output/UniverseWatch.h"

class ArtNetNodeModel;
class DockList;
class LEDEngine;
class QLabel;
class QLineEdit;
class QSettings;
class QSplitter;
class QToolButton;
class UniverseDelegate;
class UniverseGrid;

/// What goes out: the universes in use, and the channels of the chosen one with their values. It
/// reads them ten times a second while it is visible, and nothing while it is hidden.
class UniversesPanel final : public QWidget
{
    Q_OBJECT

public:
    /// All of them outlive the panel.
    struct Parts
    {
        DeviceManager& manager;
        ArtNetNodeModel& nodes;
        LEDEngine& engine;
        QUndoStack& undoStack;
    };
    explicit UniversesPanel(const Parts& parts);
    ~UniversesPanel() override;

    /// These elements are selected now: their cells are marked, and when they are in one universe,
    /// it is shown.
    void ShowSelection(const ElementIds& ids);

    void Read(const QSettings& store);
    void Write(QSettings& store) const;
    /// As at the first start.
    void Reset();

    [[nodiscard]] QSize sizeHint() const override { return {900, 280}; }

signals:
    /// The operator wants exactly these elements selected.
    void selectionWanted(const ElementIds& ids);
    /// And scrolled to.
    void showWanted(const ElementIds& ids);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildList();
    [[nodiscard]] QWidget* BuildDetails();
    void SayTexts();
    void WatchDocument();
    void WireGrid();

    void Refresh();
    void ShowRows();
    void ShowFrames();
    void ShowUniverse();
    void ShowLine();
    void ShowTitle();
    [[nodiscard]] QString SpokenCell(int channel) const;
    [[nodiscard]] QString LineOf(int channel);

    [[nodiscard]] const UniverseRow* Shown() const;
    [[nodiscard]] const PatchUniverse* ShownPatch() const;
    void ChooseRow(int row);
    void Step(int by);
    void FollowSelection();
    void GoTo();

    void Press(int channel, bool add);
    void Click(int channel, bool add);
    void Select(const ElementIds& ids);
    void DragTo(int from, int over, const QPoint& global);
    void EndDrag();

    Parts parts_;
    UniverseWatch watch_;
    UniverseTable table_;
    BlockMove move_;
    QTimer timer_;
    int looks_ = 0;
    std::optional<UniverseRow> shown_; ///< the universe in the grid
    ElementIds selected_;              ///< ascending
    bool selects_ = false;             ///< a selection that is made here
    bool bringsRows_ = false;          ///< the table is being changed
    bool followsRows_ = false;         ///< the selection is looked for in the next rows, too
    std::uint32_t patchVersion_ = 0;   ///< of the patch that is shown
    QString lineText_;                 ///< whole, below the grid
    QString notice_;                   ///< instead of the line, until something else is looked at

    QSplitter* splitter_ = nullptr;
    DockList* list_ = nullptr;
    UniverseDelegate* delegate_ = nullptr;
    QLabel* title_ = nullptr;
    QLineEdit* goTo_ = nullptr;
    QToolButton* percent_ = nullptr;
    UniverseGrid* grid_ = nullptr;
    QLabel* line_ = nullptr;
};
