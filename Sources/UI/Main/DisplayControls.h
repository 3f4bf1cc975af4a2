// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QComboBox;
class QWidget;
class SettingsBlock;
struct EditorDisplayState;

/// The zoom combo and the steps of the zoom. What is chosen goes to the display's record and to the
/// user's settings at once.
class ZoomControls : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object; Qt's parent owns the combo.
    ZoomControls(EditorDisplayState& display, SettingsBlock& settings, QWidget* parent);

    [[nodiscard]] QComboBox* Combo() const { return combo_; }

public slots:
    void ActionZoomIn();
    void ActionZoomOut();
    void ActionOnZoomCombo(const QString& text);
    /// Shows and keeps the zoom of the display's record.
    void UpdateZoomWidgets();

signals:
    /// The canvas has to be drawn at another scale.
    void zoomChanged();

private:
    void TellZoom();

    EditorDisplayState& display_;
    SettingsBlock& settings_;
    QComboBox* combo_;
};
