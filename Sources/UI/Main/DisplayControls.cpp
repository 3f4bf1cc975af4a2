// SPDX-License-Identifier: MIT
#include "UI/Main/DisplayControls.h"

#include <algorithm>
#include <cmath>

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

#include "Settings/SettingsBlock.h"
#include "UI/Editor/EditorDisplayState.h"

DisplayControls::DisplayControls(EditorDisplayState& display, SettingsBlock& settings,
                                 QWidget& window)
    : display_(display)
    , settings_(settings)
    , actions_(window)
    , combo_(new QComboBox(&window))
{
    FillCombo();
    AddActions();
}

void DisplayControls::FillCombo()
{
    combo_->setObjectName(QStringLiteral("zoomCombo"));
    combo_->setAccessibleName(tr("Zoom"));
    combo_->setEditable(true);
    combo_->setInsertPolicy(QComboBox::NoInsert);
    // A typed 2 means 2 percent, not the first entry that begins with it.
    combo_->setCompleter(nullptr);
    combo_->setInputMethodHints(Qt::ImhNoPredictiveText);
    combo_->setMaximumWidth(96);
    for (const double preset : display_.zoomPresets)
        combo_->addItem(ZoomText(preset));
    connect(combo_, &QComboBox::textActivated, this, &DisplayControls::ActionOnZoomCombo);
    connect(combo_->lineEdit(), &QLineEdit::returnPressed, this,
            [this] { ActionOnZoomCombo(combo_->lineEdit()->text()); });
}

void DisplayControls::AddActions()
{
    actions_.Add({.objectName = "actionZoom_In",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Zoom &In"),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Zoom In"),
                  .shortcut = "+",
                  .icon = "icon_zoomin.png"},
                 this, &DisplayControls::ActionZoomIn);
    actions_.Add({.objectName = "actionZoom_Out",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Zoom &Out"),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Zoom Out"),
                  .shortcut = "-",
                  .icon = "icon_zoomout.png"},
                 this, &DisplayControls::ActionZoomOut);
    grid_ = actions_.Add({.objectName = "actionDisplay_Pixel_Grid",
                          .text = QT_TRANSLATE_NOOP("WEFTMain", "Display Pixel &Grid"),
                          .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Display pixel grid"),
                          .shortcut = "Ctrl+G",
                          .icon = "icon_grid.png",
                          .checkable = true},
                         this, &DisplayControls::ActionDisplayPixelGrid);
    snap_ = actions_.Add({.objectName = "actionSnapToGrid",
                          .text = QT_TRANSLATE_NOOP("WEFTMain", "S&napToGrid"),
                          .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Snap fixtures to the grid"),
                          .shortcut = "Ctrl+Shift+G",
                          .icon = "icon_snap_grid.png",
                          .checkable = true},
                         this, &DisplayControls::ActionToggleSnapToGrid);
}

void DisplayControls::TakeSettings()
{
    UpdateZoomWidgets();
    display_.showGrid = settings_.showGrid;
    grid_->setChecked(settings_.showGrid);
    display_.snapToGrid = settings_.snapToGrid;
    snap_->setChecked(settings_.snapToGrid);
    emit snapChanged();
}

// ---- Grid and snapping -------------------------------------------------------------------------

void DisplayControls::ShowGrid(bool on)
{
    settings_.showGrid = on;
    settings_.Save();
    display_.showGrid = on;
    grid_->setChecked(on);
    emit gridChanged();
}

void DisplayControls::SnapToGrid(bool on)
{
    settings_.snapToGrid = on;
    settings_.Save();
    display_.snapToGrid = on;
    snap_->setChecked(on);
    emit snapChanged();
}

void DisplayControls::ActionDisplayPixelGrid()
{
    ShowGrid(grid_->isChecked());
}

void DisplayControls::ActionToggleSnapToGrid()
{
    SnapToGrid(snap_->isChecked());
}

// ---- The zoom ----------------------------------------------------------------------------------

void DisplayControls::ActionZoomIn()
{
    display_.ZoomIn();
    FollowZoom();
}

void DisplayControls::ActionZoomOut()
{
    display_.ZoomOut();
    FollowZoom();
}

void DisplayControls::ActionOnZoomCombo(const QString& text)
{
    const auto zoom = ZoomFromText(text);
    if (!zoom)
        return;
    display_.SetZoom(*zoom);
    FollowZoom();
}

void DisplayControls::FollowZoom()
{
    UpdateZoomWidgets();
    emit zoomChanged();
}

void DisplayControls::UpdateZoomWidgets()
{
    settings_.zoomFactor = static_cast<float>(display_.zoom);
    settings_.Save();
    // The list begins at the entry that is nearest, and only a choice or Return sets the zoom.
    const QSignalBlocker silent(combo_);
    const auto nearest = std::ranges::min_element(display_.zoomPresets, {}, [this](double preset) {
        return std::abs(preset - display_.zoom);
    });
    combo_->setCurrentIndex(static_cast<int>(nearest - display_.zoomPresets.begin()));
    combo_->setEditText(ZoomText(display_.zoom));
}
