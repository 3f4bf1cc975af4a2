// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

#include <QSettings>
#include <QString>

/// The user's settings that outlive a run. Main thread only.
class SettingsBlock
{
public:
    /// Opens the user's store and loads. A missing key replaces the defaults below: with an empty
    /// store the files are empty, the zoom is 0, and grid and snapping are on.
    SettingsBlock();

    struct WithoutStore
    {};
    /// The defaults below and no store, until Load is called.
    explicit SettingsBlock(WithoutStore) {}

    /// Loads from this store instead of the user's.
    explicit SettingsBlock(std::unique_ptr<QSettings> store);

    /// Saves.
    ~SettingsBlock();
    SettingsBlock(const SettingsBlock&) = delete;
    SettingsBlock& operator=(const SettingsBlock&) = delete;

    /// Reads all fields, from the user's store when there is none yet. Gives the store, which the
    /// block keeps. A value that is not of its key's type reads as zero, false or empty.
    QSettings* Load();

    /// Writes all fields and syncs. Does nothing without a store.
    void Save();

    /// Writes what the interface alone changes, without a sync. Null without a store.
    QSettings* SaveInterfaceKeys();

    std::unique_ptr<QSettings> settings;
    float zoomFactor = 0.5F;
    bool showGrid = true;
    std::int32_t zoomStyle = 0; ///< the zoom follows 0 the cursor, 1 the selection
    bool snapToGrid = true;
    bool nightLook = false;
    QString language; ///< as Language has codes for them, empty for that of the system
    QString visualFile = QStringLiteral(":/Resources/DemoPicture.bmp");
    QString lastFile = QStringLiteral(":/wfm/Resources/DemoMapping.wfm");
    QString lastDirectory;
    QString networkText; ///< the chosen network, as the list of networks shows it

private:
    void LoadNetworkText();
};
