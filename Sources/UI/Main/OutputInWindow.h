// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>

#include "UI/Main/MainWindowForm.h"

class ArtNetNodeModel;
class DeviceManager;
class EditorController;
class HostSettings;
class LEDEngine;
class LivePatchCheck;
class ProblemsPanel;
class QSettings;
class QStatusBar;
class QUndoStack;
class UniversesPanel;
class WeftMapEditorScene;

/// Puts what goes out, and what is wrong with it, into the window: two docks and the count of the
/// problems in the status bar.
class OutputInWindow
{
public:
    /// All of them outlive this object.
    struct Parts
    {
        DeviceManager& manager;
        ArtNetNodeModel& nodes;
        LEDEngine& engine;
        QUndoStack& undoStack;
    };

    explicit OutputInWindow(const Parts& parts);
    ~OutputInWindow();
    OutputInWindow(const OutputInWindow&) = delete;
    OutputInWindow& operator=(const OutputInWindow&) = delete;

    [[nodiscard]] std::array<MainWindowForm::Dock, 2> Docks() const;

    /// What is selected here is selected on the canvas, and the other way round. Outlived by both.
    void ConnectCanvas(EditorController& editor, const WeftMapEditorScene& scene);
    void ConnectHost(const HostSettings& host);
    /// Adds the count, which opens the dock of the problems. The docks are in the window by then.
    void AddCount(QStatusBar& bar);

    void Read(const QSettings& store);
    void Write(QSettings& store) const;
    /// As at the first start.
    void Reset();

    /// The check goes on `milliseconds` from now.
    void WorkAfter(int milliseconds);

private:
    std::unique_ptr<LivePatchCheck> check_;
    std::unique_ptr<ProblemsPanel> problems_;
    std::unique_ptr<UniversesPanel> universes_;
};
