// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace tinyxml2 {
class XMLElement;
}

/// The address of an element: where its channels are sent.
class DMXMapping
{
public:
    virtual ~DMXMapping();

    /// 0 is Art-Net, the only kind there is.
    [[nodiscard]] virtual int GetMappingType() const = 0;
    /// Adds a <DMXMapping> element at the end of `parent`. Always 0.
    virtual int ToXml(tinyxml2::XMLElement& parent) const = 0;
    [[nodiscard]] virtual std::unique_ptr<DMXMapping> Clone() const = 0;

    /// "Auto" or the dotted IPv4 address of the receiving node.
    [[nodiscard]] const std::wstring& GetIpconf() const { return ipconf; }

    /// A mapping from a <DMXMapping> element; nothing, after one line in the log, when it is wrong
    /// or of an unknown kind.
    [[nodiscard]] static std::unique_ptr<DMXMapping> FromXml(const tinyxml2::XMLElement& element);

protected:
    explicit DMXMapping(std::wstring node)
        : ipconf(std::move(node))
    {}
    DMXMapping(const DMXMapping&) = default;
    DMXMapping& operator=(const DMXMapping&) = default;

    std::wstring ipconf;
};

/// The node text of an element without a node of its own: its universe is broadcast, or sent to
/// the nodes that announced it.
inline constexpr wchar_t AutoNode[] = L"Auto";

/// An Art-Net address: sub-net, universe, first channel (1-based), and the node that receives it.
/// Values are stored as given: ranges are the business of the editing widgets.
class DMXMappingArtNet final : public DMXMapping
{
public:
    DMXMappingArtNet();
    DMXMappingArtNet(std::int32_t artNetSubnet, std::int32_t artNetUniverse,
                     std::int32_t firstChannel, std::wstring node, std::wstring nodeName);

    [[nodiscard]] int GetMappingType() const override { return 0; }
    int ToXml(tinyxml2::XMLElement& parent) const override;
    [[nodiscard]] std::unique_ptr<DMXMapping> Clone() const override;

    [[nodiscard]] std::int32_t GetSubnet() const { return subnet; }
    [[nodiscard]] std::int32_t GetUniverse() const { return universe; }
    [[nodiscard]] std::int32_t GetChannel() const { return channel; }
    [[nodiscard]] const std::wstring& GetIpName() const { return ipName; }
    /// sub-net x 16 + universe, cut to the 16 bits that tables of universes use.
    [[nodiscard]] std::uint16_t GetPortAddress() const;
    /// Whether the element has no node of its own: ipconf is exactly "Auto".
    [[nodiscard]] bool IsAuto() const { return ipconf == AutoNode; }

    void SetSubnet(std::int32_t value) { subnet = value; }
    void SetUniverse(std::int32_t value) { universe = value; }
    void SetChannel(std::int32_t value) { channel = value; }
    /// Sub-net and universe, for 0 to 255.
    void SetPortAddress(std::int32_t value);
    void SetNode(std::wstring node, std::wstring nodeName);

    [[nodiscard]] bool operator==(const DMXMappingArtNet& other) const;
    /// By sub-net, then universe, then channel.
    [[nodiscard]] bool operator<(const DMXMappingArtNet& other) const;

private:
    std::int32_t subnet = 0;
    std::int32_t universe = 0;
    std::int32_t channel = 1;
    std::wstring ipName;
};
