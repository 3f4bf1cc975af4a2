// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QPointF>

class DeviceManager;
class ElementSelection;
class MappingRectangle;
class QGraphicsScene;
struct EditorDisplayState;

/// What lies round a selection of several elements: the frame with its handle, and the body by
/// which the group is taken.
class GroupOverlay
{
public:
    /// All of them outlive the overlay, which adds its items to the scene and takes them out.
    struct Parts
    {
        QGraphicsScene& scene;
        const DeviceManager& manager;
        const EditorDisplayState& display;
        const ElementSelection& selection;
    };

    explicit GroupOverlay(const Parts& parts);
    ~GroupOverlay();
    GroupOverlay(const GroupOverlay&) = delete;
    GroupOverlay& operator=(const GroupOverlay&) = delete;

    /// Places frame and body round the selection as the document has it. Removes them when fewer
    /// than two elements are selected.
    void Show();
    /// The same, when they are there.
    void Follow();
    void Remove();

    [[nodiscard]] MappingRectangle* GetFrame() const { return frame_.get(); }
    /// The middle of the box round the selection, about which a group turns.
    [[nodiscard]] QPointF GetCentre() const { return centre_; }
    /// The rotation that all elements of the group have, 0 to 360; 0 when they differ.
    [[nodiscard]] double GetRotation() const { return rotation_; }
    /// Turns the frame while the group is turned by hand; Follow leaves it alone until Show.
    void TurnFrame(double degrees);

private:
    Parts parts_;
    std::unique_ptr<MappingRectangle> frame_;
    std::unique_ptr<MappingRectangle> body_;
    QPointF centre_;
    double rotation_ = 0;
    bool turning_ = false;
};
