// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include <QString>
#include <QWidget>

#include "Model/PatchProblem.h"

class DeviceManager;
class DockList;
class ListColumns;
class LivePatchCheck;
class ProblemsModel;
class QLabel;
class QPushButton;
class QTimer;
class QUndoStack;

/// What is wrong with the patch: a live list, and below it the remedy of the chosen problems. While
/// it is hidden it does nothing.
class ProblemsPanel final : public QWidget
{
    Q_OBJECT

public:
    /// All of them outlive the panel.
    struct Parts
    {
        DeviceManager& manager;
        const LivePatchCheck& check;
        QUndoStack& undoStack;
    };
    explicit ProblemsPanel(const Parts& parts);
    ~ProblemsPanel() override;

    [[nodiscard]] ListColumns& Columns() const { return *columns_; }
    [[nodiscard]] QSize sizeHint() const override { return {900, 220}; }

public slots:
    /// Port-Addresses that the host uses for itself: no element gets an address there.
    void SetTakenUniverses(const std::vector<int>& universes);

signals:
    /// The operator wants exactly these elements selected, and to see them.
    void showWanted(const ElementIds& ids);

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildList();
    [[nodiscard]] QWidget* BuildBar();
    void ShowProblems();
    void ShowCurrent();
    void ShowElements();
    void Remedy();
    void DropNote();
    void CopyRows() const;
    [[nodiscard]] const PatchProblem* Current() const;
    [[nodiscard]] std::vector<PatchProblem> Chosen() const;

    Parts parts_;
    std::vector<std::int32_t> takenUniverses_;
    ProblemsModel* model_;
    DockList* list_;
    ListColumns* columns_ = nullptr; ///< the list owns it
    QTimer* noteTimer_;
    QString note_; ///< what became of the last remedy, in place of the effect for a while
    QLabel* summary_ = nullptr;
    QLabel* effect_ = nullptr;
    QPushButton* show_ = nullptr;
    QPushButton* remedy_ = nullptr;
};
