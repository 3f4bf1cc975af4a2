// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <tinyxml2.h>

// The text form that fixture libraries (.wfl) and mapping documents (.wfm) share: elements,
// attributes and text, with several elements at the top level, printed in one fixed layout so that
// a saved file can be compared byte for byte. Reading uses tinyxml2; writers fill its tree too.
namespace XmlText {

/// The text of a file's bytes as UTF-8: UTF-16 of either byte order or UTF-8 after its mark,
/// otherwise one character per byte. CR LF and a lone CR become LF. Half a unit at the end is
/// dropped.
[[nodiscard]] std::string Decode(std::string_view bytes);

/// Little-endian UTF-16 with its mark, for the disk.
[[nodiscard]] std::string Encode(std::string_view utf8);

/// An empty document that reads text as our files want it: white space at the ends of a text goes,
/// and runs of it inside become one blank.
class Document : public tinyxml2::XMLDocument
{
public:
    Document()
        : XMLDocument(true, tinyxml2::COLLAPSE_WHITESPACE)
    {}
};

/// Parses decoded text. False (and an empty document) for any syntax error, text outside of all
/// elements and an empty text among them, for elements nested deeper than tinyxml2 follows and for
/// more than 512 attributes in one element.
[[nodiscard]] bool Parse(std::string_view utf8, tinyxml2::XMLDocument& document);

/// The fixed layout: 4 blanks a level, `<name a="1" />` for an empty element, a lone text on its
/// element's line, one LF after each line, no declaration. UTF-8.
[[nodiscard]] std::string Print(const tinyxml2::XMLDocument& document);

// ---- Reading an element ------------------------------------------------------------------------

/// The attribute's text, nothing when it is absent.
[[nodiscard]] std::optional<std::wstring> Attribute(const tinyxml2::XMLElement& element,
                                                    const char* name);

/// A whole-number attribute.
struct IntAttribute
{
    enum class State : std::uint8_t
    {
        Missing,
        NoNumber,
        Good
    };
    State state = State::Missing;
    std::int32_t value = 0;
};
[[nodiscard]] IntAttribute ReadInt(const tinyxml2::XMLElement& element, const char* name);

/// The text of the element's first child, empty when that is no text.
[[nodiscard]] std::string_view FirstText(const tinyxml2::XMLElement& element);

/// "a<separator>b": two whole numbers or two finite numbers and nothing else.
template <typename Number>
struct Pair
{
    Number first{};
    Number second{};
};
[[nodiscard]] std::optional<Pair<std::int32_t>> ParseIntPair(std::string_view text, char separator);
[[nodiscard]] std::optional<Pair<float>> ParseFloatPair(std::string_view text, char separator);

// ---- Building an element -----------------------------------------------------------------------

/// A new element at the end of `parent`, which owns it.
tinyxml2::XMLElement& AddElement(tinyxml2::XMLNode& parent, const char* name);

void SetAttribute(tinyxml2::XMLElement& element, const char* name, std::wstring_view value);
void SetAttribute(tinyxml2::XMLElement& element, const char* name, std::int32_t value);

/// <name>text</name> at the end of `parent`.
void AddTextElement(tinyxml2::XMLElement& parent, const char* name, const std::string& text);

} // namespace XmlText
