// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include <QObject>
#include <QPoint>
#include <QTimer>

#include "LEDEngine/RateMeter.h"

class ColourSwatch;
class DeviceManager;
class LEDEngine;
class MappingRectangle;
class NetworkChoice;
class QStatusBar;
class StatusField;
class WeftMapEditorScene;
class WeftMapEditorView;

/// The status bar. On the left what the mouse points at on the canvas, or what it drags there:
/// place, colour of the picture, and the element with place, size, angle and address. On the right
/// the network, the elements, the universes and the frames that were sent a second. Each fact has a
/// place of its own, whose width doesn't follow the text. Nothing is read more than ten times a
/// second, and only the mouse makes it more than twice.
class StatusLine : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive the line. The bar owns the fields.
    struct Parts
    {
        WeftMapEditorView& view;
        WeftMapEditorScene& scene;
        const DeviceManager& manager;
        LEDEngine& engine;
        const NetworkChoice& choice;
        QStatusBar& bar;
    };
    explicit StatusLine(const Parts& parts);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AddFields();
    void NameFields();
    void NotePointer(const QEvent& event);
    void ShowPointer();
    void ShowColour(std::optional<QPointF> at);
    void ShowTarget(std::optional<QPointF> at);
    void ShowElement(const MappingRectangle& item);
    void ShowPart(const QRectF& part, double angle, const QString& name);
    void ShowNoElement();
    void ShowOutput();

    Parts parts_;
    std::optional<QPoint> pointer_; ///< on the canvas' viewport; none while it is elsewhere
    std::uint64_t frames_ = 0;      ///< sent since the start
    RateMeter frameRate_;
    QTimer pointerTimer_; ///< runs once after the mouse did something
    QTimer outputTimer_;

    StatusField* position_ = nullptr;
    ColourSwatch* swatch_ = nullptr;
    StatusField* colour_ = nullptr;
    StatusField* place_ = nullptr;
    StatusField* size_ = nullptr;
    StatusField* angle_ = nullptr;
    StatusField* address_ = nullptr;
    StatusField* name_ = nullptr;
    StatusField* network_ = nullptr;
    StatusField* elements_ = nullptr;
    StatusField* universes_ = nullptr;
    StatusField* rate_ = nullptr;
};
