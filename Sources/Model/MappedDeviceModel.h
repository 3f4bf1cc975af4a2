// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QImage>
#include <QMap>
#include <QPixmap>
#include <QRecursiveMutex>
#include <QStandardItemModel>

#include "FixtureModel/UniverseMerging.h"
#include "LibTools/DiskWork.h"
#include "LibTools/SaveResult.h"
#include "LibTools/ZenBitmap.h"
#include "Model/ElementFixture.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchFaults.h"
#include "Model/TakenElement.h"

class ManualNodes;
class DeviceModel;
class MappingFile;
class SettingsBlock;

namespace tinyxml2 {
class XMLDocument;
}

/// The mapping document in memory: a table with a row for each placed element, and the document's
/// own values. The cells own the elements. A row number is the element's index in the engine.
class MappedDeviceModel : public QStandardItemModel
{
    Q_OBJECT

public:
    static constexpr int ColumnCount = 11;
    enum Column
    {
        ManufacturerColumn = 0,
        ProductColumn = 1,
        SizeColumn = 2,
        ItemColumn = 3,
        NameColumn = 5,
        IdentifierColumn = 7,
        AddressColumn = 9, ///< "0/4/97": sub-net, universe, first channel
        NodeColumn = 10    ///< the name of the node, or its address, or "Auto"
    };
    /// The widest and highest canvas, in pixels.
    static constexpr int MaxCanvasSize = 100'000;

    explicit MappedDeviceModel(QObject* parent = nullptr);
    ~MappedDeviceModel() override;

    /// Empties the table, which keeps its columns; the merger is that of a new document. Name,
    /// canvas, ways of sending and version stay.
    void Clear();

    /// Takes the document of a file that can be read in place of this one. Elements have the
    /// fixtures of `library`, and keep their own for those that it lacks.
    void Load(MappingFile file, const DeviceModel& library, ManualNodes& nodes);
    /// Makes the file's folder when it is missing. A failure leaves the old file whole.
    /// With `wait` as DoOnDisk takes it. What `wait` does to the document is not saved.
    SaveResult Save(const std::wstring& path, const DeviceModel& library, const ManualNodes& nodes,
                    const DiskWait& wait = {});
    /// Adds what Save writes to an empty document, for callers that write it elsewhere.
    void ToXml(tinyxml2::XMLDocument& document, const DeviceModel& library,
               const ManualNodes& nodes) const;

    /// Adds a row; the table owns the element. The index of its column 7.
    QModelIndex AddMappingElement(std::unique_ptr<MappedLedItem> item);
    /// The same for many, which views and proxies see as one insertion.
    QModelIndexList AddMappingElements(std::vector<std::unique_ptr<MappedLedItem>> items);
    /// False when there is no such element.
    bool RemoveMappingElement(std::int64_t uniqueID);
    /// Takes elements out, which views and proxies see as a few changes. Ids without element are
    /// passed over.
    [[nodiscard]] TakenElements TakeElements(const std::vector<std::int64_t>& ids);
    /// Puts elements back into their rows, for a table that is as TakeElements left it. A row that
    /// the table has no longer means its end.
    void PutBackElements(TakenElements taken);

    /// The element of a row, null for a row that is none.
    [[nodiscard]] MappedLedItem* GetElement(int row) const
    {
        return row >= 0 && static_cast<std::size_t>(row) < byRow_.size()
                   ? byRow_[static_cast<std::size_t>(row)]
                   : nullptr;
    }
    [[nodiscard]] MappedLedItem* GetItemByUniqueID(std::int64_t uniqueID) const;
    [[nodiscard]] MappedLedItem* GetItemByDescription(const std::wstring& description) const;
    [[nodiscard]] QList<MappedLedItem*> GetAllItems() const;
    [[nodiscard]] QModelIndex GetIndexOfUniqueID(std::int64_t uniqueID) const;
    [[nodiscard]] bool IsFixtureUsed(std::int64_t fixtureID) const;
    [[nodiscard]] std::int64_t GetNextElementID() { return ++nextElementID; }

    /// Gives the elements that have this number all that `fixture` says, its number too. The
    /// elements, in the order of their rows.
    std::vector<std::int64_t> UpdateFixtureInElements(std::int64_t fixtureID,
                                                      const LEDFixture& fixture);
    /// Gives elements such fixtures. Those that changed, in the order given; ids without element
    /// are passed over.
    std::vector<std::int64_t> GiveFixtures(const std::vector<ElementFixture>& fixtures);
    /// The fixtures of this library of which elements have another definition, by their numbers.
    [[nodiscard]] std::set<std::int64_t> GetOutdatedFixtures(const DeviceModel& library) const;
    /// After the library changed: elements take the number that their product has now, 0 for none.
    void RebindFixtures(const DeviceModel& library);
    void RebindFixture(MappedLedItem& element, const DeviceModel& library);
    void ReplaceNodeAddress(const QString& oldIpconf, const QString& newIpconf,
                            const QString& newIpName);
    /// Bring the cells of these elements up to date, as one change.
    void UpdateAddressCells(const std::vector<std::int64_t>& ids);
    void UpdateNameCells(const std::vector<std::int64_t>& ids);
    /// The addresses of nodes that answer now or need not: elements that are sent to others are in
    /// trouble. Nothing while that is unknown, and none are.
    void SetAnsweringNodes(std::optional<std::set<std::wstring>> addresses);
    /// Whether SetAnsweringNodes has told which nodes answer.
    [[nodiscard]] bool KnowsAnsweringNodes() const { return answeringNodes_.has_value(); }
    [[nodiscard]] const FaultyElements& GetPatchFaults() const { return faults_; }
    /// Grows with every change of what is sent where: of addresses, channels, the merger, and of
    /// which nodes answer.
    [[nodiscard]] std::uint64_t GetPatchRevision() const { return patchRevision_; }
    /// A universe that is broadcast and also sent to a chosen node.
    [[nodiscard]] bool IsUniverseInConflict(const QModelIndex& index) const;

