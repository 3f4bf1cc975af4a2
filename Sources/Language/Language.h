// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include <QCoreApplication>
#include <QObject>
#include <QString>
#include <QTranslator>

/// The language of all that the operator reads. The sources hold the texts in English,
/// Translations/ has a file for each language. Log lines, values in files and the programs for
/// scripts stay in English. Main thread only.
class Language final : public QObject
{
    Q_OBJECT

public:
    struct Known
    {
        const char* code = nullptr; ///< of ISO 639, as the settings keep it
        const char* name = nullptr; ///< as its speakers write it, in UTF-8
    };
    /// The languages that there are texts in, English first.
    [[nodiscard]] static std::span<const Known> AllKnown();
    /// The first known one of these names ("de-AT"), which are in the order of preference; else
    /// English.
    [[nodiscard]] static QString FirstKnown(const QStringList& names);

    [[nodiscard]] static Language& Instance();

    /// From now on texts are in this language: one of AllKnown(). Anything else means the system's.
    /// Programs begin in English.
    void Use(const QString& code);

signals:
    /// What is on the screen has texts of the language before. Texts that are made for each use
    /// follow by themselves.
    void changed();

private:
    Language() = default;

    QString code_;
    QTranslator ours_;
    QTranslator ofQt_; ///< the words of Qt's own dialogs and menus
};

/// Calls `say`, which sets texts, now and whenever the language changes, as long as `owner` lives.
template <typename Say>
void InEachLanguage(const QObject* owner, Say say)
{
    say();
    QObject::connect(&Language::Instance(), &Language::changed, owner, say);
}
