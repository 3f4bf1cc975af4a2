// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include <QObject>
#include <QTimer>

#include "Model/ElementChanges.h"
#include "Model/ElementFields.h"

class DeviceManager;
class ElementPreview;
class InspectorCanvas;
class InspectorForm;
class QUndoStack;

/// Shows what the selected elements have, and turns what the operator enters into one step of the
/// undo history for all of them. It follows the model's signals and keeps no data but the numbers
/// of the elements; what the model tells never becomes a step.
class Inspector final : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive the inspector.
    struct Parts
    {
        DeviceManager& manager;
        QUndoStack& undoStack;
        InspectorCanvas& canvas;
        InspectorForm& form;
        ElementPreview& preview;
    };

    explicit Inspector(const Parts& parts);

public slots:
    /// Shows the elements that are selected now. What was typed for others before is dropped, if
    /// its field was not left.
    void SelectionHasChanged();
    /// Snapping was switched on or off: places are whole pixels, or have decimals.
    void SnapHasChanged();

signals:
    /// What the selected elements have was read again, for the pages that show a part of it.
    void fieldsRead(const ElementFields& fields, const ElementIds& ids);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void DescriptionChanged(const QString& text);
    void MappingOutputChanged(int index);
    void SpinBoxPosXChanged(double left);
    void SpinBoxPosYChanged(double top);
    void SpinBoxWidthChanged(int width);
    void SpinBoxHeightChanged(int height);
    void SpinBoxRotationChanged(double degrees);
    void CheckBoxHFlipChanged(int state);
    void CheckBoxVFlipChanged(int state);
    /// The model has changed.
    void UpdateInspector();
    /// The same for geometry, which a drag changes with each move of the mouse: more often than
    /// anyone can read. The numbers follow some times a second then.
    void UpdateInspectorGeometry();

private:
    void Connect();
    void ConnectModel();
    void Show();
    void ShowNames(const ElementFields& fields);
    void ShowOutput(const ElementFields& fields);
    void ShowGeometry(const ElementFields& fields);

    void MoveTo(std::optional<double> left, std::optional<double> top);
    void MoveBy(double right, double down);
    void Resize(std::optional<double> width, std::optional<double> height);
    void GrowBy(int width, int height);
    void TurnTo(double degrees);
    void TurnBy(int degrees);
    void Flip(FlipDirection direction, int state);
    template <class Command, class Set>
    void Push(const Set& set);
    template <class Command>
    void Push(std::unique_ptr<Command> command);

    Parts parts_;
    ElementIds ids_;
    bool stale_ = false; ///< the model has changed since the form was shown
    QTimer pause_;       ///< between two readings in a drag
};
