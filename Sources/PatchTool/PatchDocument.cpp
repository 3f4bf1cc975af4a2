// SPDX-License-Identifier: MIT
#include "PatchTool/PatchDocument.h"

#include <utility>

#include <QFileInfo>

#include "LibTools/XmlFile.h"
#include "Model/MappingFile.h"
#include "Settings/FixtureLibraryPath.h"

QString PatchDocument::Load(const QString& path)
{
    const QString ofUser = FindFixtureLibrary();
    const XmlFile libraryFile(
        (QFileInfo::exists(ofUser) ? ofUser : BuiltInLibraryPath).toStdWString());
    library_.Merge(libraryFile, true);
    MappingFile file(path, library_);
    if (!file.IsReadable())
        return file.Fault();
    if (!file.IsWhole())
        losses_ = file.Losses();
    // The document is what counts: its elements have the fixtures with which they were saved.
    file.SettleConflictsByUse(library_);
    DeviceModel merged;
    merged.Merge(libraryFile, true);
    merged.Merge(file.File(), true, file.ConflictAnswers());
    library_.Merge(file.File(), true, [](const QString&, const QString&) { return KeepFixture; });
    document_.Load(std::move(file), merged, nodes_);
    document_.RebindFixtures(library_);
    return {};
}
