// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include <QTimer>
#include <QWidget>

#include "Model/ElementFields.h"

class AddressCommand;
class ArtNetNodeModel;
class DeviceManager;
class DMXMappingArtNet;
class InspectorCanvas;
class ManualNodeEditing;
class NodeComboBox;
class OperatorBoxes;
class QFormLayout;
class QLabel;
class QUndoStack;
class SharedSpinBox;

/// The page of the inspector for the Art-Net address of the selected elements: channel, universe,
/// sub-net and node, what the elements occupy on the wire, and with which others they share
/// channels. Each change is one undo step for all selected elements.
class ArtNetPatchPage : public QWidget
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        ArtNetNodeModel& nodes;
        QUndoStack& undoStack;
        OperatorBoxes& boxes;
        InspectorCanvas& canvas;
    };
    /// All parts outlive the page.
    explicit ArtNetPatchPage(const Parts& parts, QWidget* parent = nullptr);
    ~ArtNetPatchPage() override;

    /// Shows what was read from these elements, which the edits are for from now on.
    void Show(const ElementFields& fields, const ElementIds& ids);

    /// The chosen network as dotted text, with 255 for each open part; empty for none.
    void SetNetwork(const QString& network);

public slots:
    void artnetDMXspinChanged(int newValue);
    void artnetUnivSpinChanged(int newValue);
    void artnetSubnetSpinChanged(int newValue);
    /// The operator chose this entry of the list of nodes.
    void artnetIPcomboChanged(int index);
    /// Lets `setter` change the address of each selected element, as one step.
    void changeArtNetMappingProperty(const std::function<void(DMXMappingArtNet&)>& setter);

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Setter = void (DMXMappingArtNet::*)(std::int32_t);
    using Getter = std::int32_t (DMXMappingArtNet::*)() const;

    /// The texts are untranslated.
    SharedSpinBox* AddBox(QFormLayout& form, const char* name, const char* label,
                          const char* accessibleName);
    static void AddRow(QFormLayout& form, QWidget& field, const char* label,
                       const char* accessibleName);
    QLabel* AddWords(const char* name);
    void WatchDocument();
    void StepEach(int steps, Getter get, Setter set, std::int32_t lowest,
                  const std::function<std::int32_t(std::int64_t)>& highestOf);
    void StepChannel(int steps);
    void ShowNumber(SharedSpinBox& box, const Shared<std::int32_t>& value, int lowest, int highest);

    void Push(std::unique_ptr<AddressCommand> command);
    void RefreshWords();

    Parts parts_;
    ElementIds ids_;
    std::int32_t lastStartChannel_ = 512;
    Shared<std::wstring> node_;
    std::unique_ptr<ManualNodeEditing> manualNodes_;
    QTimer wordsDue_;

    SharedSpinBox* spinBoxDMXChannel = nullptr;
    SharedSpinBox* spinBoxArtnetUniv = nullptr;
    SharedSpinBox* spinBoxArtnetSubnet = nullptr;
    NodeComboBox* comboBoxsArtnetIP = nullptr;
    QLabel* errorMessage = nullptr;
    QLabel* labelPatchWords = nullptr;
};
