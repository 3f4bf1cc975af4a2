// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "Support/Literals.h"
#include "Support/Operator.h"
#include "Support/TemporaryFolder.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Editor/CanvasHands.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Main/WEFTMain.h"

/// A window of the program with a home of its own, driven from outside by the names of its things.
/// The hands work on its canvas.
class Desk : public testing::Test, protected CanvasHands
{
protected:
    Desk();
    ~Desk() override;

    /// A fixture of the library with twelve pixels in a row on its channels 1 to 36.
    static inline const QString Bar = "COLORband PiX - 36 channels"_q;

    /// A bar of a document. Lengths are fractions of the canvas.
    [[nodiscard]] static QString Element(QPointF centre, QSizeF size, int universe = 0,
                                         int channel = 1, const QString& node = "Auto"_q);
    struct Show
    {
        int width = 100;
        int height = 100;
        QString network = "2.X.X.X"_q;
        QString elements = Element({0.5, 0.5}, {0.12, 0.01});
        QString before = QString(); ///< text in front of the mapping
    };
    /// Writes a document into the home; its path.
    QString WriteDocument(const QString& name, const Show& show) const;
    /// Builds and shows a window; the document as it is in the home.
    void Start();
    /// Starts with a document of these elements, on the stage's network.
    void StartWith(const QString& elements);
    void StartWithTwo()
    {
        StartWith(Element({0.2, 0.2}, {0.18, 0.1}) + Element({0.6, 0.8}, {0.1, 0.18}));
    }

    template <typename Type>
    [[nodiscard]] static Type* In(const QWidget& parent, const char* name)
    {
        auto* found = parent.findChild<Type*>(QLatin1String(name));
        EXPECT_TRUE(found) << name;
        return found;
    }
    template <typename Type>
    [[nodiscard]] Type* Find(const char* name) const
    {
        return In<Type>(*window, name);
    }
    [[nodiscard]] QAction* Action(const char* name) const { return Find<QAction>(name); }
    void Trigger(const char* name) const;
    /// Chooses a picture of 100 x 100 whose halves have one colour each.
    void ChooseHalves();
    static inline const QColor LeftColour{200, 10, 20};
    static inline const QColor RightColour{30, 40, 250};
    /// Imports this file by the menu, with these answers to what it asks and reports.
    void Import(const QString& file, std::initializer_list<const char*> answers = {});
    /// A key as it comes from the keyboard while this widget has the focus.
    static void Type(QWidget* target, int key, Qt::KeyboardModifiers modifiers = {});

    /// "saved" or "unsaved", as the title says; empty when the title says neither.
    [[nodiscard]] QString State() const;
    [[nodiscard]] QString Path(const QString& name) const;
    [[nodiscard]] QString DocumentPath() const;
    [[nodiscard]] static std::string Bytes(const QString& path);
    [[nodiscard]] std::string DocumentBytes() const { return Bytes(DocumentPath()); }
    [[nodiscard]] int PlacedFixtures() const;
    [[nodiscard]] double CanvasWidth() const;
    void SetCanvasWidth(int width, bool keepPositions = true);
    /// Makes the document unsaved, as any edit does.
    void Edit() { SetCanvasWidth(101); }
    /// What the user's settings keep.
    [[nodiscard]] static QVariant Kept(const char* key);

    [[nodiscard]] WeftMapEditorView& View() const override;
    [[nodiscard]] WeftMapEditorScene& Scene() const;
    [[nodiscard]] QImage Picture() const { return View().viewport()->grab().toImage(); }
    /// The item of the element in this row of the document.
    [[nodiscard]] const MappingRectangle& Item(std::size_t row) const;
    /// Where the library's list has a product.
    [[nodiscard]] QModelIndexList LibraryRows(const QString& product) const;
    /// Drags a fixture from the library with the mouse.
    void DragFromLibrary(QPointF to, const QString& product = Bar);
    std::int64_t dropped = 0; ///< when the fixture was dropped, as Stage::WallClock gives it

    Support::TemporaryFolder home;
    WidgetBoxes boxes;
    Support::Operator person;
    std::unique_ptr<WEFTMain> window;
};
