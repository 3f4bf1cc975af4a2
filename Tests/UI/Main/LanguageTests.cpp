// SPDX-License-Identifier: MIT
#include "Language/Language.h"
#include "UI/Main/Desk.h"

namespace {

/// All that the window and what belongs to it say to a person, by where it stands.
QMap<QString, QString> WordsOf(const QWidget& window)
{
    QMap<QString, QString> words;
    QMap<QString, int> counts;
    for (const auto* object : window.findChildren<QObject*>()) {
        // Qt's own buttons keep the names that they had first.
        if (object->inherits("QDockWidgetTitleButton") || object->parent()->inherits("QTabBar"))
            continue;
        const QString name = QLatin1String(object->metaObject()->className()) + QLatin1Char(' ') +
                             object->objectName();
        const QString place = "%1 %2"_q.arg(name).arg(++counts[name]);
        for (const char* property :
             {"text", "toolTip", "title", "windowTitle", "accessibleName", "accessibleDescription",
              "placeholderText", "specialValueText"})
            words[place + QLatin1Char(' ') + QLatin1String(property)] =
                object->property(property).toString();
        if (const auto* list = qobject_cast<const QComboBox*>(object)) {
            for (int row = 0; row < list->count(); ++row)
                words[place + " row %1"_q.arg(row)] = list->itemText(row);
        }
        const auto* header = qobject_cast<const QHeaderView*>(object);
        for (int section = 0; header && header->model() && section < header->count(); ++section)
            words[place + " section %1"_q.arg(section)] =
                header->model()->headerData(section, header->orientation()).toString();
    }
    words["title"_q] = window.windowTitle();
    return words;
}

class WindowLanguage : public Desk
{
protected:
    WindowLanguage() = default;
    ~WindowLanguage() override { Language::Instance().Use("en"_q); }

    /// Chooses a language in the preferences.
    void Choose(const char* code)
    {
        person.Will([code](QDialog& dialog) {
            auto* list = In<QComboBox>(dialog, "comboLanguage");
            list->setCurrentIndex(list->findData(QLatin1String(code)));
            dialog.accept();
        });
        Trigger("actionPreferences");
        QTest::qWait(50);
    }
    /// With an element selected and all shown, as whenever it is called.
    void StartWithOne()
    {
        WriteDocument(DocumentPath(),
                      {.network = QString(), .elements = Element({0.5, 0.5}, {0.18, 0.1})});
        Start();
        for (const char* dock : {"view_dockWidgetUniverses", "view_dockWidgetProblems"})
            Trigger(dock);
        Trigger("actionSelect_All");
        QTest::qWait(50);
    }
};

/// What differs between these, a line each.
std::string Differences(const QMap<QString, QString>& these, const QMap<QString, QString>& those)
{
    QStringList lines;
    for (auto word = these.cbegin(); word != these.cend(); ++word) {
        if (those.value(word.key()) != word.value())
            lines << "%1: \"%2\", \"%3\""_q.arg(word.key(), word.value(), those.value(word.key()));
    }
    return lines.join(QLatin1Char('\n')).toStdString();
}

} // namespace

TEST(LanguageTable, TheSystemsFirstKnownLanguageIsTaken)
{
    const std::vector<std::pair<QStringList, QString>> cases = {{{"de-AT"_q, "en"_q}, "de"_q},
                                                                {{"fr-FR"_q, "de-DE"_q}, "de"_q},
                                                                {{"en-GB"_q, "de"_q}, "en"_q},
                                                                {{"fr"_q}, "en"_q},
                                                                {{"den-CA"_q}, "en"_q},
                                                                {{"C"_q}, "en"_q},
                                                                {{}, "en"_q}};
    for (const auto& [wanted, taken] : cases)
        EXPECT_EQ(Language::FirstKnown(wanted), taken)
            << wanted.join(QLatin1Char(' ')).toStdString();
}

// What is on the screen says the same as in a window that began in the language.
TEST_F(WindowLanguage, IsChangedAtOnceInTheWholeWindowAndKept)
{
    StartWithOne();
    const auto english = WordsOf(*window);
    const QLocale locale;
    Choose("de");
    const auto german = WordsOf(*window);
    EXPECT_EQ(Find<QMenu>("menuFile")->title(), "&Datei"_q);
    EXPECT_EQ(Action("actionZoom_Fit")->toolTip(),
              "Die ganze Zeichenfläche zeigen, bei 100% (Strg+0)"_q);
    EXPECT_EQ(Kept("language").toString(), "de"_q);
    EXPECT_EQ(QLocale(), locale) << "numbers and dates are the system's";
    StartWithOne();
    EXPECT_EQ(Differences(WordsOf(*window), german), "");
    Choose("en");
    EXPECT_EQ(Differences(WordsOf(*window), english), "");
    Choose(""); // the system's, which is English here
    EXPECT_EQ(Kept("language").toString(), ""_q);
    EXPECT_EQ(Differences(WordsOf(*window), english), "");
}

TEST_F(WindowLanguage, NumbersTakeTheirFormAndBoxesTheirButtons)
{
    StartWithTwo();
    const auto elements = [this] {
        return Find<QLabel>("statusElements")->text();
    };
    EXPECT_EQ(elements(), "2 elements"_q);
    Choose("de");
    EXPECT_EQ(elements(), "2 Elemente"_q);
    Trigger("actionSelect_All");
    Trigger("actionRotate_Right_90");
    EXPECT_EQ(Action("actionUndo")->text(), "&Rückgängig: Gerät drehen"_q);
    EXPECT_TRUE(window->windowTitle().endsWith(" (nicht gespeichert)"_q));
    person.WillPress("Abbrechen"_q);
    Trigger("actionNew");
    EXPECT_EQ(person.seen.back().title, "Neues Mapping"_q);
    Choose("en");
    EXPECT_EQ(elements(), "2 elements"_q);
    EXPECT_TRUE(window->windowTitle().endsWith(" (unsaved)"_q));
}
