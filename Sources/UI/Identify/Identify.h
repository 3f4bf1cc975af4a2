// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <QObject>
#include <QTimer>

#include "Model/PatchWalk.h"
#include "UI/Identify/IdentifyPanel.h"
#include "UI/Widgets/ActionSet.h"

class DeviceManager;
class DMXMappingArtNet;
class IdentifyCanvas;
class LEDEngine;
class MappedLedItem;
class QKeyEvent;

/// Lights one element after the other on the stage, in the order of the patch, while the show goes
/// on for all others. The present one is selected on the canvas. Nothing of this is an edit, and
/// nothing is saved.
class Identify final : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive this object; `window` owns action and panel.
    struct Parts
    {
        DeviceManager& manager;
        LEDEngine& engine;
        IdentifyCanvas& canvas;
        QWidget& window;
    };
    explicit Identify(const Parts& parts);

    /// Keys of the panel, of the canvas and of its list.
    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    /// Through the selected elements when they are several, otherwise through all, from the
    /// selected one on.
    void ActionIdentify(bool on);
    /// The selection was changed by whatever: a single element of the walk gets lit.
    void SelectionHasChanged();
    /// The document is another one: the elements of the walk are gone.
    void Forget();

private:
    void WatchKeys();
    void Begin();
    void End();
    [[nodiscard]] bool TakesKey(const QKeyEvent& key) const;
    void PressKey(const QKeyEvent& key);
    void StepBy(int by);
    void Follow();
    /// Lights the present element of the walk. It is selected when it is another than before.
    void ShowCurrent();
    void Light();
    void ShowFacts();
    /// Of an element that has an address.
    [[nodiscard]] IdentifyPanel::Facts FactsOf(const MappedLedItem& element) const;
    [[nodiscard]] QString TroubleOfWay(const DMXMappingArtNet& address) const;
    [[nodiscard]] QString TroubleOf(const MappedLedItem& element) const;

    Parts parts_;
    ActionSet actions_;
    QAction* action_ = nullptr;
    IdentifyPanel* panel_ = nullptr;
    PatchWalk walk_;
    bool on_ = false;
    std::int64_t since_ = 0; ///< when the present element got lit
    bool selecting_ = false; ///< the canvas follows us, not we the canvas
    QTimer followTimer_;     ///< runs once behind the edits of one event
    QTimer factsTimer_;      ///< runs while on: nodes fall silent and the output stops meanwhile
};
