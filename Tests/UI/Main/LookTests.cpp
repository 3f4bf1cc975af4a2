// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cmath>

#include "Language/Language.h"
#include "UI/Dialogs/LEDDialogDMXUniverseMerging.h"
#include "UI/Dialogs/LEDDialogManualNode.h"
#include "UI/Dialogs/LedDialogAddIPrange.h"
#include "UI/FixtureImport/ImportFixturesDialog.h"
#include "UI/Main/Desk.h"
#include "UI/Widgets/DeskLook.h"

namespace {

/// As the eye takes it, 0 for black to 1 for white.
double Luminance(const QColor& colour)
{
    const auto linear = [](double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other)
{
    const double a = Luminance(one) + 0.05;
    const double b = Luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

/// The contrast between the colour that covers most of a widget and the one that differs most from
/// it, which is its text.
double ContrastOf(QWidget& widget)
{
    const QImage picture = widget.grab().toImage();
    QMap<double, int> lights;
    for (int y = 2; y < picture.height() - 2; ++y) {
        for (int x = 2; x < picture.width() - 2; ++x)
            ++lights[Luminance(picture.pixelColor(x, y)) + 0.05];
    }
    const double ground = std::max_element(lights.cbegin(), lights.cend()).key();
    return std::max(lights.lastKey() / ground, ground / lights.firstKey());
}

/// The mnemonics that lead to more than one of these texts.
std::string Ambiguous(const QStringList& texts)
{
    QString letters;
    QString twice;
    for (const QString& text : texts) {
        const auto mark = text.indexOf(QLatin1Char('&'));
        if (mark < 0)
            continue;
        const QChar letter = text[mark + 1].toLower();
        (letters.contains(letter) ? twice : letters) += letter;
    }
    return twice.toStdString();
}

/// What leads to a field or presses a button.
QStringList MarkedTexts(const QWidget& parent)
{
    QStringList texts;
    for (const auto* button : parent.findChildren<QAbstractButton*>())
        texts << button->text();
    for (const auto* label : parent.findChildren<QLabel*>())
        texts << (label->buddy() ? label->text() : QString());
    return texts;
}

constexpr double Legible = 4.5;

/// The dialog is within the screen, its buttons are in sight, and its texts can be read and are not
/// clipped.
void ExpectInOrder(QDialog& dialog)
{
    SCOPED_TRACE(dialog.objectName().toStdString());
    const QSize screen = dialog.screen()->availableSize();
    EXPECT_TRUE(dialog.size().boundedTo(screen) == dialog.size());
    for (auto* buttons : dialog.findChildren<QDialogButtonBox*>())
        EXPECT_FALSE(QRegion(buttons->rect()) != buttons->visibleRegion());
    EXPECT_EQ(Ambiguous(MarkedTexts(dialog)), "");
    for (auto* widget : dialog.findChildren<QWidget*>()) {
        const std::string name = widget->objectName().toStdString();
        const auto* label = qobject_cast<QLabel*>(widget);
        if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
            EXPECT_GT(field->width(), field->fontMetrics().horizontalAdvance(field->text()));
        }
        if (!widget->isVisible() || !(label || qobject_cast<const QAbstractButton*>(widget)))
            continue;
        if (label && !label->text().isEmpty()) {
            EXPECT_GE(ContrastOf(*widget), Legible) << label->text().toStdString();
        }
        const QSize needed = widget->minimumSizeHint();
        EXPECT_GE(widget->width(), needed.width()) << name;
        EXPECT_GE(widget->height(), widget->hasHeightForWidth()
                                        ? widget->heightForWidth(widget->width())
                                        : needed.height())
            << name;
    }
}

using WindowLook = Desk;

using Colour = QColor Look::*;

const std::array looks = {&GreyLook(), &NightLook()};

/// Texts, and the grounds that each is written on.
const std::vector<std::pair<Colour, std::vector<Colour>>> textColours = {
    {&Look::windowText, {&Look::window}},
    {&Look::barText, {&Look::bar}},
    {&Look::listText,
     {&Look::list, &Look::listAlternate, &Look::ownerA, &Look::ownerB, &Look::ownerC,
      &Look::ownerD}},
    {&Look::fieldText, {&Look::field, &Look::buttonChosen}},
    {&Look::buttonText, {&Look::button, &Look::buttonHover, &Look::buttonChosen, &Look::list}},
    {&Look::fadedText, {&Look::faded}},
    {&Look::accentText, {&Look::accent, &Look::caution}},
    {&Look::caution, {&Look::list, &Look::listAlternate, &Look::bar, &Look::field, &Look::message}},
    {&Look::trouble, {&Look::list, &Look::listAlternate, &Look::bar, &Look::field, &Look::message}},
    {&Look::mixedText, {&Look::mixed}},
    {&Look::cellFigure, {&Look::cellMapped, &Look::cellEmpty}},
};

struct Faded
{
    Colour text;
    Colour faded;
    Colour ground;
};
const std::array fadedTexts = {
    Faded{&Look::windowText, &Look::windowTextFaded, &Look::window},
    Faded{&Look::barText, &Look::barTextFaded, &Look::bar},
    Faded{&Look::listText, &Look::listTextFaded, &Look::list},
    Faded{&Look::buttonText, &Look::fadedText, &Look::button},
};

} // namespace

TEST(LookTable, TextsCanBeReadAndWhatIsFadedDiffers)
{
    for (const Look* look : looks) {
        for (const auto& [text, grounds] : textColours) {
            for (const Colour ground : grounds) {
                EXPECT_GE(Contrast(look->*text, look->*ground), Legible)
                    << (look->*text).name().toStdString() << " on "
                    << (look->*ground).name().toStdString();
            }
        }
        for (const Faded& each : fadedTexts) {
            const double faded = Contrast(look->*each.faded, look->*each.ground);
            EXPECT_GE(faded, 2.0) << (look->*each.faded).name().toStdString();
            EXPECT_GE(Contrast(look->*each.text, look->*each.ground), 1.3 * faded)
                << (look->*each.faded).name().toStdString();
        }
    }
}

TEST_F(WindowLook, DialogsAreLegibleInALargeFontAndFitTheScreen)
{
    const auto usual = qScopeGuard([font = QApplication::font()] {
        UseLook(GreyLook());
        Language::Instance().Use("en"_q);
        QApplication::setFont(font);
    });
    QApplication::setFont(QFont("DejaVu Sans"_q, 14));
    StartWith(Element({0.5, 0.5}, {0.18, 0.1}));
    Trigger("actionSelect_All");
    const auto look = [](QDialog& dialog) {
        ExpectInOrder(dialog);
        dialog.reject();
    };
    for (const bool night : {false, true}) {
        UseLook(night ? NightLook() : GreyLook());
        Language::Instance().Use(night ? "de"_q : "en"_q);
        for (const auto* menu : window->findChildren<QMenu*>()) {
            QStringList texts;
            for (const QAction* action : menu->actions())
                texts << action->text();
            EXPECT_EQ(Ambiguous(texts), "") << menu->title().toStdString();
        }
        for (const char* action :
             {"actionCanvas_Size", "actionPreferences", "actionAbout", "actionDuplicate_Element",
              "actionMergerSettings", "actionVersions", "actionExport_Patch", "actionRepatch"})
        {
            person.Will(look);
            Trigger(action);
            ASSERT_TRUE(person.IsDone()) << action;
        }
        Trigger("actionIdentify");
        ExpectInOrder(*Find<QDialog>("identifyPanel"));
        Trigger("actionIdentify");
        person.Will([](QDialog& dialog) {
            ExpectInOrder(dialog);
            dialog.accept();
        });
        person.Will(look); // the editor
        Find<QPushButton>("buttonCustomFixture")->click();
        LedDialogAddIPrange range(window.get());
        range.SetUpForEdit("222.222.222.222"_q);
        LEDDialogDMXUniverseMerging merging({}, "192.168.123.123"_q, L"ALL", true, window.get());
        LEDDialogManualNode node(
            boxes, [](const QString&) { return QString(); }, window.get());
        node.SetUpForEdit("Left of the stage"_q, "222.222.222.222"_q, "222.255.255.255"_q);
        ImportFixturesDialog import({}, boxes, window.get());
        for (QDialog* dialog : std::initializer_list<QDialog*>{&range, &merging, &node, &import}) {
            dialog->show();
            ExpectInOrder(*dialog);
        }
    }
}

TEST_F(WindowLook, NightComesAtOnceAndIsRemembered)
{
    // What covers most of each part of the window.
    const auto brightest = [this] {
        double most = 0;
        for (const char* name : {"menubar", "toolBar", "treeView", "mappedTreeView", "statusbar",
                                 "objectInspectorPannel", "mappingEditorView", "zoomCombo"})
        {
            const QImage part = Find<QWidget>(name)->grab(QRect(0, 0, 8, 8)).toImage();
            most = std::max(most, Luminance(part.pixelColor(4, 4)));
        }
        return most;
    };
    Start();
    EXPECT_GT(brightest(), 0.2);
    Trigger("actionNight_Look");
    EXPECT_LT(brightest(), 0.02);
    EXPECT_TRUE(Kept("nightLook").toBool());
    UseLook(GreyLook());
    Start();
    EXPECT_LT(brightest(), 0.02);
    EXPECT_TRUE(Action("actionNight_Look")->isChecked());
    Trigger("actionNight_Look");
    EXPECT_GT(brightest(), 0.2);
}

TEST_F(WindowLook, TheWindowIsLegibleOnASmallScreenAndNamesWhatAPersonUses)
{
    StartWith(Element({0.5, 0.5}, {0.1, 0.1}));
    window->resize(1024, 600);
    for (const QString& language : {"de"_q, "en"_q}) {
        Language::Instance().Use(language);
        const QSize least = window->minimumSizeHint();
        EXPECT_TRUE(least.width() <= 1024 && least.height() <= 600) << language.toStdString();
        // The keys of the menus and of the inspector work in the tool window, too.
        QStringList texts = MarkedTexts(*Find<QWidget>("inspectorForm")) +
                            MarkedTexts(*Find<QDialog>("identifyPanel"));
        for (const QAction* menu : window->menuBar()->actions())
            texts << menu->text();
        EXPECT_EQ(Ambiguous(texts), "") << language.toStdString();
    }
    for (const char* name : {"treeView", "mappedTreeView", "artNetNodes", "buttonDeleteFixture",
                             "zoomCombo", "networkCombo", "senderCombo"})
    {
        const auto* widget = Find<QWidget>(name);
        const QRect place(widget->mapTo(window.get(), QPoint()), widget->size());
        EXPECT_TRUE(window->rect().contains(place)) << name;
        EXPECT_GE(widget->height(), widget->fontMetrics().height() + 4) << name;
    }
    for (const char* name : {"treeView", "mappedTreeView", "menubar", "networkCombo", "zoomCombo",
                             "buttonCustomFixture", "dockWidgetArtNetNodes"})
        EXPECT_GE(ContrastOf(*Find<QWidget>(name)), Legible) << name;
    Trigger("actionSelect_All"); // for the fields of the inspector
    for (const auto* widget : window->findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        if (widget->focusPolicy() & Qt::TabFocus && widget->isVisible() && !name.isEmpty() &&
            !name.startsWith("qt_"_q))
        {
            EXPECT_FALSE(widget->accessibleName().isEmpty() &&
                         widget->property("text").toString().isEmpty())
                << name.toStdString();
        }
    }
}
