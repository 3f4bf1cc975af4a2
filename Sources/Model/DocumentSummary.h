// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include <QSize>
#include <QString>

#include "FixtureModel/VideoMapping.h"

/// What a mapping file holds, for someone who looks at it before it is imported.
struct DocumentSummary
{
    QSize canvas;                          ///< as an import would take it
    int elements = 0;                      ///< all of them, also those that an import leaves out
    std::vector<VideoMapping> places;      ///< of the elements that have one
    std::set<std::uint16_t> portAddresses; ///< of the universes that have elements
    std::map<QString, int> fixtures;       ///< how many elements each product has
    QString network;                       ///< its text, empty for none
};

/// Null for a file that can't be read or has no mapping. Keeps off all models: for any thread.
[[nodiscard]] std::shared_ptr<const DocumentSummary> ReadDocumentSummary(const QString& path);

/// The numbers from first to last without a gap.
using PortAddressRun = std::pair<std::uint16_t, std::uint16_t>;
[[nodiscard]] std::vector<PortAddressRun>
RunsOfPortAddresses(const std::set<std::uint16_t>& portAddresses);
