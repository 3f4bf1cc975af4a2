// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <boost/container/small_vector.hpp>

/// A node of the network, or an address that the document or the operator names. A plain value.
struct ArtNetNodeRecord
{
    using Port = std::pair<std::uint16_t, std::uint32_t>;

    std::string ip;            ///< dotted address, the key of all tables here
    std::int32_t useCount = 0; ///< how many elements send to it
    std::int32_t subnet = 0;   ///< of the element that this record stands for
    std::int32_t universe = 0; ///< of the element that this record stands for
    std::string name;
    bool manual = false;          ///< entered by the operator or read from a document
    bool mirrorsLiveNode = false; ///< made for an element whose node answers; lives for one rebuild
    /// A Port-Address and its use count for each output, in port order.
    boost::container::small_vector<Port, 4> universes;
};

/// The nodes that the operator entered, which the document's file keeps.
class ManualNodes
{
public:
    /// False when the address is known already.
    virtual bool AddManualNode(const ArtNetNodeRecord& record) = 0;
    [[nodiscard]] virtual std::vector<ArtNetNodeRecord> GetManualNodes() const = 0;

protected:
    ~ManualNodes() = default;
};
