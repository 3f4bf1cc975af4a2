// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QObject>

#include "UI/Widgets/ActionSet.h"

class EditorController;
class QComboBox;
class SettingsBlock;
struct EditorDisplayState;

/// How the canvas is shown: the zoom with its combo, the pixel grid and the snapping. What is
/// chosen goes to the display's record and to the user's settings at once.
class DisplayControls : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive this object; `window` owns the combo `zoomCombo` and the actions.
    DisplayControls(EditorDisplayState& display, SettingsBlock& settings, EditorController& editor,
                    QWidget& window);

    /// Shows and takes over what the user's settings say, when they were loaded.
    void TakeSettings();

    bool eventFilter(QObject* watched, QEvent* event) override;

    void ShowGrid(bool on);
    void SnapToGrid(bool on);

public slots:
    void ActionZoomIn();
    void ActionZoomOut();
    /// Takes a zoom that was typed. A text that is no number gives way to the present zoom.
    void ActionOnZoomCombo(const QString& text);
    void ActionDisplayPixelGrid();
    void ActionToggleSnapToGrid();
    /// Shows and keeps the zoom of the display's record.
    void UpdateZoomWidgets();

signals:
    /// The canvas has to be drawn at another scale.
    void zoomChanged();
    /// The canvas has to be drawn with or without its grid.
    void gridChanged();
    /// Elements snap to whole pixels now, or no longer.
    void snapChanged();

private:
    void AddZoomActions();
    void AddActions();
    void FillCombo();
    void Choose(int entry);
    void TakeTypedZoom();
    void FollowZoom();

    EditorDisplayState& display_;
    SettingsBlock& settings_;
    EditorController& editor_;
    ActionSet actions_;
    std::vector<QAction*> fits_; ///< the first entries of the combo
    QComboBox* combo_;
    QAction* grid_ = nullptr;
    QAction* snap_ = nullptr;
};
