// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <QByteArray>
#include <QList>
#include <QModelIndex>
#include <QObject>
#include <QPersistentModelIndex>
#include <QRecursiveMutex>
#include <QSize>
#include <QString>

#include "LibTools/DiskWork.h"
#include "Model/DeviceModel.h"
#include "Model/ElementChanges.h"
#include "Model/ElementFixture.h"
#include "Model/ElementGeometry.h"
#include "Model/TakenElement.h"
#include "Model/Vector4DF.h"

class ArtNetNodeModel;
class DeviceListProxy;
class DMXMappingArtNet;
class MappedDeviceModel;
class MappedLedItem;
class MappedObjectListProxy;
class MappingFile;

namespace tinyxml2 {
class XMLDocument;
}

/// The facade of the library and the document: every change of an element goes through here and is
/// followed by a signal. Lengths are scene pixels, but for ElementMapping; the model keeps
/// fractions of the canvas. Main thread; the mutex keeps the engine from reading a half-written
/// element. Indexes are those of the document model.
class DeviceManager : public QObject
{
    Q_OBJECT

public:
    /// `path` is the user's library file. The models exist after Initialize.
    explicit DeviceManager(QString path);
    ~DeviceManager() override;

    /// Builds the models and their proxies. Always true.
    bool Initialize();

    // ---- The library and the document as wholes ------------------------------------------------

    /// Replaces the library by this file; placed elements take its numbers. False when the file
    /// can't be read: the library is then empty. A file of which something was not understood is
    /// kept under another name before the library is next saved over it.
    bool LoadLibrary(const QString& path);
    /// Merges a file into the library and saves the library. False when the save failed.
    bool MergeLibrary(const QString& path, bool force, const FixtureConflictCallback& callback,
                      const DiskWait& wait = {});
    /// Writes the library to the user's file. False, after a line in the log and
    /// librarySaveFailed(), when that failed; the old file is then whole.
    bool SaveLibrary(const DiskWait& wait = {});
    /// The user's file as it is; null when there is none.
    [[nodiscard]] QByteArray ReadLibraryFile() const;
    /// Puts such bytes back, and tells of a failure as SaveLibrary does.
    bool WriteLibraryFile(const QByteArray& bytes, const DiskWait& wait);
    /// Puts a library of these bytes in the place of the user's file and loads it. The document
    /// stays as it is: fixtures that its elements use are in the library as the elements have them,
    /// as if the document had come after it. False, with nothing changed, when the file could not
    /// be written, which is told as SaveLibrary does.
    bool ReplaceLibrary(const QByteArray& bytes, const DiskWait& wait);
    [[nodiscard]] const QString& GetLibraryPath() const { return libraryPath; }
    /// False after a save that failed: the library in memory has more than its file then.
    [[nodiscard]] bool IsLibrarySaved() const { return librarySaved_; }

    /// Reads and judges a document. The present one stays.
    [[nodiscard]] MappingFile ReadMapping(const QString& path) const;
    /// Merges the document's own fixtures into the library and takes the document, which can be
    /// read, in place of the present one.
    void LoadMapping(MappingFile file, ArtNetNodeModel& nodes);
    /// Both. False when the file can't be read, which leaves everything as it is.
    bool LoadMapping(const QString& path, ArtNetNodeModel& nodes);
    /// With `wait` as DoOnDisk takes it; it changes nothing of the document.
    SaveResult SaveMapping(const QString& path, const ArtNetNodeModel& nodes,
                           const DiskWait& wait = {});
    /// Adds what SaveMapping writes to an empty document.
    void MappingToXml(tinyxml2::XMLDocument& document, const ArtNetNodeModel& nodes) const;
    void ClearAll();
    /// Emits elementsAdded for all elements of the document, in row order.
    void CreateSceneItems();

