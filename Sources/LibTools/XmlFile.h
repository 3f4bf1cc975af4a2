// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/DiskWork.h"
#include "LibTools/SaveResult.h"
#include "XmlText/XmlText.h"

#include <tinyxml2.h>

#include <QString>

#include <string>
#include <utility>

class QDir;

/// Why a file can't be read.
enum class XmlFault
{
    None,
    Missing,
    NoFile, ///< a folder, a pipe or a device
    NotPermitted,
    TooLarge, ///< above MaxXmlFileSize
    Unreadable,
    Empty,
    NoXml,
    Damaged
};
/// The fault as a sentence for the operator; empty for none.
[[nodiscard]] QString InWords(XmlFault fault);

/// Reads a file of our XML text form (see XmlText/XmlText.h for the form and its encodings) into
/// `document`, which is empty after any fault. A path that begins with a colon is a Qt resource;
/// its lines are joined without anything between them. Bytes that a growing file gains during the
/// read are left out.
[[nodiscard]] XmlFault ReadXmlFile(const std::wstring& path, tinyxml2::XMLDocument& document);

/// A file as it was at one moment, for several readers that take turns with it.
class XmlFile
{
public:
    explicit XmlFile(std::wstring path)
        : path_(std::move(path))
        , fault_(ReadXmlFile(path_, document_))
    {}

    [[nodiscard]] const std::wstring& Path() const { return path_; }
    /// The document is empty after a fault.
    [[nodiscard]] XmlFault Fault() const { return fault_; }
    [[nodiscard]] bool IsReadable() const { return fault_ == XmlFault::None; }
    [[nodiscard]] const XmlText::Document& Document() const { return document_; }

private:
    std::wstring path_;
    XmlText::Document document_;
    XmlFault fault_;
};

/// Writes `document` as UTF-16 with a byte-order mark, whole or not at all: to a temporary file in
/// the same folder, flushed to the disk and renamed over the old one, whose permissions it takes; a
/// new file has those of the user's mask. A failure leaves the old file as it was and logs the
/// reason at error level. Temporary files of saves that were interrupted an hour ago or earlier
/// (names that begin with .NAME.saving.) are removed.
SaveResult WriteXmlFile(const std::wstring& path, const tinyxml2::XMLDocument& document);

/// The same on a thread of its own, while `wait` does what can't wait for a disk. Without `wait`
/// the caller's thread writes.
SaveResult WriteXmlFile(const std::wstring& path, const tinyxml2::XMLDocument& document,
                        const DiskWait& wait);

/// The same for the bytes of a file.
SaveResult WriteWholeFile(const std::wstring& path, const std::string& bytes);

/// Removes the temporary files that interrupted saves left in a folder, where they were to become
/// files of these names (the pattern of a regular expression). No save takes an hour: a younger one
/// may be on its way.
void RemoveUnfinishedSaves(const QDir& folder, const QString& names);

/// Renames a file that can't be read to a free name beside its own, so that a new file does not
/// overwrite it, and says so in the log. The new name, empty when it can't be renamed.
[[nodiscard]] QString KeepUnreadableFile(const QString& path);
/// Copies a file that a save will replace to a free name beside its own, and says so in the log.
SaveResult KeepCopyOfFile(const QString& path);

/// A document of 20,000 elements takes some 25 MB; ten times that is no document of ours.
inline constexpr long long MaxXmlFileSize = 256LL * 1024 * 1024;
