// SPDX-License-Identifier: MIT
#include "UI/Inspector/Inspector.h"

#include <memory>
#include <utility>

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QLabel>
#include <QSignalBlocker>

#include "Language/Language.h"
#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/ElementGeometry.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Commands/AddressCommands.h"
#include "UI/Commands/GeometryCommands.h"
#include "UI/Commands/PushStep.h"
#include "UI/Inspector/ElementPreview.h"
#include "UI/Inspector/InspectorCanvas.h"
#include "UI/Inspector/InspectorForm.h"
#include "UI/Inspector/MultipleItems.h"
#include "UI/Inspector/SharedLineEdit.h"
#include "UI/Inspector/SharedSpinBox.h"
#include "UI/Widgets/SteadyComboBox.h"

namespace {

constexpr double FullTurn = 360;

/// A negative angle, which a turn by hand may leave, shows as none.
double ShownAngle(double degrees)
{
    if (degrees < 0)
        return 0;
    return degrees >= FullTurn ? degrees - FullTurn : degrees;
}

void ShowFlip(QCheckBox& box, const Shared<bool>& flip)
{
    const Qt::CheckState state = flip.mixed   ? Qt::PartiallyChecked
                                 : flip.value ? Qt::Checked
                                              : Qt::Unchecked;
    const QSignalBlocker blocker(&box);
    box.setTristate(flip.mixed);
    if (box.checkState() != state) // Setting it paints it.
        box.setCheckState(state);
}

} // namespace

Inspector::Inspector(const Parts& parts)
    : parts_(parts)
{
    constexpr int pauseMilliseconds = 80;
    pause_.setSingleShot(true);
    pause_.setInterval(pauseMilliseconds);
    connect(&pause_, &QTimer::timeout, this, [this] {
        if (stale_)
            UpdateInspectorGeometry();
    });
    Connect();
    ConnectModel();
    parts_.form.installEventFilter(this);
    SnapHasChanged();
    SelectionHasChanged();
}

void Inspector::Connect()
{
    const InspectorForm& form = parts_.form;
    connect(form.editDescription, &SharedLineEdit::typed, this, &Inspector::DescriptionChanged);
    connect(form.comboDmxMappingOutput, qOverload<int>(&QComboBox::activated), this,
            &Inspector::MappingOutputChanged);
    // An open list keeps its rows until it is closed.
    connect(form.comboDmxMappingOutput, &SteadyComboBox::closed, this, &Inspector::UpdateInspector);
    connect(form.spinBoxX, &SharedDoubleSpinBox::typed, this, &Inspector::SpinBoxPosXChanged);
    connect(form.spinBoxY, &SharedDoubleSpinBox::typed, this, &Inspector::SpinBoxPosYChanged);
    connect(form.spinBoxWidth, &SharedSpinBox::typed, this, &Inspector::SpinBoxWidthChanged);
    connect(form.spinBoxHeight, &SharedSpinBox::typed, this, &Inspector::SpinBoxHeightChanged);
    connect(form.spinBoxRotation, &SharedDoubleSpinBox::typed, this,
            &Inspector::SpinBoxRotationChanged);
    connect(form.spinBoxX, &SharedDoubleSpinBox::stepped, this,
            [this](int pixels) { MoveBy(pixels, 0); });
    connect(form.spinBoxY, &SharedDoubleSpinBox::stepped, this,
            [this](int pixels) { MoveBy(0, pixels); });
    connect(form.spinBoxWidth, &SharedSpinBox::stepped, this,
            [this](int pixels) { GrowBy(pixels, 0); });
    connect(form.spinBoxHeight, &SharedSpinBox::stepped, this,
            [this](int pixels) { GrowBy(0, pixels); });
    connect(form.spinBoxRotation, &SharedDoubleSpinBox::stepped, this, &Inspector::TurnBy);
    connect(form.checkBoxHFlip, &QCheckBox::stateChanged, this, &Inspector::CheckBoxHFlipChanged);
    connect(form.checkBoxVFlip, &QCheckBox::stateChanged, this, &Inspector::CheckBoxVFlipChanged);
}