    [[nodiscard]] DeviceModel* GetDeviceModel() const { return deviceModel.get(); }
    [[nodiscard]] MappedDeviceModel* GetMappedDeviceModel() const
    {
        return mappedDeviceModel.get();
    }
    [[nodiscard]] DeviceListProxy* GetDeviceListProxy() const { return deviceListProxy.get(); }
    [[nodiscard]] MappedObjectListProxy* GetMappedObjectListProxy() const
    {
        return mappedObjectListProxy.get();
    }
    [[nodiscard]] QRecursiveMutex& GetMutex() { return mutex; }

    // ---- Reading -------------------------------------------------------------------------------

    /// The element of a row, null when there is none.
    [[nodiscard]] MappedLedItem* GetMappedItem(const QModelIndex& index) const;
    [[nodiscard]] MappedLedItem* GetMappedItemByRow(int row) const;
    /// -1 when the index has no element.
    [[nodiscard]] std::int64_t GetUniqueID(const QModelIndex& index) const;
    /// The library's number of the element's fixture; 0, after a line in the log, without element.
    [[nodiscard]] std::int64_t GetFixtureUniqueID(const QModelIndex& index) const;

    // False, with the results untouched, when the index has no element.
    bool GetObjectCentre(const QModelIndex& index, float& x, float& y) const;
    bool GetObjectSize(const QModelIndex& index, float& width, float& height) const;
    bool GetObjectFlipState(const QModelIndex& index, bool& horizontal, bool& vertical) const;
    /// 0, after a line in the log, without element.
    [[nodiscard]] float GetObjectRotation(const QModelIndex& index) const;
    /// The address, to be read; see SetAddresses. Null, after a line in the log,
    /// without element.
    [[nodiscard]] const DMXMappingArtNet*
    GetMappedObjectArtNetMapping(const QModelIndex& index) const;

    [[nodiscard]] DeviceLedItem* GetLEDFixtureByProduct(const std::wstring& product) const;
    /// The pixels of a fixture of the library. False, after a line in the log, when it is absent.
    bool GetDeviceSize(std::int64_t fixtureID, int& width, int& height) const;
    [[nodiscard]] int GetDeviceChannelCount(std::int64_t fixtureID) const;

    void GetCanvasSize(int& width, int& height) const;
    [[nodiscard]] QSize CanvasPixels() const;
    [[nodiscard]] double ToPixelsX(double fraction) const;
    [[nodiscard]] double ToPixelsY(double fraction) const;
    /// The smallest upright rectangle round the turned one, in fractions of the canvas.
    static void GetObjectBounds(const VideoMapping& mapping, float& left, float& top, float& right,
                                float& bottom);
    /// The geometry of these elements, in their order. Ids of elements that have none are passed
    /// over.
    [[nodiscard]] std::vector<ElementMapping> GetVideoMappings(const ElementIds& ids) const;
    /// The same for addresses and descriptions, which every element has.
    [[nodiscard]] std::vector<ElementAddress> GetAddresses(const ElementIds& ids) const;
    [[nodiscard]] std::vector<ElementDescription> GetDescriptions(const ElementIds& ids) const;
    [[nodiscard]] std::vector<ElementFixture> GetFixtures(const ElementIds& ids) const;
    /// The canvas with all elements, in row order.
    [[nodiscard]] ElementGeometry::Layout GetLayout() const;

    // ---- Changing elements ---------------------------------------------------------------------
    // Each batch ends with elementsChanged and devicesChangedGeometry.

    /// Gives elements exactly this geometry. Elements that have it already and ids without element
    /// are passed over; when nothing changes, no signal comes.
    void SetVideoMappings(const std::vector<ElementMapping>& mappings);

    /// The same for addresses, with elementsPatched.
    void SetAddresses(const std::vector<ElementAddress>& addresses);
    /// The same for descriptions, with elementsRenamed.
    void SetDescriptions(const std::vector<ElementDescription>& descriptions);
    /// The same for the elements' own fixtures, with elementsRefitted.
    void SetFixtures(const std::vector<ElementFixture>& fixtures);

