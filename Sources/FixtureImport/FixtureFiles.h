// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QHash>
#include <QString>
#include <QStringList>

#include "FixtureImport/ImportedFixture.h"

namespace FixtureImport {

/// The largest file that is read: a hundred times any real definition.
inline constexpr qint64 MaxDefinitionFileSize = 8LL * 1024 * 1024;

/// The fixture files (.wfl, .json, .qxf) among these paths, folders with all that is in them, each
/// file once and those of a folder in the order of their names. Links to folders are not followed,
/// so there is no circle. A path that is no folder is listed whatever its name is. `goesOn` is
/// asked for each file with the number found so far; when it says no, the search ends at once with
/// an empty list.
[[nodiscard]] QStringList FindFixtureFiles(const QStringList& paths,
                                           const std::function<bool(int found)>& goesOn = {});

/// Reads fixture files one by one. An object for each thread; what Read gives are values that any
/// thread may have. It opens files and nothing else.
class FixtureFileReader
{
public:
    /// Everything in one file, or why there is nothing. A library is known by its name, any other
    /// kind of file by its content.
    [[nodiscard]] ImportedFile Read(const QString& path);

private:
    [[nodiscard]] ImportedFile ReadAsItStands(const QString& path);
    [[nodiscard]] ImportedFile ReadLibrary(ImportedFile file) const;
    [[nodiscard]] ImportedFile ReadOpenFixtureAt(ImportedFile file, const QByteArray& json);
    [[nodiscard]] QString ManufacturerOf(const QString& path, const QString& key);

    /// The names of the manufacturers of a folder of the Open Fixture Library by their keys, from
    /// its manufacturers.json.
    [[nodiscard]] const QHash<QString, QString>& ManufacturersIn(const QString& folder);

    QHash<QString, QHash<QString, QString>> manufacturers_; ///< by folder
};

} // namespace FixtureImport
