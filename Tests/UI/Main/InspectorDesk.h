// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <map>

#include <tinyxml2.h>

#include "Model/ArtNetNodeModel.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Main/Desk.h"

/// The inspector of a window, worked by keys, and what its document holds.
class InspectorDesk : public Desk
{
protected:
    using Rows = std::vector<int>;

    static constexpr char X[] = "spinBoxX";
    static constexpr char Y[] = "spinBoxY";
    static constexpr char Width[] = "spinBoxWidth";
    static constexpr char Height[] = "spinBoxHeight";
    static constexpr char Rotation[] = "spinBoxRotation";
    static constexpr char FlipH[] = "checkBoxHFlip";
    static constexpr char FlipV[] = "checkBoxVFlip";
    static constexpr char Description[] = "editDescription";
    static constexpr char Channel[] = "spinBoxDMXChannel";
    static constexpr char Universe[] = "spinBoxArtnetUniv";
    static constexpr char Subnet[] = "spinBoxArtnetSubnet";

    [[nodiscard]] MappedDeviceModel& Document() const
    {
        auto* list = qobject_cast<QAbstractProxyModel*>(Find<QTreeView>("mappedTreeView")->model());
        return *qobject_cast<MappedDeviceModel*>(list->sourceModel());
    }
    [[nodiscard]] ArtNetNodeModel& Nodes() const
    {
        return *qobject_cast<ArtNetNodeModel*>(Find<QTreeView>("artNetNodes")->model());
    }
    void Select(const Rows& rows) const
    {
        const WeftMapEditorScene::SelectionBatch batch(Scene());
        Scene().UnSelectAll();
        for (const int row : rows)
            Scene().SetSelected(Scene().AllIds().at(static_cast<std::size_t>(row)), true);
    }
    QWidget* Focus(const char* field) const
    {
        auto* widget = Find<QWidget>(field);
        QApplication::setActiveWindow(window.get()); // What closed took the keyboard with it.
        View().setFocus();
        widget->setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(widget->hasFocus()) << field;
        return widget;
    }
    void Keys(const char* field, const char* text, int key = Qt::Key_Return) const
    {
        QWidget* widget = Focus(field);
        QTest::keyClicks(widget, QLatin1String(text));
        QTest::keyClick(widget, static_cast<Qt::Key>(key));
    }
    /// What a field shows.
    [[nodiscard]] QString Text(const char* field) const
    {
        if (const auto* box = window->findChild<QAbstractSpinBox*>(QLatin1String(field)))
            return box->text();
        if (const auto* box = window->findChild<QCheckBox*>(QLatin1String(field)))
            return box->checkState() == Qt::PartiallyChecked ? "Mixed"_q
                                                             : QString::number(box->isChecked());
        return Find<QLineEdit>(field)->text();
    }
    /// What an element has for a field: lengths in pixels of the canvas, which has 100 x 100, as
    /// far as a float keeps them.
    [[nodiscard]] QString Value(int row, const char* field) const
    {
        const MappedLedItem& element = *Document().GetElement(row);
        const VideoMapping& video = *element.GetVideoMapping();
        const DMXMappingArtNet& address = *element.GetArtNetMapping();
        const std::map<std::string, double> numbers = {
            {X, 100.0 * (video.centerX - video.width / 2)},
            {Y, 100.0 * (video.centerY - video.height / 2)},
            {Width, 100.0 * video.width},
            {Height, 100.0 * video.height},
            {Rotation, video.rotation},
            {FlipH, video.flipHorizontal},
            {FlipV, video.flipVertical},
            {Channel, address.GetChannel()},
            {Universe, address.GetUniverse()},
            {Subnet, address.GetSubnet()}};
        const auto found = numbers.find(field);
        return found == numbers.end() ? QString::fromStdWString(element.description)
                                      : QString::number(std::round(found->second * 1000) / 1000);
    }
    /// The elements as the file has them, and the manual nodes.
    [[nodiscard]] std::string File() const
    {
        tinyxml2::XMLDocument file;
        tinyxml2::XMLElement* root = file.NewElement("Mapping");
        file.InsertEndChild(root);
        for (int row = 0; row < PlacedFixtures(); ++row)
            Document().GetElement(row)->WriteElement(*root);
        tinyxml2::XMLPrinter text;
        file.Print(&text);
        std::string all = text.CStr();
        for (const ArtNetNodeRecord& node : Nodes().GetManualNodes())
            all += node.ip + ' ' + node.name + '\n';
        return all;
    }
    /// That `edit` is one step, which can be taken back to the byte and made again, or none when it
    /// changes nothing. It is left taken back.
    void ExpectOneStep(const std::function<void()>& edit, bool changes = true) const
    {
        const std::string before = File();
        const QString state = State();
        const QAction& undo = *Action("actionUndo");
        const bool couldUndo = undo.isEnabled();
        const QString stepBefore = undo.text();
        edit();
        const std::string after = File();
        EXPECT_EQ(after != before, changes);
        EXPECT_EQ(undo.isEnabled(), changes || couldUndo);
        EXPECT_EQ(State(), changes ? "unsaved"_q : state);
        if (!changes)
            return;
        Trigger("actionUndo");
        EXPECT_EQ(File(), before);
        EXPECT_EQ(undo.isEnabled(), couldUndo) << "more than one step";
        EXPECT_EQ(undo.text(), stepBefore);
        Trigger("actionRedo");
        EXPECT_EQ(File(), after);
        Trigger("actionUndo");
    }
};
