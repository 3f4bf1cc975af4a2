// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <QSettings>
#include <QStringList>
#include <QTimer>

#include "Support/TemporaryFolder.h"
#include "UI/Dialogs/OperatorBoxes.h"

class QAction;
class QDialog;
class QWidget;
class WEFTMain;

/// What was to be read in a box, and what was done with it.
struct SeenBox
{
    QString title;
    QString text;
    QStringList buttons;
    QString byDefault;
    bool hasParent = false;
};

/// Stands before the screen while a box is open: answers the boxes in the order in which the
/// answers were given, and remembers what it read. A box without an answer fails the test and is
/// closed.
class Operator
{
public:
    Operator();

    /// Presses the button with this text in the next box. "Escape" presses the key.
    void WillPress(const QString& button);
    /// Does something else with the next dialog.
    void Will(std::function<void(QDialog&)> act);
    /// Chooses this file or folder in the next file dialog.
    void WillChoose(const QString& file);

    [[nodiscard]] bool IsDone() const { return acts_.empty(); }
    std::vector<SeenBox> seen;

private:
    void Look();

    std::vector<std::function<void(QDialog&)>> acts_;
    QTimer timer_;
};

/// The program in a font of this size while it lives. Nine points is what desktops have.
class InFont
{
public:
    explicit InFont(int points)
    {
        QFont font(QStringLiteral("DejaVu Sans"));
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

    /// Builds and shows a window; the document as it is in the home.
    void Start();
    /// The process ends without a word.
    void Crash();

    template <typename Type>
    [[nodiscard]] Type* Find(const char* name) const
    {
        auto* found = FindObject(name);
        auto* object = qobject_cast<Type*>(found);
        EXPECT_TRUE(object) << name;
        return object;
    }
    [[nodiscard]] QAction* Action(const char* name) const;
    void Trigger(const char* name);
    /// A key as it comes from the keyboard while this widget has the focus.
    static void Type(QWidget* target, int key, Qt::KeyboardModifiers modifiers = {});

    [[nodiscard]] QString Title() const;
    [[nodiscard]] bool SaveIsPossible() const;
    [[nodiscard]] QString DocumentPath() const;
    [[nodiscard]] QString Path(const QString& name) const;
    [[nodiscard]] QByteArray DocumentBytes() const;
    /// A document with this canvas and network in the home; its path.
    QString WriteDocument(const QString& path, int width, int height,
                          const QString& network = QStringLiteral("2.X.X.X")) const;
    /// A file in the encoding of documents.
    static void WriteText(const QString& path, QString text);
    [[nodiscard]] int PlacedFixtures() const;
    [[nodiscard]] int CanvasWidth();
    /// Makes the document unsaved, as any edit does.
    void Edit();

    Support::TemporaryFolder home;
    WidgetBoxes boxes;
    Operator person;
    std::unique_ptr<WEFTMain> window;

private:
    [[nodiscard]] QObject* FindObject(const char* name) const;
};
