// SPDX-License-Identifier: MIT
#include "XmlText/XmlText.h"

#include "Platform/Numbers.h"
#include "Platform/Text.h"

#include <algorithm>
#include <cstddef>

namespace XmlText {
namespace {

// tinyxml2 compares each attribute of an element with all before it. The biggest
// known element (of the host's preferences) has some dozens; a hostile one with millions would
// take hours.
constexpr int maxAttributesOfElement = 512;

std::string NormalizeLineEnds(std::string text)
{
    std::size_t to = 0;
    for (std::size_t from = 0; from < text.size(); ++from) {
        const char c = text[from];
        if (c == '\r') {
            text[to++] = '\n';
            if (from + 1 < text.size() && text[from + 1] == '\n')
                ++from;
        } else {
            text[to++] = c;
        }
    }
    text.resize(to);
    return text;
}

/// The UTF-16 units of `bytes`; half a unit at the end is dropped.
std::u16string Units(std::string_view bytes, bool bigEndian)
{
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        const unsigned unit = bigEndian ? (first * 256U + second) : (second * 256U + first);
        units[i] = static_cast<char16_t>(unit);
    }
    return units;
}

/// The position right after the markup that starts at `start` with "<!" or "<?".
std::size_t SkipSpecialMarkup(std::string_view text, std::size_t start)
{
    const std::string_view rest = text.substr(start);
    std::string_view end = ">";
    if (rest.starts_with("<!--"))
        end = "-->";
    else if (rest.starts_with("<![CDATA["))
        end = "]]>";
    else if (rest.starts_with("<?"))
        end = "?>";
    const std::size_t found = text.find(end, start + 2);
    return found == std::string_view::npos ? text.size() : found + end.size();
}

/// What one tag does to the nesting, and whether it can be left to the parser.
struct Tag
{
    bool parsable = true;
    bool closes = false;  ///< </name>
    bool isEmpty = false; ///< <name/>
};

/// Walks one tag from its "<" and moves `position` past its ">".
Tag WalkTag(std::string_view text, std::size_t& position)
{
    Tag tag;
    tag.closes = text.substr(position).starts_with("</");
    int attributes = 0;
    while (position < text.size()) {
        const char c = text[position++];
        if (c == '>') {
            tag.isEmpty = text[position - 2] == '/';
            return tag;
        }
        if (c == '=' && ++attributes > maxAttributesOfElement) {
            tag.parsable = false;
            return tag;
        }
        if (c == '"' || c == '\'')
            position = std::min(text.find(c, position), text.size() - 1) + 1;
    }
    return tag;
}

/// Checks the tags before the parser does: it would need hours for too many attributes, and it
/// stops without an error at a closing tag that nothing opened, which would hide the rest of the
/// text.
bool HasParsableTags(std::string_view text)
{
    std::size_t depth = 0;
    std::size_t position = text.find('<');
    while (position < text.size()) {
        const char next = position + 1 < text.size() ? text[position + 1] : '\0';
        if (next == '!' || next == '?') {
            position = SkipSpecialMarkup(text, position);
        } else {
            const Tag tag = WalkTag(text, position);
            if (!tag.parsable || (tag.closes && depth == 0))
                return false;
            if (tag.closes)
                --depth;
            else if (!tag.isEmpty)
                ++depth;
        }
        position = text.find('<', position);
    }
    return true;
}

/// The length of a character reference that starts `text` and may stay as it is, 0 when there is
/// none. What would end the value or open markup can't be part of one: the file could not be read
/// again.
std::size_t ReferenceLength(std::string_view text)
{
    if (!text.starts_with("&#x"))
        return 0;
    for (std::size_t i = 3; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ';')
            return i;
        if (static_cast<unsigned char>(c) < 0x20 ||
            std::string_view("&<>\"'").find(c) != std::string_view::npos)
            return 0;
    }
    return 0;
}

void AppendEscaped(std::string& out, std::string_view text)
{
    static constexpr char hexDigits[] = "0123456789ABCDEF";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto code = static_cast<unsigned char>(c);
        if (const std::size_t length = c == '&' ? ReferenceLength(text.substr(i)) : 0) {
            out += text.substr(i, length);
            i += length - 1;
        } else if (c == '&') {
            out += "&amp;";
        } else if (c == '<') {
            out += "&lt;";
        } else if (c == '>') {
            out += "&gt;";
        } else if (c == '"') {
            out += "&quot;";
        } else if (c == '\'') {
            out += "&apos;";
        } else if (code < 0x20) {
            out += {'&', '#', 'x', hexDigits[code >> 4U], hexDigits[code & 15U], ';'};
        } else {
            out += c;
        }
    }
}

void AppendIndent(std::string& out, std::size_t depth)
{
    out.append(4 * depth, ' ');
}

void AppendOpening(std::string& out, const tinyxml2::XMLElement& element)
{
    out += '<';
    out += element.Name();
    for (const auto* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next())
    {
        const std::string_view value = attribute->Value();
        const char quote = value.find('"') == std::string_view::npos ? '"' : '\'';
        out += ' ';
        out += attribute->Name();
        out += '=';
        out += quote;
        AppendEscaped(out, value);
        out += quote;
    }
}

void AppendClosing(std::string& out, const tinyxml2::XMLElement& element)
{
    out += "</";
    out += element.Name();
    out += '>';
}

