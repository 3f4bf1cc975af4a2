// SPDX-License-Identifier: MIT
// The count of problems, their list and their remedies, as the operator meets them.
#include "UI/Main/Desk.h"

#include <QClipboard>

namespace {

class Problems : public Desk
{
protected:
    [[nodiscard]] QTreeView& List() const { return *Find<QTreeView>("problems"); }
    [[nodiscard]] std::string Count() const
    {
        return Find<QToolButton>("statusProblems")->text().toStdString();
    }
    /// The columns of a row but the last.
    [[nodiscard]] std::string Row(int row) const
    {
        QStringList texts;
        for (int column = 0; column < 4; ++column)
            texts << List().model()->index(row, column).data().toString();
        return texts.join(" | "_q).toStdString();
    }
};

TEST_F(Problems, AreCountedListedShownAndPutRight)
{
    StartWith(Element({0.2, 0.2}, {0.12, 0.1}) + Element({0.8, 0.2}, {0.12, 0.1}, 0, 20) +
              Element({2.8, 0.7}, {0.12, 0.1}, 1) + Element({2.9, 0.8}, {0.12, 0.1}, 2));
    window->StartTimers();
    auto* count = Find<QToolButton>("statusProblems");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Count() == "3"; })) << Count();
    EXPECT_FALSE(count->icon().isNull());
    auto* dock = Find<QDockWidget>("dockWidgetProblems");
    EXPECT_FALSE(dock->isVisible());
    QTest::mouseClick(count, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&List()));
    ASSERT_EQ(List().model()->rowCount(), 3);
    EXPECT_EQ(Row(0), "Caution | Channels 20 to 36 of universe 0/0 are written by 2 elements | "
                      "Bar, Bar | 0/0");

    // Return selects the elements; Copy takes the text and no element.
    List().setCurrentIndex(List().model()->index(0, 0));
    Type(&List(), Qt::Key_Return);
    EXPECT_EQ(Scene().SelectedIds(), (ElementIds{1, 2}));
    Type(&List(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Caution: Channels 20"_q));

    // One remedy for the two of a kind; the list keeps its row when another one goes.
    List().setCurrentIndex(List().model()->index(2, 0));
    List().selectionModel()->select(List().model()->index(1, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    auto* remedy = Find<QPushButton>("remedy");
    EXPECT_EQ(remedy->text(), "&Bring onto the Canvas"_q);
    QTest::mouseClick(remedy, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Count() == "1"; })) << Count();
    List().setCurrentIndex(List().model()->index(0, 0));
    Trigger("actionUndo");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Count() == "3"; })) << Count();
    EXPECT_EQ(List().currentIndex().row(), 0);
    QTest::mouseClick(remedy, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Count() == "2"; })) << Count();
    EXPECT_EQ(Find<QLabel>("problemsSummary")->text(), "Cautions: 2"_q);
}

} // namespace