    // An entry without element ends these batches at once, without devicesChangedGeometry; only
    // SetObjectRotation goes on behind such an entry.

    /// Puts left top corners. `final` is true for a typed place and false for a step of a drag;
    /// each has its signal.
    void MoveObjects(const std::vector<ElementPosition>& corners, bool final);
    void SetObjectCentre(const std::vector<ElementPosition>& centres);
    void SetObjectSize(const std::vector<ElementSize>& sizes);
    /// Stores Rounding::WithinFullTurn of the angle without its fraction.
    void SetObjectRotation(const std::vector<ElementRotation>& rotations);
    void SetObjectFlipState(const std::vector<ElementFlip>& flips);
    /// Puts centres and sizes, with the left top corner on a whole pixel.
    void SetObjectRects(const std::vector<ElementRect>& rects);

    void MoveObject(const QModelIndex& index, double x, double y, bool final);
    void SetObjectCentre(const QModelIndex& index, double x, double y);
    void SetObjectSize(const QModelIndex& index, double width, double height);
    void SetObjectRotation(const QModelIndex& index, float degrees);
    void SetObjectFlipState(const QModelIndex& index, int direction, bool state);

    void SetDescription(const QModelIndex& index, const std::wstring& description);

    // ---- Changing the document -----------------------------------------------------------------

    /// Within the bounds that the document keeps. Elements follow the canvas.
    void SetCanvasSize(int width, int height);
    /// The same as an edit: with `keepPixels` elements keep place and size in pixels.
    void ResizeCanvas(int width, int height, bool keepPixels);
    /// Puts a canvas and the geometry of its elements back, exactly.
    void SetLayout(const ElementGeometry::Layout& layout);
    /// Cuts the canvas to the box round these elements; every element keeps its size in pixels.
    void CropToSelection(const QModelIndexList& indexes);

    /// An invalid index when the fixture isn't in the library.
    QModelIndex AddMappedObject(const MappedObjectParams& params);
    /// Adds elements that have no extent yet: ApplyObjectParams is the next step. A record whose
    /// fixture isn't in the library is passed over.
    std::vector<AddedElement> AddMappedObjects(const std::vector<MappedObjectParams>& records);
    /// Size and centre of the record, no rotation, no flips. An element that is gone is passed
    /// over.
    void ApplyObjectParams(const QModelIndex& index, const MappedObjectParams& params);
    void ApplyObjectParams(const std::vector<AddedElement>& elements);
    /// Adds elements that were made elsewhere; the document owns them then. One without a number,
    /// or with that of another element, gets the next one.
    QList<QModelIndex> AddMappedItems(std::vector<std::unique_ptr<MappedLedItem>> items);
    void RemoveMappedObjects(const QList<qint64>& uniqueIDs);
    /// Takes elements out of the document; the caller owns them. Ids without element are passed
    /// over.
    [[nodiscard]] TakenElements TakeElements(const ElementIds& ids);
    /// The inverse, for a document that is as TakeElements left it: the same elements in the same
    /// rows, with their numbers and their own copies of their fixtures.
    void PutBackElements(TakenElements elements);

    /// Adds a fixture to the library under a number of its own; elements of its product are of it
    /// then. False, with nothing changed, when the library has a fixture of this product.
    bool AddFixture(const LEDFixture& fixture);
    /// The same for several, with one walk over the elements. How many were added.
    std::size_t AddFixtures(const std::vector<LEDFixture>& fixtures);
    /// Gives a fixture of the library this definition, and the elements that use it follow, which
    /// keep place, size and address. The fixture keeps its number. Another fixture of the wanted
    /// product goes, and its elements come to this one. False, with nothing changed, for an unknown
    /// number.
    bool ChangeFixture(std::int64_t fixtureID, const LEDFixture& wanted);
    /// Takes a fixture out of the library, by its index in the library's proxy. False for what is
    /// no fixture. Whether the document uses it is the caller's question. When the row was left by
    /// an overwritten fixture, only the row goes: the definition that replaced it stays.
    bool RemoveFixture(const QModelIndex& proxyIndex);

