// SPDX-License-Identifier: MIT
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using namespace std::string_literals;
using namespace std::string_view_literals;

namespace {

bool Parses(std::string_view text)
{
    XmlText::Document document;
    return XmlText::Parse(text, document);
}

std::string PrintedValue(std::wstring_view value)
{
    XmlText::Document document;
    XmlText::SetAttribute(XmlText::AddElement(document, "E"), "v", value);
    return XmlText::Print(document);
}

} // namespace

TEST(XmlPrint, QuotesAndReferencesInValues)
{
    EXPECT_EQ(PrintedValue(L"it's"), "<E v=\"it&apos;s\" />\n");
    EXPECT_EQ(PrintedValue(L"a \"b\" 'c'"), "<E v='a &quot;b&quot; &apos;c&apos;' />\n");
    EXPECT_EQ(PrintedValue(L"\x1F\n\r ]]>"), "<E v=\"&#x1F;&#x0A;&#x0D; ]]&gt;\" />\n");
    EXPECT_EQ(PrintedValue(L"&#xA9; & &#65; &amp;"),
              "<E v=\"&#xA9; &amp; &amp;#65; &amp;amp;\" />\n");
    // No semicolon, or something before it that would break the file: no reference.
    EXPECT_EQ(PrintedValue(L"&#x"), "<E v=\"&amp;#x\" />\n");
    EXPECT_EQ(PrintedValue(L"&#x\"<;"), "<E v='&amp;#x&quot;&lt;;' />\n");
    EXPECT_EQ(PrintedValue(L"&#x&#x41;"), "<E v=\"&amp;#x&#x41;\" />\n");
}

TEST(XmlPrint, MixedChildrenEachHaveTheirLine)
{
    EXPECT_EQ(XmlText::Print(XmlText::Document()), "");
    XmlText::Document document;
    ASSERT_TRUE(XmlText::Parse("<?xml version='1.0'?><a>one<b c='1' d='2'/>&lt;two<!-- c -->"
                               "<e>&lt;'</e></a><f/>",
                               document));
    EXPECT_EQ(XmlText::Print(document), "<a>\n    one\n    <b c=\"1\" d=\"2\" />\n    &lt;two\n"
                                        "    <!-- c -->\n    <e>&lt;&apos;</e>\n</a>\n<f />\n");
}

TEST(XmlRead, EncodingsAndLineEnds)
{
    EXPECT_EQ(XmlText::Decode("\xFF\xFE<\0a\0\xFC\0"s), "<a\xC3\xBC");
    EXPECT_EQ(XmlText::Decode("\xFE\xFF\0<\0a\0\xFC"s), "<a\xC3\xBC");
    EXPECT_EQ(XmlText::Decode("<\xFC"), "<\xC3\xBC") << "no mark: one character a byte";
    EXPECT_EQ(XmlText::Decode("\xEF\xBB\xBF<\xC3\xBC"), "<\xC3\xBC");
    EXPECT_EQ(XmlText::Decode("a\r\nb\rc\nd\r"), "a\nb\nc\nd\n");
    EXPECT_EQ(XmlText::Decode("\xFF\xFE\r\0\n\0\r\0"s), "\n\n");
    EXPECT_EQ(XmlText::Encode("<\xF0\x9F\x92\xA1"), "\xFF\xFE<\0\x3D\xD8\xA1\xDC"s);
    // Broken units.
    EXPECT_EQ(XmlText::Decode("\xFF\xFE<\0a"s), "<") << "half a unit is dropped";
    EXPECT_EQ(XmlText::Decode("\xFF\xFE\x3D\xD8!\0"s), "\xEF\xBF\xBD!");
    for (const auto& start : {""s, "\xFF"s, "\xFF\xFE"s, "\xFE\xFF"s})
        EXPECT_LE(XmlText::Decode(start).size(), 2U);
}

TEST(XmlRead, SeveralElementsAtTheTopAndCollapsedText)
{
    XmlText::Document document;
    ASSERT_TRUE(XmlText::Parse("<?xml version='1.0'?>\n<!-- x --><A/>\n<B k='1' K=\"&lt;&#65;\">"
                               " \n one  \t two\n</B><C><![CDATA[<x>]]></C>",
                               document));
    const auto* second = document.FirstChildElement("B");
    ASSERT_TRUE(document.FirstChildElement("A") && second && document.FirstChildElement("C"));
    EXPECT_EQ(document.FirstChildElement("b"), nullptr);
    EXPECT_EQ(XmlText::Attribute(*second, "K"), L"<A");
    EXPECT_EQ(XmlText::Attribute(*second, "none"), std::nullopt);
    EXPECT_EQ(XmlText::FirstText(*second), "one two");
    EXPECT_EQ(XmlText::FirstText(*document.FirstChildElement("C")), "<x>");
    EXPECT_EQ(XmlText::FirstText(*document.FirstChildElement("A")), "");
}

TEST(XmlRead, SyntaxErrorsMakeTheWholeUnreadable)
{
    XmlText::Document document;
    for (const char* broken : {"<a/><b>", "<a/></b>"}) {
        ASSERT_TRUE(XmlText::Parse("<a/>", document));
        EXPECT_FALSE(XmlText::Parse(broken, document));
        EXPECT_EQ(document.FirstChild(), nullptr) << "nothing of the old or the broken text stays";
    }

    for (const char* text : {"", " \n", "text", "text<a/>", "<a/>text", "<a/>text<b/>", "<a></b>",
                             "<a b/>", "<a b=/>", "<a b='1' b='2'/>", "<a><b></a></b>",
                             "<a/></a><b/>", "<a></a></b><c/>", "<![CDATA[x", "<!--", "<?xml"})
        EXPECT_FALSE(Parses(text)) << text;
    EXPECT_FALSE(Parses("<a/>\0<b/>"sv));
}

TEST(XmlRead, EveryCutOfADocumentIsRefusedOrWhole)
{
    const std::string bytes = XmlText::Encode("<A v=\"&#x1F4A1;\">\n    <b>text</b>\n</A>\n");
    for (std::size_t size = 0; size + 3 < bytes.size(); ++size)
        EXPECT_FALSE(Parses(XmlText::Decode(bytes.substr(0, size)))) << size;
    EXPECT_TRUE(Parses(XmlText::Decode(bytes.substr(0, bytes.size() - 1))));
}

TEST(XmlRead, DepthAndAttributesAreLimited)
{
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i)
            text = "<n>" + text + "</n>";
        return text;
    };
    EXPECT_TRUE(Parses(nested(90)));
    EXPECT_FALSE(Parses(nested(10'000)));
    const auto element = [](int count) {
        std::string text = "<a";
        for (int i = 0; i < count; ++i)
            text += " a" + std::to_string(i) + "='>='";
        return text + "/>";
    };
    EXPECT_TRUE(Parses(element(500)));
    // Two million names would be compared pair by pair for hours.
    EXPECT_FALSE(Parses(element(2'000'000)));
    // Equal signs elsewhere don't count.
    EXPECT_TRUE(Parses("<a>" + std::string(5000, '=') + "<!--<" + std::string(5000, '=') +
                       "--><![CDATA[<" + std::string(5000, '=') + "]]></a>"));
}
