// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Support/LogCapture.h"
#include "XmlText/XmlText.h"

/// `read` applied to the first element of `text`.
template <typename Read>
auto FromText(std::string_view text, Read read)
{
    XmlText::Document document;
    EXPECT_TRUE(XmlText::Parse(text, document)) << text;
    return read(*document.FirstChildElement());
}

/// The file text of an element <P> into which `value` was written.
template <typename Value>
std::string Written(const Value& value, int result = 0)
{
    XmlText::Document document;
    EXPECT_EQ(value.ToXml(XmlText::AddElement(document, "P")), result);
    return XmlText::Print(document);
}

/// Texts that must be rejected, each with the one line that it leaves in the log.
using Rejections = std::vector<std::pair<std::string, std::string>>;

template <typename Read>
void ExpectRejected(const Rejections& rejections, Read read)
{
    Support::LogCapture log;
    for (const auto& [text, message] : rejections) {
        log.Clear();
        EXPECT_FALSE(FromText(text, read)) << text;
        EXPECT_EQ(log.Messages(), std::vector<std::string>{message}) << text;
    }
}