void Inspector::ConnectModel()
{
    const DeviceManager* manager = &parts_.manager;
    connect(manager, &DeviceManager::elementsChanged, this, &Inspector::UpdateInspectorGeometry);
    connect(manager, &DeviceManager::elementsPatched, this, &Inspector::UpdateInspector);
    connect(manager, &DeviceManager::elementsRenamed, this, &Inspector::UpdateInspector);
    connect(manager, &DeviceManager::elementsRefitted, this, &Inspector::UpdateInspector);
    connect(manager, &DeviceManager::changeCanvasSize, this, &Inspector::UpdateInspector);
    // Their fixtures may have changed.
    connect(manager->GetMappedDeviceModel(), &MappedDeviceModel::mappingsChanged, this,
            &Inspector::UpdateInspector);
    connect(&Language::Instance(), &Language::changed, this, &Inspector::UpdateInspector);
}

// ---- Showing -----------------------------------------------------------------------------------

void Inspector::SelectionHasChanged()
{
    ElementIds selected = parts_.canvas.SelectedIds();
    if (selected != ids_)
        parts_.form.ForgetTyping();
    ids_ = std::move(selected);
    UpdateInspector();
}

void Inspector::UpdateInspector()
{
    stale_ = !parts_.form.isVisible();
    if (!stale_)
        Show();
}

void Inspector::UpdateInspectorGeometry()
{
    stale_ = true;
    if (pause_.isActive() && parts_.canvas.IsDragging())
        return;
    UpdateInspector();
    if (parts_.canvas.IsDragging())
        pause_.start();
}

bool Inspector::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &parts_.form && event->type() == QEvent::Show && std::exchange(stale_, false))
        Show();
    return QObject::eventFilter(watched, event);
}

void Inspector::Show()
{
    const ElementFields fields = FoldElements(parts_.manager, ids_);
    if (fields.count == 0 && parts_.form.isAncestorOf(QApplication::focusWidget()))
        parts_.canvas.TakeFocus();
    const int page = fields.count > 0 ? InspectorForm::FilledPage : InspectorForm::EmptyPage;
    parts_.form.deviceProperties->ShowPage(page);
    parts_.form.mappinProperties->ShowPage(page);
    parts_.preview.ShowElement(fields.count == 1 ? ids_.front() : 0);
    if (fields.count == 0)
        return;
    ShowNames(fields);
    ShowOutput(fields);
    ShowGeometry(fields);
    emit fieldsRead(fields, ids_);
}

void Inspector::ShowNames(const ElementFields& fields)
{
    const InspectorForm& form = parts_.form;
    form.labelFixture->setText(SharedText(fields.fixture));
    form.editDescription->Show(fields.description);
}

void Inspector::ShowOutput(const ElementFields& fields)
{
    parts_.form.MappedFixtureProperties->ShowPage(fields.allArtNet ? InspectorForm::ArtNetPage
                                                                   : InspectorForm::NoAddressPage);
    SteadyComboBox& list = *parts_.form.comboDmxMappingOutput;
    const int rows = fields.hasArtNet.mixed ? 2 : 1;
    const int current = fields.hasArtNet.mixed || fields.allArtNet ? 0 : -1;
    if (list.IsOpen() || (list.count() == rows && list.currentIndex() == current))
        return;
    const QSignalBlocker blocker(&list);
    list.clear();
    list.addItem(QStringLiteral("ArtNet"));
    if (fields.hasArtNet.mixed)
        ShowMultipleItemsRow(list);
    list.setCurrentIndex(current);
}

void Inspector::ShowGeometry(const ElementFields& fields)
{
    const InspectorForm& form = parts_.form;
    form.spinBoxX->Show(fields.left);
    form.spinBoxY->Show(fields.top);
    form.spinBoxWidth->Show(fields.width);
    form.spinBoxHeight->Show(fields.height);
    form.spinBoxRotation->Show({ShownAngle(fields.rotation.value), fields.rotation.mixed});
    ShowFlip(*form.checkBoxHFlip, fields.flipHorizontal);
    ShowFlip(*form.checkBoxVFlip, fields.flipVertical);
}

void Inspector::SnapHasChanged()
{
    const bool snap = parts_.canvas.SnapsToGrid();
    constexpr int decimals = 2;
    constexpr float step = 0.1F;
    for (auto* box : {parts_.form.spinBoxX, parts_.form.spinBoxY})
        box->SetPrecision(snap ? 0 : decimals, snap ? 1.0 : static_cast<double>(step));
}