    /// Of the file that was loaded last; "Untitled" of a new document.
    [[nodiscard]] const std::wstring& GetName() const { return name; }
    [[nodiscard]] int GetCanvasWidth() const { return canvasWidth; }
    [[nodiscard]] int GetCanvasHeight() const { return canvasHeight; }
    /// Each at least 1 and at most MaxCanvasSize, whatever is asked for.
    void SetCanvasSize(int width, int height);

    [[nodiscard]] const UniverseMerging& GetMerging() const { return merging; }
    void SetMerging(const UniverseMerging& wanted);
    [[nodiscard]] bool IsAutoUnicast() const { return autoUnicast; }
    void SetAutoUnicast(bool on) { autoUnicast = on; }
    /// Whether an ArtSync follows each frame.
    [[nodiscard]] bool IsArtSync() const { return artSync; }
    void SetArtSync(bool on) { artSync = on; }
    /// The network text of the file that was loaded last.
    [[nodiscard]] const std::wstring& GetNetwork() const { return network; }
    [[nodiscard]] const std::vector<std::wstring>& GetManualIPRanges() const
    {
        return manualIPRanges;
    }
    /// Where a save takes the network text from; outlives the model.
    void SetSettings(const SettingsBlock* block) { settings = block; }

    void SetTestImage(const QPixmap& picture) { SetTestImage(picture.toImage()); }
    void SetTestImage(const QImage& picture);
    /// The test picture for the engine, 4 bytes a pixel; null without a picture.
    [[nodiscard]] const ZenBitmap* GetTestBitmap() const { return testBitmap.get(); }

    /// Grows with every change that the engine's tables could depend on.
    [[nodiscard]] std::uint64_t GetRevision() const { return revision_; }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

signals:
    void mappingsChanged();
    /// What data() says of faults, in any row. No dataChanged, for which a proxy would sort all
    /// rows again, though their order never depends on faults.
    void faultsChanged();
    void EnvokeDMXDialogForUniqueID(int64_t uniqueID);

private:
    [[nodiscard]] static int CanvasSide(int wanted) { return std::clamp(wanted, 1, MaxCanvasSize); }
    void SetUpColumns();
    static void TakeFixture(MappedLedItem& element, const DeviceModel& library);
    void WriteOwnFixtures(tinyxml2::XMLElement& fixtures, const DeviceModel& library) const;
    void WriteElements(tinyxml2::XMLElement& mapping) const;
    void AddRows(std::vector<std::unique_ptr<MappedLedItem>> items, bool withSize);
    [[nodiscard]] static QList<QStandardItem*> MakeRow(std::unique_ptr<MappedLedItem> item,
                                                       bool withSize);
    void InsertElementRow(int row, const QList<QStandardItem*>& cells);
    void AppendElementRows(const std::vector<QList<QStandardItem*>>& rows);
    void GatherAtEnd(std::vector<int>& rows);
    void Rearrange(const std::vector<int>& target);
    void MoveItems(const std::vector<int>& target);
    void RecalculateConflicts();
    void SetAddressTexts(int row);
    void SetFixtureTexts(int row);
    template <class SetText>
    void UpdateCells(const std::vector<std::int64_t>& ids, const SetText& setText);
    void TellTextsChanged(const std::vector<int>& rows);

    QMap<qint64, MappedLedItem*> elements;
    std::vector<MappedLedItem*> byRow_;
    const SettingsBlock* settings = nullptr;
    std::wstring network;
    std::vector<std::wstring> manualIPRanges;
    std::int64_t nextElementID = 0;
    int versionMajor = 1;
    int versionMinor = 0;
    int canvasWidth = 100;
    int canvasHeight = 100;
    UniverseMerging merging = UniverseMerging::OfNewDocument();
    bool autoUnicast = false;
    bool artSync = false;
    std::wstring name = L"Untitled";
    /// Recursive: a view that is notified of a new row may ask for its element at once.
    mutable QRecursiveMutex mutex;
    QImage testImage;
    std::unique_ptr<ZenBitmap> testBitmap;
    std::optional<std::set<std::wstring>> answeringNodes_;
    FaultyElements faults_;
    std::uint64_t revision_ = 1;
    std::uint64_t patchRevision_ = 1;
};
