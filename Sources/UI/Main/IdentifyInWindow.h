// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class DeviceManager;
class DocumentLife;
class EditorController;
class Identify;
class IdentifyCanvas;
class LEDEngine;
class QWidget;
class WeftMapEditorScene;
class WeftMapEditorView;
class WeftMappedObjectTreeView;

/// Puts identifying into the window and connects it with the canvas, which it doesn't know.
class IdentifyInWindow
{
public:
    /// All of them outlive this object.
    struct Parts
    {
        DeviceManager& manager;
        LEDEngine& engine;
        WeftMapEditorScene& scene;
        EditorController& editor;
        const DocumentLife& document;
        WeftMapEditorView& view;
        WeftMappedObjectTreeView& list;
        QWidget& window;
    };

    explicit IdentifyInWindow(const Parts& parts);
    ~IdentifyInWindow();
    IdentifyInWindow(const IdentifyInWindow&) = delete;
    IdentifyInWindow& operator=(const IdentifyInWindow&) = delete;

private:
    std::unique_ptr<IdentifyCanvas> canvas_;
    std::unique_ptr<Identify> identify_;
};
