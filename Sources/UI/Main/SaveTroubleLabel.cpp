// SPDX-License-Identifier: MIT
#include "UI/Main/SaveTroubleLabel.h"

#include <array>
#include <utility>

#include <QStringList>

#include "Language/Language.h"
#include "Model/DeviceManager.h"
#include "Model/UnsavedWork.h"
#include "UI/Main/DocumentLife.h"

SaveTroubleLabel::SaveTroubleLabel(const DocumentLife& document, const DeviceManager& manager,
                                   const UnsavedWork& unsavedWork)
{
    setObjectName(QStringLiteral("saveTroubleLabel"));
    setTextFormat(Qt::PlainText);
    InEachLanguage(this, [this] {
        setAccessibleName(tr("What is not saved"));
        Show();
    });
    connect(&document, &DocumentLife::saveTrouble, this, &SaveTroubleLabel::ShowMappingTrouble);
    // An undo may come back to what is in the file.
    connect(&manager, &DeviceManager::signalDocumentSavedState, this, [this](bool saved) {
        if (saved)
            ShowMappingTrouble({});
    });
    connect(&unsavedWork, &UnsavedWork::troubleChanged, this, &SaveTroubleLabel::ShowCopyTrouble);
    connect(&manager, &DeviceManager::librarySaved, this, [this] { ShowLibraryTrouble({}); });
    connect(&manager, &DeviceManager::librarySaveFailed, this,
            [this](const QString&, const QString& reason) { ShowLibraryTrouble(reason); });
}

void SaveTroubleLabel::ShowMappingTrouble(const QString& reason)
{
    mapping_ = reason;
    Show();
}

void SaveTroubleLabel::ShowCopyTrouble(const QString& reason)
{
    copy_ = reason;
    Show();
}

void SaveTroubleLabel::ShowLibraryTrouble(const QString& reason)
{
    library_ = reason;
    Show();
}

/// The gravest in the line, all of them in the tool tip.
void SaveTroubleLabel::Show()
{
    const std::array<std::pair<QString, QString>, 3> troubles = {{
        {tr("Mapping not saved: %1"), mapping_},
        {tr("Unsaved changes not kept: %1"), copy_},
        {tr("Fixture library not saved: %1"), library_},
    }};
    QStringList lines;
    for (const auto& [words, reason] : troubles) {
        if (!reason.isEmpty())
            lines << words.arg(reason);
    }
    setText(lines.value(0));
    if (!lines.isEmpty())
        lines << tr("Save again when it can be written, or export the mapping to another place.");
    setToolTip(lines.join(QLatin1Char('\n')));
    setVisible(!lines.isEmpty());
}
