// SPDX-License-Identifier: MIT
#include "PatchTool/PatchDocument.h"

#include <utility>

#include <QFileInfo>

#include "Model/MappingFile.h"
#include "Settings/FixtureLibraryPath.h"

QString PatchDocument::Load(const QString& path)
{
    const QString ofUser = FindFixtureLibrary();
    library_.Merge((QFileInfo::exists(ofUser) ? ofUser : BuiltInLibraryPath).toStdWString(), true);
    MappingFile file(path, library_);
    if (!file.IsReadable())
        return file.Fault();
    if (!file.IsWhole())
        losses_ = file.Losses();
    // The document is what counts: its elements have the fixtures with which they were saved.
    file.SettleConflictsByUse(library_);
    library_.Merge(file.File(), true, file.ConflictAnswers());
    document_.Load(std::move(file), library_, nodes_);
    return {};
}
