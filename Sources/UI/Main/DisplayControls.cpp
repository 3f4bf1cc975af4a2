// SPDX-License-Identifier: MIT
#include "UI/Main/ZoomControls.h"

#include <algorithm>
#include <cmath>

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

#include "Settings/SettingsBlock.h"
#include "UI/Editor/EditorDisplayState.h"

ZoomControls::ZoomControls(EditorDisplayState& display, SettingsBlock& settings, QWidget* parent)
    : QObject(parent)
    , display_(display)
    , settings_(settings)
    , combo_(new QComboBox(parent))
{
    combo_->setObjectName(QStringLiteral("zoomCombo"));
    combo_->setAccessibleName(tr("Zoom"));
    combo_->setEditable(true);
    combo_->setInsertPolicy(QComboBox::NoInsert);
    // A typed 2 means 2 percent, not the first entry that begins with it.
    combo_->setCompleter(nullptr);
    combo_->setInputMethodHints(Qt::ImhNoPredictiveText);
    combo_->setMaximumWidth(96);
    for (const double preset : display.zoomPresets)
        combo_->addItem(ZoomText(preset));
    connect(combo_, &QComboBox::textActivated, this, &ZoomControls::ActionOnZoomCombo);
    connect(combo_->lineEdit(), &QLineEdit::returnPressed, this,
            [this] { ActionOnZoomCombo(combo_->lineEdit()->text()); });
}

void ZoomControls::ActionZoomIn()
{
    display_.ZoomIn();
    TellZoom();
}

void ZoomControls::ActionZoomOut()
{
    display_.ZoomOut();
    TellZoom();
}

void ZoomControls::ActionOnZoomCombo(const QString& text)
{
    const auto zoom = ZoomFromText(text);
    if (!zoom)
        return;
    display_.SetZoom(*zoom);
    TellZoom();
}

void ZoomControls::TellZoom()
{
    UpdateZoomWidgets();
    emit zoomChanged();
}

void ZoomControls::UpdateZoomWidgets()
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
