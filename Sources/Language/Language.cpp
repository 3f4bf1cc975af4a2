// SPDX-License-Identifier: MIT
#include "Language/Language.h"

#include <algorithm>
#include <array>

#include <QLocale>

#include "LibTools/Qt5And6.h"

// Of a static library: the macro needs the global namespace.
static void InitResources()
{
    Q_INIT_RESOURCE(translations);
}

namespace {

constexpr std::array<Language::Known, 2> known = {{{"en", "English"}, {"de", "Deutsch"}}};

/// Qt puts these on the buttons of our boxes, and has no words for them in another language where
/// its own translations are not installed.
[[maybe_unused]] constexpr std::array buttonsOfQt = {
    QT_TRANSLATE_NOOP("QPlatformTheme", "OK"),    QT_TRANSLATE_NOOP("QPlatformTheme", "Cancel"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "&Yes"),  QT_TRANSLATE_NOOP("QPlatformTheme", "&No"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Save"),  QT_TRANSLATE_NOOP("QPlatformTheme", "Discard"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Apply"), QT_TRANSLATE_NOOP("QPlatformTheme", "Close"),
    QT_TRANSLATE_NOOP("QShortcut", "Ctrl"),       QT_TRANSLATE_NOOP("QShortcut", "Shift"),
    QT_TRANSLATE_NOOP("QShortcut", "Backspace"),  QT_TRANSLATE_NOOP("QShortcut", "Return")};

bool IsKnown(const QString& code)
{
    return std::ranges::any_of(known, [&code](const Language::Known& language) {
        return code == QLatin1String(language.code);
    });
}

/// Every program begins in English, with the plural forms of the texts.
void BeginInEnglish()
{
    InitResources();
    Language::Instance().Use(QLatin1String(known.front().code));
}
Q_COREAPP_STARTUP_FUNCTION(BeginInEnglish)

/// Replaces what the translator held. One that has nothing to say is not asked.
void Load(QTranslator& translator, const QString& name, const QString& folder)
{
    QCoreApplication::removeTranslator(&translator);
    if (translator.load(name, folder))
        QCoreApplication::installTranslator(&translator);
}

} // namespace

std::span<const Language::Known> Language::AllKnown()
{
    return known;
}

QString Language::FirstKnown(const QStringList& names)
{
    for (const QString& name : names) {
        QString code = name.section(QLatin1Char('-'), 0, 0);
        if (IsKnown(code))
            return code;
    }
    return QLatin1String(known.front().code);
}

Language& Language::Instance()
{
    static Language instance;
    return instance;
}

void Language::Use(const QString& code)
{
    const QString wanted = IsKnown(code) ? code : FirstKnown(QLocale::system().uiLanguages());
    if (wanted == code_)
        return;
    code_ = wanted;
    // The last one is asked first: our words for Qt's buttons come before Qt's own.
    Load(ofQt_, QStringLiteral("qtbase_") + code_, Qt5And6::TranslationsPath());
    Load(ours_, QStringLiteral("pixelweft_") + code_, QStringLiteral(":/translations"));
    emit changed();
}
