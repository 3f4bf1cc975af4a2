// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

#include <QList>
#include <QMap>
#include <QStandardItemModel>

#include "Model/DeviceLedItem.h"
#include "Settings/Observable.h"

namespace tinyxml2 {
class XMLNode;
}
class XmlFile;

/// The answer to a fixture that differs from the library's fixture of the same product.
enum FixtureConflictAnswer : int
{
    OverwriteFixture = 0,
    KeepFixture = 1,
    StopMerge = 2
};

/// Asked with the manufacturer and the product.
using FixtureConflictCallback = std::function<int(const QString&, const QString&)>;

/// The fixture library: a tree of manufacturers with their fixtures. The Qt items own the fixtures;
/// everything else points. In a library the product is the key, whoever the manufacturer is. Main
/// thread only.
class DeviceModel : public QStandardItemModel, public QList<DeviceLedItem*>, public Observable
{
    Q_OBJECT

public:
    static constexpr int ColumnCount = 9;
    enum Column
    {
        ManufacturerColumn = 0,
        ProductColumn = 1,
        SizeColumn = 2,
        ItemColumn = 3,
        IdentifierColumn = 7
    };

    explicit DeviceModel(QObject* parent = nullptr);
    ~DeviceModel() override;

    /// Answers where a caller of the operations below has no callback of its own: the window puts
    /// its question to the operator here, a test its answer. Without one the library stays as it
    /// is.
    static FixtureConflictCallback defaultConflictCallback;

    void Clear();

    /// Adds the fixtures of a library or document file. Without `force` a file whose version isn't
    /// above the library's is no news. What can't be read is logged and skipped. Always 0.
    int Merge(const XmlFile& file, bool force, const FixtureConflictCallback& callback = {});
    int Merge(const std::wstring& path, bool force, const FixtureConflictCallback& callback = {});

    /// 0, or 1 when the file could not be written; the old file is then whole.
    int Save(const std::wstring& path) const;
    int WriteFixtures(tinyxml2::XMLNode& parent) const;

    /// Whether the last merge understood all of its file. What it didn't is in no library, and
    /// gone when the library is saved over that file.
    [[nodiscard]] bool WasReadWhole() const { return readWhole_; }

    /// 0: the item is in the library, which owns it. 1: it is a duplicate or was not wanted. 2:
    /// stop. With 1 and 2 the item stays with the caller.
    int AddFixture(std::unique_ptr<DeviceLedItem>&& item,
                   const FixtureConflictCallback& callback = {});

    [[nodiscard]] std::int64_t GetNextUniqueID() { return ++nextUniqueID; }
    /// Null, after a line in the log, when there is none.
    [[nodiscard]] DeviceLedItem* GetLEDFixture(std::int64_t uniqueID) const;
    /// The first in the order of identifiers, null when there is none.
    [[nodiscard]] DeviceLedItem* GetLEDFixtureByProduct(const std::wstring& product) const;
    /// The distinct manufacturers, sorted.
    [[nodiscard]] QStringList GetManufacturers() const;

    // The fixture's row stays, without item; rows that were left when it overwrote others go.
    void removeFixtureByUniqueID(std::int64_t uniqueID);
    void removeFixture(const std::wstring& manufacturer, const std::wstring& product);
    /// False for the item of a row that was left when another fixture overwrote it.
    [[nodiscard]] bool IsInLibrary(const DeviceLedItem& item) const
    {
        return fixtures.value(item.uniqueID, nullptr) == &item;
    }

    [[nodiscard]] int GetVersion() const { return version; }
    [[nodiscard]] const QMap<qint64, DeviceLedItem*>& GetFixtures() const { return fixtures; }

private:
    void SetUpColumns();
    void AddRow(DeviceLedItem& item);
    void Replace(DeviceLedItem& old, DeviceLedItem& item);
    void Remove(DeviceLedItem& item);
    void Forget(DeviceLedItem& item);
    void RemoveRowsThatItOverwrote(const DeviceLedItem& item);

    std::int64_t nextUniqueID = 0;
    QMap<qint64, DeviceLedItem*> fixtures;
    int version = 0;
    bool readWhole_ = true;
    QMap<QString, QList<QStandardItem*>> manufacturerRows;
    /// The lowest identifier of each product, so that a document of thousands of elements needs no
    /// walk through the library for each.
    std::unordered_map<std::wstring, std::int64_t> firstOfProduct_;
};
