// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class ArtNetNodeModel;
class DeviceManager;
class DisplayControls;
class EditorController;
class InspectorCanvas;
class InspectorPanel;
class LEDEngine;
class MainWindowForm;
class NetworkChoice;
class OperatorBoxes;
class QUndoStack;
class QWidget;
class WeftMapEditorScene;
struct EditorDisplayState;

/// Puts the inspector into the window and connects it with the canvas, which it doesn't know.
class InspectorInWindow
{
public:
    /// All of them outlive this object.
    struct Parts
    {
        DeviceManager& manager;
        ArtNetNodeModel& nodes;
        LEDEngine& engine;
        const NetworkChoice& network;
        QUndoStack& undoStack;
        OperatorBoxes& boxes;
        WeftMapEditorScene& scene;
        EditorController& editor;
        const EditorDisplayState& display;
        DisplayControls& controls;
        MainWindowForm& form;
        QWidget& window;
    };

    explicit InspectorInWindow(const Parts& parts);
    ~InspectorInWindow();
    InspectorInWindow(const InspectorInWindow&) = delete;
    InspectorInWindow& operator=(const InspectorInWindow&) = delete;

    [[nodiscard]] InspectorPanel& Panel() const { return *panel_; }

private:
    std::unique_ptr<InspectorCanvas> canvas_;
    std::unique_ptr<InspectorPanel> panel_;
};
