// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

#include <QByteArray>

struct PatchSheet;

/// What a patch on paper is made of, and on which paper.
struct PatchPdfOptions
{
    enum class Paper
    {
        A4,
        Letter
    };

    Paper paper = Paper::A4;
    bool layout = true;
    bool byUniverse = true;
    bool byElement = true;
};

/// The file of a patch on paper: a summary with the universes and nodes, the layout with the
/// elements' numbers, a table for each universe with its free channels, and all elements by number.
/// Black on white, in large figures, with text that can be searched. Needs a QGuiApplication, and
/// works on any thread. `mayGoOn` is called now and then with the part that is done, from 0 to 1:
/// false ends the work, and then there is no file.
[[nodiscard]] std::optional<QByteArray> PatchPdf(const PatchSheet& sheet,
                                                 const PatchPdfOptions& options,
                                                 const std::function<bool(double)>& mayGoOn);
