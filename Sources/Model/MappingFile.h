// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QMap>
#include <QString>
#include <QStringList>

#include "FixtureModel/UniverseMerging.h"
#include "LibTools/XmlFile.h"
#include "Model/ArtNetNodeRecord.h"
#include "Model/DeviceModel.h"
#include "Model/MappedLedItem.h"

/// A mapping document in a file, read and judged while another one is open: nothing of that one is
/// touched. A document that is taken from here holds no surprise any more.
class MappingFile
{
public:
    /// The widest and highest canvas of a document, in pixels.
    static constexpr std::int32_t MaxCanvasSide = 100'000;
    [[nodiscard]] static bool IsCanvasSide(std::int32_t pixels)
    {
        return pixels >= 1 && pixels <= MaxCanvasSide;
    }

    struct Header
    {
        XmlText::Pair<std::int32_t> version;
        XmlText::Pair<std::int32_t> resolution; ///< of the canvas, within its bounds
        std::wstring name;
        std::wstring network;
        bool autoUnicast = false;
        bool artSync = false;
    };

    /// Elements have their fixtures from `library`, or from the file for those that it lacks.
    MappingFile(const QString& path, const DeviceModel& library);
    ~MappingFile();
    MappingFile(MappingFile&& other) noexcept;
    MappingFile& operator=(MappingFile&& other) noexcept;

    [[nodiscard]] const QString& Path() const { return path_; }
    /// False when nothing of the document can be taken; it is empty then.
    [[nodiscard]] bool IsReadable() const { return fault_.isEmpty(); }
    /// Why it can't be read, as a sentence for the operator.
    [[nodiscard]] const QString& Fault() const { return fault_; }
    /// Whether no element and no manual node is lost.
    [[nodiscard]] bool IsWhole() const
    {
        return IsReadable() && lost_.isEmpty() && !HasLostNodes();
    }
    /// How many elements and manual nodes of how many can't be read, the first ten elements, and
    /// why.
    [[nodiscard]] QString Losses() const;

    [[nodiscard]] const XmlFile& File() const { return *file_; }
    [[nodiscard]] const Header& GetHeader() const { return header_; }
    /// Nothing when the file has none, or none that can be read.
    [[nodiscard]] const std::optional<UniverseMerging>& Merging() const { return merging_; }
    [[nodiscard]] const std::vector<ArtNetNodeRecord>& Nodes() const { return nodes_; }
    /// Asks about the file's fixtures that differ from those of `library`, now, so that nothing is
    /// left to ask when the present document is gone.
    void SettleConflicts(const DeviceModel& library);
    /// The same without a question: the definition of the file holds for the fixtures that its
    /// elements use, so that their output is as it was saved, and the library's for all others.
    void SettleConflictsByUse(const DeviceModel& library);
    /// Gives the answers again, and asks about fixtures that had none.
    [[nodiscard]] FixtureConflictCallback ConflictAnswers() const;
    /// How many elements the file has, with the lost ones.
    [[nodiscard]] std::int64_t CountElements() const { return count_; }
    /// The elements that can be read, numbered by their place in the file from 1; once.
    [[nodiscard]] std::vector<std::unique_ptr<MappedLedItem>> TakeElements()
    {
        return std::move(elements_);
    }

private:
    void Settle(const DeviceModel& library, const FixtureConflictCallback& answer);
    [[nodiscard]] QString Read(const DeviceModel& library);
    [[nodiscard]] QString ReadHeader(const tinyxml2::XMLElement& mapping);
    void ReadNodes();
    [[nodiscard]] bool HasLostNodes() const { return nodes_.size() < nodeCount_; }
    [[nodiscard]] QString LostElements() const;
    void ReadElements(const tinyxml2::XMLElement& mapping, const DeviceModel& library);

    QString path_;
    std::unique_ptr<XmlFile> file_;
    QString fault_;
    Header header_;
    std::optional<UniverseMerging> merging_;
    std::size_t nodeCount_ = 0; ///< in the file
    std::vector<ArtNetNodeRecord> nodes_;
    std::int64_t count_ = 0;
    std::vector<std::unique_ptr<MappedLedItem>> elements_;
    QStringList lost_;                   ///< a line for each
    QMap<QString, int> conflictAnswers_; ///< by product
};
