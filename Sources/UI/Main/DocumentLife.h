// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class ArtNetNodeModel;
class DeviceManager;
class LEDEngine;
class NetworkChoice;

/// The one mapping document and its fixed file: the first document of a run, loading, saving,
/// starting empty.
class DocumentLife : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive this object.
    DocumentLife(DeviceManager& manager, LEDEngine& engine, ArtNetNodeModel& nodes,
                 NetworkChoice& network);

    void SetMappingFilePath(const QString& path) { mappingFilePath = path; }
    [[nodiscard]] const QString& GetMappingFilePath() const { return mappingFilePath; }

    /// Loads the document, or begins a new one on the first network and saves it at once.
    void LoadFirst();

    /// Loads another file into the document. False leaves an empty document.
    bool Import(const QString& path);

    /// Empties the document and loads the library anew.
    void Reset();

    /// Writes the document. A save that fails leaves the old file whole and the document unsaved,
    /// and says so through saveFailed().
    bool Save();

signals:
    /// The file was written: a host beside us reads it again.
    void FileSaved();
    void saveFailed(const QString& path);

private:
    DeviceManager& manager_;
    LEDEngine& engine_;
    ArtNetNodeModel& nodes_;
    NetworkChoice& network_;
    QString mappingFilePath;
};
