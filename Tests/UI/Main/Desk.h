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
#include "UI/Main/WEFTMain.h"

using Support::SeenBox;

/// The program in a font of this size while it lives. Nine points is what desktops have.
class InFont
{
public:
    explicit InFont(int points)
    {
        QFont font("DejaVu Sans"_q);
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~InFont() { QApplication::setFont(before_); }
    InFont(const InFont&) = delete;
    InFont& operator=(const InFont&) = delete;

private:
    QFont before_ = QApplication::font();
};

/// A window of the program with a home of its own, driven from outside by the names of its things.
class Desk : public testing::Test
{
protected:
    Desk();
    ~Desk() override;

    /// A fixture of the library with twelve pixels in a row on its channels 1 to 36.
    static inline const QString Bar = "COLORband PiX - 36 channels"_q;

    /// Builds and shows a window; the document as it is in the home.
    void Start();
    /// Starts with a document of these elements, on the stage's network.
    void StartWith(const QString& elements, int width = 100, int height = 100);

    template <typename Type>
    [[nodiscard]] Type* Find(const char* name) const
    {
        auto* object = qobject_cast<Type*>(FindObject(name));
        EXPECT_TRUE(object) << name;
        return object;
    }
    [[nodiscard]] QAction* Action(const char* name) const { return Find<QAction>(name); }
    void Trigger(const char* name);
    /// Imports this file by the menu, with these answers to what it asks and reports.
    void Import(const QString& file, std::initializer_list<const char*> answers = {});
    /// A key as it comes from the keyboard while this widget has the focus.
    static void Type(QWidget* target, int key, Qt::KeyboardModifiers modifiers = {});

    /// "saved" or "unsaved", as the title says; empty when the title says neither.
    [[nodiscard]] QString State() const;
    [[nodiscard]] QString DocumentPath() const;
    [[nodiscard]] QString Path(const QString& name) const;
    [[nodiscard]] static QByteArray Bytes(const QString& path);
    [[nodiscard]] QByteArray DocumentBytes() const { return Bytes(DocumentPath()); }
    /// A bar of a document. Lengths are fractions of the canvas.
    [[nodiscard]] static QString Element(QPointF centre, QSizeF size, int rotation = 0,
                                         int universe = 0, int channel = 1,
                                         const QString& node = "Auto"_q);
    /// Writes a document; its path. `before` is text in front of the mapping.
    static QString WriteDocument(const QString& path, int width, int height,
                                 const QString& network = "2.X.X.X"_q,
                                 const QString& elements = Element({0.5, 0.5}, {0.12, 0.01}),
                                 const QString& before = QString());
    static QString WriteBytes(const QString& path, const QByteArray& bytes);
    [[nodiscard]] int PlacedFixtures() const;
    [[nodiscard]] int CanvasWidth();
    void SetCanvasWidth(int width);
    /// Makes the document unsaved, as any edit does.
    void Edit() { SetCanvasWidth(101); }
    /// What the user's settings keep.
    [[nodiscard]] static QVariant Kept(const char* key);

    Support::TemporaryFolder home;
    WidgetBoxes boxes;
    Support::Operator person;
    std::unique_ptr<WEFTMain> window;

private:
    [[nodiscard]] QObject* FindObject(const char* name) const;
};
