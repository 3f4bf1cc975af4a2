// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

#include <QList>
#include <QMap>
#include <QStandardItemModel>

#include "LibTools/DiskWork.h"
#include "LibTools/SaveResult.h"
#include "Model/DeviceLedItem.h"
#include "Settings/Observable.h"

namespace tinyxml2 {
class XMLDocument;
class XMLNode;
} // namespace tinyxml2
class XmlFile;

/// The answer to a fixture that differs from the library's fixture of the same product.
enum FixtureConflictAnswer : int
{
    OverwriteFixture = 0,
    KeepFixture = 1,
    StopMerge = 2
};

/// Asked with the manufacturer and the product of the new fixture; gives a FixtureConflictAnswer.
/// Any other number counts as StopMerge.
using FixtureConflictCallback = std::function<int(const QString&, const QString&)>;

/// The fixture library: a tree of manufacturers with their fixtures. The Qt items own the fixtures;
/// all other containers only point to them. The product is a fixture's key: two manufacturers can't
/// both have a product of one name. Main thread only.
class DeviceModel : public QStandardItemModel, public QList<DeviceLedItem*>, public Observable
{
    Q_OBJECT

public:
    static constexpr int ColumnCount = 9;
    enum Column
    {
        NameColumn = 0, ///< the manufacturer, and of a fixture the product, for the tree
        ProductColumn = 1,
        SizeColumn = 2,
        ItemColumn = 3,
        ChannelsColumn = 4,
        IdentifierColumn = 7
    };

    explicit DeviceModel(QObject* parent = nullptr);
    ~DeviceModel() override;

    /// Answers when the caller of an operation below gives no callback: the window asks the
    /// operator here, a test sets its answer. While it is empty, the library's own fixture stays.
    static FixtureConflictCallback defaultConflictCallback;

    /// Removes all fixtures and starts their numbers from 1 again; the version and the columns
    /// stay.
    void Clear();

    /// Adds the fixtures of a library or document file. Without `force` a file whose version isn't
    /// above the library's is ignored. What can't be read is logged and skipped. Always 0.
    int Merge(const XmlFile& file, bool force, const FixtureConflictCallback& callback = {});
    int Merge(const std::wstring& path, bool force, const FixtureConflictCallback& callback = {});

    /// A failure leaves the old file unchanged.
    SaveResult Save(const std::wstring& path, const DiskWait& wait = {}) const;
    /// A library with the fixtures that are wanted, as Save writes one, at the end of `document`.
    void WriteLibrary(tinyxml2::XMLDocument& document,
                      const std::function<bool(const DeviceLedItem&)>& isWanted) const;
    /// Adds all fixtures to `parent`, in the order of their numbers. Always 0.
    int WriteFixtures(tinyxml2::XMLNode& parent) const;

    /// Whether the last merge understood all of its file. What it did not understand is lost when
    /// the library is saved over that file.
    [[nodiscard]] bool WasReadWhole() const { return readWhole_; }

    /// 0: the library has taken the item and owns it. KeepFixture: the item is a duplicate, or was
    /// refused. StopMerge: the merge is to end. In the last two cases the caller keeps the item.
    /// An item without a number gets the next one.
    int AddFixture(std::unique_ptr<DeviceLedItem>&& item,
                   const FixtureConflictCallback& callback = {});

    /// Takes the next number, which no fixture gets again before Clear.
    [[nodiscard]] std::int64_t GetNextUniqueID() { return ++nextUniqueID; }
    /// Null, after a line in the log, when there is none.
    [[nodiscard]] DeviceLedItem* GetLEDFixture(std::int64_t uniqueID) const;
    /// The first in the order of numbers, null when there is none.
    [[nodiscard]] DeviceLedItem* GetLEDFixtureByProduct(const std::wstring& product) const;
    /// The distinct manufacturers, sorted.
    [[nodiscard]] QStringList GetManufacturers() const;

    /// Gives a fixture this definition. It keeps its number, and its row comes under its
    /// manufacturer; rows that were left when it overwrote others go, as do manufacturers without
    /// rows. It takes the place of another fixture of that product. Null, with nothing changed, for
    /// an unknown number.
    const DeviceLedItem* ChangeFixture(std::int64_t uniqueID, const LEDFixture& wanted);

    // Both delete the fixture and the rows that were left when it overwrote others. Its own row
    // stays, without an item: the caller removes it. An unknown fixture changes nothing.
    void removeFixtureByUniqueID(std::int64_t uniqueID);
    void removeFixture(const std::wstring& manufacturer, const std::wstring& product);
    /// Takes a fixture out with its row. Of an item that another fixture has overwritten only the
    /// row goes.
    void RemoveWithRow(DeviceLedItem& item);
    /// As if the fixture had never been added: its manufacturer's row goes with its last fixture.
    void TakeBack(DeviceLedItem& item);
    /// False for an item that another fixture has overwritten; its row is still in the tree.
    [[nodiscard]] bool IsInLibrary(const DeviceLedItem& item) const
    {
        return fixtures.value(item.uniqueID, nullptr) == &item;
    }

    /// The version of the last file whose fixtures were taken, 0 before any.
    [[nodiscard]] int GetVersion() const { return version; }
    void SetVersion(int fileVersion) { version = fileVersion; }
    /// The fixtures by their numbers. An overwritten fixture's number leads to the new one, so that
    /// one fixture can have several numbers.
    [[nodiscard]] const QMap<qint64, DeviceLedItem*>& GetFixtures() const { return fixtures; }
    /// Grows with every change of a fixture.
    [[nodiscard]] std::uint64_t GetRevision() const { return revision_; }

private:
    void SetUpColumns();
    void AddRow(DeviceLedItem& item);
    QStandardItem& ManufacturerRow(const std::wstring& manufacturer);
    void TidyManufacturers();
    void MoveRow(DeviceLedItem& item);
    void NoteFirstOf(const std::wstring& product);
    void Replace(DeviceLedItem& old, DeviceLedItem& item);
    void Remove(DeviceLedItem& item);
    void Forget(DeviceLedItem& item);
    void RemoveRowsThatItOverwrote(const DeviceLedItem& item);

    std::int64_t nextUniqueID = 0;
    std::uint64_t revision_ = 1;
    QMap<qint64, DeviceLedItem*> fixtures;
    int version = 0;
    bool readWhole_ = true;
    QMap<QString, QList<QStandardItem*>> manufacturerRows;
    /// The lowest number of each product: a document of thousands of elements looks up each of them
    /// without a walk through the library.
    std::unordered_map<std::wstring, std::int64_t> firstOfProduct_;
};
