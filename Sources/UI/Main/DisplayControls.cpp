// SPDX-License-Identifier: MIT
#include "UI/Main/DisplayControls.h"

#include <algorithm>
#include <cmath>

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStandardItemModel>

#include "Language/Language.h"
#include "Settings/SettingsBlock.h"
#include "UI/Editor/EditorController.h"
#include "UI/Editor/EditorDisplayState.h"

DisplayControls::DisplayControls(EditorDisplayState& display, SettingsBlock& settings,
                                 EditorController& editor, QWidget& window)
    : display_(display)
    , settings_(settings)
    , editor_(editor)
    , actions_(window)
    , combo_(new QComboBox(&window))
{
    AddZoomActions();
    AddActions();
    FillCombo();
}

void DisplayControls::FillCombo()
{
    combo_->setObjectName(QStringLiteral("zoomCombo"));
    combo_->setEditable(true);
    combo_->setInsertPolicy(QComboBox::NoInsert);
    // A typed 2 means 2 percent, not the first entry that begins with it.
    combo_->setCompleter(nullptr);
    combo_->setInputMethodHints(Qt::ImhNoPredictiveText);
    combo_->setMaximumWidth(96);
    combo_->installEventFilter(this);
    for (const QAction* fit : fits_) {
        combo_->addItem(QString());
        auto* entry = qobject_cast<QStandardItemModel*>(combo_->model())->item(combo_->count() - 1);
        const auto follow = [entry, fit] {
            entry->setText(fit->text().remove(QLatin1Char('&')));
            entry->setEnabled(fit->isEnabled());
        };
        connect(fit, &QAction::changed, this, follow);
        follow();
    }
    for (const double preset : display_.zoomPresets)
        combo_->addItem(ZoomText(preset));
    combo_->setMaxVisibleItems(combo_->count());
    InEachLanguage(this, [this] {
        combo_->setAccessibleName(tr("Zoom"));
        combo_->setToolTip(tr("100% fits the whole canvas into the window.\nType a number from 1% "
                              "to 10000% and press Enter."));
    });
    connect(combo_, qOverload<int>(&QComboBox::activated), this, &DisplayControls::Choose);
    connect(combo_->lineEdit(), &QLineEdit::editingFinished, this, &DisplayControls::TakeTypedZoom);
}

bool DisplayControls::eventFilter(QObject* watched, QEvent* event)
{
    // A wheel that passes over the box would step through the list, and the picture jump.
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void DisplayControls::AddZoomActions()
{
    const auto add = [this](const ActionRow& row, void (EditorController::*slot)()) {
        fits_.push_back(actions_.Add(row, &editor_, slot));
        return fits_.back();
    };
    add({.objectName = "actionZoom_Fit",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "&Fit"),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Show the whole canvas, at 100%"),
         .shortcut = "Ctrl+0"},
        &EditorController::ActionFit);
    QAction* selection =
        add({.objectName = "actionZoom_Fit_Selection",
             .text = QT_TRANSLATE_NOOP("WEFTMain", "Fit &Selection"),
             .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Show what is selected, as large as it goes"),
             .shortcut = "Ctrl+Shift+0"},
            &EditorController::ActionFitSelection);
    add({.objectName = "actionZoom_Actual_Pixels",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "&1:1"),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Show a canvas pixel on each screen pixel"),
         .shortcut = "Ctrl+1"},
        &EditorController::ActionActualPixels);
    selection->setEnabled(false);
    connect(&editor_, &EditorController::selectionHasChanged, selection,
            [selection](int count) { selection->setEnabled(count > 0); });
}

void DisplayControls::AddActions()
{
    actions_.Add({.objectName = "actionZoom_In",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "&Zoom In"),
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
    if (const auto zoom = ZoomFromText(text))
        display_.SetZoom(*zoom);
    FollowZoom();
}

void DisplayControls::Choose(int entry)
{
    const auto number = static_cast<std::size_t>(entry);
    if (number < fits_.size())
        fits_[number]->trigger();
    else
        ActionOnZoomCombo(combo_->itemText(entry));
}

/// After Return, and when the field is left. The text that stands there for the present zoom is cut
/// off and means another one.
void DisplayControls::TakeTypedZoom()
{
    const QString typed = combo_->lineEdit()->text();
    if (typed != ZoomText(display_.zoom))
        ActionOnZoomCombo(typed);
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
    combo_->setCurrentIndex(
        static_cast<int>(std::ssize(fits_) + (nearest - display_.zoomPresets.begin())));
    combo_->setEditText(ZoomText(display_.zoom));
}
