// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "Support/Literals.h"
#include "Support/Operator.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureEditor/WEFTCustomFixtureDialog.h"

/// A fixture whose cells start on these channels; the cells behind them are empty.
inline LEDFixture Fixture(const FixtureSize& size, const std::vector<int>& starts,
                          const StaticChannelList& constants = {})
{
    PixelMap map(size.width, size.height, size.type);
    for (int cell = 0; cell < static_cast<int>(starts.size()); ++cell)
        map.SetCell(cell % size.width, cell / size.width, starts[static_cast<std::size_t>(cell)]);
    LEDFixture fixture(L"Maker", L"Lamp", std::move(map), 1, size.channelCount);
    fixture.staticChannels = constants;
    return fixture;
}

/// The editor on a fixture, by default with two of its six pixels, a constant and free channels.
class EditorDesk : public testing::Test
{
protected:
    EditorDesk() { Open(Fixture({3, 2, PixelMapType::RGB, 12}, {1, 4}, {{12, 9}})); }
    ~EditorDesk() override { EXPECT_TRUE(person.IsDone()); }

    void Open(const LEDFixture& fixture, bool withApply = false,
              WEFTCustomFixtureDialog::NameCheck check = {})
    {
        dialog = std::make_unique<WEFTCustomFixtureDialog>(
            WEFTCustomFixtureDialog::Content{
                "Maker"_q, "Lamp"_q, FixtureLayout(fixture), {"Anolis"_q, "Maker"_q}},
            withApply, std::move(check), boxes);
        dialog->setWindowModality(Qt::NonModal); // the operator looks for boxes alone
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        grid = Find<QWidget>("pixelMapWidget");
        table = Find<QTableWidget>("personalityTable");
    }
    template <class Widget>
    [[nodiscard]] Widget* Find(const char* name) const
    {
        auto* widget = dialog->findChild<Widget*>(QLatin1String(name));
        EXPECT_TRUE(widget) << name;
        return widget;
    }
    void Click(const char* button) const
    {
        QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
    }
    [[nodiscard]] QRect CellRect(int cell) const
    {
        const FixtureSize size = dialog->GetLayout().GetSize();
        const QSize side(grid->width() / size.width, grid->height() / size.height);
        return {QPoint(cell % size.width * side.width(), cell / size.width * side.height()), side};
    }
    void Press(int cell, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mousePress(grid, button, {}, CellRect(cell).center());
    }
    void Release() const { QTest::mouseRelease(grid, Qt::LeftButton, {}, {5, 5}); }
    void MoveTo(QPoint place, Qt::MouseButtons buttons) const
    {
        QMouseEvent move(QEvent::MouseMove, place, grid->mapToGlobal(place), Qt::NoButton, buttons,
                         Qt::NoModifier);
        QApplication::sendEvent(grid, &move);
    }
    void MoveTo(int cell, Qt::MouseButtons buttons) const
    {
        MoveTo(CellRect(cell).center(), buttons);
    }
    void Keys(QWidget* widget, const std::vector<int>& keys) const
    {
        for (const int key : keys)
            QTest::keyClick(widget, static_cast<Qt::Key>(key));
    }
    /// The start channels by cell, and the values of the channels as the table shows them.
    [[nodiscard]] std::string Cells() const
    {
        QStringList cells;
        for (const int start : dialog->GetLayout().GetPixelMap().GetChannels())
            cells.append(QString::number(start));
        return cells.join(" "_q).toStdString();
    }
    [[nodiscard]] std::string Values() const
    {
        QStringList values;
        for (int row = 0; row < table->rowCount(); ++row)
            values.append(table->item(row, 1)->text());
        return values.join(" "_q).replace("Undefined*"_q, "*"_q).toStdString();
    }
    [[nodiscard]] std::string Info() const
    {
        return Find<QLabel>("cellInfo")->text().toStdString();
    }
    [[nodiscard]] std::string Spoken() const { return grid->accessibleName().toStdString(); }
    [[nodiscard]] int Next() const
    {
        const FixtureLayout& layout = dialog->GetLayout();
        EXPECT_EQ(Find<QSpinBox>("nextChannel")->value(),
                  std::min(layout.GetNextChannel(), layout.GetChannelCount()));
        return layout.GetNextChannel();
    }
    void SetNext(int channel) const { Find<QSpinBox>("nextChannel")->setValue(channel); }
    /// Opens the value of a channel and types.
    [[nodiscard]] QComboBox* EditValue(int channel, const QString& typed = {}) const
    {
        Find<QTabWidget>("settingsPeronalityTabWidget")->setCurrentIndex(1);
        table->setFocus();
        table->setCurrentCell(channel - 1, 1);
        QTest::keyClick(table, Qt::Key_Return);
        auto* editor = table->viewport()->findChild<QComboBox*>();
        if (editor)
            QTest::keyClicks(editor, typed);
        return editor;
    }

    WidgetBoxes boxes;
    Support::Operator person;
    std::unique_ptr<WEFTCustomFixtureDialog> dialog;
    QWidget* grid = nullptr;
    QTableWidget* table = nullptr;
};
