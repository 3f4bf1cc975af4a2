// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// How the program's lists are searched: all words, in any order and as parts of words, without
// regard to case and to the accents that Unicode can take off a letter.

/// A text in the form in which it is compared.
[[nodiscard]] QString ForSearch(const QString& text);
/// The words that were typed, in that form.
[[nodiscard]] QStringList SearchWords(const QString& typed);
/// `text` comes from ForSearch. Without words it is true.
[[nodiscard]] bool HasAllWords(const QString& text, const QStringList& words);
