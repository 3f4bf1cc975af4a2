// SPDX-License-Identifier: MIT
// Fixture libraries, also those inside documents. What was read is written and read again, and
// nothing may change on the way.
#include "Fuzz/Fuzz.h"
#include "LibTools/XmlFile.h"
#include "Model/DeviceModel.h"
#include "XmlText/XmlText.h"

#include <string>

namespace {

std::string TextOf(const DeviceModel& library)
{
    XmlText::Document document;
    library.WriteFixtures(XmlText::AddElement(document, "LEDFixtureLibrary"));
    return XmlText::Print(document);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring path = InputFile(BytesOf(data, size)).wstring();
    int questions = 0;
    const auto answer = [&](const QString&, const QString&) {
        return ++questions % 3;
    };
    DeviceModel library;
    library.Merge(path, true, answer);
    library.Merge(path, false, answer);

    const std::string written = TextOf(library);
    const auto readAgain = [&path](const std::string& text) {
        InputFile(XmlText::Encode(text));
        DeviceModel again;
        again.Merge(path, true, [](const QString&, const QString&) { return 1; });
        return TextOf(again);
    };
    // A fixture that was overwritten is written twice and one with an empty name is not read again,
    // so the second text may be shorter; from there on it stays.
    const std::string second = readAgain(written);
    Require(second.size() <= written.size() && readAgain(second) == second);
    return 0;
}
