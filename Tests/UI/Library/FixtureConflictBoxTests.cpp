// SPDX-License-Identifier: MIT
#include "UI/Library/FixtureConflictBox.h"

#include "UI/Dialogs/OperatorBoxes.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

WidgetBoxes boxes;

/// Runs `ask`, and `act` on the box as soon as it stands. The answer.
int Answer(const std::function<int()>& ask, const std::function<void(QMessageBox&)>& act)
{
    QTimer onceOpen;
    QObject::connect(&onceOpen, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        onceOpen.stop();
        act(*box);
    });
    onceOpen.start(5);
    return ask();
}

QStringList Texts(const QMessageBox& box)
{
    QStringList texts;
    for (const QAbstractButton* button : box.buttons())
        texts.append(button->text());
    return texts;
}

void Press(QMessageBox& box, const QString& text)
{
    for (QAbstractButton* button : box.buttons()) {
        if (button->text() == text)
            return button->click();
    }
    FAIL() << "no such button";
}

} // namespace

TEST(FixtureConflictBox, AsksAboutAFixtureOfADocument)
{
    const auto ask = [] {
        return AskAboutDocumentFixture(boxes, QStringLiteral("Kinetix"),
                                       QStringLiteral("%2 & Söhne"));
    };
    const QString yes = QStringLiteral("Yes, use the fixture from the mapping file");
    const QString no = QStringLiteral("No, use the original fixture from the library");
    EXPECT_EQ(Answer(ask,
                     [&](QMessageBox& box) {
                         EXPECT_EQ(box.windowTitle(), QStringLiteral("Fixture conflict"));
                         EXPECT_EQ(box.icon(), QMessageBox::Information);
                         EXPECT_EQ(box.text(),
                                   QStringLiteral("The fixture \"Kinetix %2 & Söhne\" stored in "
                                                  "the mapping file is different to the one in "
                                                  "your library.\n\nDo you want to overwrite the "
                                                  "library fixture ?"));
                         EXPECT_EQ(Texts(box), QStringList({yes, no}));
                         EXPECT_EQ(box.defaultButton()->text(), yes);
                         EXPECT_EQ(box.parentWidget(), nullptr);
                         QTest::keyClick(&box, Qt::Key_Escape);
                         box.close();
                         EXPECT_TRUE(box.isVisible()) << "Escape is no answer";
                         QTest::keyClick(&box, Qt::Key_Return);
                     }),
              0);
    EXPECT_EQ(Answer(ask, [&](QMessageBox& box) { Press(box, no); }), 1);
}

TEST(FixtureConflictBox, AsksAboutAnUpdateOfTheLibrary)
{
    const auto ask = [] {
        return AskAboutLibraryUpdate(boxes);
    };
    const QStringList answers = {QStringLiteral("Overwrite"), QStringLiteral("Skip"),
                                 QStringLiteral("Cancel")};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Answer(ask,
                         [&](QMessageBox& box) {
                             EXPECT_EQ(box.windowTitle(), QStringLiteral("Fixture conflict"));
                             EXPECT_EQ(box.text(),
                                       QStringLiteral("Conflict occured while updating your "
                                                      "library.\n\nDo you want to overwrite the "
                                                      "local library fixture ?"));
                             EXPECT_EQ(Texts(box), answers);
                             EXPECT_EQ(box.defaultButton()->text(), answers[0]);
                             Press(box, answers[i]);
                         }),
                  i);
}