// ---- Editing -----------------------------------------------------------------------------------

/// Makes a step for all elements and leaves it to the model's signals to show what came of it. A
/// gesture that still runs ends first: the step must not begin in the middle of it.
template <class Command, class Set>
void Inspector::Push(const Set& set)
{
    parts_.canvas.EndGesture();
    auto command = std::make_unique<Command>(parts_.manager, ids_);
    set(*command);
    Push(std::move(command));
}

template <class Command>
void Inspector::Push(std::unique_ptr<Command> command)
{
    if (!PushStep(parts_.undoStack, std::move(command)))
        UpdateInspector();
}

void Inspector::DescriptionChanged(const QString& text)
{
    parts_.canvas.EndGesture();
    Push(std::make_unique<DescriptionCommand>(parts_.manager, ids_, text.toStdWString()));
}

void Inspector::MappingOutputChanged(int)
{
    if (parts_.form.comboDmxMappingOutput->currentText() != QLatin1String("ArtNet"))
        return;
    parts_.canvas.EndGesture();
    Push(std::make_unique<AddressCommand>(parts_.manager, ids_,
                                          AddressCommand::ToElementsWithout{}));
}

void Inspector::SpinBoxPosXChanged(double left)
{
    MoveTo(left, std::nullopt);
}

void Inspector::SpinBoxPosYChanged(double top)
{
    MoveTo(std::nullopt, top);
}

void Inspector::MoveTo(std::optional<double> left, std::optional<double> top)
{
    Push<MoveCommand>([=](MoveCommand& command) { command.MoveTo(left, top); });
}

void Inspector::MoveBy(double right, double down)
{
    Push<MoveCommand>([=](MoveCommand& command) { command.MoveBy({right, down}); });
}

void Inspector::SpinBoxWidthChanged(int width)
{
    Resize(width, std::nullopt);
}

void Inspector::SpinBoxHeightChanged(int height)
{
    Resize(std::nullopt, height);
}

void Inspector::Resize(std::optional<double> width, std::optional<double> height)
{
    Push<SizeRectangleCommand>(
        [=](SizeRectangleCommand& command) { command.Resize(width, height); });
}

void Inspector::GrowBy(int width, int height)
{
    Push<SizeRectangleCommand>([=, this](SizeRectangleCommand& command) {
        command.GrowBy(QSizeF(width, height), ElementGeometry::NoCorner,
                       parts_.canvas.SnapsToGrid());
    });
}

void Inspector::SpinBoxRotationChanged(double degrees)
{
    TurnTo(degrees);
}

/// One element turns to the angle. Several turn as a group about its middle, until the angle that
/// they share, or none, has become the given one.
void Inspector::TurnTo(double degrees)
{
    if (ids_.size() <= 1) {
        Push<RotateRectangleCommand>(
            [=](RotateRectangleCommand& command) { command.TurnTo(degrees); });
        return;
    }
    const Shared<double> present = FoldElements(parts_.manager, ids_).rotation;
    const double angle = present.mixed ? parts_.canvas.GroupAngle() : present.value;
    const double wanted = static_cast<double>(ElementGeometry::TypedAngle(degrees));
    ZEN_LOG_DEBUG("CurrentSelectionRotation %.4f, absoluteAngle= %.4f", angle, wanted);
    parts_.canvas.EndGesture();
    parts_.canvas.TurnGroupBy(wanted - angle);
    UpdateInspector();
}

void Inspector::TurnBy(int degrees)
{
    parts_.canvas.EndGesture();
    parts_.canvas.TurnGroupBy(degrees);
}

void Inspector::CheckBoxHFlipChanged(int state)
{
    if (!parts_.form.checkBoxHFlip->isDown()) // It comes again when the button is let go.
        Flip(FlipHorizontal, state);
}

void Inspector::CheckBoxVFlipChanged(int state)
{
    if (!parts_.form.checkBoxVFlip->isDown())
        Flip(FlipVertical, state);
}

void Inspector::Flip(FlipDirection direction, int state)
{
    parts_.canvas.EndGesture();
    Push(std::make_unique<FlipRectangleCommand>(parts_.manager, ids_, direction,
                                                state != Qt::Unchecked));
}