    /// Sets documentDirty and emits signalDocumentSavedState.
    void SetDocumentDirty(bool dirty);

    int selectionMode = 0; ///< 0 no mark of the selection on the output, 1 solid, 2 flashing
    bool documentDirty = false;

signals:
    void mappingsChanged();
    void deviceChangeGeometry(int64_t uniqueID, Zen::Vector4DF geometry);
    void deviceUpdatedGeometry(int64_t uniqueID, Zen::Vector4DF geometry);
    void deviceChangeCentreX(int64_t uniqueID, float centreX);
    void deviceChangeCentreY(int64_t uniqueID, float centreY);
    void deviceChangeCentreXY(int64_t uniqueID, float centreX, float centreY);
    void deviceChangeMapSize(int64_t uniqueID, float width, float height);
    void deviceChangeRotation(int64_t uniqueID, float anglePosition);
    void deviceChangeFlip(int64_t uniqueID, int flipDirection, bool state);
    /// The elements are in the document.
    void elementsAdded(const ElementIds& ids);
    /// The elements are still in the document. Some ids may have no element.
    void elementsAboutToBeRemoved(const ElementIds& ids);
    /// Once for each batch: the geometry of these elements has changed.
    void elementsChanged(const ElementIds& ids);
    /// Once for each batch: these elements are sent elsewhere.
    void elementsPatched(const ElementIds& ids);
    /// Once for each batch: these elements have other descriptions.
    void elementsRenamed(const ElementIds& ids);
    /// Once for each change of a fixture: these elements have its new names, pixels and channels.
    void elementsRefitted(const ElementIds& ids);
    void changeCanvasSize(int width, int height);
    void changeFilteringMode(int filtermode);
    void devicesChangedGeometry();
    void signalDocumentSavedState(bool saved);
    /// The library could not be written, for this reason; what the user changed lives only until
    /// the end of the run.
    void librarySaveFailed(const QString& path, const QString& reason);
    /// The user's file has the library again.
    void librarySaved();
    /// The library's file held something that we could not read: a copy of it is at `path`.
    void libraryKeptAside(const QString& path);

private:
    enum class LibraryRead
    {
        Whole,
        Partly,
        NotAtAll
    };

    enum class MissingElement
    {
        EndsTheBatch,
        IsPassedOver
    };

    [[nodiscard]] SaveResult KeepUnreadLibrary();
    bool TellSaved(const SaveResult& saved);
    void KeepFixturesOfDocument();
    /// After the library changed: elements take its numbers, and its definitions.
    void FollowLibrary();
    bool TellRefitted(const ElementIds& changed);
    template <class Entry, class Change, class Tell>
    void ChangeEach(const std::vector<Entry>& entries, MissingElement missing, const Change& change,
                    const Tell& tell);
    template <class Entry, class Read>
    [[nodiscard]] std::vector<Entry> ReadEach(const ElementIds& ids, const Read& read) const;
    void TellAdded(const QModelIndexList& indexes);
    void WriteMappings(const std::vector<ElementMapping>& mappings, bool canvasChanged);
    void TellCentre(std::int64_t uniqueID, double x, double y);

    mutable QRecursiveMutex mutex;
    QString libraryPath;
    bool librarySaved_ = true;
    LibraryRead libraryRead_ = LibraryRead::Whole; ///< how much of the file at libraryPath we know
    int canvasWidth = 100;
    int canvasHeight = 100;
    // The proxies go before the models that they show.
    std::unique_ptr<DeviceModel> deviceModel;
    std::unique_ptr<MappedDeviceModel> mappedDeviceModel;
    std::unique_ptr<DeviceListProxy> deviceListProxy;
    std::unique_ptr<MappedObjectListProxy> mappedObjectListProxy;
};
