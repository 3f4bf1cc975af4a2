// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QObject>
#include <QPoint>
#include <QTimer>

class DeviceManager;
class LEDEngine;
class WeftMapEditorScene;
class WeftMapEditorView;

/// While Alt is held over the canvas, a tool tip at the mouse tells the whole way of the pixel that
/// is under it, from the picture to the node, ten times a second. Nothing is read at other times.
class PixelInspector final : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive this object. `window` is the one that the view is in.
    struct Parts
    {
        WeftMapEditorView& view;
        const WeftMapEditorScene& scene;
        const DeviceManager& manager;
        LEDEngine& engine;
        QWidget& window;
    };
    explicit PixelInspector(const Parts& parts);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void HoldAlt(bool held);
    void Follow();
    void Show();
    /// Empty where there is nothing to tell.
    [[nodiscard]] QString WordsUnder(QPoint pointer) const;

    Parts parts_;
    std::optional<QPoint> pointer_; ///< on the canvas' viewport; none while it is elsewhere
    bool altIsDown_ = false;
    QTimer timer_; ///< runs while there is something to tell
};