/// Prints the node, with its text or without children, and its line feed. True when the node is an
/// element whose children are yet to come.
bool AppendNode(std::string& out, const tinyxml2::XMLNode& node, std::size_t depth)
{
    if (const auto* text = node.ToText()) {
        AppendIndent(out, depth);
        AppendEscaped(out, text->Value());
        out += '\n';
        return false;
    }
    if (const auto* comment = node.ToComment()) {
        AppendIndent(out, depth);
        out.append("<!--").append(comment->Value()).append("-->\n");
        return false;
    }
    const auto* element = node.ToElement();
    if (!element)
        return false; // A declaration: our files have none.

    AppendIndent(out, depth);
    AppendOpening(out, *element);
    const auto* first = element->FirstChild();
    if (!first) {
        out += " />\n";
        return false;
    }
    if (first->ToText() && !first->NextSibling()) {
        out += '>';
        AppendEscaped(out, first->Value());
        AppendClosing(out, *element);
        out += '\n';
        return false;
    }
    out += ">\n";
    return true;
}

template <typename Number, typename Parse>
std::optional<Pair<Number>> ParsePair(std::string_view text, char separator, Parse parse)
{
    const std::size_t middle = text.find(separator);
    if (middle == std::string_view::npos)
        return std::nullopt;
    const auto first = parse(text.substr(0, middle));
    const auto second = parse(text.substr(middle + 1));
    if (!first || !second)
        return std::nullopt;
    return Pair<Number>{*first, *second};
}

} // namespace

std::string Decode(std::string_view bytes)
{
    if (bytes.starts_with("\xFF\xFE"))
        return NormalizeLineEnds(Platform::Utf16ToUtf8(Units(bytes.substr(2), false)));
    if (bytes.starts_with("\xFE\xFF"))
        return NormalizeLineEnds(Platform::Utf16ToUtf8(Units(bytes.substr(2), true)));
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return NormalizeLineEnds(std::string(bytes.substr(3)));
    return NormalizeLineEnds(Platform::Latin1ToUtf8(bytes));
}

std::string Encode(std::string_view utf8)
{
    const std::u16string units = Platform::Utf8ToUtf16(utf8);
    std::string bytes = "\xFF\xFE";
    bytes.resize(2 + 2 * units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        bytes[2 + 2 * i] = static_cast<char>(units[i] & 0xFFU);
        bytes[3 + 2 * i] = static_cast<char>(units[i] >> 8U);
    }
    return bytes;
}

bool Parse(std::string_view utf8, tinyxml2::XMLDocument& document)
{
    document.Clear();
    // The parser stops at a zero byte as if the text ended there, and would hide what follows.
    if (utf8.find('\0') != std::string_view::npos || !HasParsableTags(utf8))
        return false;
    if (document.Parse(utf8.data(), utf8.size()) != tinyxml2::XML_SUCCESS) {
        document.Clear();
        return false;
    }
    for (const auto* node = document.FirstChild(); node; node = node->NextSibling()) {
        if (node->ToText()) { // Text outside of all elements: tinyxml2 lets it pass.
            document.Clear();
            return false;
        }
    }
    return true;
}

std::string Print(const tinyxml2::XMLDocument& document)
{
    std::string out;
    std::size_t depth = 0;
    const tinyxml2::XMLNode* node = document.FirstChild();
    while (node) {
        if (AppendNode(out, *node, depth)) {
            ++depth;
            node = node->FirstChild();
            continue;
        }
        while (node && !node->NextSibling()) {
            node = depth > 0 ? node->Parent() : nullptr;
            if (!node)
                break;
            --depth;
            AppendIndent(out, depth);
            AppendClosing(out, *node->ToElement());
            out += '\n';
        }
        node = node ? node->NextSibling() : nullptr;
    }
    return out;
}

std::optional<std::wstring> Attribute(const tinyxml2::XMLElement& element, const char* name)
{
    const char* value = element.Attribute(name);
    if (!value)
        return std::nullopt;
    return Platform::Utf8ToWide(value);
}

IntAttribute ReadInt(const tinyxml2::XMLElement& element, const char* name)
{
    const char* text = element.Attribute(name);
    if (!text)
        return {};
    const auto number = Platform::ParseInt(text);
    if (!number)
        return {IntAttribute::State::NoNumber, 0};
    return {IntAttribute::State::Good, *number};
}

std::string_view FirstText(const tinyxml2::XMLElement& element)
{
    const auto* first = element.FirstChild();
    const auto* text = first ? first->ToText() : nullptr;
    return text ? std::string_view(text->Value()) : std::string_view();
}

std::optional<Pair<std::int32_t>> ParseIntPair(std::string_view text, char separator)
{
    return ParsePair<std::int32_t>(text, separator, Platform::ParseInt);
}

std::optional<Pair<float>> ParseFloatPair(std::string_view text, char separator)
{
    return ParsePair<float>(text, separator, Platform::ParseFloat);
}

tinyxml2::XMLElement& AddElement(tinyxml2::XMLNode& parent, const char* name)
{
    auto* element = parent.GetDocument()->NewElement(name);
    parent.InsertEndChild(element);
    return *element;
}

void SetAttribute(tinyxml2::XMLElement& element, const char* name, std::wstring_view value)
{
    element.SetAttribute(name, Platform::WideToUtf8(value).c_str());
}

void SetAttribute(tinyxml2::XMLElement& element, const char* name, std::int32_t value)
{
    // tinyxml2 would print it by the formats of printf, in documents of tens of thousands.
    element.SetAttribute(name, std::to_string(value).c_str());
}

void AddTextElement(tinyxml2::XMLElement& parent, const char* name, const std::string& text)
{
    auto& element = AddElement(parent, name);
    element.InsertEndChild(parent.GetDocument()->NewText(text.c_str()));
}

} // namespace XmlText
